#include "support/fixed_text.h"

#include <algorithm>
#include <cstring>

namespace hv {

bool SetFixedText(char* field, std::size_t size, std::string_view text) {
  if (size == 0) return text.empty();
  const std::size_t kept = std::min(text.size(), size - 1);
  if (kept > 0) std::memcpy(field, text.data(), kept);
  field[kept] = '\0';
  return kept == text.size();
}

std::string_view FixedText(const char* field, std::size_t size) {
  const void* end = size == 0 ? nullptr : std::memchr(field, 0, size);
  return {field,
          end == nullptr ? size : static_cast<std::size_t>(static_cast<const char*>(end) - field)};
}

bool TextFits(const char* text, std::size_t limit) {
  return std::memchr(text, 0, limit + 1) != nullptr;
}

}  // namespace hv
