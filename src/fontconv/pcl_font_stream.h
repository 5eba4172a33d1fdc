// A PCL soft font as the commands that a printer would take it in: its descriptor, then a character
// code and a download for each character. Published source: the PCL 5 Technical Reference Manual,
// "Soft Font Creation".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/stream.h"
#include "support/field_table.h"

namespace hv {

enum class PclFontCommand : uint8_t {
  Descriptor,     // ESC ) s # W and data
  CharacterCode,  // ESC * c # E
  Character,      // ESC ( s # W and data
  Other,          // anything else, cut commands included
};

struct PclFontItem {
  PclFontCommand command = PclFontCommand::Other;
  uint32_t number = 0;        // #
  std::vector<uint8_t> data;  // the first 1024 bytes of it
};

class PclFontStream {
 public:
  explicit PclFontStream(platform::Stream* file) : file_(file) {}

  // The next command, or Other for what is none; empty at the end of the file. A command whose
  // number is 0 is none.
  std::optional<PclFontItem> Next();

 private:
  int Take();
  void PutBack(int byte) { pending_ = byte; }
  uint32_t TakeNumber();
  bool TakeData(PclFontItem* item);

  static constexpr int Nothing = -1;
  platform::Stream* file_;
  int pending_ = Nothing;
};

// The descriptor at the head of a character of a bitmap font.
constexpr PackedField PclCharacterTable[] = {
    {0, 1, ByteOrder::Big, Sign::Unsigned, "format"},
    {1, 1, ByteOrder::Big, Sign::Unsigned, "continuation"},
    {2, 1, ByteOrder::Big, Sign::Unsigned, "descriptor size"},
    {3, 1, ByteOrder::Big, Sign::Unsigned, "class"},
    {4, 1, ByteOrder::Big, Sign::Unsigned, "orientation"},
    {5, 1, ByteOrder::Big, Sign::Unsigned, "reserved"},
    {6, 2, ByteOrder::Big, Sign::Signed, "left offset"},
    {8, 2, ByteOrder::Big, Sign::Signed, "top offset"},
    {10, 2, ByteOrder::Big, Sign::Unsigned, "character width"},
    {12, 2, ByteOrder::Big, Sign::Unsigned, "character height"},
    {14, 2, ByteOrder::Big, Sign::Signed, "delta X"},
};
static_assert(IsGapless(PclCharacterTable) && RecordSize(PclCharacterTable) == 16);

// Rows of the table.
enum class PclCharacterField : uint8_t {
  Format,
  Continuation,
  Size,
  Class,
  Orientation,
  Reserved,
  LeftOffset,
  TopOffset,
  Width,
  Height,
  DeltaX,
};

}  // namespace hv
