#include "config/number_list.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "support/ascii.h"

namespace hv {

std::optional<std::string_view> TakeItem(std::string_view* list, char separator) {
  list->remove_prefix(std::min(list->find_first_not_of(separator), list->size()));
  if (list->empty()) return std::nullopt;
  const std::string_view item = list->substr(0, list->find(separator));
  list->remove_prefix(item.size());
  return item;
}

int64_t LeadingDecimal(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const bool negative = StartsWith(text, "-");
  if (negative || StartsWith(text, "+")) text.remove_prefix(1);
  uint64_t magnitude = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude);
  constexpr int64_t Largest = std::numeric_limits<int64_t>::max();
  const bool tooLarge = error == std::errc::result_out_of_range || magnitude > Largest;
  const int64_t value = tooLarge ? Largest : static_cast<int64_t>(magnitude);
  return negative ? -value : value;
}

int64_t TakeDecimal(std::string_view* list, char separator) {
  return LeadingDecimal(TakeItem(list, separator).value_or(""));
}

uint16_t LenientHex(std::string_view text) {
  uint16_t value = 0;
  for (const char c : text) {
    const int digit = HexDigitValue(c);
    if (digit >= 0) value = static_cast<uint16_t>(value << 4 | digit);
  }
  return value;
}

}  // namespace hv
