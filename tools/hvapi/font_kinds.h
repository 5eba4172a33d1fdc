// What kinds of fonts and font metrics are called.
#pragma once

#include <string>

#include "hvapi.h"

namespace hvtool {

// "PCL bitmap font"; empty for a kind that the library does not describe.
std::string FontKindText(const HvFontInfo& info);

}  // namespace hvtool
