#include "channel/sending.h"

#include <cstring>
#include <optional>
#include <vector>

#include "channel/job_framing.h"
#include "platform/files.h"
#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::size_t ChunkSize = 2048;
constexpr uint32_t FileModeRead = 4;

bool HasFlag(const HvJobInfo& job, uint32_t flag) {
  return (job.flags & flag) != 0;
}

uint32_t OpenJob(const char* destination, const HvJobInfo& job, bool append,
                 PrinterChannel* channel) {
  channel->job = &job;
  channel->fileMode = append ? FileModeAppend : FileModeReplace;
  return ChannelOpen(destination, channel);
}

std::vector<char> ReadLiteral(const char* text) {
  std::vector<char> payload(std::strlen(text) + 1);
  ExpandEscapes(payload.data(), text);
  payload.resize(std::strlen(payload.data()));
  return payload;
}

// Empty for a text that is not all pairs of hexadecimal digits.
std::optional<std::vector<char>> ReadHex(const char* text) {
  const std::size_t length = std::strlen(text);
  if (length % 2 != 0) return std::nullopt;
  std::vector<char> payload;
  payload.reserve(length / 2 + 1);
  for (std::size_t i = 0; i < length / 2; ++i) {
    const int high = HexDigitValue(text[2 * i]);
    const int low = HexDigitValue(text[2 * i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    payload.push_back(static_cast<char>(high << 4 | low));
  }
  return payload;
}

}  // namespace

uint32_t SendFile(const char* file, const char* destination, const HvJobInfo& job, bool append) {
  if (platform::KindOf(file) == platform::FileKind::None) return HV_NOT_FOUND;
  const std::unique_ptr<platform::Stream> source =
      platform::OpenStream(file, FileModeTable[FileModeRead]);
  if (source == nullptr) return HV_CANNOT_OPEN;
  PrinterChannel channel;
  channel.source = file;
  const uint32_t opened = OpenJob(destination, job, append, &channel);
  if (opened != HV_OK) return opened;

  uint32_t repeats = 1;
  if (HasFlag(job, JOB_FLAG_ESC_K)) {
    SendPersonalitySelect(&channel);
  } else if (HasFlag(job, JOB_FLAG_PJL)) {
    PjlBeginJob(&channel, true);
  } else {
    repeats = job.copies;
  }
  if (ChannelCloseIfFailed(&channel)) return channel.status;

  uint32_t passes = 0;
  uint32_t result = HV_OK;
  do {
    // The first pass is at the start as it is: a pipe, which has no way back, is sent once.
    const bool atStart = passes == 0 || source->Seek(0);
    result = atStart ? ChannelSendStream(source.get(), &channel, SendEncoding::Raw)
                     : uint32_t{HV_READ_FAILED};
  } while (result == HV_OK && ++passes < repeats);

  if (result != HV_PRINTER_REFUSED) {
    if (HasFlag(job, JOB_FLAG_PJL)) {
      PjlEndJob(&channel, true);
      if (ChannelCloseIfFailed(&channel)) return channel.status;
    }
    if (HasFlag(job, JOB_FLAG_ESC_K)) ChannelWriteText(EscKJobEnd, &channel);
  }
  ChannelClose(&channel);
  return result;
}

uint32_t SendString(const char* text, const char* destination, const HvJobInfo& job, bool append) {
  const std::optional<std::vector<char>> payload =
      *text == '$' ? ReadLiteral(text + 1) : ReadHex(text);
  if (!payload) return HV_BAD_ARGUMENT;
  PrinterChannel channel;
  const uint32_t opened = OpenJob(destination, job, append, &channel);
  if (opened != HV_OK) return opened;

  const bool pjl = HasFlag(job, JOB_FLAG_PJL);
  if (pjl) PjlBeginJob(&channel, false);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  ChannelWrite(payload->data(), static_cast<uint32_t>(payload->size()), &channel);
  if (channel.status == 0 && pjl) PjlEndJob(&channel, false);
  ChannelClose(&channel);
  return channel.status;
}

uint32_t ChannelSendStream(platform::Stream* stream, PrinterChannel* channel,
                           SendEncoding encoding) {
  const bool hex = encoding == SendEncoding::Hex;
  const auto buffer = std::make_unique<uint8_t[]>(ChunkSize);
  while (!stream->AtEnd()) {
    std::size_t count = stream->Read(buffer.get(), hex ? ChunkSize / 2 : ChunkSize);
    if (count == 0) {
      if (stream->HasError()) return HV_READ_FAILED;
      continue;
    }
    if (hex) {
      ExpandToHex(buffer.get(), count);
      count *= 2;
    }
    ChannelWrite(buffer.get(), static_cast<uint32_t>(count), channel);
    if (channel->status != 0) break;
  }
  return channel->status;
}

void ExpandEscapes(char* dest, const char* text) {
  while (*text != '\0') {
    char c = *text++;
    if (c == '\\') {
      if (*text == '\0') break;
      c = *text++;
      if (c == 'n') {
        c = '\n';
      } else if (c == 'x') {
        int value = 0;
        bool digits = true;
        for (int taken = 0; taken < 2 && *text != '\0'; ++taken) {
          const int digit = HexDigitValue(*text++);
          digits = digits && digit >= 0;
          if (digits) value = value << 4 | digit;
        }
        c = static_cast<char>(value);
      }
    }
    *dest++ = c;
  }
  *dest = '\0';
}

char HexDigitChar(unsigned value) {
  return static_cast<char>(value < 10 ? '0' + value : 'A' + value - 10);
}

void ExpandToHex(uint8_t* bytes, std::size_t count) {
  // From the last byte on, so that one buffer serves both forms.
  for (std::size_t i = count; i-- > 0;) {
    const uint8_t byte = bytes[i];
    bytes[2 * i] = static_cast<uint8_t>(HexDigitChar(byte >> 4));
    bytes[2 * i + 1] = static_cast<uint8_t>(HexDigitChar(byte & 0x0F));
  }
}

}  // namespace hv
