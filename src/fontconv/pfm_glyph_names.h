// What the codes of a printer font metrics file are in an AFM: glyph names and codes of the Adobe
// standard encoding. Published source: the PostScript Language Reference, "Standard Encoding".
#pragma once

#include <cstdint>
#include <string_view>

namespace hv {

// The glyph name of a Windows code; "W" and two hexadecimal digits for a code without one.
std::string_view PfmGlyphName(uint8_t code);

// The standard code of a Windows code, 0 when the standard encoding lacks the character.
uint8_t StandardCodeOf(uint8_t code);

// Whether a character without a standard code is written. Drivers give the codes that a font lacks
// the width of its space, the reference width, so that this width tells little of some codes.
bool IsKeptInAfm(uint8_t code, bool hasReferenceWidth);

}  // namespace hv
