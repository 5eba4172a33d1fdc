// The files of a directory and of those below it, in the order of their names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace hv {

// One directory, read once.
class FolderListing {
 public:
  // A folder ends with its separator.
  explicit FolderListing(const std::string& folder)
      : entries_(platform::ListDirectory((folder + "*.*").c_str())) {}

  const std::vector<platform::DirectoryEntry>& Entries() const { return entries_; }

  // Whether the directory has an entry of the path's file name, letter case aside. What the path
  // says of its directory is not looked at.
  bool HasFileOf(std::string_view path) const;

 private:
  std::vector<platform::DirectoryEntry> entries_;
};

// The directory with its separator; the current one for the empty text.
std::string FolderOf(const std::string& directory);

struct FoundFile {
  std::string path;
  std::size_t nameOffset;       // of the file name in the path
  uint32_t size;                // in bytes; the largest number for a file that is larger
  const FolderListing* folder;  // the directory it lies in
};

// False to end the walk.
using FileVisitor = std::function<bool(const FoundFile& file)>;

// Visits every file but those whose names begin with a dot or whose paths a record of a search
// cannot hold. With `recurse` a subdirectory is gone through where it comes in the order of names;
// a link to a directory is a file like others. False when the visitor has ended the walk.
bool WalkFiles(const std::string& directory, bool recurse, const FileVisitor& visit);

}  // namespace hv
