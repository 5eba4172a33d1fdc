// The escape sequence that selects a font on a PCL printer. Published source: the PCL 5 Technical
// Reference Manual, "PCL Font Selection".
#pragma once

#include <cstdint>
#include <string>

#include "fonts/soft_font_descriptor.h"

namespace hv {

struct FontSelection {
  uint16_t symbolSet = 0;
  uint32_t spacing = 0;  // 0 fixed, 1 proportional
  uint32_t height = 0;   // hundredths of a point
  uint32_t pitch = 0;    // hundredths of characters an inch, sent for a fixed-spaced font
  uint32_t style = 0;
  int32_t strokeWeight = 0;
  uint32_t typeface = 0;
};

// What the header of a soft font says, all but height and pitch.
FontSelection SelectionOfHeader(const SoftFontDescriptor& header);

// The height goes out to the next tenth of a point above, the pitch as it is.
std::string SelectionEscape(const FontSelection& font);

// The Windows weight, 100 to 900, of a stroke weight, -7 to 7; 0 for any other.
uint32_t WeightOfStroke(int32_t strokeWeight);

}  // namespace hv
