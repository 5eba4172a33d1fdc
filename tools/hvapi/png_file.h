// Pictures as PNG files, where the program was built with a library for them.
#pragma once

#include <string>

#include "contact_sheet.h"

namespace hvtool {

// Empty when the file was written, else the reason why not; a file that was there is then as
// before.
std::string WritePng(const std::string& path, const Picture& picture);

}  // namespace hvtool
