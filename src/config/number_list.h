// Lists of numbers in the values of INI entries.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hv {

// Takes the first item off a list: the characters up to the next separator. A run of separators
// counts as one. Nothing when no item is left.
std::optional<std::string_view> TakeItem(std::string_view* list, char separator);

// The decimal number that a text begins with, behind blanks; 0 when it begins with none. A number
// that is out of range gives the nearest one.
int64_t LeadingDecimal(std::string_view text);

// The first item as a number, 0 when none is left.
int64_t TakeDecimal(std::string_view* list, char separator);

// The number that the hexadecimal digits of a text make; other characters are skipped. The low 16
// bits of a longer one.
uint16_t LenientHex(std::string_view text);

}  // namespace hv
