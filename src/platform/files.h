// Files and directories by name.
//
// Names are given as callers give them: "\" and "/" both separate, letter case does not count when
// a name is looked up and is kept when one is made, "c:" is a drive and "\\server\share" a network
// path. A name longer than the system allows behaves like one that does not exist.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system_error.h"

namespace hv::platform {

enum class FileKind : uint8_t {
  None,  // nothing of that name
  File,  // a regular file, or a device
  Directory,
};

// What path names; links are followed. Wildcards name nothing.
FileKind KindOf(const char* path);

// Whether two names lead to one and the same file.
bool NameSameFile(const char* a, const char* b);

// Copies a file. On success `target` has the bytes of `source` and its time of last change. On
// failure a target that was there has its old bytes, and one that was not there is not there. A
// directory on either side is ErrorAccessDenied; a file copied onto itself keeps its content.
// Returns ErrorNone or the error.
uint32_t CopyWholeFile(const char* source, const char* target);

// Deletes a file. A missing file is ErrorFileNotFound.
uint32_t RemoveFile(const char* path);

// Puts the file `from` in the place of `to` in one step: `to` is the old file or the whole new one,
// never less. Access rights of an existing `to` are kept. Both must lie in the same directory (see
// CreateFileBeside). On failure both are as they were.
uint32_t ReplaceWith(const char* from, const char* to);

// Makes one directory. ErrorAlreadyExists when the name is taken.
uint32_t MakeDirectory(const char* path);

// Creates an empty file with a name of its own, which begins with prefix, in the directory that the
// TMP variable names, or in the root directory when it names none. Returns the name, or the empty
// text when no file could be made. The caller removes it: see TemporaryFile.
std::string CreateTemporaryFile(const char* prefix);

// Creates an empty file with a name of its own in the directory of `path` (of what `path` leads to,
// when it is a link), to be filled and then passed to ReplaceWith. Returns its name, or the empty
// text when none could be made, also because `path` itself may not be written. The caller removes
// it, or lets it replace another: see TemporaryFile.
std::string CreateFileBeside(const char* path);

// Deletes a file that one of the two made, by its name as it was returned. Takes no memory, so that
// it can clean up where there is none.
void DiscardFile(const std::string& name) noexcept;

// Makes the directories of `path` that are missing. The path is relative, with "/" between its
// parts, and is taken as spelled: another letter case is another name where the system tells them
// apart. False when a directory cannot be made, or when a part is there and is no directory itself:
// a file, or a link to whatever.
bool MakeDirectoriesBelow(const std::string& path);

// Whether a file or directory may have this name, which holds no separator and is neither "." nor
// "..". False for names that stand for a device or that the system would read as another name.
bool IsUsableName(std::string_view name);

// Sets the time of last change of a file, in UTC. False when it cannot be set.
bool SetFileTime(const char* path, const std::tm& time);

// One entry of a directory.
struct DirectoryEntry {
  std::string name;   // without its directory
  uint64_t size = 0;  // in bytes; 0 for a directory
  bool isDirectory = false;
  // Nothing but a directory: no link to one, and not marked hidden, system or read-only.
  bool isPlainDirectory = false;
};

// The entries whose name matches the last part of `pattern`, which may hold the wildcards * and ?
// ("*.*" matches every name), sorted by name without regard to letter case. "." and ".." are left
// out. Nothing matching, or no such directory, gives an empty list.
std::vector<DirectoryEntry> ListDirectory(const char* pattern);

}  // namespace hv::platform
