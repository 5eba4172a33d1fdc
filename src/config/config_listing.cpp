#include "config/config_listing.h"

#include <array>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "api/caller_memory.h"
#include "platform/files.h"
#include "platform/stream.h"
#include "support/ascii.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::string_view DescriptionMark = "#!";
constexpr std::size_t LineBufferSize = 260;

using LineBuffer = std::array<char, LineBufferSize>;

const char* PatternOf(uint32_t fileKind) {
  switch (fileKind) {
    case DAT_KIND_CFG:
      return "*.CFG";
    case DAT_KIND_PSS:
      return "*.PSS";
    default:
      return "*.*";
  }
}

// What follows the mark in the first line, in `line`; empty when there is nothing. Of a line that
// is longer than the buffer its beginning counts.
std::string_view ReadDescription(const char* path, LineBuffer* line) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(path, "r");
  if (file == nullptr || file->ReadLine(line->data(), line->size()) == 0) return {};
  std::string_view text = FixedText(line->data(), line->size());
  text = text.substr(0, text.find('\n'));
  const std::size_t mark = text.find(DescriptionMark);
  if (mark == std::string_view::npos) return {};
  return text.substr(mark + DescriptionMark.size());
}

}  // namespace

void ListConfigFiles(const char* directory, uint32_t fileKind, HvConfigFileEntry** list,
                     uint16_t* count) {
  std::string folder = *directory == '\0' ? "." : directory;
  if (folder.back() != '\\') folder += '\\';
  HvConfigFileEntry* last = nullptr;
  for (const platform::DirectoryEntry& found :
       platform::ListDirectory((folder + PatternOf(fileKind)).c_str())) {
    const std::string path = folder + found.name;
    if (StartsWith(found.name, ".") || path.size() >= sizeof(HvConfigFileEntry::path)) continue;
    LineBuffer line;
    const std::string_view description = ReadDescription(path.c_str(), &line);
    if (description.empty()) continue;
    if (*count == std::numeric_limits<uint16_t>::max()) return;
    auto* const entry =
        static_cast<HvConfigFileEntry*>(AllocateForCaller(sizeof(HvConfigFileEntry)));
    if (entry == nullptr) return;
    SetFixedText(entry->path, path);
    SetFixedText(entry->description, description);
    if (last == nullptr) {
      *list = entry;
    } else {
      last->next = entry;
    }
    last = entry;
    ++*count;
  }
}

}  // namespace hv
