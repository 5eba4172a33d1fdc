// Tagged font metrics (TFM), the metrics of scalable PCL fonts: a tagged file in the manner of
// TIFF with one directory a font. Published source: the description of tagged font metrics for
// PCL 5 printers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace hv {

enum class MetricTag : uint16_t {
  SymbolSets = 404,          // a directory, see TaggedFont::FindGlyphs
  InchesPerPoint = 406,      // rational
  NominalPointSize = 407,    // rational
  DesignUnitsPerEm = 408,    // rational; all lengths below are in design units
  Posture = 409,             // 0 upright, 1 italic, 2 alternate italic
  TypeStructure = 410,       // eight times the structure of a PCL style word
  StrokeWeight = 411,        // 1 to 255, 128 for a medium one
  Spacing = 412,             // the width of all characters, 0 when they differ
  Slant = 413,               // hundredths of a degree, positive to the right
  AppearanceWidth = 414,     // 1 to 255, 128 for a normal one
  SerifStyle = 415,          // bit 6 sans serif, bit 7 serif
  TypefaceName = 417,        // text
  AverageWidth = 419,        // rational
  LineSpacing = 422,         // recommended
  CapHeight = 423,           //
  XHeight = 424,             //
  MaximumAscent = 425,       //
  MaximumDescent = 426,      // negative below the baseline
  LowerCaseAscent = 427,     //
  LowerCaseDescent = 428,    // negative below the baseline
  UnderlineDepth = 429,      // negative below the baseline
  UnderlineThickness = 430,  //
  Widths = 433,              // one a glyph
  KerningPairs = 439,        // a count and three words a pair: glyph, glyph, amount
  PclTypeface = 442,         // the number of the selection, as text
};
constexpr uint16_t FirstMetricTag = 401;
constexpr uint16_t LastMetricTag = 442;

struct Rational {
  uint32_t numerator = 0;
  uint32_t denominator = 1;  // never 0
};

// A glyph that a symbol set lacks.
constexpr uint16_t NoGlyph = 0xFFFF;

// The glyph of each code.
using GlyphIndex = std::vector<uint16_t>;

// One font of such a file, whose bytes outlive it. What is missing, and what does not lie within
// the file, is absent or empty.
class TaggedFont {
 public:
  // The tag's first number, with its sign.
  std::optional<int32_t> Number(MetricTag tag) const;
  int32_t NumberOr(MetricTag tag, int32_t otherwise) const;
  // Absent as well with a denominator of 0.
  std::optional<Rational> Ratio(MetricTag tag) const;
  std::string_view Text(MetricTag tag) const;
  std::vector<int32_t> Numbers(MetricTag tag) const;

  // The texts of its symbol sets ("8U"), and the glyphs of one of them.
  std::vector<std::string_view> SymbolSets() const;
  GlyphIndex FindGlyphs(std::string_view symbolSet) const;

 private:
  friend std::vector<TaggedFont> ReadTaggedMetrics(std::span<const uint8_t> file);

  struct Entry {
    uint16_t type = 0;
    uint32_t count = 0;
    std::size_t offset = 0;  // of its data in the file
  };

  uint16_t Load16(std::size_t at) const;
  uint32_t Load32(std::size_t at) const;
  std::string_view TextAt(std::size_t at, std::size_t longest) const;
  const Entry* Find(MetricTag tag) const;
  int32_t Element(const Entry& entry, std::size_t index) const;

  std::span<const uint8_t> file_;
  bool highByteFirst_ = false;
  std::array<Entry, LastMetricTag - FirstMetricTag + 1> entries_ = {};
};

// The fonts of a file in the order of their directories, 256 of them at most; none when it is no
// tagged file or its first directory lies outside of it.
std::vector<TaggedFont> ReadTaggedMetrics(std::span<const uint8_t> file);

}  // namespace hv
