// The metrics of a font in Windows code positions: what the AFM reader fills and the metrics
// writers write.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace hv {

// Bounding box and advance width of a character, in thousandths of the em.
struct CharMetrics {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  int32_t width = 0;  // NoWidth: a code without metrics
};
constexpr int32_t NoWidth = -1;

struct KernPair {
  uint8_t first = 0;
  uint8_t second = 0;
  int16_t amount = 0;

  // By this the pairs are sorted.
  uint16_t Key() const { return static_cast<uint16_t>(first | second << 8); }
};

struct FontBox {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
};

// Values of pitchAndFamily.
constexpr int32_t FamilySerif = 16;
constexpr int32_t FamilySansSerif = 32;
constexpr int32_t FamilyDecorative = 80;

// Values of charSet.
constexpr int32_t CharSetAnsi = 0;
constexpr int32_t CharSetSymbol = 2;

constexpr std::size_t MostKernPairs = 1024;
constexpr std::size_t CodeCount = 256;

struct FontMetricsRecord {
  int32_t firstChar = 32;
  int32_t lastChar = 255;
  uint32_t avgWidth = 0;
  int32_t maxWidth = 0;
  int32_t italicAngle = 0;  // tenths of a degree
  int32_t pitchAndFamily = 0;
  int32_t underlinePosition = 0;
  int32_t underlineThickness = 0;
  int32_t ascender = 0;
  int32_t charSet = CharSetAnsi;
  int32_t variablePitch = 0;  // 0 fixed, 1 variable
  char fontName[80] = {};     // PostScript name
  char menuName[80] = {};     // Windows menu name
  int32_t weight = 400;       // 100 to 900
  std::size_t kernPairCount = 0;
  std::array<KernPair, MostKernPairs> kernPairs;
  FontBox fontBBox;
  std::array<CharMetrics, CodeCount> charMetrics;
  int32_t serif = 0;
  int32_t pi = 0;
};

}  // namespace hv
