// Lines and words of the text files that carry font metrics, AFM and INF.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/stream.h"

namespace hv {

// A cursor over one line.
class MetricsLine {
 public:
  explicit MetricsLine(std::string_view text) : rest_(text) {}

  // The next word, at most `longest` characters of it. A ";" ends a word and belongs to it. Empty
  // at the end of the line.
  std::string_view Word(std::size_t longest = 79);

  // "-" and decimal digits; 0 when there are none. A number too large becomes the largest.
  int32_t Integer();

  // A decimal number times ten, truncated toward zero, its low 16 bits with their sign.
  int16_t Tenths();

  // A hexadecimal number, "-" allowed, up to a blank or ";". Any letter counts as a digit, anything
  // else (AFM writes <41>) is passed over.
  int32_t HexInteger();

  // All that is left, leading blanks dropped.
  std::string_view Rest();

  // The line up to the next ";", which is passed.
  MetricsLine Field();

 private:
  void SkipBlanks();
  bool TakeMinus();
  int64_t TakeDigits();

  std::string_view rest_;
};

// The lines of a whole file in memory. Blank lines and leading blanks do not count; a line is cut
// at 255 characters.
class MetricsLineReader {
 public:
  // Reads a file opened in binary mode. HV_OK, HV_LIMIT_REACHED for more than 65,534 bytes, or
  // HV_UNUSABLE_FILE when it cannot be read to its end. The byte 0x1A ends the text.
  uint32_t Load(platform::Stream* file);

  // The next line, valid until the next call; empty when none is left.
  std::optional<MetricsLine> Next();

  // Makes the line read last the next one again.
  void PushBack() { next_ = lineStart_; }

 private:
  std::string text_;
  std::size_t next_ = 0;
  std::size_t lineStart_ = 0;
};

}  // namespace hv
