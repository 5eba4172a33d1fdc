// A file descriptor that closes itself, and writing that takes partial results.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <utility>

namespace hv::platform {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      Close();
      fd_ = std::exchange(other.fd_, -1);
    }
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  int Get() const { return fd_; }
  bool IsOpen() const { return fd_ >= 0; }

  // Hands the descriptor over to the caller.
  int Release() { return std::exchange(fd_, -1); }

  // False when the system reports that something written was lost. True when none is open.
  bool Close();

 private:
  int fd_ = -1;
};

// Writes until all is written or a write fails; the number of bytes written. errno says why fewer.
std::size_t WriteFully(int fd, const void* bytes, std::size_t count);

// Reads once, repeating what a signal interrupted.
ssize_t ReadOnce(int fd, void* buffer, std::size_t count);

}  // namespace hv::platform
