#include "zip/crc32.h"

#include <array>

#include "platform/processor_crc32.h"
#include "support/byte_order.h"

namespace hv {
namespace {

constexpr uint32_t ReflectedPolynomial = 0xEDB88320;
constexpr std::size_t SliceCount = 16;

using Slice = std::array<uint32_t, 256>;

// Slice k holds what a byte contributes when k more bytes come behind it.
constexpr std::array<Slice, SliceCount> MakeSlices() {
  std::array<Slice, SliceCount> slices = {};
  for (uint32_t byte = 0; byte < 256; ++byte) {
    uint32_t crc = byte;
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc & 1) != 0 ? crc >> 1 ^ ReflectedPolynomial : crc >> 1;
    }
    slices[0][byte] = crc;
  }
  for (std::size_t k = 1; k < SliceCount; ++k) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const uint32_t before = slices[k - 1][byte];
      slices[k][byte] = before >> 8 ^ slices[0][before & 0xFF];
    }
  }
  return slices;
}

constexpr std::array<Slice, SliceCount> Slices = MakeSlices();

// What four bytes contribute with `behind` more bytes behind them.
uint32_t SliceWord(uint32_t word, std::size_t behind) {
  return Slices[behind + 3][word & 0xFF] ^ Slices[behind + 2][word >> 8 & 0xFF] ^
         Slices[behind + 1][word >> 16 & 0xFF] ^ Slices[behind][word >> 24];
}

}  // namespace

uint32_t UpdateCrc32(uint32_t crc, std::span<const uint8_t> bytes) {
  crc = ~crc;
  bytes = bytes.subspan(platform::FoldIntoCrc32(bytes, &crc));
  while (bytes.size() >= SliceCount) {
    const uint8_t* p = bytes.data();
    crc = SliceWord(crc ^ LoadLe32(p), 12) ^ SliceWord(LoadLe32(p + 4), 8) ^
          SliceWord(LoadLe32(p + 8), 4) ^ SliceWord(LoadLe32(p + 12), 0);
    bytes = bytes.subspan(SliceCount);
  }
  for (const uint8_t byte : bytes) crc = crc >> 8 ^ Slices[0][(crc ^ byte) & 0xFF];
  return ~crc;
}

}  // namespace hv
