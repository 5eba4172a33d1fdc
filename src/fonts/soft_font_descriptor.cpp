#include "fonts/soft_font_descriptor.h"

#include <algorithm>
#include <cstdio>

#include "fonts/font_file.h"
#include "fonts/pcl_header_family.h"
#include "fonts/round_tenths.h"
#include "fonts/symbol_set_names.h"
#include "support/ascii.h"
#include "support/byte_order.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::string_view FontCommand = "\x1B)s";
constexpr int LongestCommandTail = 6;  // digits and the "W"
constexpr uint32_t DefaultResolution = 300;
constexpr std::size_t ResolutionSize = 4;
// A height is in quarter dots, a point a 72nd of an inch.
constexpr uint32_t PointsPerHeight = 72 / 4;

struct FormatRow {
  uint8_t format;
  uint8_t sizes[3];  // of the descriptor; 0 for none
  PclFamily family;
  int32_t fontType;
};

constexpr FormatRow FormatTable[] = {
    {0, {64}, PclFamily::Format0, FONT_TYPE_PCL_BITMAP},
    {5, {72, 74, 92}, PclFamily::Format5, FONT_TYPE_PCL_EXTENDED},
    {9, {72, 74, 92}, PclFamily::Format9, FONT_TYPE_PCL_EXTENDED},
    {12, {72, 74, 92}, PclFamily::Format9, FONT_TYPE_PCL_EXTENDED},
    {10, {80}, PclFamily::Scalable, FONT_TYPE_PCL_BOUND},
    {11, {88}, PclFamily::Scalable, FONT_TYPE_PCL_UNBOUND},
    {15, {72}, PclFamily::Scalable, FONT_TYPE_PCL_TRUETYPE},
    {20, {68}, PclFamily::Scalable, FONT_TYPE_PCL_RESOLUTION},
};

// By stroke weight, from -7 to 7.
constexpr std::string_view WeightAbbreviations[] = {
    "Ut", "Et", "Tn", "Xl", "Lt", "Dl", "Sl", "", "Sb", "Db", "Bd", "Xb", "Bk", "Ek", "Uk",
};
constexpr int32_t LightestWeight = -7;

// Values of the font type byte: 7-bit, 8-bit and PC-8 fonts of one symbol set, then unbound ones.
constexpr int32_t BoundFontTypes[] = {0, 1, 2};
constexpr int32_t UnboundFontTypes[] = {10, 11};

constexpr std::string_view LinePrinterName = "Line Printer";
constexpr int32_t TypefaceFamilyBits = 0x1FF;

template <std::size_t Size>
bool IsOneOf(const int32_t (&values)[Size], int32_t value) {
  return std::find(std::begin(values), std::end(values), value) != std::end(values);
}

const FormatRow* FindFormat(const SoftFontDescriptor& descriptor) {
  const int32_t format = DescriptorValue(descriptor, DescriptorField::Format);
  const int32_t size = DescriptorValue(descriptor, DescriptorField::Size);
  if (size == 0) return nullptr;
  const auto* row =
      std::find_if(std::begin(FormatTable), std::end(FormatTable), [&](const FormatRow& r) {
        return r.format == format &&
               std::find(std::begin(r.sizes), std::end(r.sizes), size) != std::end(r.sizes);
      });
  return row == std::end(FormatTable) ? nullptr : row;
}

// The two words of a resolution-specified font behind the fields that all descriptors have.
bool TakeResolution(std::span<const uint8_t> words, HvFontInfo* info) {
  if (words.size() < ResolutionSize) return false;
  info->xResolution = LoadBe16(&words[0]);
  info->yResolution = LoadBe16(&words[2]);
  return info->yResolution != 0;
}

bool IsScalable(int32_t fontType) {
  return fontType == FONT_TYPE_PCL_BOUND || fontType == FONT_TYPE_PCL_UNBOUND ||
         fontType == FONT_TYPE_PCL_TRUETYPE;
}

std::string OutlineName(const SoftFontDescriptor& descriptor) {
  std::string name(DescriptorName(descriptor));
  name.resize(DescriptorNameLength + 1, ' ');
  return name + " [Outline] ";
}

std::string BitmapName(const SoftFontDescriptor& descriptor, uint32_t resolution) {
  constexpr std::size_t NameShown = 13;
  constexpr std::size_t SuffixColumns = 4;
  const std::string suffix = PclStyleSuffix(descriptor);
  const auto height = static_cast<uint64_t>(DescriptorValue(descriptor, DescriptorField::Height));
  std::string name(DescriptorName(descriptor).substr(0, NameShown));
  name.append(SuffixColumns - suffix.size(), ' ').append(suffix);
  return name + " [" + FormatTenths(RoundTenths(height * PointsPerHeight, resolution), 2) + " Pt.]";
}

int32_t TypefaceOf(const SoftFontDescriptor& descriptor) {
  return DescriptorValue(descriptor, DescriptorField::TypefaceHigh) << 8 |
         DescriptorValue(descriptor, DescriptorField::TypefaceLow);
}

// What follows the name: the symbol set, or that there is none.
std::string SymbolSetPart(const SoftFontDescriptor& descriptor, int32_t fontType,
                          HvFontInfo* info) {
  if (IsOneOf(UnboundFontTypes, fontType)) return " (unbound)";
  const std::string text =
      SymbolSetText(static_cast<uint16_t>(DescriptorValue(descriptor, DescriptorField::SymbolSet)));
  SetFixedText(info->symbolSet, text);
  const std::string_view shown = SymbolSetName(text);
  return std::string(" (").append(shown.empty() ? text : shown).append(")");
}

