#include "support/run_memory.h"

namespace hvfuzz {
namespace {

// FNV-1a.
uint64_t Hash(const uint8_t* data, std::size_t size) {
  uint64_t hash = 0xCBF29CE484222325;
  for (std::size_t i = 0; i < size; ++i) hash = (hash ^ data[i]) * 0x100000001B3;
  return hash ^ hash >> 32;
}

}  // namespace

RunMemory::RunMemory(const uint8_t* data, std::size_t size) {
  const uint64_t hash = Hash(data, size);
  if ((hash & 1) != 0) return;
  // One of the first 2, 4 ... 256 allocations: the first ones are in every call.
  const std::size_t range = std::size_t{2} << (hash >> 1 & 7);
  failing_.emplace((hash >> 5) % range, (hash >> 4 & 1) != 0);
}

}  // namespace hvfuzz
