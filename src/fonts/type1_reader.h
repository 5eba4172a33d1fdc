// PostScript Type 1 fonts: PFA, all text, and PFB, segments of text and binary data. Published
// source: Adobe Type 1 Font Format; Adobe Technical Note 5040 for the PFB segments.
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "fonts/font_file.h"
#include "platform/stream.h"

namespace hv {

// The name on the first line that begins with "/FontName /" of a stream opened as text; empty when
// there is none.
std::string PsFontNameFromPfa(platform::Stream* file);

struct PfbNames {
  std::string fontName;          // empty when there is none
  bool standardEncoding = true;  // false only when an Encoding line says otherwise
};

// What the lines "/FontName /..." and "/Encoding ..." of a binary stream say. Of a line, the 39
// characters behind its first "/" are looked at.
PfbNames PsFontNameFromPfb(platform::Stream* file);

uint32_t DescribePfa(const FontFile& file, HvFontInfo* info);
uint32_t DescribePfb(const FontFile& file, HvFontInfo* info);

}  // namespace hv
