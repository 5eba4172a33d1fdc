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

// 0 when the bytes end before the field.
inline uint32_t PfmValue(std::span<const uint8_t> file, PfmField field) {
  return static_cast<uint32_t>(ReadField(file, PfmHeaderTable[static_cast<std::size_t>(field)]));
}

}  // namespace hv
