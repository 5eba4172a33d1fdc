#include "support/tagged_files.h"

#include <algorithm>

#include "support/font_files.h"

namespace hvtest {
namespace {

struct Writer {
  bool high;
  std::string Number(std::size_t size, int64_t value) const {
    const auto bits = static_cast<uint32_t>(value);
    return high ? Be32(bits).substr(4 - size) : Le32(bits).substr(0, size);
  }
  std::string Data(const TaggedEntry& entry) const {
    if (entry.type == 2) return entry.text + '\0';
    const std::size_t size = entry.type == 1 ? 1 : entry.type == 3 || entry.type == 17 ? 2 : 4;
    std::string data;
    for (const int64_t number : entry.numbers) data += Number(size, number);
    return data;
  }
};

// The directory of symbol sets, to lie at `at`, with what its entries lead to behind it.
std::string SymbolSetData(const Writer& write, const std::vector<TaggedSymbolSet>& sets,
                          std::size_t at) {
  std::string directory;
  std::string behind;
  const auto lead = [&] { directory += write.Number(4, at + 14 * sets.size() + behind.size()); };
  for (const TaggedSymbolSet& set : sets) {
    lead();
    behind += "Set " + set.text + '\0';
    lead();
    behind += set.text + '\0';
    lead();
    directory += write.Number(2, set.glyphs.size());
    for (const unsigned glyph : set.glyphs) behind += write.Number(2, glyph);
  }
  return directory + behind;
}

}  // namespace

void TaggedFontFile::Set(unsigned tag, unsigned type, std::vector<int64_t> numbers) {
  Remove(tag);
  entries.push_back({tag, type, std::move(numbers), ""});
}

void TaggedFontFile::Remove(unsigned tag) {
  entries.erase(std::remove_if(entries.begin(), entries.end(),
                               [&](const TaggedEntry& entry) { return entry.tag == tag; }),
                entries.end());
}

std::string TaggedFile(const std::string& order, const std::vector<TaggedFontFile>& fonts) {
  const Writer write = {order == "MM"};
  std::string file = order + write.Number(2, 42) + write.Number(4, 8);
  for (const TaggedFontFile& font : fonts) {
    const std::size_t count = font.entries.size() + (font.symbolSets.empty() ? 0 : 1);
    const std::size_t dataAt = file.size() + 2 + 12 * count + 4;
    std::string directory = write.Number(2, count);
    std::string data;
    const auto offset = [&] { return write.Number(4, dataAt + data.size()); };
    for (const TaggedEntry& entry : font.entries) {
      const std::string bytes = write.Data(entry);
      const std::size_t elements = entry.type == 2 ? bytes.size() : entry.numbers.size();
      directory += write.Number(2, entry.tag) + write.Number(2, entry.type);
      directory += write.Number(4, entry.type == 5 ? elements / 2 : elements);
      directory += bytes.size() <= 4 ? Field(bytes, 4) : offset();
      if (bytes.size() > 4) data += bytes;
    }
    if (!font.symbolSets.empty()) {
      directory += write.Number(2, 404) + write.Number(2, 1);
      directory += write.Number(4, 14 * font.symbolSets.size()) + offset();
      data += SymbolSetData(write, font.symbolSets, dataAt + data.size());
    }
    directory += &font == &fonts.back() ? write.Number(4, 0) : offset();
    file += directory + data;
  }
  return file;
}

TaggedFontFile SampleTaggedFont() {
  TaggedFontFile font;
  font.entries = {{401, 2, {}, "A notice"}, {417, 2, {}, "Sample  "}, {442, 2, {}, "4101"}};
  // Tag, type and value.
  const int numbers[][3] = {{409, 1, 1},    {410, 1, 0},     {411, 1, 179},   {414, 1, 60},
                            {415, 1, 0x82}, {400, 3, 0},     {412, 3, 0},     {422, 3, 1250},
                            {423, 3, 700},  {424, 3, 500},   {425, 3, 950},   {427, 3, 720},
                            {430, 3, 50},   {413, 17, 1250}, {426, 17, -250}, {428, 17, -210},
                            {429, 17, -100}};
  for (const auto& [tag, type, value] : numbers) font.Set(tag, type, {value});
  font.Set(406, 5, {1, 72});
  font.Set(407, 5, {12, 1});
  font.Set(408, 5, {1000, 1});
  font.Set(419, 5, {1001, 2});
  font.Set(433, 3, {250, 722, 700, 710});
  font.Set(439, 17, {4, 1, 2, -80, 2, 1, 40, 0, 1, -7, 9, 1, 5});
  font.Set(443, 1, {1, 2, 3, 4, 5, 6});
  TaggedSymbolSet roman = {"8U", std::vector<unsigned>(256, 0xFFFF)};
  roman.glyphs[32] = roman.glyphs[160] = 0;
  roman.glyphs['A'] = 1;
  roman.glyphs['V'] = 2;
  roman.glyphs[216] = 3;
  TaggedSymbolSet windows = {"19U", std::vector<unsigned>(256, 0xFFFF)};
  windows.glyphs[32] = 0;
  windows.glyphs[196] = 3;
  font.symbolSets = {roman, windows};
  return font;
}

}  // namespace hvtest
