// A line of an INI file, and what it means.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "api/hvapi.h"

namespace hv {

// The longest line that can be held.
constexpr std::size_t MaxIniLine = 1021;

struct IniSection;

// A node of the line list. Its text lies behind it in the same block, until a longer one takes its
// place; so a text stays where it is while other lines come, change and go.
struct IniLine : HvIniLine {
  IniLine* previous = nullptr;     // NULL before the first line
  IniLine* nextInChain = nullptr;  // of a LineIndex
  uint32_t hash = 0;               // of its key, set by the LineIndex
  uint32_t length = 0;
  uint32_t capacity = 0;      // characters that the text may have where it lies
  bool inFirstBlock = false;  // of its section; set with the section's index
  std::unique_ptr<char[]> longerText;
  std::unique_ptr<IniSection> section;  // of a header line

  IniLine();
  IniLine(const IniLine&) = delete;
  IniLine& operator=(const IniLine&) = delete;
  ~IniLine();
  static void operator delete(void* block) { ::operator delete(block); }
};

// A new line that is in no list yet, or NULL when there is no memory.
std::unique_ptr<IniLine> MakeIniLine(std::string_view text);

// Gives a line a new text; false, with the old one in place, when there is no memory.
bool SetText(IniLine* line, std::string_view text);

inline IniLine* Next(const IniLine* line) {
  return static_cast<IniLine*>(line->next);
}
inline std::string_view Text(const IniLine& line) {
  return {line.text, line.length};
}
inline bool IsEmpty(const IniLine& line) {
  return line.length == 0;
}
inline bool IsHeader(const IniLine& line) {
  return line.text[0] == '[';
}

struct IniEntry {
  std::string_view key;
  std::string_view value;  // ends with the line, and so with its NUL
};

// The two sides of the first '=' of a line; nothing for a line without one.
std::optional<IniEntry> EntryOf(const IniLine& line);

// What a line is looked up by: the whole text of a header, else what comes before the first '='.
std::string_view KeyOf(const IniLine& line);

}  // namespace hv
