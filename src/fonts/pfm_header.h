// The head of a printer font metrics file (PFM, and its PSM and PBM variants). Published source:
// the Windows device development kit, "Printer Font Metrics". Multi-byte fields have their low byte
// first; offsets in fields count from the start of the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "support/field_table.h"

namespace hv {

constexpr PackedField PfmHeaderTable[] = {
    {0, 2, ByteOrder::Little, Sign::Unsigned, "version"},
    {2, 4, ByteOrder::Little, Sign::Unsigned, "size"},
    {6, 60, ByteOrder::Little, Sign::Unsigned, "copyright"},
    {66, 2, ByteOrder::Little, Sign::Unsigned, "type"},
    {68, 2, ByteOrder::Little, Sign::Unsigned, "points"},
    {70, 2, ByteOrder::Little, Sign::Unsigned, "vertical resolution"},
    {72, 2, ByteOrder::Little, Sign::Unsigned, "horizontal resolution"},
    {74, 2, ByteOrder::Little, Sign::Unsigned, "ascent"},
    {76, 2, ByteOrder::Little, Sign::Unsigned, "internal leading"},
    {78, 2, ByteOrder::Little, Sign::Unsigned, "external leading"},
    {80, 1, ByteOrder::Little, Sign::Unsigned, "italic"},
    {81, 1, ByteOrder::Little, Sign::Unsigned, "underline"},
    {82, 1, ByteOrder::Little, Sign::Unsigned, "strike-out"},
    {83, 2, ByteOrder::Little, Sign::Unsigned, "weight"},
    {85, 1, ByteOrder::Little, Sign::Unsigned, "character set"},
    {86, 2, ByteOrder::Little, Sign::Unsigned, "pixel width"},
    {88, 2, ByteOrder::Little, Sign::Unsigned, "pixel height"},
    {90, 1, ByteOrder::Little, Sign::Unsigned, "pitch and family"},
    {91, 2, ByteOrder::Little, Sign::Unsigned, "average width"},
    {93, 2, ByteOrder::Little, Sign::Unsigned, "maximum width"},
    {95, 1, ByteOrder::Little, Sign::Unsigned, "first character"},
    {96, 1, ByteOrder::Little, Sign::Unsigned, "last character"},
    {97, 1, ByteOrder::Little, Sign::Unsigned, "default character"},
    {98, 1, ByteOrder::Little, Sign::Unsigned, "break character"},
    {99, 2, ByteOrder::Little, Sign::Unsigned, "width bytes"},
    {101, 4, ByteOrder::Little, Sign::Unsigned, "device name offset"},
    {105, 4, ByteOrder::Little, Sign::Unsigned, "face name offset"},
    {109, 4, ByteOrder::Little, Sign::Unsigned, "bits pointer"},
    {113, 4, ByteOrder::Little, Sign::Unsigned, "bits offset"},
};
constexpr std::size_t PfmHeaderSize = 117;
static_assert(IsGapless(PfmHeaderTable) && RecordSize(PfmHeaderTable) == PfmHeaderSize);

// Rows of the table.
enum class PfmField : uint8_t {
  Version,
  Size,
  Copyright,
  Type,
  Points,
  VerticalResolution,
  HorizontalResolution,
  Ascent,
  InternalLeading,
  ExternalLeading,
  Italic,
  Underline,
  StrikeOut,
  Weight,
  CharacterSet,
  PixelWidth,
  PixelHeight,
  PitchAndFamily,
  AverageWidth,
  MaximumWidth,
  FirstCharacter,
  LastCharacter,
  DefaultCharacter,
  BreakCharacter,
  WidthBytes,
  DeviceNameOffset,
  FaceNameOffset,
  BitsPointer,
  BitsOffset,
};

// The extension behind the header (elsewhere in some variants), which leads to the other sections.
constexpr PackedField PfmExtensionTable[] = {
    {0, 2, ByteOrder::Little, Sign::Unsigned, "size of fields"},
    {2, 4, ByteOrder::Little, Sign::Unsigned, "extended metrics offset"},
    {6, 4, ByteOrder::Little, Sign::Unsigned, "width table offset"},
    {10, 4, ByteOrder::Little, Sign::Unsigned, "origin table offset"},
    {14, 4, ByteOrder::Little, Sign::Unsigned, "kerning table offset"},
    {18, 4, ByteOrder::Little, Sign::Unsigned, "track kerning offset"},
    {22, 4, ByteOrder::Little, Sign::Unsigned, "driver information offset"},
    {26, 4, ByteOrder::Little, Sign::Unsigned, "reserved"},
};
constexpr std::size_t PfmExtensionSize = 30;
static_assert(IsGapless(PfmExtensionTable) && RecordSize(PfmExtensionTable) == PfmExtensionSize);

// Rows of the table.
enum class PfmExtensionField : uint8_t {
  Size,
  ExtendedMetricsOffset,
  WidthTableOffset,
  OriginTableOffset,
  KerningTableOffset,
  TrackKerningOffset,
  DriverInformationOffset,
  Reserved,
};

// The extended text metrics. Readers take the heights as unsigned numbers.
constexpr PackedField PfmMetricsTable[] = {
    {0, 2, ByteOrder::Little, Sign::Unsigned, "size"},
    {2, 2, ByteOrder::Little, Sign::Unsigned, "point size"},
    {4, 2, ByteOrder::Little, Sign::Unsigned, "orientation"},
    {6, 2, ByteOrder::Little, Sign::Unsigned, "master height"},
    {8, 2, ByteOrder::Little, Sign::Unsigned, "minimum scale"},
    {10, 2, ByteOrder::Little, Sign::Unsigned, "maximum scale"},
    {12, 2, ByteOrder::Little, Sign::Unsigned, "master units"},
    {14, 2, ByteOrder::Little, Sign::Unsigned, "cap height"},
    {16, 2, ByteOrder::Little, Sign::Unsigned, "x-height"},
    {18, 2, ByteOrder::Little, Sign::Unsigned, "lower-case ascent"},
    {20, 2, ByteOrder::Little, Sign::Unsigned, "lower-case descent"},
    {22, 2, ByteOrder::Little, Sign::Signed, "slant"},
    {24, 2, ByteOrder::Little, Sign::Signed, "superscript offset"},
    {26, 2, ByteOrder::Little, Sign::Signed, "subscript offset"},
    {28, 2, ByteOrder::Little, Sign::Unsigned, "superscript size"},
    {30, 2, ByteOrder::Little, Sign::Unsigned, "subscript size"},
    {32, 2, ByteOrder::Little, Sign::Signed, "underline offset"},
    {34, 2, ByteOrder::Little, Sign::Signed, "underline width"},
    {36, 2, ByteOrder::Little, Sign::Signed, "double upper underline offset"},
    {38, 2, ByteOrder::Little, Sign::Signed, "double lower underline offset"},
    {40, 2, ByteOrder::Little, Sign::Signed, "double upper underline width"},
    {42, 2, ByteOrder::Little, Sign::Signed, "double lower underline width"},
    {44, 2, ByteOrder::Little, Sign::Signed, "strike-out offset"},
    {46, 2, ByteOrder::Little, Sign::Signed, "strike-out width"},
    {48, 2, ByteOrder::Little, Sign::Unsigned, "kerning pairs"},
    {50, 2, ByteOrder::Little, Sign::Unsigned, "kerning tracks"},
};
constexpr std::size_t PfmMetricsSize = 52;
static_assert(IsGapless(PfmMetricsTable) && RecordSize(PfmMetricsTable) == PfmMetricsSize);

// Rows of the table.
enum class PfmMetric : uint8_t {
  Size,
  PointSize,
  Orientation,
  MasterHeight,
  MinimumScale,
  MaximumScale,
  MasterUnits,
  CapHeight,
  XHeight,
  LowerCaseAscent,
  LowerCaseDescent,
  Slant,
  SuperscriptOffset,
  SubscriptOffset,
  SuperscriptSize,
  SubscriptSize,
  UnderlineOffset,
  UnderlineWidth,
  DoubleUpperUnderlineOffset,
  DoubleLowerUnderlineOffset,
  DoubleUpperUnderlineWidth,
  DoubleLowerUnderlineWidth,
  StrikeOutOffset,
  StrikeOutWidth,
  KerningPairs,
  KerningTracks,
};

constexpr const PackedField& PfmRow(PfmField field) {
  return PfmHeaderTable[static_cast<std::size_t>(field)];
}
constexpr const PackedField& PfmRow(PfmExtensionField field) {
  return PfmExtensionTable[static_cast<std::size_t>(field)];
}
constexpr const PackedField& PfmRow(PfmMetric field) {
  return PfmMetricsTable[static_cast<std::size_t>(field)];
}

// The field of a record that begins with the bytes; 0 when they end before the field.
template <typename Field>
uint32_t PfmValue(std::span<const uint8_t> record, Field field) {
  return static_cast<uint32_t>(ReadField(record, PfmRow(field)));
}

// Puts the low bytes of a value into the field.
template <typename Field>
void SetPfmValue(std::span<uint8_t> record, Field field, int64_t value) {
  WriteField(record, PfmRow(field), value);
}

constexpr uint16_t PfmVersion = 0x0100;
// The bit of "pitch and family" for fonts of which the characters differ in width.
constexpr uint8_t PfmVariablePitch = 0x01;
// The character set of code pages other than Windows' own.
constexpr uint8_t PfmCharSetOem = 255;

}  // namespace hv
