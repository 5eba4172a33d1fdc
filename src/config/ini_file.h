// An INI file in memory: its lines in the order of the file, read when it is opened and written
// back when it is closed.
//
// What is looked up is indexed on first use and the indexes follow the edits. Edits that move other
// lines into another section or block (a header removed, an empty line removed, a line that becomes
// a header between others) only raise `layout`: a section whose index is of an older layout makes a
// new one when it is next asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "api/hvapi.h"
#include "config/ini_line.h"
#include "config/line_index.h"

namespace hv {

// What is known of the lines behind a header, up to the next one.
struct IniSection {
  LineIndex entries;  // all lines but the empty ones
  // The last line before the first empty one; the header itself when there is none.
  IniLine* firstBlockEnd = nullptr;
  uint64_t layout = 0;  // of the file when this was found out, 0 for never
};

// The record behind a handle. `lines` is never NULL once the file is open.
struct IniFile : HvIniHandle {
  IniLine* last = nullptr;  // the end of the list, the empty first line in an empty file
  uint64_t layout = 1;
  LineIndex headers;
  bool headersAreIndexed = false;
  // The file holds NUL bytes, as one of 16-bit characters does: each ended the text of its line.
  bool isCut = false;
};

// Opens and reads a file; NULL when that fails.
HvIniHandle* IniOpen(const char* path, uint32_t mode);

// Rewrites a changed file; the handle is released in any case. False when it cannot be rewritten, or
// would lose what stands behind NUL bytes: the file has its old bytes then.
bool IniClose(HvIniHandle* handle);

// Notes that a line of `length` characters is there.
inline void IniRaiseMaxLineLength(HvIniHandle* handle, std::size_t length) {
  if (length + 1 > handle->maxLineLength) handle->maxLineLength = static_cast<uint32_t>(length + 1);
}

// Copies a line into the list, behind `after`, and raises maxLineLength. 0 without memory.
uint32_t IniAddLine(HvIniHandle* handle, HvIniLine* after, std::string_view text);

// Takes a line out of the list and releases it; the cursor moves on when it stood there.
void IniRemoveLine(HvIniHandle* handle, IniLine* line);

// Removes line feeds from the end of a text, then all `c` from there. Returns the new length.
std::size_t IniTrimEnd(char* text, char c);

// Releases a handle with all its lines.
void IniFree(HvIniHandle* handle);

inline IniFile* FileOf(HvIniHandle* handle) {
  return static_cast<IniFile*>(handle);
}

}  // namespace hv
