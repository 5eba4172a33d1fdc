// The wildcard pattern that picks members of an archive by their stored names.
//
//   *        any run of characters, separators among them
//   ?        any one character
//   [a-z_]   one character of a set, with ranges; [!...] and [^...] one that is not in it
//   \c       the character c
//   other    that character
//
// Letter case counts in sets only. A set ends at the first "]"; a "[" that none follows, and a "\"
// at the end, stand for themselves.
#pragma once

#include <bitset>
#include <string_view>
#include <vector>

namespace hv {

class MemberPattern {
 public:
  explicit MemberPattern(std::string_view text);

  bool Matches(std::string_view name) const;

 private:
  struct Element {
    bool isStar = false;
    std::bitset<256> fits;  // the characters that it takes
  };

  // Each adds an element and returns how many characters of the text it took; 0 for no set.
  std::size_t AddSet(std::string_view text);
  std::size_t AddCharacter(std::string_view text);

  std::vector<Element> elements_;
};

}  // namespace hv
