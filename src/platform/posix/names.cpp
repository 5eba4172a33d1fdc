#include "platform/posix/names.h"

#include <dirent.h>
#include <sys/stat.h>

#include <memory>
#include <string_view>

#include "platform/posix/environment.h"
#include "support/ascii.h"
#include "support/path_text.h"

namespace hv::platform {
namespace {

bool Exists(const std::string& name) {
  struct stat status;
  return lstat(name.c_str(), &status) == 0;
}

// The name with the separators, drives and network paths of this system.
std::string Translate(std::string_view path) {
  std::string prefix;
  if (path.size() >= 2 && IsLetter(path[0]) && path[1] == ':') {
    prefix = Environment("HVAPI_DRIVES");
    if (!prefix.empty()) prefix += std::string("/") + ToLower(path[0]);
    prefix += '/';
    path.remove_prefix(2);
  } else if (path.substr(0, 2) == "\\\\") {
    prefix = Environment("HVAPI_DRIVES") + "/unc/";
    path.remove_prefix(2);
  }
  std::string name = prefix + std::string(path);
  for (char& c : name) {
    if (c == '\\') c = '/';
  }
  return name;
}

// The entry of a directory that equals `wanted` but for letter case; empty when there is none.
std::string FindSpelling(const std::string& directory, std::string_view wanted) {
  const std::unique_ptr<DIR, int (*)(DIR*)> open(
      opendir(directory.empty() ? "." : directory.c_str()), closedir);
  std::string found;
  if (open == nullptr) return found;
  while (const dirent* entry = readdir(open.get())) {
    const std::string_view name = entry->d_name;
    if (EqualsIgnoreCase(name, wanted) && (found.empty() || name < found)) found = name;
  }
  return found;
}

}  // namespace

std::string SystemName(const char* path) {
  if (path == nullptr || *path == '\0' || IsSocketAddress(path)) return {};
  std::string name = Translate(path);
  if (Exists(name)) return name;

  std::string resolved;
  std::size_t at = 0;
  while (at < name.size()) {
    if (name[at] == '/') {
      resolved += name[at++];
      continue;
    }
    const std::size_t end = std::min(name.find('/', at), name.size());
    const std::string_view component = std::string_view(name).substr(at, end - at);
    const std::string asSpelled = resolved + std::string(component);
    if (Exists(asSpelled)) {
      resolved = asSpelled;
    } else {
      const std::string spelling = FindSpelling(resolved, component);
      if (spelling.empty()) return resolved + name.substr(at);
      resolved += spelling;
    }
    at = end;
  }
  return resolved;
}

bool IsPlainName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of("\\/") == std::string_view::npos;
}

bool IsSocketAddress(const char* destination) {
  return StartsWith(destination, "socket://");
}

}  // namespace hv::platform
