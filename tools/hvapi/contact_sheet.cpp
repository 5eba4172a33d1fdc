#include "contact_sheet.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace hvtool {
namespace {

constexpr unsigned CodesInRow = 16;
constexpr unsigned Margin = 4;  // around the characters of a cell, in dots
constexpr uint8_t Paper = 255;
constexpr uint8_t Grid = 208;
constexpr uint8_t Ink = 0;

constexpr uint64_t MostPixels = 100'000'000;

constexpr std::size_t LineWidth = 80;
constexpr const char* Blocks[] = {" ", "\xE2\x96\x80", "\xE2\x96\x84", "\xE2\x96\x88"};

// What all characters of a font take up, from the reference point.
struct Extent {
  int left = 0;
  int right = 0;
  int top = 0;     // above the baseline
  int bottom = 0;  // below it

  explicit Extent(const std::vector<Glyph>& glyphs) {
    for (const Glyph& glyph : glyphs) {
      left = std::min(left, glyph.leftOffset);
      right = std::max(right, glyph.leftOffset + static_cast<int>(glyph.width));
      top = std::max(top, glyph.topOffset);
      bottom = std::max(bottom, static_cast<int>(glyph.height) - glyph.topOffset);
    }
  }
  unsigned Width() const { return static_cast<unsigned>(right - left); }
  unsigned Height() const { return static_cast<unsigned>(top + bottom); }
};

void FillGrid(unsigned cellWidth, unsigned cellHeight, Picture* picture) {
  for (unsigned y = 0; y < picture->height; ++y) {
    for (unsigned x = 0; x < picture->width; ++x) {
      const bool line = x % cellWidth == 0 || y % cellHeight == 0;
      picture->pixels[std::size_t{y} * picture->width + x] = line ? Grid : Paper;
    }
  }
}

void DrawGlyph(const Glyph& glyph, unsigned left, unsigned top, Picture* picture) {
  for (unsigned y = 0; y < glyph.height; ++y) {
    for (unsigned x = 0; x < glyph.width; ++x) {
      if (!glyph.Ink(x, y)) continue;
      picture->pixels[std::size_t{top + y} * picture->width + left + x] = Ink;
    }
  }
}

std::string Title(const Glyph& glyph) {
  char text[32];
  std::snprintf(text, sizeof text, "%u 0x%02X", glyph.code, glyph.code);
  return text;
}

std::size_t ColumnsOf(const Glyph& glyph) {
  return std::max<std::size_t>(glyph.width, Title(glyph).size());
}

// The dots of two rows of a glyph as one line of blocks, filled up to its columns.
std::string BlockLine(const Glyph& glyph, unsigned y) {
  std::string line;
  for (unsigned x = 0; x < ColumnsOf(glyph); ++x) {
    const bool upper = x < glyph.width && y < glyph.height && glyph.Ink(x, y);
    const bool lower = x < glyph.width && y + 1 < glyph.height && glyph.Ink(x, y + 1);
    line += Blocks[(upper ? 1 : 0) + (lower ? 2 : 0)];
  }
  return line;
}

std::string Trimmed(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line + "\n";
}

std::string BandAsText(const std::vector<const Glyph*>& band) {
  unsigned height = 0;
  std::string titles;
  for (const Glyph* const glyph : band) {
    height = std::max(height, glyph->height);
    std::string title = Title(*glyph);
    title.resize(ColumnsOf(*glyph), ' ');
    titles += title + "  ";
  }
  std::string text = Trimmed(titles);
  for (unsigned y = 0; y < height; y += 2) {
    std::string line;
    for (const Glyph* const glyph : band) line += BlockLine(*glyph, y) + "  ";
    text += Trimmed(line);
  }
  return text;
}

}  // namespace

std::optional<Picture> DrawSheet(const std::vector<Glyph>& glyphs) {
  // Rows of codes without a character are left out.
  std::map<unsigned, unsigned> rows;
  for (const Glyph& glyph : glyphs) rows[glyph.code / CodesInRow] = 0;
  unsigned count = 0;
  for (auto& row : rows) row.second = count++;

  const Extent extent(glyphs);
  const unsigned cellWidth = extent.Width() + 2 * Margin + 1;
  const unsigned cellHeight = extent.Height() + 2 * Margin + 1;
  Picture picture = {CodesInRow * cellWidth + 1, count * cellHeight + 1, {}};
  if (uint64_t{picture.width} * picture.height > MostPixels) return std::nullopt;
  picture.pixels.resize(std::size_t{picture.width} * picture.height);
  FillGrid(cellWidth, cellHeight, &picture);
  for (const Glyph& glyph : glyphs) {
    const unsigned left = glyph.code % CodesInRow * cellWidth + 1 + Margin;
    const unsigned top = rows[glyph.code / CodesInRow] * cellHeight + 1 + Margin;
    DrawGlyph(glyph, left + static_cast<unsigned>(glyph.leftOffset - extent.left),
              top + static_cast<unsigned>(extent.top - glyph.topOffset), &picture);
  }
  return picture;
}

std::string SheetAsText(const std::vector<Glyph>& glyphs) {
  std::string text;
  std::vector<const Glyph*> band;
  std::size_t columns = 0;
  for (const Glyph& glyph : glyphs) {
    if (!band.empty() && columns + ColumnsOf(glyph) > LineWidth) {
      text += BandAsText(band) + "\n";
      band.clear();
      columns = 0;
    }
    band.push_back(&glyph);
    columns += ColumnsOf(glyph) + 2;
  }
  return text + BandAsText(band);
}

}  // namespace hvtool
