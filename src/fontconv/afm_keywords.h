// The words of AFM and INF files. Letter case counts.
#pragma once

#include <cstdint>
#include <string_view>

namespace hv {

enum class AfmKeyword : uint8_t {
  None = 0,
  StartKernData = 2,
  StartKernPairs = 3,
  Kpx = 4,
  EndKernPairs = 5,
  EndKernData = 6,
  FontName = 7,
  Weight = 8,
  ItalicAngle = 9,
  IsFixedPitch = 10,
  UnderlinePosition = 11,
  UnderlineThickness = 12,
  FontBBox = 13,
  CapHeight = 14,
  XHeight = 15,
  Descender = 16,
  Ascender = 17,
  StartCharMetrics = 18,
  EndCharMetrics = 19,
  EndFontMetrics = 20,
  StartFontMetrics = 21,
  EncodingScheme = 22,
};

enum class InfKeyword : uint8_t {
  None = 0,
  MsMenuName = 1,
  Serif = 2,
  Pi = 3,
  PclTypefaceId = 4,
  PclStyle = 5,
  PclStrokeWeight = 6,
  VpStyle = 7,
};

AfmKeyword FindAfmKeyword(std::string_view word);
InfKeyword FindInfKeyword(std::string_view word);

// The weight of a font, 100 to 900, by the word of its AFM; 400 for an unknown one.
int32_t WeightOfWord(std::string_view word);

}  // namespace hv
