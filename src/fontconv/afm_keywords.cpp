#include "fontconv/afm_keywords.h"

#include <cstddef>

namespace hv {
namespace {

template <typename Value>
struct WordRow {
  std::string_view word;
  Value value;
};

constexpr WordRow<AfmKeyword> AfmKeywordTable[] = {
    {"StartKernData", AfmKeyword::StartKernData},
    {"StartKernPairs", AfmKeyword::StartKernPairs},
    {"KPX", AfmKeyword::Kpx},
    {"EndKernPairs", AfmKeyword::EndKernPairs},
    {"EndKernData", AfmKeyword::EndKernData},
    {"FontName", AfmKeyword::FontName},
    {"Weight", AfmKeyword::Weight},
    {"ItalicAngle", AfmKeyword::ItalicAngle},
    {"IsFixedPitch", AfmKeyword::IsFixedPitch},
    {"UnderlinePosition", AfmKeyword::UnderlinePosition},
    {"UnderlineThickness", AfmKeyword::UnderlineThickness},
    {"FontBBox", AfmKeyword::FontBBox},
    {"CapHeight", AfmKeyword::CapHeight},
    {"XHeight", AfmKeyword::XHeight},
    {"Descender", AfmKeyword::Descender},
    {"Ascender", AfmKeyword::Ascender},
    {"StartCharMetrics", AfmKeyword::StartCharMetrics},
    {"EndCharMetrics", AfmKeyword::EndCharMetrics},
    {"EndFontMetrics", AfmKeyword::EndFontMetrics},
    {"StartFontMetrics", AfmKeyword::StartFontMetrics},
    {"EncodingScheme", AfmKeyword::EncodingScheme},
};

constexpr WordRow<InfKeyword> InfKeywordTable[] = {
    {"MSMenuName", InfKeyword::MsMenuName},
    {"Serif", InfKeyword::Serif},
    {"Pi", InfKeyword::Pi},
    {"PCLTypefaceID", InfKeyword::PclTypefaceId},
    {"PCLStyle", InfKeyword::PclStyle},
    {"PCLStrokeWeight", InfKeyword::PclStrokeWeight},
    {"VPStyle", InfKeyword::VpStyle},
};

constexpr WordRow<int32_t> AfmWeightTable[] = {
    {"Light", 300}, {"LightCondensed", 300}, {"Book", 400},           {"Medium", 400},
    {"Roman", 400}, {"Regular", 400},        {"Italic", 400},         {"MediumCondensed", 400},
    {"Bold", 700},  {"BoldItalic", 700},     {"Demi", 700},           {"Poster", 700},
    {"Heavy", 700}, {"Black", 700},          {"BlackCondensed", 700}, {"BoldCondensed", 700},
};
constexpr int32_t NormalWeight = 400;

template <typename Value, std::size_t Size>
Value Find(const WordRow<Value> (&table)[Size], std::string_view word, Value otherwise) {
  for (const WordRow<Value>& row : table) {
    if (row.word == word) return row.value;
  }
  return otherwise;
}

}  // namespace

AfmKeyword FindAfmKeyword(std::string_view word) {
  return Find(AfmKeywordTable, word, AfmKeyword::None);
}

InfKeyword FindInfKeyword(std::string_view word) {
  return Find(InfKeywordTable, word, InfKeyword::None);
}

int32_t WeightOfWord(std::string_view word) {
  return Find(AfmWeightTable, word, NormalWeight);
}

}  // namespace hv
