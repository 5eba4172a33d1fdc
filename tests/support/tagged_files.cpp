#include "support/tagged_files.h"

#include <algorithm>

#include "support/font_files.h"

namespace hvtest {
namespace {

struct Writer {
  bool high;
  std::string Two(int64_t value) const {
    const auto bits = static_cast<unsigned>(value) & 0xFFFF;
    return high ? Be16(bits) : Le16(bits);
  }
  std::string Four(int64_t value) const {
    const auto bits = static_cast<uint32_t>(value);
    return high ? Be32(bits) : Le32(bits);
  }
  std::string Data(const TaggedEntry& entry) const {
    if (entry.type == 2) return entry.text + '\0';
    std::string data;
    for (const int64_t number : entry.numbers) {
      if (entry.type == 1) {
        data += static_cast<char>(number);
      } else {
        data += entry.type == 3 || entry.type == 17 ? Two(number) : Four(number);
      }
    }
    return data;
  }
};

// The directory of symbol sets, to lie at `at`, with what its entries lead to behind it.
std::string SymbolSetData(const Writer& write, const std::vector<TaggedSymbolSet>& sets,
                          std::size_t at) {
  std::string directory;
  std::string behind;
  const std::size_t behindAt = at + 14 * sets.size();
  for (const TaggedSymbolSet& set : sets) {
    const std::size_t name = behindAt + behind.size();
    behind += "Set " + set.text + '\0';
    const std::size_t text = behindAt + behind.size();
    behind += set.text + '\0';
    const std::size_t glyphs = behindAt + behind.size();
    for (const unsigned glyph : set.glyphs) behind += write.Two(glyph);
    for (const std::size_t offset : {name, text, glyphs}) {
      directory += write.Four(static_cast<int64_t>(offset));
    }
    directory += write.Two(static_cast<int64_t>(set.glyphs.size()));
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
  std::string file = order + write.Two(42) + write.Four(8);
  for (const TaggedFontFile& font : fonts) {
    const std::size_t count = font.entries.size() + (font.symbolSets.empty() ? 0 : 1);
    const std::size_t dataAt = file.size() + 2 + 12 * count + 4;
    std::string directory = write.Two(static_cast<int64_t>(count));
    std::string data;
    const auto offset = [&] { return write.Four(static_cast<int64_t>(dataAt + data.size())); };
    for (const TaggedEntry& entry : font.entries) {
      const std::string bytes = write.Data(entry);
      const std::size_t elements = entry.type == 2 ? bytes.size() : entry.numbers.size();
      directory += write.Two(entry.tag) + write.Two(entry.type);
      directory += write.Four(static_cast<int64_t>(entry.type == 5 ? elements / 2 : elements));
      directory += bytes.size() <= 4 ? Field(bytes, 4) : offset();
      if (bytes.size() > 4) data += bytes;
    }
    if (!font.symbolSets.empty()) {
      directory += write.Two(404) + write.Two(1);
      directory += write.Four(static_cast<int64_t>(14 * font.symbolSets.size())) + offset();
      data += SymbolSetData(write, font.symbolSets, dataAt + data.size());
    }
    const bool isLast = &font == &fonts.back();
    directory += write.Four(isLast ? 0 : static_cast<int64_t>(dataAt + data.size()));
    file += directory + data;
  }
  return file;
}

TaggedFontFile SampleTaggedFont() {
  TaggedFontFile font;
  font.entries = {{401, 2, {}, "A notice"}, {417, 2, {}, "Sample  "}, {442, 2, {}, "4101"}};
  const std::pair<unsigned, int64_t> bytes[] = {
      {409, 1}, {410, 0}, {411, 179}, {414, 60}, {415, 0x82}};
  for (const auto& [tag, value] : bytes) font.Set(tag, 1, {value});
  const std::pair<unsigned, int64_t> words[] = {{400, 0},   {412, 0},   {422, 1250}, {423, 700},
                                                {424, 500}, {425, 950}, {427, 720},  {430, 50}};
  for (const auto& [tag, value] : words) font.Set(tag, 3, {value});
  const std::pair<unsigned, int64_t> signedWords[] = {
      {413, 1250}, {426, -250}, {428, -210}, {429, -100}};
  for (const auto& [tag, value] : signedWords) font.Set(tag, 17, {value});
  font.Set(406, 5, {1, 72});
  font.Set(407, 5, {12, 1});
  font.Set(408, 5, {1000, 1});
  font.Set(419, 5, {1001, 2});
  font.Set(433, 3, {250, 722, 700, 710});
  font.Set(439, 17, {3, 1, 2, -80, 2, 1, 40, 9, 1, 5});
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
