// The manual page hvapi(1), for the program man.
#pragma once

#include <string>
#include <vector>

#include "command_tree.h"

namespace hvtool {

std::string ManualPage(const std::vector<CommandRow>& commands);

}  // namespace hvtool
