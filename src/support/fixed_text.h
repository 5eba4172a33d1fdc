// Texts in fields of fixed size.
#pragma once

#include <cstddef>
#include <string_view>

namespace hv {

// Copies text into a field of `size` bytes and ends it with NUL; what does not fit is cut. A field
// of size 0 takes nothing. True when all of the text fitted.
bool SetFixedText(char* field, std::size_t size, std::string_view text);

template <std::size_t Size>
bool SetFixedText(char (&field)[Size], std::string_view text) {
  return SetFixedText(field, Size, text);
}

// The text in a field of `size` bytes: up to its first NUL, or all of it when there is none.
std::string_view FixedText(const char* field, std::size_t size);

// Whether text has at most `limit` characters; looks at no byte behind the first limit + 1.
bool TextFits(const char* text, std::size_t limit);

}  // namespace hv
