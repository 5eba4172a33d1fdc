#include "fonts/type1_reader.h"

#include <memory>

#include "support/ascii.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t PfaLineBuffer = 256;
constexpr std::size_t PfbLineLength = 39;
constexpr std::string_view PfaNameKey = "/FontName /";
constexpr std::string_view PfbNameKey = "FontName /";
constexpr std::string_view PfbEncodingKey = "Encoding ";

// Printer memory to file size: a PFA shrinks when its hexadecimal digits become bytes.
constexpr uint32_t PfaMemoryFactor = 5172;
constexpr uint32_t PfbMemoryFactor = 11531;
constexpr uint32_t MemoryFactorUnit = 10000;

std::string_view UpToBlank(std::string_view text) {
  constexpr std::string_view NameEnds{" \n\0", 3};
  return text.substr(0, text.find_first_of(NameEnds));
}

// The rest of the line, at most PfbLineLength characters. Fonts made on different systems end their
// lines in CR, LF or both.
std::string ReadLineRest(platform::Stream* file) {
  std::string line;
  while (line.size() < PfbLineLength) {
    const int byte = file->ReadByte();
    if (byte < 0 || byte == '\r' || byte == '\n') break;
    line += static_cast<char>(byte);
  }
  return line;
}

uint32_t FindType1Companions(const FontFile& file, HvFontInfo* info) {
  const uint32_t mode = file.companionMode;
  const bool wantsWindows = mode == FONT_COMPANIONS_WINDOWS || mode == FONT_COMPANIONS_OPTIONAL;
  if (!wantsWindows && mode != FONT_COMPANIONS_METRICS) return HV_OK;
  const uint32_t missing = mode == FONT_COMPANIONS_OPTIONAL ? HV_OK : HV_NOT_SUPPORTED;
  if (wantsWindows) {
    if (FindCompanion(file, "PFM", info->companionPath2)) return HV_OK;
    if (!CompanionExists(file, "INF")) return missing;
  }
  if (!FindCompanion(file, "AFM", info->companionPath1)) return missing;
  NameCompanion(file, "PFM", info->companionPath2);
  return HV_OK;
}

// What PFA and PFB have in common once the file was read.
uint32_t DescribeType1(const FontFile& file, std::string_view fontName, uint32_t memoryFactor,
                       HvFontInfo* info) {
  if (fontName.empty()) return HV_UNUSABLE_FILE;
  SetFixedText(info->name, fontName);
  info->fontClass = FONT_CLASS_DOWNLOADABLE;
  info->fontType = FONT_TYPE_TYPE1;
  info->flags |= FONT_FLAG_08 | FONT_FLAG_20;
  info->memoryNeeded = ScaledSize(info->fileSize, memoryFactor, MemoryFactorUnit);
  return FindType1Companions(file, info);
}

}  // namespace

std::string PsFontNameFromPfa(platform::Stream* file) {
  char line[PfaLineBuffer];
  while (file->ReadLine(line, sizeof line) > 0) {
    const std::string_view text(line);
    if (StartsWith(text, PfaNameKey)) return std::string(UpToBlank(text.substr(PfaNameKey.size())));
  }
  return {};
}

PfbNames PsFontNameFromPfb(platform::Stream* file) {
  PfbNames names;
  bool nameSeen = false;
  bool encodingSeen = false;
  while (!nameSeen || !encodingSeen) {
    const int byte = file->ReadByte();
    if (byte < 0) break;
    if (byte != '/') continue;
    const std::string line = ReadLineRest(file);
    if (!nameSeen && StartsWith(line, PfbNameKey)) {
      nameSeen = true;
      names.fontName = UpToBlank(std::string_view(line).substr(PfbNameKey.size()));
    } else if (!encodingSeen && StartsWith(line, PfbEncodingKey)) {
      encodingSeen = true;
      names.standardEncoding = line.find("StandardEncoding") != std::string::npos;
    }
  }
  return names;
}

uint32_t DescribePfa(const FontFile& file, HvFontInfo* info) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(file.path, "r");
  if (stream == nullptr) return HV_CANNOT_OPEN;
  return DescribeType1(file, PsFontNameFromPfa(stream.get()), PfaMemoryFactor, info);
}

uint32_t DescribePfb(const FontFile& file, HvFontInfo* info) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(file.path, "rb");
  if (stream == nullptr) return HV_CANNOT_OPEN;
  const PfbNames names = PsFontNameFromPfb(stream.get());
  if (names.fontName.empty()) return HV_UNUSABLE_FILE;
  if (!names.standardEncoding) info->flags &= ~uint32_t{FONT_FLAG_STANDARD_ENCODING};
  info->flags |= FONT_FLAG_BINARY;
  return DescribeType1(file, names.fontName, PfbMemoryFactor, info);
}

}  // namespace hv
