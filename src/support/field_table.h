// Packed records as tables: one row a field, in the order of the printed table of the format.
//
//   constexpr PackedField SampleHeader[] = {
//       {0, 2, ByteOrder::Little, Sign::Unsigned, "version"},
//       {2, 4, ByteOrder::Little, Sign::Unsigned, "size"},
//   };
//   static_assert(IsGapless(SampleHeader) && RecordSize(SampleHeader) == 6);
//
// ReadField and WriteField run such a row over the bytes of a record; a field that does not lie
// within the record reads as 0 and is not written. A field of more than 4 bytes (a name, a reserved
// area) is only a row that keeps the offsets: it is read and written as bytes by its owner.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace hv {

enum class ByteOrder : uint8_t { Little, Big };
enum class Sign : uint8_t { Unsigned, Signed };

struct PackedField {
  std::size_t offset;
  std::size_t width;
  ByteOrder order;
  Sign sign;
  const char* name;
};

// Whether each field begins where the one before it ends.
constexpr bool IsGapless(std::span<const PackedField> table) {
  std::size_t next = table.empty() ? 0 : table.front().offset;
  for (const PackedField& field : table) {
    if (field.offset != next) return false;
    next += field.width;
  }
  return true;
}

// The sum of the widths.
constexpr std::size_t RecordSize(std::span<const PackedField> table) {
  std::size_t size = 0;
  for (const PackedField& field : table) size += field.width;
  return size;
}

int64_t ReadField(std::span<const uint8_t> record, const PackedField& field);
void WriteField(std::span<uint8_t> record, const PackedField& field, int64_t value);

}  // namespace hv
