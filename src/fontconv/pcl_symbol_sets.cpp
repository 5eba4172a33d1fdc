#include "fontconv/pcl_symbol_sets.h"

#include "fonts/typeface_names.h"
#include "support/ascii.h"

namespace hv {
namespace {

struct SymbolSetRow {
  uint16_t symbolSet;
  PclSymbolSet set;
};

constexpr SymbolSetRow SymbolSetTable[] = {
    {2, {182, " (LineDraw)", 16}},   // 0B
    {14, {0, "", 18}},               // 0N
    {21, {0, "", 4}},                // 0U
    {53, {185, " (US Legal)", 16}},  // 1U
    {145, {183, " (PC Line)", 16}},  // 4Q
    {269, {180, " (Math8)", 17}},    // 8M
    {277, {0, "", 1}},               // 8U
    {369, {0, "", 18}},              // 11Q
    {501, {181, " (PI Font)", 17}},  // 15U
    {529, {186, "", 19}},            // 16Q
};
constexpr PclSymbolSet Other7Bit = {0, "", 16};
constexpr PclSymbolSet Other8Bit = {0, "", 17};

struct ShortTextRow {
  std::string_view symbolSet;
  std::string_view shortText;
};
constexpr ShortTextRow ShortTexts[] = {
    {"19U", "W1"}, {"9E", "WE"},  {"5T", "WT"}, {"9G", "WG"},
    {"9R", "WR"},  {"19L", "WL"}, {"9V", "WA"}, {"9H", "WH"},
};

struct FamilyRow {
  char letter;
  uint8_t family;
};
constexpr FamilyRow Families[] = {{'D', 80}, {'M', 48}, {'R', 16}, {'S', 64}, {'W', 32}};

}  // namespace

PclSymbolSet FindPclSymbolSet(uint16_t symbolSet, int32_t fontType) {
  for (const SymbolSetRow& row : SymbolSetTable) {
    if (row.symbolSet == symbolSet) return row.set;
  }
  return fontType == 0 ? Other7Bit : Other8Bit;
}

std::string_view ShortSymbolSetText(std::string_view symbolSet) {
  for (const ShortTextRow& row : ShortTexts) {
    if (row.symbolSet == symbolSet) return row.shortText;
  }
  return symbolSet;
}

PclTypeface FindPclTypeface(uint32_t typeface) {
  constexpr std::size_t ClassLength = 2;  // the letter and a comma
  const std::string_view entry = TypefaceName(typeface);
  if (entry.size() <= ClassLength) return {0, {}};
  PclTypeface found = {0, entry.substr(ClassLength)};
  for (const FamilyRow& row : Families) {
    if (ToUpper(entry.front()) == row.letter) found.family = row.family;
  }
  return found;
}

}  // namespace hv
