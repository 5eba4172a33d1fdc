// The part of a CRC-32 that the processor has instructions for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace hv::platform {

// Takes as many of the bytes into the remainder of the reflected polynomial 0x04C11DB7 as it can in
// large steps, and returns their number; 0 where the processor has no carry-less multiplication.
std::size_t FoldIntoCrc32(std::span<const uint8_t> bytes, uint32_t* remainder);

}  // namespace hv::platform
