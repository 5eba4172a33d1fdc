// Sizes shown with one decimal digit.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace hv {

struct Tenths {
  uint32_t whole;
  uint32_t digit;
};

// numerator / denominator to the nearest tenth, halves upward. The denominator is not 0.
constexpr Tenths RoundTenths(uint64_t numerator, uint64_t denominator) {
  const uint64_t tenths = (numerator * 20 + denominator) / (denominator * 2);
  return {static_cast<uint32_t>(tenths / 10), static_cast<uint32_t>(tenths % 10)};
}

// The whole part to the right in `width` columns, a point and the digit.
inline std::string FormatTenths(Tenths size, int width) {
  char text[32];
  std::snprintf(text, sizeof text, "%*u.%u", width, size.whole, size.digit);
  return text;
}

}  // namespace hv
