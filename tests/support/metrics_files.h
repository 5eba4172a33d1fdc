// Builds the metrics files of Windows drivers, field by field from their printed layouts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hvtest {

struct Kerning {
  unsigned first;
  unsigned second;
  int amount;
};

// What a PFM or PSM says of a font. The defaults are what AFMs without a word on it give.
struct FontMetrics {
  std::string copyright = "Made by HvApiW32 from the metrics of its source font";
  int ascender = 0;
  int internalLeading = 0;
  int boxHeight = 0;
  int italicAngle = 0;  // tenths of a degree
  unsigned weight = 400;
  unsigned charSet = 0;
  unsigned family = 32;
  bool variable = true;
  int averageWidth = 0;
  int maximumWidth = 0;
  int capHeight = 0;
  int xHeight = 0;
  int ascent = 0;
  int descent = 0;
  int underlinePosition = 0;
  int underlineThickness = 0;
  std::string face = {};
  std::string fontName = {};
  unsigned first = 32;
  unsigned last = 255;
  std::vector<int> widths = {};  // from first to last
  std::vector<Kerning> kerning = {};
};

// The file for the PostScript driver, and the one for "IBM LaserPrinter".
std::string PostScriptPfm(const FontMetrics& font);
std::string LaserPrinterPsm(const FontMetrics& font);

}  // namespace hvtest
