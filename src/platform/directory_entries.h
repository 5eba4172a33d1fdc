// The system's part of a listing: the entries of a folder as it gives them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace hv::platform {

// The entry that path names, spelled as it is on disk; an empty list when there is none.
std::vector<DirectoryEntry> EntryNamed(const char* path);

// The entries of a folder, given with its last separator or empty for the current one, whose names
// match namePattern (see MatchesWildcard), in any order. "." and ".." are left out, and so is what
// is neither file nor directory: who opens a pipe waits for somebody at its other end.
std::vector<DirectoryEntry> MatchingEntries(const std::string& folder,
                                            std::string_view namePattern);

}  // namespace hv::platform
