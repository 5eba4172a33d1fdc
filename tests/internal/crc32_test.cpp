// The CRC-32 of archives, in steps of every size.

#include "zip/crc32.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/zip_builder.h"

namespace {

std::span<const uint8_t> Bytes(std::string_view text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

TEST(Crc32, AgreesWithTheBitwiseOne) {
  std::string bytes;
  uint32_t state = 1;
  while (bytes.size() < 1000) {
    state = state * 1664525 + 1013904223;
    bytes += static_cast<char>(state >> 24);
  }
  EXPECT_EQ(hv::UpdateCrc32(0, Bytes("123456789")), 0xCBF43926U);
  for (std::size_t size = 0; size <= bytes.size(); size += size < 300 ? 1 : 37) {
    // From an odd address on.
    const std::string_view part = std::string_view(bytes).substr(bytes.size() - size);
    EXPECT_EQ(hv::UpdateCrc32(0, Bytes(part)), hvtest::SlowCrc32(part)) << size;
    const uint32_t begun = hv::UpdateCrc32(0, Bytes(part.substr(0, size / 3)));
    EXPECT_EQ(hv::UpdateCrc32(begun, Bytes(part.substr(size / 3))), hvtest::SlowCrc32(part))
        << size;
  }
}

}  // namespace
