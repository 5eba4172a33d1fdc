#include <algorithm>

#include "platform/directory_entries.h"
#include "support/ascii.h"
#include "support/path_text.h"

namespace hv::platform {
namespace {

bool ComesBefore(const DirectoryEntry& a, const DirectoryEntry& b) {
  const int order = CompareIgnoreCase(a.name, b.name);
  return order != 0 ? order < 0 : a.name < b.name;
}

}  // namespace

std::vector<DirectoryEntry> ListDirectory(const char* pattern) {
  const std::string_view text = pattern;
  const std::string_view namePattern = FileNamePart(text);
  if (namePattern.empty() || namePattern == "." || namePattern == "..") return {};
  if (namePattern.find_first_of("*?") == std::string_view::npos) return EntryNamed(pattern);

  const std::string folder(text.substr(0, FileNameStart(text)));
  std::vector<DirectoryEntry> entries = MatchingEntries(folder, namePattern);
  std::sort(entries.begin(), entries.end(), ComesBefore);
  return entries;
}

}  // namespace hv::platform
