#include "config/ini_file.h"

#include <array>
#include <cstring>
#include <string>

#include "platform/stream.h"
#include "platform/temporary_file.h"
#include "support/file_modes.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

// Room for the most characters that one read takes and their NUL.
constexpr std::size_t ReadBufferSize = 1020;

struct IniFileDeleter {
  void operator()(IniFile* file) const { IniFree(file); }
};
using OwnedIniFile = std::unique_ptr<IniFile, IniFileDeleter>;

// Adds the empty line that the list begins with.
bool AddSentinel(IniFile* file) {
  std::unique_ptr<IniLine> line = MakeIniLine("");
  if (line == nullptr) return false;
  file->last = line.get();
  file->lines = line.release();
  return true;
}

// Brings a line as it was read into the form that is kept. Returns its length.
std::size_t NormaliseLine(char* line) {
  const std::size_t length = IniTrimEnd(line, ' ');
  char* const equals = line[0] == '[' ? nullptr : std::strchr(line, '=');
  if (equals == nullptr) return length;
  char* keyEnd = equals;
  while (keyEnd > line && keyEnd[-1] == ' ') --keyEnd;
  if (keyEnd != equals) std::memmove(keyEnd, equals, std::strlen(equals) + 1);
  return length - static_cast<std::size_t>(equals - keyEnd);
}

// Comments and empty lines. A line that begins with '=' or ';' and has a value is an entry.
bool IsDroppedInReadMode(std::string_view line) {
  return line.empty() || (line[0] == ';' && line.find('=') == std::string_view::npos);
}

bool ReadLines(platform::Stream* stream, IniFile* file) {
  std::array<char, ReadBufferSize> line;
  while (const std::size_t length = stream->ReadLine(line.data(), line.size())) {
    if (std::strlen(line.data()) < length) file->isCut = true;
    const std::string_view text(line.data(), NormaliseLine(line.data()));
    if ((file->flags & INI_READ_MODE) != 0 && IsDroppedInReadMode(text)) continue;
    if (IniAddLine(file, file->last, text) == 0) return false;
  }
  // Half a file would replace the whole one when it is closed.
  return !stream->HasError();
}

// Writes all lines as the text of a file that is there or can be made.
bool WriteLines(const IniFile& file, const char* path) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path, "w");
  if (stream == nullptr) return false;
  bool written = true;
  for (const HvIniLine* line = file.lines->next; line != nullptr && written; line = line->next) {
    const std::string_view text = Text(*static_cast<const IniLine*>(line));
    written = stream->Write(text.data(), text.size()) == text.size() && stream->Write("\n", 1) == 1;
  }
  return stream->Close() && written;
}

std::optional<std::string> ReadBytes(const char* path) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path, "rb");
  if (stream == nullptr) return std::nullopt;
  std::string bytes;
  std::array<char, 4096> part;
  while (const std::size_t got = stream->Read(part.data(), part.size())) {
    bytes.append(part.data(), got);
  }
  if (stream->HasError()) return std::nullopt;
  return bytes;
}

bool WriteBytes(const char* path, std::string_view bytes) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path, "wb");
  if (stream == nullptr) return false;
  const bool written = stream->Write(bytes.data(), bytes.size()) == bytes.size();
  return stream->Close() && written;
}

// For a file that may be written but not replaced (its directory takes no new file, or another
// program holds it open). The old bytes are put back when the new ones do not all get there.
bool RewriteInPlace(const IniFile& file) {
  const std::optional<std::string> oldBytes = ReadBytes(file.path);
  if (!oldBytes) return false;
  if (WriteLines(file, file.path)) return true;
  WriteBytes(file.path, *oldBytes);
  return false;
}

bool Rewrite(const IniFile& file) {
  platform::TemporaryFile beside(platform::CreateFileBeside(file.path));
  if (!beside.Exists()) return RewriteInPlace(file);
  const bool written = WriteLines(file, beside.Name().c_str());
  if (written && beside.Replace(file.path)) return true;
  beside.Discard();
  return written && RewriteInPlace(file);
}

}  // namespace

HvIniHandle* IniOpen(const char* path, uint32_t mode) {
  if (mode != INI_OPEN_READ && mode != INI_OPEN_UPDATE && mode != INI_OPEN_REPLACE &&
      mode != INI_OPEN_APPEND) {
    return nullptr;
  }
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path, FileModeTable[mode]);
  if (stream == nullptr) return nullptr;
  stream->Seek(0);

  OwnedIniFile file(new IniFile());
  SetFixedText(file->path, path);
  if (mode == INI_OPEN_READ) file->flags = INI_READ_MODE;
  if (!AddSentinel(file.get()) || !ReadLines(stream.get(), file.get())) return nullptr;
  return file.release();
}

bool IniClose(HvIniHandle* handle) {
  const OwnedIniFile file(FileOf(handle));
  return (file->flags & INI_DIRTY) == 0 || (!file->isCut && Rewrite(*file));
}

uint32_t IniAddLine(HvIniHandle* handle, HvIniLine* after, std::string_view text) {
  IniFile* const file = FileOf(handle);
  IniLine* const line = MakeIniLine(text).release();
  if (line == nullptr) return 0;
  line->previous = static_cast<IniLine*>(after);
  line->next = after->next;
  after->next = line;
  IniRaiseMaxLineLength(file, text.size());

  const bool isLast = line->next == nullptr;
  if (isLast) {
    file->last = line;
  } else {
    Next(line)->previous = line;
  }
  if (IsHeader(*line)) {
    if (isLast && file->headersAreIndexed) {
      file->headers.AddBefore(line, nullptr);
    } else {
      file->headersAreIndexed = false;
    }
    if (!isLast) ++file->layout;
  }
  return 1;
}

void IniRemoveLine(HvIniHandle* handle, IniLine* line) {
  IniFile* const file = FileOf(handle);
  if (file->cursor == line) file->cursor = line->next;
  line->previous->next = line->next;
  if (line->next == nullptr) {
    file->last = line->previous;
  } else {
    Next(line)->previous = line->previous;
  }
  delete line;
}

std::size_t IniTrimEnd(char* text, char c) {
  std::size_t length = std::strlen(text);
  while (length > 0 && text[length - 1] == '\n') --length;
  while (length > 0 && text[length - 1] == c) --length;
  text[length] = '\0';
  return length;
}

void IniFree(HvIniHandle* handle) {
  IniFile* const file = FileOf(handle);
  for (HvIniLine* line = file->lines; line != nullptr;) {
    HvIniLine* const next = line->next;
    delete static_cast<IniLine*>(line);
    line = next;
  }
  delete file;
}

}  // namespace hv
