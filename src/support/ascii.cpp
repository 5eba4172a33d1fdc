#include "support/ascii.h"

#include <algorithm>

namespace hv {

int CompareIgnoreCase(std::string_view a, std::string_view b) {
  const std::size_t shared = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < shared; ++i) {
    const int left = static_cast<unsigned char>(ToLower(a[i]));
    const int right = static_cast<unsigned char>(ToLower(b[i]));
    if (left != right) return left - right;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a == b || CompareIgnoreCase(a, b) == 0);
}

}  // namespace hv
