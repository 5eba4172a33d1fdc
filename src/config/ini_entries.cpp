#include "config/ini_entries.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "config/ini_file.h"
#include "support/ascii.h"

namespace hv {
namespace {

// A line put together from its parts.
class ComposedLine {
 public:
  ComposedLine(std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) {
      fits_ = fits_ && part.size() <= text_.size() - length_;
      if (!fits_) return;
      std::copy(part.begin(), part.end(), text_.begin() + static_cast<std::ptrdiff_t>(length_));
      length_ += part.size();
    }
  }
  bool Fits() const { return fits_; }
  std::string_view Text() const { return {text_.data(), length_}; }

 private:
  std::array<char, MaxIniLine> text_;
  std::size_t length_ = 0;
  bool fits_ = true;
};

ComposedLine HeaderLine(std::string_view section) {
  return {"[", section, "]"};
}

void IndexHeaders(IniFile* file) {
  std::size_t count = 0;
  for (const IniLine* line = file->last; line != nullptr; line = line->previous) {
    count += IsHeader(*line);
  }
  file->headers.Reset(count);
  for (IniLine* line = file->last; line != nullptr; line = line->previous) {
    if (IsHeader(*line)) file->headers.AddFirst(line);
  }
  file->headersAreIndexed = true;
}

IniLine* FindHeader(IniFile* file, std::string_view section) {
  const ComposedLine header = HeaderLine(section);
  if (!header.Fits()) return nullptr;
  if (!file->headersAreIndexed || file->headers.IsCrowded()) IndexHeaders(file);
  return file->headers.First(header.Text());
}

// The section behind a header, with its index up to date.
IniSection* SectionOf(const IniFile& file, IniLine* header) {
  IniSection* const section = header->section.get();
  if (section->layout == file.layout && !section->entries.IsCrowded()) return section;

  section->firstBlockEnd = header;
  bool inFirstBlock = true;
  std::size_t count = 0;
  IniLine* last = header;
  for (IniLine* line = Next(header); line != nullptr && !IsHeader(*line); line = Next(line)) {
    inFirstBlock = inFirstBlock && !IsEmpty(*line);
    line->inFirstBlock = inFirstBlock;
    if (inFirstBlock) section->firstBlockEnd = line;
    ++count;
    last = line;
  }
  section->entries.Reset(count);
  for (IniLine* line = last; line != header; line = line->previous) {
    if (!IsEmpty(*line)) section->entries.AddFirst(line);
  }
  section->layout = file.layout;
  return section;
}

// The first entry of a key; a line without '=' is none.
IniLine* FindEntry(const IniSection& section, std::string_view key) {
  IniLine* line = section.entries.First(key);
  while (line != nullptr && !EntryOf(*line)) line = LineIndex::NextEqual(line);
  return line;
}

// From `line` up to the next header and that included: the first entry of a key, or without a key
// the first line that is no header.
IniLine* WalkTo(IniLine* line, const char* key) {
  for (; line != nullptr; line = Next(line)) {
    const std::optional<IniEntry> entry = EntryOf(*line);
    const bool found =
        key == nullptr ? !IsHeader(*line) : entry && EqualsIgnoreCase(entry->key, key);
    if (found) return line;
    if (IsHeader(*line)) return nullptr;
  }
  return nullptr;
}

// Adds an entry at the end of the first block of a section.
uint32_t AddEntry(IniFile* file, IniSection* section, std::string_view text) {
  if (IniAddLine(file, section->firstBlockEnd, text) == 0) return 0;
  IniLine* const line = Next(section->firstBlockEnd);
  // A key that begins with '[' makes a header, which ends the section here.
  if (IsHeader(*line)) return 1;
  line->inFirstBlock = true;
  section->firstBlockEnd = line;
  const IniLine* successor = section->entries.First(KeyOf(*line));
  while (successor != nullptr && successor->inFirstBlock) {
    successor = LineIndex::NextEqual(successor);
  }
  section->entries.AddBefore(line, successor);
  return 1;
}

uint32_t AppendSection(IniFile* file, std::string_view header, std::string_view entry) {
  if (!IsEmpty(*file->last) && IniAddLine(file, file->last, "") == 0) return 0;
  return IniAddLine(file, file->last, header) != 0 && IniAddLine(file, file->last, entry) != 0;
}

uint32_t ReplaceEntry(IniFile* file, IniLine* line, std::string_view text) {
  if (!SetText(line, text)) return 0;
  IniRaiseMaxLineLength(file, text.size());
  return 1;
}

bool HoldsValue(const IniSection& section, std::string_view key, std::string_view value) {
  for (const IniLine* line = section.entries.First(key); line != nullptr;
       line = LineIndex::NextEqual(line)) {
    const std::optional<IniEntry> entry = EntryOf(*line);
    if (entry && EqualsIgnoreCase(entry->value, value)) return true;
  }
  return false;
}

// Whether what a line has between its first '=' and the next one is the value asked for.
bool MatchesValue(const IniLine& line, const char* value) {
  if (value == nullptr) return true;
  const std::optional<IniEntry> entry = EntryOf(line);
  return entry && EqualsIgnoreCase(entry->value.substr(0, entry->value.find('=')), value);
}

void RemoveHeader(IniFile* file, IniLine* header) {
  file->headers.Remove(header);
  ++file->layout;
  IniRemoveLine(file, header);
}

void RemoveEntry(IniFile* file, IniSection* section, IniLine* line) {
  section->entries.Remove(line);
  if (section->firstBlockEnd == line) section->firstBlockEnd = line->previous;
  IniRemoveLine(file, line);
}

// Lines without a key are not all in the index: the empty ones are not.
void RemoveWithEmptyKey(IniFile* file, IniLine* header, const char* value) {
  for (IniLine* line = Next(header); line != nullptr && !IsHeader(*line); line = Next(line)) {
    if (KeyOf(*line).empty() && MatchesValue(*line, value)) {
      ++file->layout;
      IniRemoveLine(file, line);
      return;
    }
  }
}

// Writes an entry into a section that is made where it is missing; `into` says what becomes of one that
// is there. 0 when a line would be too long.
template <typename Into>
uint32_t WriteEntry(IniFile* file, std::string_view section, const ComposedLine& entry, Into into) {
  const ComposedLine headerText = HeaderLine(section);
  if (!headerText.Fits() || !entry.Fits()) return 0;
  file->flags |= INI_DIRTY;
  IniLine* const header = FindHeader(file, section);
  if (header == nullptr) return AppendSection(file, headerText.Text(), entry.Text());
  return into(SectionOf(*file, header), entry.Text());
}

}  // namespace

