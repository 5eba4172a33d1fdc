// The CRC-32 of zip archives: polynomial 0x04C11DB7, bits reflected, begun and ended with all ones.
#pragma once

#include <cstdint>
#include <span>

namespace hv {

// Goes on from the CRC-32 of what came before, 0 for nothing.
uint32_t UpdateCrc32(uint32_t crc, std::span<const uint8_t> bytes);

}  // namespace hv