void SetDescription(const SoftFontDescriptor& descriptor, HvFontInfo* info) {
  const auto typeface = static_cast<uint32_t>(TypefaceOf(descriptor));
  const int32_t vendor = DescriptorValue(descriptor, DescriptorField::VendorCode) & 0x7F;
  const auto number =
      static_cast<uint32_t>(DescriptorValue(descriptor, DescriptorField::FontNumber));
  std::snprintf(info->description, sizeof info->description, "Ven:%u  Typ:%u  Fon:%c%u",
                typeface >> 12 & 0xF, typeface & 0xFFF, vendor == 0 ? '?' : vendor, number);
}

}  // namespace

int32_t DescriptorValue(const SoftFontDescriptor& descriptor, DescriptorField field) {
  const PackedField& row = SoftFontDescriptorTable[static_cast<std::size_t>(field)];
  return static_cast<int32_t>(ReadField(descriptor, row));
}

std::string_view DescriptorName(const SoftFontDescriptor& descriptor) {
  return FixedText(reinterpret_cast<const char*>(&descriptor[DescriptorNameOffset]),
                   DescriptorNameLength);
}

std::string PclReadFontCommand(platform::Stream* file) {
  std::string command(FontCommand.size(), '\0');
  if (file->Read(command.data(), command.size()) != command.size() || command != FontCommand) {
    return {};
  }
  for (int i = 0; i < LongestCommandTail; ++i) {
    const int byte = file->ReadByte();
    if (byte < 0) break;
    command += static_cast<char>(byte);
    if (byte == 'W') return command;
  }
  return {};
}

std::unique_ptr<platform::Stream> PclFontOpen(const char* path) {
  std::unique_ptr<platform::Stream> file = platform::OpenStream(path, "rb");
  if (file != nullptr && PclReadFontCommand(file.get()).empty()) file.reset();
  return file;
}

uint32_t PclReadFontDescriptor(platform::Stream* file, HvFontInfo* info) {
  SoftFontDescriptor descriptor = {};
  if (file->Read(descriptor.data(), descriptor.size()) != descriptor.size()) {
    return HV_UNUSABLE_FILE;
  }
  const FormatRow* format = FindFormat(descriptor);
  if (format == nullptr) return HV_UNUSABLE_FILE;
  SetPclHeaderFamily(format->family);
  std::array<uint8_t, ResolutionSize> words = {};
  const bool hasWords = format->fontType == FONT_TYPE_PCL_RESOLUTION;
  const std::size_t count = hasWords ? file->Read(words.data(), words.size()) : 0;
  return PclDescribeFont(descriptor, std::span(words).first(count), info);
}

uint32_t PclDescribeFont(const SoftFontDescriptor& descriptor, std::span<const uint8_t> behind,
                         HvFontInfo* info) {
  const FormatRow* format = FindFormat(descriptor);
  if (format == nullptr) return HV_UNUSABLE_FILE;
  info->fontType = format->fontType;
  uint32_t resolution = DefaultResolution;
  if (format->fontType == FONT_TYPE_PCL_RESOLUTION) {
    if (!TakeResolution(behind, info)) return HV_UNUSABLE_FILE;
    resolution = info->yResolution;
  }
  const int32_t fontType = DescriptorValue(descriptor, DescriptorField::FontType);
  if (!IsOneOf(BoundFontTypes, fontType) && !IsOneOf(UnboundFontTypes, fontType)) {
    return HV_UNUSABLE_FILE;
  }

  std::string name =
      IsScalable(format->fontType) ? OutlineName(descriptor) : BitmapName(descriptor, resolution);
  name += SymbolSetPart(descriptor, fontType, info);
  if (format->fontType == FONT_TYPE_PCL_BITMAP &&
      (TypefaceOf(descriptor) & TypefaceFamilyBits) == 0 && !StartsWith(name, LinePrinterName)) {
    name += " *TF:0";
  }
  SetFixedText(info->name, name);
  if ((DescriptorValue(descriptor, DescriptorField::Spacing) & 1) != 0) {
    info->flags |= FONT_FLAG_PROPORTIONAL;
  }
  SetDescription(descriptor, info);
  return HV_OK;
}

std::string SymbolSetText(uint16_t symbolSet) {
  return std::to_string(symbolSet >> 5) + static_cast<char>((symbolSet & 31) + '@');
}

std::string PclStyleSuffix(const SoftFontDescriptor& descriptor) {
  constexpr int32_t Italic = 1;
  constexpr int32_t AlternateItalic = 2;
  std::string suffix;
  const int32_t weight = DescriptorValue(descriptor, DescriptorField::StrokeWeight);
  if (weight >= LightestWeight && weight <= -LightestWeight) {
    suffix = WeightAbbreviations[weight - LightestWeight];
  }
  const int32_t posture = DescriptorValue(descriptor, DescriptorField::StyleLow) & 3;
  const bool namedItalic = DescriptorName(descriptor).find("Italic") != std::string_view::npos;
  if (posture == Italic && !namedItalic) suffix += "It";
  if (posture == AlternateItalic) suffix += "Al";
  return suffix;
}

uint32_t DescribePclFont(const FontFile& file, HvFontInfo* info) {
  const std::unique_ptr<platform::Stream> stream = PclFontOpen(file.path);
  if (stream == nullptr) return HV_UNUSABLE_FILE;
  const uint32_t read = PclReadFontDescriptor(stream.get(), info);
  if (read != HV_OK) return read;
  info->flags |= FONT_FLAG_BINARY;
  info->fontClass = FONT_CLASS_DOWNLOADABLE;
  info->memoryNeeded = MemoryOfDownload(info->fileSize);
  if (IsScalable(info->fontType)) info->flags |= FONT_FLAG_08 | FONT_FLAG_20;
  return HV_OK;
}

}  // namespace hv
