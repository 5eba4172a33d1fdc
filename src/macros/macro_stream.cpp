#include "macros/macro_stream.h"

#include <algorithm>
#include <cstring>

namespace hv {
namespace {

constexpr uint8_t LineFeed = '\n';

// What is left in the buffer.
std::string_view Rest(const MacroStream* stream) {
  return {reinterpret_cast<const char*>(stream->in.data()) + stream->inPos,
          stream->inCount - stream->inPos};
}

// Buffered bytes, fetched when there are none; empty at the end. Bytes pushed back come before.
std::string_view Buffered(MacroStream* stream) {
  if (stream->inPos == stream->inCount) {
    stream->inPos = 0;
    stream->inCount = stream->source->Read(stream->in.data(), stream->in.size());
  }
  return Rest(stream);
}

// What can be looked at without reading on.
std::string_view Ahead(const MacroStream* stream) {
  return stream->pushCount == 0 ? Rest(stream) : std::string_view();
}

bool HasFailed(const MacroStream* stream) {
  return stream->channel->status != 0;
}

void WriteBuffer(MacroStream* stream) {
  if (!HasFailed(stream)) {
    ChannelWrite(stream->out.data(), static_cast<uint32_t>(stream->outCount), stream->channel);
  }
  stream->outCount = 0;
}

// Hands on `count` bytes of the source in runs; false when it ends first.
template <typename Sink>
bool Drain(MacroStream* stream, uint64_t count, Sink sink) {
  while (count > 0) {
    if (stream->pushCount > 0) {
      const char byte = static_cast<char>(stream->pushback[--stream->pushCount]);
      sink(std::string_view(&byte, 1));
      --count;
      continue;
    }
    const std::string_view buffered = Buffered(stream);
    if (buffered.empty()) return false;
    const std::size_t run = static_cast<std::size_t>(std::min<uint64_t>(count, buffered.size()));
    sink(buffered.substr(0, run));
    stream->inPos += run;
    count -= run;
  }
  return true;
}

// Hands on the source up to and including the next byte of this value; false when it ends first.
template <typename Sink>
bool DrainTo(MacroStream* stream, uint8_t byte, Sink sink) {
  for (;;) {
    if (stream->pushCount > 0) {
      const uint8_t next = stream->pushback[--stream->pushCount];
      const char c = static_cast<char>(next);
      sink(std::string_view(&c, 1));
      if (next == byte) return true;
      continue;
    }
    const std::string_view buffered = Buffered(stream);
    if (buffered.empty()) return false;
    const void* const found = std::memchr(buffered.data(), byte, buffered.size());
    const std::size_t run =
        found == nullptr ? buffered.size() : static_cast<const char*>(found) - buffered.data() + 1;
    sink(buffered.substr(0, run));
    stream->inPos += run;
    if (found != nullptr) return true;
  }
}

constexpr auto Discard = [](std::string_view /*bytes*/) {};

auto WriterOf(MacroStream* stream) {
  return [stream](std::string_view bytes) { StreamWrite(stream, bytes); };
}

constexpr bool EndsParameter(int byte) {
  return byte >= 0x40 && byte <= 0x7E && byte != 0x5F;
}

}  // namespace

void StreamOpenReader(MacroStream* stream, platform::Stream* source) {
  stream->source = source;
  stream->inPos = stream->inCount = 0;
  stream->pushCount = 0;
}

void StreamOpenWriter(MacroStream* stream, PrinterChannel* channel) {
  stream->channel = channel;
  stream->outCount = 0;
}

void StreamCloseWriter(MacroStream* stream) {
  WriteBuffer(stream);
}

int StreamFetchByte(MacroStream* stream) {
  if (stream->pushCount > 0) return stream->pushback[--stream->pushCount];
  if (Buffered(stream).empty()) return -1;
  return stream->in[stream->inPos++];
}

std::size_t StreamRead(MacroStream* stream, void* buffer, std::size_t count) {
  char* to = static_cast<char*>(buffer);
  Drain(stream, count, [&](std::string_view bytes) { to += bytes.copy(to, bytes.size()); });
  return static_cast<std::size_t>(to - static_cast<char*>(buffer));
}

void StreamUnread(MacroStream* stream, std::string_view bytes) {
  // Most often they still stand in the buffer.
  const std::size_t count = bytes.size();
  if (stream->pushCount == 0 && stream->inPos >= count &&
      std::equal(bytes.begin(), bytes.end(), Rest(stream).data() - count)) {
    stream->inPos -= count;
    return;
  }
  for (std::size_t i = bytes.size(); i-- > 0;) {
    stream->pushback[stream->pushCount++] = static_cast<uint8_t>(bytes[i]);
  }
}

bool StreamTake(MacroStream* stream, std::string_view text) {
  if (const std::string_view ahead = Ahead(stream); ahead.size() >= text.size()) {
    if (ahead.substr(0, text.size()) != text) return false;
    stream->inPos += text.size();
    return true;
  }
  std::array<char, MacroStream::PushbackSize> read;
  const std::size_t count = StreamRead(stream, read.data(), text.size());
  const std::string_view next(read.data(), count);
  if (next == text) return true;
  StreamUnread(stream, next);
  return false;
}

bool StreamSkipTo(MacroStream* stream, uint8_t byte) {
  return DrainTo(stream, byte, Discard);
}

void StreamSkip(MacroStream* stream, uint64_t count) {
  Drain(stream, count, Discard);
}

void StreamSkipLine(MacroStream* stream) {
  DrainTo(stream, LineFeed, Discard);
}

ParameterText StreamReadParameter(MacroStream* stream) {
  ParameterText parameter;
  for (int byte = StreamGetByte(stream); byte >= 0; byte = StreamGetByte(stream)) {
    const char c = static_cast<char>(byte);
    if (EndsParameter(byte)) {
      StreamUnread(stream, {&c, 1});
      break;
    }
    if (parameter.length < ParameterText::MostBytes) parameter.bytes[parameter.length++] = c;
  }
  return parameter;
}

std::size_t StreamReadLine(MacroStream* stream, char* buffer, std::size_t size) {
  std::size_t count = 0;
  while (count < size) {
    const int byte = StreamGetByte(stream);
    if (byte < 0) break;
    buffer[count++] = static_cast<char>(byte);
    if (byte == LineFeed) break;
  }
  return count;
}

bool StreamSeek(MacroStream* stream, int64_t position) {
  stream->inPos = stream->inCount = 0;
  stream->pushCount = 0;
  return position >= 0 && stream->source->Seek(position);
}

void StreamPutByte(MacroStream* stream, uint8_t byte) {
  const char c = static_cast<char>(byte);
  StreamWrite(stream, {&c, 1});
}

void StreamWrite(MacroStream* stream, std::string_view bytes) {
  for (;;) {
    const std::size_t room = stream->out.size() - stream->outCount;
    const std::size_t part = std::min(room, bytes.size());
    if (part > 0) std::memcpy(&stream->out[stream->outCount], bytes.data(), part);
    stream->outCount += part;
    if (part < room) return;
    WriteBuffer(stream);
    bytes.remove_prefix(part);
  }
}

int StreamCopyRun(MacroStream* stream, const ByteSet& stops) {
  while (stream->pushCount > 0) {
    const uint8_t byte = stream->pushback[--stream->pushCount];
    if (stops.Has(byte)) return byte;
    StreamPutByte(stream, byte);
  }
  while (!HasFailed(stream)) {
    const std::string_view buffered = Buffered(stream);
    if (buffered.empty()) return -1;
    const auto* const stop = std::find_if(buffered.begin(), buffered.end(), [&](char c) {
      return stops.Has(static_cast<uint8_t>(c));
    });
    const std::size_t run = static_cast<std::size_t>(stop - buffered.begin());
    StreamWrite(stream, buffered.substr(0, run));
    stream->inPos += run;
    if (run < buffered.size()) return stream->in[stream->inPos++];
  }
  return -1;
}

void StreamCopy(MacroStream* stream, uint64_t count) {
  Drain(stream, count, WriterOf(stream));
}

void StreamCopyLine(MacroStream* stream) {
  DrainTo(stream, LineFeed, WriterOf(stream));
}

}  // namespace hv
