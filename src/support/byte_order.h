// Integers in bytes of a given order. The caller has checked that the bytes are there; bytes whose
// number is not sure are read through a ByteCursor.
#pragma once

#include <cstdint>

namespace hv {

inline uint16_t LoadLe16(const uint8_t* p) {
  return static_cast<uint16_t>(p[0] | p[1] << 8);
}
inline uint16_t LoadBe16(const uint8_t* p) {
  return static_cast<uint16_t>(p[0] << 8 | p[1]);
}

inline uint32_t LoadLe32(const uint8_t* p) {
  return static_cast<uint32_t>(LoadLe16(p)) | static_cast<uint32_t>(LoadLe16(p + 2)) << 16;
}
inline uint64_t LoadLe64(const uint8_t* p) {
  return LoadLe32(p) | static_cast<uint64_t>(LoadLe32(p + 4)) << 32;
}
inline uint32_t LoadBe32(const uint8_t* p) {
  return static_cast<uint32_t>(LoadBe16(p)) << 16 | static_cast<uint32_t>(LoadBe16(p + 2));
}

inline void StoreLe16(uint8_t* p, uint16_t value) {
  p[0] = static_cast<uint8_t>(value);
  p[1] = static_cast<uint8_t>(value >> 8);
}
inline void StoreBe16(uint8_t* p, uint16_t value) {
  p[0] = static_cast<uint8_t>(value >> 8);
  p[1] = static_cast<uint8_t>(value);
}
inline void StoreLe32(uint8_t* p, uint32_t value) {
  StoreLe16(p, static_cast<uint16_t>(value));
  StoreLe16(p + 2, static_cast<uint16_t>(value >> 16));
}
inline void StoreBe32(uint8_t* p, uint32_t value) {
  StoreBe16(p, static_cast<uint16_t>(value >> 16));
  StoreBe16(p + 2, static_cast<uint16_t>(value));
}

}  // namespace hv
