#include "platform/directory_entries.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>

#include "platform/posix/names.h"
#include "support/path_text.h"

namespace hv::platform {
namespace {

enum class Kinds { FilesAndDirectories, All };

// Adds the entry `name` of a directory, unless it went away or leads nowhere. In names of this
// system "/" alone separates.
void AddEntry(int directory, const char* name, Kinds kinds, std::vector<DirectoryEntry>* entries) {
  struct stat link;
  if (fstatat(directory, name, &link, AT_SYMLINK_NOFOLLOW) != 0) return;
  struct stat status = link;
  if (S_ISLNK(link.st_mode) && fstatat(directory, name, &status, 0) != 0) return;
  const bool isListed = S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
  if (!isListed && kinds == Kinds::FilesAndDirectories) return;
  DirectoryEntry entry;
  entry.name = std::string_view(name).substr(std::string_view(name).rfind('/') + 1);
  entry.isDirectory = S_ISDIR(status.st_mode);
  entry.isPlainDirectory = S_ISDIR(link.st_mode);
  if (!entry.isDirectory) entry.size = static_cast<uint64_t>(status.st_size);
  entries->push_back(std::move(entry));
}

}  // namespace

std::vector<DirectoryEntry> EntryNamed(const char* path) {
  std::vector<DirectoryEntry> entries;
  AddEntry(AT_FDCWD, SystemName(path).c_str(), Kinds::All, &entries);
  return entries;
}

std::vector<DirectoryEntry> MatchingEntries(const std::string& folder,
                                            std::string_view namePattern) {
  std::vector<DirectoryEntry> entries;
  const std::unique_ptr<DIR, int (*)(DIR*)> open(
      opendir(folder.empty() ? "." : SystemName(folder.c_str()).c_str()), closedir);
  if (open == nullptr) return entries;
  while (const dirent* found = readdir(open.get())) {
    const std::string_view name = found->d_name;
    if (name == "." || name == ".." || !MatchesWildcard(name, namePattern)) continue;
    // Given back as a part of a path it would be another name.
    if (name.find('\\') != std::string_view::npos) continue;
    AddEntry(dirfd(open.get()), found->d_name, Kinds::FilesAndDirectories, &entries);
  }
  return entries;
}

}  // namespace hv::platform
