// All characters of a font on one sheet, as a picture or with block characters.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "soft_font_glyphs.h"

namespace hvtool {

// Grey values, 0 black to 255 white, row by row.
struct Picture {
  unsigned width;
  unsigned height;
  std::vector<uint8_t> pixels;
};

// Cells of one size, 16 codes a row, each character on the baseline of its cell. Nothing when the
// characters lie so far apart that the picture would take more than 100 million dots.
std::optional<Picture> DrawSheet(const std::vector<Glyph>& glyphs);

// The characters side by side in lines of 80 columns, each under its code; two rows of dots a line.
std::string SheetAsText(const std::vector<Glyph>& glyphs);

}  // namespace hvtool
