#include "fonts/directory_walk.h"

#include <algorithm>
#include <limits>

#include "api/hvapi.h"
#include "support/ascii.h"
#include "support/path_text.h"

namespace hv {
namespace {

constexpr std::size_t PathFieldSize = sizeof(HvFoundResource::path);

uint32_t SizeOf(const platform::DirectoryEntry& entry) {
  constexpr uint64_t Largest = std::numeric_limits<uint32_t>::max();
  return static_cast<uint32_t>(std::min(entry.size, Largest));
}

}  // namespace

bool FolderListing::HasFileOf(std::string_view path) const {
  // The listing is in this order.
  const std::string_view name = FileNamePart(path);
  const auto found =
      std::lower_bound(entries_.begin(), entries_.end(), name,
                       [](const platform::DirectoryEntry& entry, std::string_view wanted) {
                         return CompareIgnoreCase(entry.name, wanted) < 0;
                       });
  return found != entries_.end() && EqualsIgnoreCase(found->name, name);
}

std::string FolderOf(const std::string& directory) {
  std::string folder = directory.empty() ? "." : directory;
  if (!IsSeparator(folder.back())) folder += '\\';
  return folder;
}

// Each level of directories takes two characters of a path at least, which bounds their number.
bool WalkFiles(const std::string& directory, bool recurse, const FileVisitor& visit) {
  const std::string folder = FolderOf(directory);
  const FolderListing listing(folder);
  FoundFile file = {folder, folder.size(), 0, &listing};
  for (const platform::DirectoryEntry& entry : listing.Entries()) {
    if (StartsWith(entry.name, ".")) continue;
    if (folder.size() + entry.name.size() >= PathFieldSize) continue;
    file.path.replace(folder.size(), std::string::npos, entry.name);
    if (entry.isPlainDirectory) {
      if (recurse && !WalkFiles(file.path, recurse, visit)) return false;
      continue;
    }
    file.size = SizeOf(entry);
    if (!visit(file)) return false;
  }
  return true;
}

}  // namespace hv
