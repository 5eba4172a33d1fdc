// The central directory of a zip archive, for telling what became of each member: the library
// reports those alone that it has extracted.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hvtool {

struct ListedMember {
  std::string name;  // as stored
  uint32_t compressedSize;
  const char* whySkipped;  // NULL for a member that the library extracts
};

// The members whose names match the pattern, all for an empty one, in the order of the directory.
// Of an archive that cannot be read or is damaged, as many as can be read.
std::vector<ListedMember> ListMembers(const std::string& archive, const std::string& pattern);

}  // namespace hvtool
