#include "support/path_text.h"

#include "support/ascii.h"
#include "support/star_match.h"

namespace hv {

PathParts SplitPath(std::string_view path) {
  PathParts parts;
  if (path.size() >= 2 && path[1] == ':') {
    parts.drive = path.substr(0, 2);
    path.remove_prefix(2);
  }
  const std::size_t separator = path.find_last_of("\\/");
  const std::size_t nameStart = separator == std::string_view::npos ? 0 : separator + 1;
  parts.directory = path.substr(0, nameStart);
  const std::string_view name = path.substr(nameStart);
  const std::size_t dot = name.rfind('.');
  parts.base = name.substr(0, dot);
  if (dot != std::string_view::npos) parts.extension = name.substr(dot);
  return parts;
}

std::size_t FileNameStart(std::string_view path) {
  const std::size_t last = path.find_last_of("\\/:");
  return last == std::string_view::npos ? 0 : last + 1;
}

bool MatchesWildcard(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  return MatchesWithStars(
      name.size(), pattern.size(), [&](std::size_t p) { return pattern[p] == '*'; },
      [&](std::size_t p, std::size_t n) {
        return pattern[p] == '?' || ToLower(pattern[p]) == ToLower(name[n]);
      });
}

}  // namespace hv
