// Packed fields over bytes that are shorter than the record.

#include <gtest/gtest.h>

#include <array>

#include "support/field_table.h"

namespace {

using hv::ByteOrder;
using hv::PackedField;
using hv::Sign;

constexpr PackedField Sample[] = {
    {0, 1, ByteOrder::Little, Sign::Signed, "delta"},
    {1, 2, ByteOrder::Big, Sign::Unsigned, "height"},
    {3, 2, ByteOrder::Little, Sign::Signed, "offset"},
    {5, 4, ByteOrder::Big, Sign::Signed, "code"},
    {9, 4, ByteOrder::Little, Sign::Unsigned, "size"},
};
static_assert(hv::IsGapless(Sample) && hv::RecordSize(Sample) == 13);

constexpr PackedField Gap[] = {{0, 2, ByteOrder::Little, Sign::Unsigned, "a"},
                               {3, 2, ByteOrder::Little, Sign::Unsigned, "b"}};
static_assert(!hv::IsGapless(Gap));

TEST(FieldTable, ReadsAndWritesByWidthOrderAndSign) {
  const std::array<uint8_t, 13> bytes = {0xFE, 0x12, 0x34, 0xFF, 0x7F, 0x80, 0x00,
                                         0x00, 0x01, 0x01, 0x02, 0x03, 0xF4};
  const int64_t expected[] = {-2, 0x1234, 0x7FFF, -2147483647, 0xF4030201};
  std::array<uint8_t, 13> written = {};
  for (std::size_t i = 0; i < std::size(Sample); ++i) {
    EXPECT_EQ(hv::ReadField(bytes, Sample[i]), expected[i]) << Sample[i].name;
    hv::WriteField(written, Sample[i], expected[i]);
  }
  EXPECT_EQ(written, bytes);
}

TEST(FieldTable, LeavesAloneWhatLiesOutside) {
  std::array<uint8_t, 4> shortRecord = {1, 2, 3, 4};
  EXPECT_EQ(hv::ReadField(shortRecord, Sample[2]), 0);
  EXPECT_EQ(hv::ReadField(shortRecord, Sample[4]), 0);
  hv::WriteField(shortRecord, Sample[2], -1);
  EXPECT_EQ(shortRecord, (std::array<uint8_t, 4>{1, 2, 3, 4}));
}

}  // namespace
