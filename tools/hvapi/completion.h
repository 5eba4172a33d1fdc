// Scripts by which the shells complete the words of a command line.
#pragma once

#include <string>
#include <vector>

#include "command_tree.h"

namespace hvtool {

std::string BashCompletion(const std::vector<CommandRow>& commands);
std::string ZshCompletion(const std::vector<CommandRow>& commands);
std::string FishCompletion(const std::vector<CommandRow>& commands);

}  // namespace hvtool
