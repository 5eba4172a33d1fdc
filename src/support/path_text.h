// The parts of a path as text, split as the Windows runtime splits them. No file is looked at.
//
// "\" and "/" both separate. A drive is a first letter followed by ":".
#pragma once

#include <string_view>

namespace hv {

constexpr bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

// Views into the path; joined they give it back.
struct PathParts {
  std::string_view drive;      // "c:", or empty
  std::string_view directory;  // up to and including the last separator
  std::string_view base;       // the name up to its last dot
  std::string_view extension;  // from the last dot on, the dot included
};

// A name that begins with its only dot has an empty base.
PathParts SplitPath(std::string_view path);

// Where the file name of path begins: behind its last "\", "/" or ":".
std::size_t FileNameStart(std::string_view path);

inline std::string_view FileNamePart(std::string_view path) {
  return path.substr(FileNameStart(path));
}

// Whether a name matches a pattern of * and ? without regard to letter case. "*.*" matches every
// name.
bool MatchesWildcard(std::string_view name, std::string_view pattern);

}  // namespace hv
