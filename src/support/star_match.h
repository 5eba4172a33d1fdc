// Matching with stars: the walk that all wildcard patterns share.
#pragma once

#include <cstddef>

namespace hv {

// Whether `nameSize` characters match a pattern of `patternSize` elements, of which isStar(p) says
// whether element p takes any run of characters, and fits(p, n) whether it takes character n. Time
// grows with the product of the two sizes at most.
template <typename IsStar, typename Fits>
bool MatchesWithStars(std::size_t nameSize, std::size_t patternSize, IsStar isStar, Fits fits) {
  // One star is remembered at a time: when what follows it fails, it takes one more character.
  constexpr std::size_t None = static_cast<std::size_t>(-1);
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t starAt = None;
  std::size_t starTook = 0;
  while (n < nameSize) {
    if (p < patternSize && isStar(p)) {
      starAt = p++;
      starTook = n;
    } else if (p < patternSize && fits(p, n)) {
      ++p;
      ++n;
    } else if (starAt != None) {
      p = starAt + 1;
      n = ++starTook;
    } else {
      return false;
    }
  }
  while (p < patternSize && isStar(p)) ++p;
  return p == patternSize;
}

}  // namespace hv
