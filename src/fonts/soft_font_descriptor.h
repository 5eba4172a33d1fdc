// The descriptor at the head of a PCL soft font, the data of its ESC ) s # W command. Published
// source: the PCL 5 Technical Reference Manual, "Font Header". Multi-byte fields have their high
// byte first.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "api/hvapi.h"
#include "platform/stream.h"
#include "support/field_table.h"

namespace hv {

constexpr PackedField SoftFontDescriptorTable[] = {
    {0, 2, ByteOrder::Big, Sign::Unsigned, "descriptor size"},
    {2, 1, ByteOrder::Big, Sign::Unsigned, "header format"},
    {3, 1, ByteOrder::Big, Sign::Unsigned, "font type"},
    {4, 1, ByteOrder::Big, Sign::Unsigned, "style high byte"},
    {5, 1, ByteOrder::Big, Sign::Unsigned, "reserved"},
    {6, 2, ByteOrder::Big, Sign::Unsigned, "baseline position"},
    {8, 2, ByteOrder::Big, Sign::Unsigned, "cell width"},
    {10, 2, ByteOrder::Big, Sign::Unsigned, "cell height"},
    {12, 1, ByteOrder::Big, Sign::Unsigned, "orientation"},
    {13, 1, ByteOrder::Big, Sign::Unsigned, "spacing"},
    {14, 2, ByteOrder::Big, Sign::Unsigned, "symbol set"},
    {16, 2, ByteOrder::Big, Sign::Unsigned, "pitch"},
    {18, 2, ByteOrder::Big, Sign::Unsigned, "height"},
    {20, 2, ByteOrder::Big, Sign::Unsigned, "x-height"},
    {22, 1, ByteOrder::Big, Sign::Signed, "width type"},
    {23, 1, ByteOrder::Big, Sign::Unsigned, "style low byte"},
    {24, 1, ByteOrder::Big, Sign::Signed, "stroke weight"},
    {25, 1, ByteOrder::Big, Sign::Unsigned, "typeface low byte"},
    {26, 1, ByteOrder::Big, Sign::Unsigned, "typeface high byte"},
    {27, 1, ByteOrder::Big, Sign::Unsigned, "serif style"},
    {28, 1, ByteOrder::Big, Sign::Unsigned, "quality"},
    {29, 1, ByteOrder::Big, Sign::Signed, "placement"},
    {30, 1, ByteOrder::Big, Sign::Signed, "underline position"},
    {31, 1, ByteOrder::Big, Sign::Unsigned, "underline thickness"},
    {32, 2, ByteOrder::Big, Sign::Unsigned, "text height"},
    {34, 2, ByteOrder::Big, Sign::Unsigned, "text width"},
    {36, 2, ByteOrder::Big, Sign::Unsigned, "first code"},
    {38, 2, ByteOrder::Big, Sign::Unsigned, "last code"},
    {40, 1, ByteOrder::Big, Sign::Unsigned, "pitch extended"},
    {41, 1, ByteOrder::Big, Sign::Unsigned, "height extended"},
    {42, 2, ByteOrder::Big, Sign::Unsigned, "cap height"},
    {44, 1, ByteOrder::Big, Sign::Unsigned, "vendor code"},
    {45, 3, ByteOrder::Big, Sign::Unsigned, "font number"},
    {48, 16, ByteOrder::Big, Sign::Unsigned, "font name"},
};
constexpr std::size_t SoftFontDescriptorSize = 64;
static_assert(IsGapless(SoftFontDescriptorTable) &&
              RecordSize(SoftFontDescriptorTable) == SoftFontDescriptorSize);

// Rows of the table.
enum class DescriptorField : uint8_t {
  Size,
  Format,
  FontType,
  StyleHigh,
  Reserved,
  Baseline,
  CellWidth,
  CellHeight,
  Orientation,
  Spacing,
  SymbolSet,
  Pitch,
  Height,
  XHeight,
  WidthType,
  StyleLow,
  StrokeWeight,
  TypefaceLow,
  TypefaceHigh,
  SerifStyle,
  Quality,
  Placement,
  UnderlinePosition,
  UnderlineThickness,
  TextHeight,
  TextWidth,
  FirstCode,
  LastCode,
  PitchExtended,
  HeightExtended,
  CapHeight,
  VendorCode,
  FontNumber,
  FontName,
};

using SoftFontDescriptor = std::array<uint8_t, SoftFontDescriptorSize>;

int32_t DescriptorValue(const SoftFontDescriptor& descriptor, DescriptorField field);

// The name bytes up to a NUL, blanks included.
std::string_view DescriptorName(const SoftFontDescriptor& descriptor);
// Where the name stands in the descriptor, 16 bytes.
constexpr std::size_t DescriptorNameOffset = 48;
constexpr std::size_t DescriptorNameLength = 16;

// Reads the command that begins a soft font, ESC ) s, digits, "W", and returns it as it stands;
// empty when the stream holds none.
std::string PclReadFontCommand(platform::Stream* file);

// Opens a soft font and leaves it at its descriptor, behind that command. NULL when the file cannot
// be opened or is no soft font.
std::unique_ptr<platform::Stream> PclFontOpen(const char* path);

// Reads the descriptor where the stream stands and fills the fields of `info` that follow from it:
// fontType, resolution, name, description, symbolSet, FONT_FLAG_PROPORTIONAL. Sets PclHeaderFamily
// for each known format. HV_OK, or HV_UNUSABLE_FILE.
uint32_t PclReadFontDescriptor(platform::Stream* file, HvFontInfo* info);

// The same for a descriptor in memory and the bytes behind it, without setting PclHeaderFamily.
uint32_t PclDescribeFont(const SoftFontDescriptor& descriptor, std::span<const uint8_t> behind,
                         HvFontInfo* info);

// The code of a symbol set as text, "8U" for 277: a number and a letter.
std::string SymbolSetText(uint16_t symbolSet);

// Stroke weight and posture as up to four letters, "BdIt".
std::string PclStyleSuffix(const SoftFontDescriptor& descriptor);

// The reader of files that are nothing else by their extension.
struct FontFile;
uint32_t DescribePclFont(const FontFile& file, HvFontInfo* info);

}  // namespace hv
