// The archive, read through one buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace hv {

class ArchiveFile {
 public:
  ArchiveFile();
  ArchiveFile(const ArchiveFile&) = delete;
  ArchiveFile& operator=(const ArchiveFile&) = delete;
  ~ArchiveFile();

  // False when the file cannot be opened, or has no size (a pipe).
  bool Open(const char* path);
  int32_t Handle() const { return handle_; }
  int64_t Size() const { return size_; }

  // False, with nothing changed, when the position lies outside the file.
  bool Seek(int64_t position);
  int64_t Position() const { return bufferEnd_ - static_cast<int64_t>(Unread().size()); }
  // All of the bytes, or false at the end of the file.
  bool Read(std::span<uint8_t> to);
  // Whether these four bytes, little-endian, stand at the position. Moves.
  bool HasSignatureAt(int64_t position, uint32_t signature);

  // The bytes that are in the buffer and have not been taken yet.
  std::span<const uint8_t> Unread() const { return {&buffer_[next_], filled_ - next_}; }
  void Take(std::size_t count) { next_ += count; }
  // Keeps the unread bytes and fills the rest of the buffer. False when nothing could be added.
  bool More();

 private:
  std::unique_ptr<uint8_t[]> buffer_;
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  int64_t bufferEnd_ = 0;  // offset in the file of the byte behind the buffer
  int64_t size_ = 0;
  int32_t handle_;
};

}  // namespace hv
