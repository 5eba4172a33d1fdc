#include "zip/output_path.h"

#include <algorithm>

#include "platform/files.h"
#include "support/path_text.h"

namespace hv {
namespace {

constexpr char QuoteNext = 0x16;

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

// The name with its characters mapped, the separators still in it.
std::string MapCharacters(std::string_view name) {
  std::string mapped;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const char c = name[i];
    if (c == ';') break;
    if (c == '<' || c == '[') {
      // Without an end there is nothing to drop; names that differ behind it stay different.
      const std::size_t end = name.find(c == '<' ? '>' : ']', i + 1);
      if (end == std::string_view::npos) {
        mapped += c;
      } else {
        i = end;
      }
    } else if (c == QuoteNext && i + 1 < name.size()) {
      // No system has names with a NUL in them.
      if (name[++i] != '\0') mapped += name[i];
    } else if (c == ':') {
      mapped += '_';
    } else if (!IsControl(c)) {
      mapped += c;
    }
  }
  return mapped;
}

}  // namespace

OutputPath MapOutputPath(std::string_view storedName) {
  OutputPath path;
  path.directory = ".";
  path.isDirectory = !storedName.empty() && IsSeparator(storedName.back());
  std::string mapped = MapCharacters(storedName);
  if (path.isDirectory) mapped += '/';

  std::string_view rest = mapped;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of("/\\"), rest.size());
    const std::string_view part = rest.substr(0, end);
    const bool isLast = end == rest.size();
    rest.remove_prefix(isLast ? end : end + 1);
    if (part.empty() || part == "." || part == "..") continue;
    path.isUsable = path.isUsable && platform::IsUsableName(part);
    if (isLast) {
      path.file = path.directory + '/' + std::string(part);
    } else {
      path.directory += '/';
      path.directory += part;
    }
  }
  return path;
}

}  // namespace hv
