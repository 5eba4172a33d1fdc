// What kinds of fonts and font metrics are called, and the files that belong to them.
#pragma once

#include <string>

#include "command_line.h"
#include "hvapi.h"

namespace hvtool {

// "PCL bitmap font"; empty for a kind that the library does not describe.
std::string FontKindText(const HvFontInfo& info);

// --companions, a FONT_COMPANIONS_... mode
void AddCompanionsOption(CLI::App* command, int* companions);

}  // namespace hvtool
