// AFM files as fonts: their names, and the Windows menu name of the INF file beside them.
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "fonts/font_file.h"
#include "platform/stream.h"

namespace hv {

// The menu name of an INF opened as text, with ",BOLD", ",ITALIC" or ",BOLDITALIC" when it tells
// the style; empty when there is none.
std::string InfMenuName(platform::Stream* file);

uint32_t DescribeAfm(const FontFile& file, HvFontInfo* info);

}  // namespace hv
