// What becomes of the parameters of a PCL command, as a text: entries parted by blanks, each an
// upper-case parameter letter and "#" (dropped whatever its value), a number (dropped with that
// value) or "!" (kept, and its value is a count of data bytes that follow the sequence). Letters
// that the text does not name are kept.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hv {

enum class FilterAction : uint8_t {
  Drop = 0,
  Keep = 1,
  KeepWithData = 2,
};

// The letter may be of either case.
FilterAction MatchFilterList(std::string_view filterList, char letter, int32_t value);

// The value of a parameter or of a list's number: its leading digits with a sign, else 0.
int32_t ParameterValue(std::string_view text);

// The lists that depend on a mask of FILTER_DROP_... bits, by the characters behind the ESC.
struct MaskedFilterLists {
  explicit MaskedFilterLists(uint32_t filterMask);

  std::string ampersandL;
  std::string ampersandA;
  std::string ampersandF;
  std::string ampersandR;
};

}  // namespace hv
