// A font name for printers that know a font by its name alone.
#pragma once

#include <string>

#include "fonts/soft_font_descriptor.h"

namespace hv {

// Exactly 16 characters made of the descriptor's name, size, style and symbol set. What is too long
// loses blanks and punctuation first, then vowels.
std::string PclMakeFontName(const SoftFontDescriptor& descriptor);

}  // namespace hv