const char* IniRead(HvIniHandle* handle, const char* section, const char* key) {
  IniFile* const file = FileOf(handle);
  IniLine* line = nullptr;
  if (section == nullptr) {
    line = WalkTo(static_cast<IniLine*>(file->cursor), key);
  } else {
    IniLine* const header = FindHeader(file, section);
    if (header == nullptr) return "";
    // Only the header that ends the section can be an entry whose key begins with '['. It is not
    // among the lines of the section.
    const bool isIndexed = key != nullptr && *key != '[';
    line = isIndexed ? FindEntry(*SectionOf(*file, header), key) : WalkTo(Next(header), key);
  }
  file->cursor = line == nullptr ? nullptr : line->next;
  if (line == nullptr) return "";
  return key == nullptr ? line->text : EntryOf(*line)->value.data();
}

uint32_t IniFindValue(HvIniHandle* handle, std::string_view section, std::string_view key,
                      std::string_view* value) {
  IniFile* const file = FileOf(handle);
  IniLine* const header = FindHeader(file, section);
  if (header == nullptr) return HV_SECTION_MISSING;
  const IniLine* const line = FindEntry(*SectionOf(*file, header), key);
  if (line == nullptr) return HV_KEY_MISSING;
  *value = EntryOf(*line)->value;
  return HV_OK;
}

uint32_t IniRead2(HvIniHandle* handle, const char* section, const char* key,
                  const char* defaultValue, char* buffer, uint32_t size, uint32_t* count) {
  *count = 0;
  std::string_view value;
  const uint32_t code = IniFindValue(handle, section, key, &value);
  if (code != HV_OK) {
    if (defaultValue == nullptr) return code;
    value = defaultValue;
  }
  // The default may be the caller's own buffer.
  *count = static_cast<uint32_t>(std::min<std::size_t>(value.size(), size));
  std::memmove(buffer, value.data(), *count);
  if (*count == size) return HV_BUFFER_TOO_SMALL;
  buffer[*count] = '\0';
  return HV_OK;
}

uint32_t IniWrite(HvIniHandle* handle, std::string_view section, std::string_view key,
                  std::string_view value) {
  IniFile* const file = FileOf(handle);
  return WriteEntry(
      file, section, {key, "=", value}, [&](IniSection* lines, std::string_view entry) {
        IniLine* const line = FindEntry(*lines, key);
        // An entry behind the first empty line does not count.
        const bool replaces = line != nullptr && line->inFirstBlock;
        return replaces ? ReplaceEntry(file, line, entry) : AddEntry(file, lines, entry);
      });
}

uint32_t IniWriteAll(HvIniHandle* handle, std::string_view section, std::string_view key,
                     std::string_view value) {
  IniFile* const file = FileOf(handle);
  return WriteEntry(file, section, {key, "=", value},
                    [&](IniSection* lines, std::string_view entry) {
                      return HoldsValue(*lines, key, value) ? 1 : AddEntry(file, lines, entry);
                    });
}

void IniDelete(HvIniHandle* handle, const char* section, const char* key, const char* value) {
  IniFile* const file = FileOf(handle);
  file->flags |= INI_DIRTY;
  IniLine* const header = FindHeader(file, section);
  if (header == nullptr) return;
  if (key == nullptr) return RemoveHeader(file, header);
  if (*key == '\0') return RemoveWithEmptyKey(file, header, value);
  IniSection* const lines = SectionOf(*file, header);
  IniLine* line = lines->entries.First(key);
  while (line != nullptr && !MatchesValue(*line, value)) line = LineIndex::NextEqual(line);
  if (line != nullptr) RemoveEntry(file, lines, line);
}

}  // namespace hv
