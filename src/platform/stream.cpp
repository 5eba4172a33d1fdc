#include "platform/stream.h"

#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/binary_stream.h"

namespace hv::platform {
namespace {

struct StreamMode {
  StreamAction action = StreamAction::Read;
  bool update = false;
  bool text = false;
};

std::optional<StreamMode> ParseMode(std::string_view mode) {
  if (mode.empty()) return std::nullopt;
  StreamMode parsed;
  const std::string_view extras = mode.substr(1);
  parsed.update = extras.find('+') != std::string_view::npos;
  parsed.text = extras.find('b') == std::string_view::npos;
  if (extras.find_first_not_of("+b") != std::string_view::npos) return std::nullopt;
  switch (mode[0]) {
    case 'r':
      parsed.action = StreamAction::Read;
      break;
    case 'w':
      parsed.action = StreamAction::Replace;
      break;
    case 'a':
      parsed.action = StreamAction::Append;
      break;
    default:
      return std::nullopt;
  }
  return parsed;
}

// The text rules over a binary stream. They are one code for all systems, since the runtimes differ
// in the corners: one loses its place in a file whose lines end with LF alone, another takes a last
// 0x1A out of a file that is only opened.
class TextStream final : public Stream {
 public:
  explicit TextStream(std::unique_ptr<Stream> file) : file_(std::move(file)) {}

  std::size_t Read(void* buffer, std::size_t count) override {
    uint8_t* const to = static_cast<uint8_t*>(buffer);
    std::size_t got = 0;
    while (got < count) {
      const int byte = ReadByte();
      if (byte < 0) break;
      to[got++] = static_cast<uint8_t>(byte);
    }
    return got;
  }

  int ReadByte() override {
    if (atEnd_) return -1;
    const int byte = NextRaw();
    if (byte == EndOfText) {
      held_ = byte;
      atEnd_ = true;
      return -1;
    }
    if (byte < 0) atEnd_ = file_->AtEnd();
    if (byte != '\r') return byte;
    const int next = NextRaw();
    if (next == '\n') return next;
    held_ = next;
    return byte;
  }

  std::size_t Write(const void* bytes, std::size_t count) override {
    if (held_ != NothingHeld && !file_->Seek(Position())) return 0;
    held_ = NothingHeld;
    const char* const from = static_cast<const char*>(bytes);
    std::size_t done = 0;
    while (done < count) {
      const void* lineEnd = std::memchr(from + done, '\n', count - done);
      const std::size_t run =
          lineEnd == nullptr ? count - done : static_cast<const char*>(lineEnd) - (from + done);
      const std::size_t written = file_->Write(from + done, run);
      done += written;
      if (written < run || lineEnd == nullptr) break;
      if (file_->Write("\r\n", 2) < 2) break;
      ++done;
    }
    return done;
  }

  bool Flush() override { return file_->Flush(); }

  int64_t Position() override {
    const int64_t position = file_->Position();
    return position < 0 || held_ == NothingHeld ? position : position - 1;
  }

  bool Seek(int64_t position) override {
    held_ = NothingHeld;
    atEnd_ = false;
    return file_->Seek(position);
  }

  bool AtEnd() const override { return atEnd_; }
  bool HasError() const override { return file_->HasError(); }
  bool Close() override { return file_->Close(); }

 private:
  static constexpr int NothingHeld = -1;
  static constexpr int EndOfText = 0x1A;

  int NextRaw() {
    const int held = std::exchange(held_, NothingHeld);
    return held == NothingHeld ? file_->ReadByte() : held;
  }

  std::unique_ptr<Stream> file_;
  int held_ = NothingHeld;  // a byte read from the file and not given out
  bool atEnd_ = false;
};

}  // namespace

std::size_t Stream::ReadLine(char* buffer, std::size_t size) {
  std::size_t length = 0;
  while (length + 1 < size) {
    const int byte = ReadByte();
    if (byte < 0) break;
    buffer[length++] = static_cast<char>(byte);
    if (byte == '\n') break;
  }
  // After a failed read the piece read so far is not a line.
  if (length == 0 || HasError()) return 0;
  buffer[length] = '\0';
  return length;
}

std::unique_ptr<Stream> OpenStream(const char* path, const char* mode) {
  const std::optional<StreamMode> parsed = ParseMode(mode);
  if (!parsed) return nullptr;
  std::unique_ptr<Stream> file = OpenBinaryStream(path, parsed->action, parsed->update);
  if (file == nullptr || !parsed->text) return file;
  return std::make_unique<TextStream>(std::move(file));
}

}  // namespace hv::platform
