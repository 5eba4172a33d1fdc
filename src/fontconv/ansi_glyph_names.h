// Glyph names of PostScript fonts by their code in the Windows ANSI character set.
#pragma once

#include <cstdint>
#include <string_view>

namespace hv {

// The code of a glyph name, letter case counting; 0 for a name that has none. The names circumflex
// and tilde give their ASCII codes.
uint8_t AnsiCodeOfGlyph(std::string_view glyphName);

}  // namespace hv
