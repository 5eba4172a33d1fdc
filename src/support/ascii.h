// Letters and digits of ASCII, whatever the locale. Bytes above 0x7F are never letters.
#pragma once

#include <string>
#include <string_view>

namespace hv {

constexpr char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr bool IsLetter(char c) {
  return ToUpper(c) >= 'A' && ToUpper(c) <= 'Z';
}
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The value of a hexadecimal digit of either case, or -1.
constexpr int HexDigitValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

// The order of two texts without regard to letter case: negative, 0 or positive.
int CompareIgnoreCase(std::string_view a, std::string_view b);

bool EqualsIgnoreCase(std::string_view a, std::string_view b);

// Whether text begins with prefix, letter case counting.
constexpr bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

}  // namespace hv
