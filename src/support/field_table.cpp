#include "support/field_table.h"

namespace hv {
namespace {

bool LiesWithin(std::size_t size, const PackedField& field) {
  return field.width >= 1 && field.width <= 4 && field.offset <= size &&
         field.width <= size - field.offset;
}

// How far the byte at `index` of a field is shifted in its value.
std::size_t ShiftOf(const PackedField& field, std::size_t index) {
  return 8 * (field.order == ByteOrder::Little ? index : field.width - 1 - index);
}

}  // namespace

int64_t ReadField(std::span<const uint8_t> record, const PackedField& field) {
  if (!LiesWithin(record.size(), field)) return 0;
  int64_t value = 0;
  for (std::size_t i = 0; i < field.width; ++i) {
    value |= static_cast<int64_t>(record[field.offset + i]) << ShiftOf(field, i);
  }
  const int64_t signBit = int64_t{1} << (8 * field.width - 1);
  if (field.sign == Sign::Signed && (value & signBit) != 0) value -= 2 * signBit;
  return value;
}

void WriteField(std::span<uint8_t> record, const PackedField& field, int64_t value) {
  if (!LiesWithin(record.size(), field)) return;
  const uint64_t bits = static_cast<uint64_t>(value);
  for (std::size_t i = 0; i < field.width; ++i) {
    record[field.offset + i] = static_cast<uint8_t>(bits >> ShiftOf(field, i));
  }
}

}  // namespace hv
