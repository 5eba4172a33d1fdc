// A source file read through a small buffer with pushback, and a channel written through another:
// the two ends of every macro filter.
//
//   function              at the end of the source
//   StreamGetByte         -1
//   StreamRead            fewer bytes than asked
//   StreamTake            false, with what was read pushed back
//   StreamCopyRun         -1, also when the channel has failed
//   StreamSkipTo          false
//   StreamReadParameter   what there was
//   StreamReadLine        what there was
//   StreamCopy, StreamSkip, StreamCopyLine, StreamSkipLine   stop
//
// What is written goes to the channel in pieces of 1024 bytes, and nothing any more once a piece
// has failed. A read error counts as the end; the source itself tells of it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "channel/printer_channel.h"
#include "platform/stream.h"

namespace hv {

struct MacroStream {
  static constexpr std::size_t BufferSize = 1024;
  static constexpr std::size_t PushbackSize = 100;  // the longest text looked for has 66 bytes

  platform::Stream* source = nullptr;  // borrowed
  PrinterChannel* channel = nullptr;   // borrowed
  std::size_t inPos = 0;
  std::size_t inCount = 0;
  std::size_t pushCount = 0;
  std::size_t outCount = 0;
  std::array<uint8_t, BufferSize> in;
  std::array<uint8_t, PushbackSize> pushback;  // the last one is read first
  std::array<uint8_t, BufferSize> out;
};

// A set of byte values.
class ByteSet {
 public:
  constexpr explicit ByteSet(std::string_view bytes) {
    for (const char byte : bytes) Add(byte);
  }
  constexpr void Add(char byte) { members_[static_cast<uint8_t>(byte)] = true; }
  constexpr bool Has(uint8_t byte) const { return members_[byte]; }

 private:
  std::array<bool, 256> members_ = {};
};

// The value text of a PCL parameter, of which the first 12 bytes are kept, with room for its
// letter.
struct ParameterText {
  static constexpr std::size_t MostBytes = 12;

  std::string_view Text() const { return {bytes.data(), length}; }

  std::array<char, MostBytes + 1> bytes;
  std::size_t length = 0;
};

constexpr uint8_t Escape = 0x1B;

// Reading starts where the source stands.
void StreamOpenReader(MacroStream* stream, platform::Stream* source);
void StreamOpenWriter(MacroStream* stream, PrinterChannel* channel);
// Writes what still waits; also a piece of no bytes.
void StreamCloseWriter(MacroStream* stream);

int StreamFetchByte(MacroStream* stream);  // when none is buffered, or some are pushed back
inline int StreamGetByte(MacroStream* stream) {
  const bool isBuffered = stream->pushCount == 0 && stream->inPos < stream->inCount;
  return isBuffered ? stream->in[stream->inPos++] : StreamFetchByte(stream);
}
std::size_t StreamRead(MacroStream* stream, void* buffer, std::size_t count);
// Makes these bytes the next to be read, in their order.
void StreamUnread(MacroStream* stream, std::string_view bytes);
// Takes the text when it comes next.
bool StreamTake(MacroStream* stream, std::string_view text);
// Reads up to and including the next byte of this value.
bool StreamSkipTo(MacroStream* stream, uint8_t byte);
void StreamSkip(MacroStream* stream, uint64_t count);
void StreamSkipLine(MacroStream* stream);
// Reads up to the letter that ends a PCL parameter (0x40 to 0x7E but 0x5F), which comes next.
ParameterText StreamReadParameter(MacroStream* stream);
// Reads at most `size` bytes and not beyond a line feed, which is counted.
std::size_t StreamReadLine(MacroStream* stream, char* buffer, std::size_t size);
// Goes to a place from the start of the source. False when there is no such place.
bool StreamSeek(MacroStream* stream, int64_t position);

void StreamPutByte(MacroStream* stream, uint8_t byte);
void StreamWrite(MacroStream* stream, std::string_view bytes);
// Copies bytes up to one of the set, which is read and returned.
int StreamCopyRun(MacroStream* stream, const ByteSet& stops);
void StreamCopy(MacroStream* stream, uint64_t count);
void StreamCopyLine(MacroStream* stream);

}  // namespace hv
