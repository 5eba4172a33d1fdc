// Streams of the C runtime, opened binary: the text rules are platform/stream.cpp's.

#include <share.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <utility>

#include "platform/binary_stream.h"

namespace hv::platform {
namespace {

constexpr std::size_t BufferSize = 16384;

class RuntimeStream final : public Stream {
 public:
  ~RuntimeStream() override { Close(); }

  bool Open(const char* path, StreamAction action, bool update) {
    std::string mode = action == StreamAction::Read      ? "rb"
                       : action == StreamAction::Replace ? "wb"
                                                         : "ab";
    if (update) mode += '+';
    reads_ = update || action == StreamAction::Read;
    writes_ = update || action != StreamAction::Read;
    return OpenFile(path, mode.c_str());
  }

  // A file that its close deletes.
  bool OpenScratch(const char* path) {
    reads_ = writes_ = true;
    return OpenFile(path, "w+bTD");
  }

  std::size_t Read(void* buffer, std::size_t count) override {
    return TurnTo(Direction::Reading) ? std::fread(buffer, 1, count, file_) : 0;
  }

  int ReadByte() override { return TurnTo(Direction::Reading) ? std::getc(file_) : -1; }

  std::size_t Write(const void* bytes, std::size_t count) override {
    return TurnTo(Direction::Writing) ? std::fwrite(bytes, 1, count, file_) : 0;
  }

  bool Flush() override { return direction_ != Direction::Writing || std::fflush(file_) == 0; }

  int64_t Position() override {
    // Where an append stream writes is known once the bytes are out.
    std::fpos_t position = 0;
    return Flush() && std::fgetpos(file_, &position) == 0 ? position : -1;
  }

  bool Seek(int64_t position) override {
    const bool flushed = Flush();
    direction_ = Direction::None;
    const std::fpos_t place = position;
    const bool moved = std::fsetpos(file_, &place) == 0;
    // Not every runtime forgets the end of file with that.
    failed_ = HasError();
    std::clearerr(file_);
    return moved && flushed;
  }

  bool AtEnd() const override { return std::feof(file_) != 0; }
  bool HasError() const override { return failed_ || std::ferror(file_) != 0; }

  bool Close() override {
    std::FILE* const file = std::exchange(file_, nullptr);
    return file == nullptr || std::fclose(file) == 0;
  }

 private:
  bool OpenFile(const char* path, const char* mode) {
    file_ = _fsopen(path, mode, _SH_DENYNO);
    return file_ != nullptr && std::setvbuf(file_, nullptr, _IOFBF, BufferSize) == 0;
  }

  enum class Direction : uint8_t { None, Reading, Writing };

  // The runtime asks for a seek between the two directions, and not every one of them takes note of
  // a direction that the file is not open for.
  bool TurnTo(Direction direction) {
    if (direction == Direction::Reading ? !reads_ : !writes_) {
      failed_ = true;
      return false;
    }
    const bool turns = direction_ != Direction::None && direction_ != direction;
    direction_ = direction;
    return !turns || std::fseek(file_, 0, SEEK_CUR) == 0;
  }

  std::FILE* file_ = nullptr;
  bool reads_ = false;
  bool writes_ = false;
  bool failed_ = false;
  Direction direction_ = Direction::None;
};

}  // namespace

std::unique_ptr<Stream> OpenBinaryStream(const char* path, StreamAction action, bool update) {
  if (path == nullptr) return nullptr;
  auto stream = std::make_unique<RuntimeStream>();
  if (!stream->Open(path, action, update)) return nullptr;
  return stream;
}

std::unique_ptr<Stream> OpenScratchStream() {
  char folder[MAX_PATH + 1];
  char name[MAX_PATH];
  const DWORD length = GetTempPathA(sizeof folder, folder);
  if (length == 0 || length >= sizeof folder) return nullptr;
  // Before there is a file that would stay where memory runs out.
  auto stream = std::make_unique<RuntimeStream>();
  if (GetTempFileNameA(folder, "hva", 0, name) == 0) return nullptr;
  if (stream->OpenScratch(name)) return stream;
  DeleteFileA(name);
  return nullptr;
}

}  // namespace hv::platform
