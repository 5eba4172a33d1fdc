#include "fontconv/tagged_metrics.h"

#include <algorithm>

#include "support/byte_order.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t FileHeaderSize = 8;
constexpr std::size_t EntrySize = 12;
constexpr std::size_t SymbolSetEntrySize = 14;
constexpr std::size_t LongestSymbolSet = 8;
constexpr std::size_t MostSymbolSets = 512;
constexpr std::size_t MostFonts = 256;

// Types of data, with the bytes that one of them takes.
enum DataType : uint16_t {
  UnsignedByte = 1,
  Ascii = 2,
  UnsignedShort = 3,
  UnsignedLong = 4,
  RationalType = 5,
  SignedByte = 16,
  SignedShort = 17,
  SignedLong = 18,
};

std::size_t SizeOf(uint16_t type) {
  switch (type) {
    case UnsignedByte:
    case Ascii:
    case SignedByte:
      return 1;
    case UnsignedShort:
    case SignedShort:
      return 2;
    case UnsignedLong:
    case SignedLong:
      return 4;
    case RationalType:
      return 8;
    default:
      return 0;
  }
}

}  // namespace

// Outside of the file everything is 0.
uint16_t TaggedFont::Load16(std::size_t at) const {
  if (at >= file_.size() || file_.size() - at < 2) return 0;
  return highByteFirst_ ? LoadBe16(&file_[at]) : LoadLe16(&file_[at]);
}
uint32_t TaggedFont::Load32(std::size_t at) const {
  if (at >= file_.size() || file_.size() - at < 4) return 0;
  return highByteFirst_ ? LoadBe32(&file_[at]) : LoadLe32(&file_[at]);
}

std::string_view TaggedFont::TextAt(std::size_t at, std::size_t longest) const {
  if (at >= file_.size()) return {};
  const std::size_t size = std::min(longest, file_.size() - at);
  return FixedText(reinterpret_cast<const char*>(&file_[at]), size);
}

const TaggedFont::Entry* TaggedFont::Find(MetricTag tag) const {
  const Entry& entry = entries_[static_cast<std::size_t>(tag) - FirstMetricTag];
  return entry.count == 0 ? nullptr : &entry;
}

int32_t TaggedFont::Element(const Entry& entry, std::size_t index) const {
  const std::size_t at = entry.offset + index * SizeOf(entry.type);
  switch (entry.type) {
    case UnsignedByte:
      return file_[at];
    case SignedByte:
      return static_cast<int8_t>(file_[at]);
    case UnsignedShort:
      return Load16(at);
    case SignedShort:
      return static_cast<int16_t>(Load16(at));
    case UnsignedLong:
    case SignedLong:
      return static_cast<int32_t>(Load32(at));
    default:
      return 0;
  }
}

std::optional<int32_t> TaggedFont::Number(MetricTag tag) const {
  const Entry* entry = Find(tag);
  if (entry == nullptr || entry->type == Ascii || entry->type == RationalType) return std::nullopt;
  return Element(*entry, 0);
}

int32_t TaggedFont::NumberOr(MetricTag tag, int32_t otherwise) const {
  return Number(tag).value_or(otherwise);
}

std::optional<Rational> TaggedFont::Ratio(MetricTag tag) const {
  const Entry* entry = Find(tag);
  if (entry == nullptr || entry->type != RationalType) return std::nullopt;
  const Rational ratio = {Load32(entry->offset), Load32(entry->offset + 4)};
  if (ratio.denominator == 0) return std::nullopt;
  return ratio;
}

std::string_view TaggedFont::Text(MetricTag tag) const {
  const Entry* entry = Find(tag);
  if (entry == nullptr || entry->type != Ascii) return {};
  return TextAt(entry->offset, entry->count);
}

std::vector<int32_t> TaggedFont::Numbers(MetricTag tag) const {
  std::vector<int32_t> numbers;
  const Entry* entry = Find(tag);
  if (entry == nullptr || entry->type == Ascii || entry->type == RationalType) return numbers;
  numbers.reserve(entry->count);
  for (std::size_t i = 0; i < entry->count; ++i) numbers.push_back(Element(*entry, i));
  return numbers;
}

// An entry of the directory: the offsets of its name, its text and its glyphs, and their number.
std::vector<std::string_view> TaggedFont::SymbolSets() const {
  std::vector<std::string_view> sets;
  const Entry* entry = Find(MetricTag::SymbolSets);
  if (entry == nullptr || SizeOf(entry->type) != 1) return sets;
  const std::size_t count = std::min(entry->count / SymbolSetEntrySize, MostSymbolSets);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = entry->offset + i * SymbolSetEntrySize;
    sets.push_back(TextAt(Load32(at + 4), LongestSymbolSet));
  }
  return sets;
}

GlyphIndex TaggedFont::FindGlyphs(std::string_view symbolSet) const {
  const std::vector<std::string_view> sets = SymbolSets();
  const auto set = std::find(sets.begin(), sets.end(), symbolSet);
  GlyphIndex glyphs;
  if (set == sets.end()) return glyphs;
  const std::size_t entry = Find(MetricTag::SymbolSets)->offset +
                            SymbolSetEntrySize * static_cast<std::size_t>(set - sets.begin());
  const std::size_t first = Load32(entry + 8);
  const std::size_t count = Load16(entry + 12);
  if (first > file_.size() || file_.size() - first < 2 * count) return glyphs;
  for (std::size_t i = 0; i < count; ++i) glyphs.push_back(Load16(first + 2 * i));
  return glyphs;
}

std::vector<TaggedFont> ReadTaggedMetrics(std::span<const uint8_t> file) {
  std::vector<TaggedFont> fonts;
  TaggedFont font;
  font.file_ = file;
  if (file.size() < FileHeaderSize || file[0] != file[1]) return fonts;
  if (file[0] != 'I' && file[0] != 'M') return fonts;
  font.highByteFirst_ = file[0] == 'M';

  // Directories may form a circle; no file has this many fonts.
  std::size_t at = font.Load32(4);
  while (fonts.size() < MostFonts && at >= FileHeaderSize && at < file.size()) {
    const std::size_t size = 2 + EntrySize * font.Load16(at);
    if (size > file.size() - at) break;
    font.entries_ = {};
    for (std::size_t entry = at + 2; entry < at + size; entry += EntrySize) {
      const uint16_t tag = font.Load16(entry);
      if (tag < FirstMetricTag || tag > LastMetricTag) continue;
      TaggedFont::Entry found = {font.Load16(entry + 2), font.Load32(entry + 4), entry + 8};
      const uint64_t bytes = uint64_t{found.count} * SizeOf(found.type);
      if (bytes > 4) found.offset = font.Load32(entry + 8);
      if (bytes == 0 || found.offset > file.size() || bytes > file.size() - found.offset) continue;
      font.entries_[tag - FirstMetricTag] = found;
    }
    fonts.push_back(font);
    at = font.Load32(at + size);
  }
  return fonts;
}

}  // namespace hv
