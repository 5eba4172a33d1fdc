#include "fonts/dlf_reader.h"

#include <cstdio>
#include <memory>
#include <span>
#include <vector>

#include "fonts/round_tenths.h"
#include "support/byte_order.h"
#include "support/field_table.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

// ESC, "=", a length with its low byte first, "1" and the format.
constexpr std::size_t HeaderSize = 6;
constexpr std::size_t LongestName = 24;
// Characters of the name that a style suffix leaves room for.
constexpr std::size_t NameWithStyle = 22;
constexpr std::size_t ReferencedNameWithStyle = 20;
// The length counts this many bytes besides the name.
constexpr std::size_t LengthBesidesName = 36;

// 72 points an inch, in thousandths.
constexpr uint64_t PitchDividend = 72000;
constexpr uint64_t HundredthsOfPoint = 100;

constexpr int64_t FixedPitchFlag = 0x01;
constexpr int64_t PsStyleFlag = 0x02;

constexpr PackedField Format10Block[] = {
    {0, 1, ByteOrder::Big, Sign::Unsigned, "kind"},
    {1, 1, ByteOrder::Big, Sign::Unsigned, "flags"},
    {2, 2, ByteOrder::Big, Sign::Unsigned, "code page"},
    {4, 6, ByteOrder::Big, Sign::Unsigned, "not read"},
    {10, 4, ByteOrder::Big, Sign::Unsigned, "size"},
    {14, 24, ByteOrder::Big, Sign::Unsigned, "name"},
};
static_assert(IsGapless(Format10Block) && RecordSize(Format10Block) == 38);

constexpr PackedField Format1Block[] = {
    {0, 1, ByteOrder::Big, Sign::Unsigned, "kind"},
    {1, 1, ByteOrder::Big, Sign::Unsigned, "flags"},
    {2, 2, ByteOrder::Big, Sign::Unsigned, "code page"},
    {4, 2, ByteOrder::Big, Sign::Unsigned, "not read"},
    {6, 4, ByteOrder::Big, Sign::Unsigned, "point size"},
    {10, 16, ByteOrder::Big, Sign::Unsigned, "not read"},
    {26, 4, ByteOrder::Big, Sign::Unsigned, "pitch"},
    {30, 1, ByteOrder::Big, Sign::Unsigned, "code page letter"},
    {31, 3, ByteOrder::Big, Sign::Unsigned, "not read"},
    {34, 24, ByteOrder::Big, Sign::Unsigned, "name"},
};
static_assert(IsGapless(Format1Block) && RecordSize(Format1Block) == 58);

// A kind of block behind the header.
struct BlockFormat {
  uint8_t format;
  uint8_t kind;
  std::span<const PackedField> table;  // its last row is the name
  const PackedField& flags;
  const PackedField& codePage;
  const PackedField& pitchValue;
  const PackedField& pointSize;  // in hundredths
  const PackedField* letter;     // NULL: a referenced font
};

constexpr BlockFormat BlockFormats[] = {
    {10, 1, Format10Block, Format10Block[1], Format10Block[2], Format10Block[4], Format10Block[4],
     nullptr},
    {1, 0, Format1Block, Format1Block[1], Format1Block[2], Format1Block[6], Format1Block[4],
     &Format1Block[7]},
};

using Block = std::vector<uint8_t>;

std::string BlockName(const Block& block, const BlockFormat& format, std::size_t headerLength) {
  std::size_t length = headerLength - LengthBesidesName;
  if (headerLength < LengthBesidesName || length > LongestName) length = LongestName;
  std::string name;
  for (std::size_t i = 0; i < length; ++i) {
    const uint8_t byte = block[format.table.back().offset + i];
    name += byte < ' ' ? ' ' : static_cast<char>(byte);
  }
  return name;
}

// The high nibble of a byte as 'A' to 'O', a blank for 0.
char LetterOf(int64_t byte) {
  const int64_t nibble = byte >> 4;
  return nibble == 0 ? ' ' : static_cast<char>('@' + nibble);
}

DlfMetrics ReadBlock(const Block& block, const BlockFormat& format, std::size_t headerLength) {
  const int64_t flags = ReadField(block, format.flags);
  DlfMetrics font;
  font.name = BlockName(block, format, headerLength);
  font.isReferenced = format.letter == nullptr;
  font.fixedPitch = (flags & FixedPitchFlag) != 0;
  font.psStyle = (flags & PsStyleFlag) != 0;
  font.codePage = static_cast<uint32_t>(ReadField(block, format.codePage));
  if (format.letter != nullptr) font.codePageLetter = LetterOf(ReadField(block, *format.letter));
  font.pointSize = static_cast<uint32_t>(ReadField(block, format.pointSize));
  font.pitchWidth = static_cast<uint32_t>(ReadField(block, format.pitchValue));
  return font;
}

}  // namespace

std::optional<DlfMetrics> ReadDlf(platform::Stream* file) {
  const std::vector<uint8_t> header = ReadBytes(file, HeaderSize);
  if (header.size() < HeaderSize || header[0] != 0x1B || header[1] != '=' || header[4] != '1') {
    return std::nullopt;
  }
  for (const BlockFormat& format : BlockFormats) {
    if (header[5] != format.format) continue;
    const std::size_t size = RecordSize(format.table);
    Block block = ReadBytes(file, size);
    // Only the name may be cut short.
    if (block.size() < format.table.back().offset || block[0] != format.kind) return std::nullopt;
    block.resize(size, ' ');
    return ReadBlock(block, format, LoadLe16(&header[2]));
  }
  return std::nullopt;
}

std::string DlfDescribe(platform::Stream* file, std::size_t limit) {
  const std::optional<DlfMetrics> font = ReadDlf(file);
  if (!font) return {};
  std::string name = font->name;
  std::string size;
  if (font->fixedPitch) {
    if (font->pitchWidth != 0) size = FormatTenths(RoundTenths(PitchDividend, font->pitchWidth), 3);
    size.insert(0, size.size() < 6 ? 6 - size.size() : 0, ' ');
    size += " pitch";
  } else {
    name = name.substr(0, font->isReferenced ? ReferencedNameWithStyle : NameWithStyle);
    name += font->psStyle ? " PS  " : " Typo";
    size = FormatTenths(RoundTenths(font->pointSize, HundredthsOfPoint), 3) + " point";
  }
  char line[128];
  std::snprintf(line, sizeof line, "%-26s %s%s  cp:%4u", name.c_str(), size.c_str(),
                font->isReferenced ? "  Referenced" : "", font->codePage);
  const std::string letter = font->isReferenced ? "" : std::string(1, font->codePageLetter);
  return (line + letter).substr(0, limit);
}

uint32_t DescribeDlf(const FontFile& file, HvFontInfo* info) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(file.path, "rb");
  if (stream == nullptr) return HV_CANNOT_OPEN;
  const std::string line = DlfDescribe(stream.get(), sizeof info->name);
  if (line.empty()) return HV_UNUSABLE_FILE;
  SetFixedText(info->name, line);
  info->fontClass = FONT_CLASS_DOWNLOADABLE;
  info->fontType = FONT_TYPE_DLF;
  info->flags |= FONT_FLAG_BINARY | FONT_FLAG_08;
  info->memoryNeeded = MemoryOfDownload(info->fileSize);
  const bool found = file.companionMode != FONT_COMPANIONS_METRICS ||
                     FindCompanion(file, "FMF", info->companionPath1);
  return found ? HV_OK : HV_NOT_SUPPORTED;
}

}  // namespace hv
