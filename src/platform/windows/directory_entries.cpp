#include "platform/directory_entries.h"

#include <memory>

#include "platform/windows/windows_calls.h"
#include "support/path_text.h"

namespace hv::platform {
namespace {

DirectoryEntry EntryOf(const WIN32_FIND_DATAA& found) {
  DirectoryEntry entry;
  entry.name = found.cFileName;
  entry.isDirectory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  entry.isPlainDirectory = found.dwFileAttributes == FILE_ATTRIBUTE_DIRECTORY;
  if (!entry.isDirectory) entry.size = uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
  return entry;
}

// Calls visit with what the system's own search for `pattern` finds.
template <typename Visit>
void Search(const std::string& pattern, Visit visit) {
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> closes(search, FindClose);
  do {
    visit(found);
  } while (FindNextFileA(search, &found) != 0);
}

}  // namespace

std::vector<DirectoryEntry> EntryNamed(const char* path) {
  std::vector<DirectoryEntry> entries;
  // These are wildcards to the system as well; no file has them in its name.
  if (FileNamePart(path).find_first_of("<>\"") != std::string_view::npos) return entries;
  Search(path, [&](const WIN32_FIND_DATAA& found) { entries.push_back(EntryOf(found)); });
  return entries;
}

std::vector<DirectoryEntry> MatchingEntries(const std::string& folder,
                                            std::string_view namePattern) {
  std::vector<DirectoryEntry> entries;
  // The system would match short names too, so that "*.htm" found "page.html".
  Search(folder + "*", [&](const WIN32_FIND_DATAA& found) {
    const std::string_view name = found.cFileName;
    if (name == "." || name == ".." || !MatchesWildcard(name, namePattern)) return;
    entries.push_back(EntryOf(found));
  });
  return entries;
}

}  // namespace hv::platform
