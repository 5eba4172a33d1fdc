#include "macros/filter_list.h"

#include <limits>

#include "api/hvapi.h"
#include "support/ascii.h"

namespace hv {
namespace {

struct MaskEntry {
  uint32_t bit;
  const char* entry;
};

constexpr MaskEntry AmpersandLEntries[] = {
    {FILTER_DROP_PAGE_SIZE, " A#"},        {FILTER_DROP_PAPER_SOURCE, " H#"},
    {FILTER_DROP_DUPLEX, " S#"},           {FILTER_DROP_ORIENTATION, " O#"},
    {FILTER_DROP_JOB_SEPARATION, " T1"},   {FILTER_DROP_COPIES, " X#"},
    {FILTER_DROP_PERFORATION_SKIP, " L#"}, {FILTER_DROP_OUTPUT_BIN, " G#"},
};

// The letters 0x60 to 0x7E continue a sequence and mean what those of 0x40 to 0x5E mean.
constexpr char UpperLetter(char letter) {
  return letter >= 0x60 && letter <= 0x7E ? static_cast<char>(letter - 0x20) : letter;
}

constexpr bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

}  // namespace

int32_t ParameterValue(std::string_view text) {
  constexpr int64_t Largest = std::numeric_limits<int32_t>::max();
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (negative || text[at] == '+')) ++at;
  int64_t value = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    value = value * 10 + (text[at] - '0');
    if (value > Largest) value = Largest;
  }
  return static_cast<int32_t>(negative ? -value : value);
}

FilterAction MatchFilterList(std::string_view filterList, char letter, int32_t value) {
  const char wanted = UpperLetter(letter);
  for (std::size_t at = 0; at + 1 < filterList.size(); ++at) {
    if (filterList[at] != wanted) continue;
    const std::string_view rule = filterList.substr(at + 1);
    if (rule.front() == '!') return FilterAction::KeepWithData;
    if (rule.front() == '#' || ParameterValue(rule) == value) return FilterAction::Drop;
  }
  return FilterAction::Keep;
}

MaskedFilterLists::MaskedFilterLists(uint32_t filterMask)
    : ampersandL("F# P#"), ampersandF("X6 X7 X10") {
  for (const MaskEntry& entry : AmpersandLEntries) {
    if ((filterMask & entry.bit) != 0) ampersandL += entry.entry;
  }
  if ((filterMask & FILTER_DROP_DUPLEX) != 0) ampersandA = "G#";
  if ((filterMask & FILTER_DROP_MACRO_DEFINITION) != 0) ampersandF += " X0 X1";
  if ((filterMask & FILTER_DROP_FLUSH_PAGES) != 0) ampersandR = "F#";
}

}  // namespace hv
