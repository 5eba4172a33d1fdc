// Builds tagged font metrics (TFM), directory by directory.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace hvtest {

// A symbol set by its text, "8U", and the glyph of each code.
struct TaggedSymbolSet {
  std::string text;
  std::vector<unsigned> glyphs;
};

// The entries of a font, each given as its printed type: 2 text, 3 and 17 words, 1 bytes, 4 longs,
// 5 pairs of longs.
struct TaggedEntry {
  unsigned tag;
  unsigned type;
  std::vector<int64_t> numbers;
  std::string text;
};

struct TaggedFontFile {
  std::vector<TaggedEntry> entries;
  std::vector<TaggedSymbolSet> symbolSets;  // become tag 404

  // Puts a number in the place of those of a tag, or adds it.
  void Set(unsigned tag, unsigned type, std::vector<int64_t> numbers);
  void Remove(unsigned tag);
};

// The order is "II" or "MM".
std::string TaggedFile(const std::string& order, const std::vector<TaggedFontFile>& fonts);

// A font of 1000 units an em in the symbol set 8U: space, A, V and Adieresis, with kerning.
TaggedFontFile SampleTaggedFont();

}  // namespace hvtest
