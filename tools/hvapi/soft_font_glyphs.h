// The characters of a PCL bitmap font, read from the downloads in its file. Published source: the
// PCL 5 Technical Reference Manual, "Soft Font Creation".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace hvtool {

struct Glyph {
  unsigned code = 0;
  int leftOffset = 0;  // of the left column from the reference point, in dots
  int topOffset = 0;   // of the top row above the baseline, in dots
  unsigned width = 0;
  unsigned height = 0;
  std::vector<bool> dots;  // width x height, row by row; true is ink

  bool Ink(unsigned x, unsigned y) const { return dots[std::size_t{y} * width + x]; }
};

// In the order of the file; a character downloaded twice counts once, as it was sent last. Empty
// for a font without bitmap characters; nothing for a file that cannot be read.
std::optional<std::vector<Glyph>> ReadGlyphs(const std::string& path);

}  // namespace hvtool
