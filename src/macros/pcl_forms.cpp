// The forms of PCL macros: a definition from the first byte to the end, but for three bytes behind
// it at most.

#include <array>
#include <limits>
#include <optional>

#include "macros/macro_analysis.h"
#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::string_view MacroCommand = "\x1B&f";

constexpr bool IsLetter(int byte, char upper) {
  return byte == upper || byte == ToLower(upper);
}

// "0X" behind the identifier, or a command of its own.
bool TakesDefinitionStart(MacroStream* stream) {
  StreamTake(stream, MacroCommand);
  return StreamTake(stream, "0") && IsLetter(StreamGetByte(stream), 'X');
}

// ESC & f # y 0 X; the identifier, or nothing when there is no such start.
std::optional<uint16_t> ReadStart(MacroStream* stream) {
  if (!StreamTake(stream, MacroCommand)) return std::nullopt;
  uint32_t identifier = 0;
  bool hasDigits = false;
  int byte = StreamGetByte(stream);
  for (; byte >= '0' && byte <= '9'; byte = StreamGetByte(stream)) {
    identifier = identifier * 10 + static_cast<uint32_t>(byte - '0');
    hasDigits = true;
    if (identifier > std::numeric_limits<uint16_t>::max()) return std::nullopt;
  }
  if (!hasDigits || !IsLetter(byte, 'Y') || !TakesDefinitionStart(stream)) return std::nullopt;
  return static_cast<uint16_t>(identifier);
}

// ESC & f 1 X, at the place where each kind of end has it.
bool EndsDefinition(MacroStream* stream, int64_t size) {
  constexpr int64_t EndWithThreeBytes = 8;
  constexpr std::size_t LongestEnd = 11;
  if (!StreamSeek(stream, size - EndWithThreeBytes)) return false;
  if (StreamTake(stream, MacroCommand)) {
    return StreamTake(stream, "1") && IsLetter(StreamGetByte(stream), 'X');
  }
  if (!StreamSeek(stream, size - static_cast<int64_t>(LongestEnd))) return false;
  std::array<char, LongestEnd> read;
  const std::string_view end(read.data(), StreamRead(stream, read.data(), read.size()));
  if (StartsWith(end, MacroCommand)) return StartsWith(end.substr(MacroCommand.size()), "1X");
  return end.find("\x1B&f1X") != std::string_view::npos ||
         end.find("\x1B&f1x") != std::string_view::npos;
}

}  // namespace

uint32_t AnalyzePclMacro(MacroStream* stream, int64_t size, MacroFindings* findings) {
  const std::optional<uint16_t> identifier = ReadStart(stream);
  if (!identifier || !EndsDefinition(stream, size)) return HV_WRONG_LANGUAGE;
  findings->identifier = *identifier;
  return HV_OK;
}

}  // namespace hv
