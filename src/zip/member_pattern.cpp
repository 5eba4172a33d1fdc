#include "zip/member_pattern.h"

#include "support/ascii.h"
#include "support/star_match.h"

namespace hv {
namespace {

std::size_t IndexOf(char c) {
  return static_cast<unsigned char>(c);
}

}  // namespace

MemberPattern::MemberPattern(std::string_view text) {
  while (!text.empty()) {
    std::size_t used = 0;
    if (text[0] == '*' || text[0] == '?') {
      Element& element = elements_.emplace_back();
      element.isStar = text[0] == '*';
      element.fits.set();
      used = 1;
    } else if (text[0] == '[') {
      used = AddSet(text);
    }
    if (used == 0) used = AddCharacter(text);
    text.remove_prefix(used);
  }
}

std::size_t MemberPattern::AddCharacter(std::string_view text) {
  const bool quoted = text[0] == '\\' && text.size() > 1;
  const char c = quoted ? text[1] : text[0];
  Element& element = elements_.emplace_back();
  element.fits.set(IndexOf(ToLower(c)));
  element.fits.set(IndexOf(ToUpper(c)));
  return quoted ? 2 : 1;
}

std::size_t MemberPattern::AddSet(std::string_view text) {
  std::size_t at = 1;
  const bool negated = text.size() > 1 && (text[1] == '!' || text[1] == '^');
  if (negated) ++at;
  const auto takeCharacter = [&] {
    if (text[at] == '\\' && at + 1 < text.size()) ++at;
    return IndexOf(text[at++]);
  };
  std::bitset<256> set;
  while (at < text.size() && text[at] != ']') {
    const std::size_t first = takeCharacter();
    std::size_t last = first;
    if (at + 1 < text.size() && text[at] == '-' && text[at + 1] != ']') {
      ++at;
      last = takeCharacter();
    }
    for (std::size_t c = first; c <= last; ++c) set.set(c);
  }
  if (at >= text.size()) return 0;
  elements_.emplace_back().fits = negated ? ~set : set;
  return at + 1;
}

bool MemberPattern::Matches(std::string_view name) const {
  return MatchesWithStars(
      name.size(), elements_.size(), [&](std::size_t p) { return elements_[p].isStar; },
      [&](std::size_t p, std::size_t n) { return elements_[p].fits[IndexOf(name[n])]; });
}

}  // namespace hv
