#include "platform/binary_stream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "platform/posix/broken_pipe.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/environment.h"
#include "platform/posix/names.h"

namespace hv::platform {
namespace {

constexpr std::size_t BufferSize = 16384;
constexpr mode_t NewFileMode = 0666;

int OpenFlags(StreamAction action, bool update) {
  if (action == StreamAction::Read) return update ? O_RDWR : O_RDONLY;
  const int made = action == StreamAction::Replace ? O_TRUNC : O_APPEND;
  return (update ? O_RDWR : O_WRONLY) | O_CREAT | made;
}

// One buffer serves both directions: while reading it holds raw bytes of the file of which the
// first `next_` are used up, while writing the `filled_` bytes that still have to go out. It goes out
// when it is full, so that a file that is written from its begin is written in whole pages.
class FileStream final : public Stream {
 public:
  FileStream(Descriptor file, bool isPipe)
      : file_(std::move(file)), isPipe_(isPipe), buffer_(new uint8_t[BufferSize]) {}

  ~FileStream() override { FlushWritten(); }

  std::size_t Read(void* buffer, std::size_t count) override {
    uint8_t* const to = static_cast<uint8_t*>(buffer);
    std::size_t got = 0;
    while (got < count && !atEnd_) {
      if ((writing_ || next_ == filled_) && !Fill()) break;
      const std::size_t part = std::min(count - got, filled_ - next_);
      std::memcpy(to + got, &buffer_[next_], part);
      next_ += part;
      got += part;
    }
    return got;
  }

  int ReadByte() override {
    if (atEnd_) return -1;
    if ((writing_ || next_ == filled_) && !Fill()) return -1;
    return buffer_[next_++];
  }

  std::size_t Write(const void* bytes, std::size_t count) override {
    if (!BeginWriting()) return 0;
    const uint8_t* from = static_cast<const uint8_t*>(bytes);
    std::size_t done = 0;
    while (done < count) {
      const std::size_t left = count - done;
      std::size_t part = std::min(left, BufferSize - filled_);
      if (part == BufferSize) {
        // Whole buffers go out without lying in one.
        part = left - left % BufferSize;
        const std::size_t written = WriteOut(from + done, part);
        failed_ = failed_ || written < part;
        if (written < part) return done + written;
      } else {
        std::memcpy(&buffer_[filled_], from + done, part);
        filled_ += part;
        if (filled_ == BufferSize && !FlushWritten()) return done;
      }
      done += part;
    }
    return done;
  }

  bool Flush() override { return FlushWritten(); }

  int64_t Position() override {
    // Where an append stream writes is known once the bytes are out.
    if (!FlushWritten()) return -1;
    const int64_t system = lseek(file_.Get(), 0, SEEK_CUR);
    failed_ = failed_ || system < 0;
    return system < 0 ? -1 : system - static_cast<int64_t>(filled_ - next_);
  }

  bool Seek(int64_t position) override {
    const bool flushed = FlushWritten();
    writing_ = false;
    next_ = filled_ = 0;
    atEnd_ = false;
    const bool moved = lseek(file_.Get(), position, SEEK_SET) >= 0;
    failed_ = failed_ || !moved;
    return moved && flushed;
  }

  bool AtEnd() const override { return atEnd_; }
  bool HasError() const override { return failed_; }

  bool Close() override {
    const bool flushed = FlushWritten();
    writing_ = false;
    next_ = filled_ = 0;
    return file_.Close() && flushed;
  }

 private:
  // Puts fresh bytes into the used-up buffer; false at the end or on failure.
  bool Fill() {
    if (writing_) {
      if (!FlushWritten()) return false;
      writing_ = false;
    }
    next_ = filled_ = 0;
    const ssize_t got = ReadOnce(file_.Get(), buffer_.get(), BufferSize);
    if (got < 0) failed_ = true;
    if (got == 0) atEnd_ = true;
    if (got <= 0) return false;
    filled_ = static_cast<std::size_t>(got);
    return true;
  }

  // Turns from reading to writing: the file goes back to where the reader was.
  bool BeginWriting() {
    if (!writing_) {
      if (next_ < filled_) {
        const int64_t ahead = static_cast<int64_t>(filled_ - next_);
        if (lseek(file_.Get(), -ahead, SEEK_CUR) < 0) {
          failed_ = true;
          return false;
        }
      }
      next_ = filled_ = 0;
      writing_ = true;
    }
    return true;
  }

  // A pipe that nobody reads any more fails as any other file does: without a signal.
  std::size_t WriteOut(const void* bytes, std::size_t count) {
    std::optional<BrokenPipeBlock> noSignal;
    if (isPipe_) noSignal.emplace();
    return WriteFully(file_.Get(), bytes, count);
  }

  // Bytes that cannot be written are dropped, so that a failure is not met again at the close.
  bool FlushWritten() {
    if (!writing_ || filled_ == 0) return true;
    const std::size_t waiting = std::exchange(filled_, 0);
    const bool written = WriteOut(buffer_.get(), waiting) == waiting;
    failed_ = failed_ || !written;
    return written;
  }

  Descriptor file_;
  bool isPipe_;
  std::unique_ptr<uint8_t[]> buffer_;
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  bool writing_ = false;
  bool atEnd_ = false;
  bool failed_ = false;
};

}  // namespace

std::unique_ptr<Stream> OpenBinaryStream(const char* path, StreamAction action, bool update) {
  const std::string name = SystemName(path);
  if (name.empty()) return nullptr;
  Descriptor file(open(name.c_str(), OpenFlags(action, update) | O_CLOEXEC, NewFileMode));
  struct stat status;
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || S_ISDIR(status.st_mode)) return nullptr;
  return std::make_unique<FileStream>(std::move(file), S_ISFIFO(status.st_mode));
}

std::unique_ptr<Stream> OpenScratchStream() {
  for (const std::string& folder :
       {Environment("TMP"), Environment("TMPDIR"), std::string(P_tmpdir)}) {
    std::string name = SystemName(folder.c_str());
    if (name.empty()) continue;
    name += "/hvapiXXXXXX";
    Descriptor file(mkostemp(name.data(), O_CLOEXEC));
    // Without a name from the start, it cannot be left behind.
    if (file.IsOpen() && unlink(name.c_str()) == 0) {
      return std::make_unique<FileStream>(std::move(file), false);
    }
  }
  return nullptr;
}

}  // namespace hv::platform
