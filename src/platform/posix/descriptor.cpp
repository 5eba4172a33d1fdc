#include "platform/posix/descriptor.h"

#include <errno.h>
#include <unistd.h>

namespace hv::platform {

bool Descriptor::Close() {
  if (fd_ < 0) return true;
  // The descriptor is gone even when a signal interrupted the call.
  return close(std::exchange(fd_, -1)) == 0 || errno == EINTR;
}

std::size_t WriteFully(int fd, const void* bytes, std::size_t count) {
  const char* next = static_cast<const char*>(bytes);
  std::size_t left = count;
  while (left > 0) {
    const ssize_t written = write(fd, next, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    next += written;
    left -= static_cast<std::size_t>(written);
  }
  return count - left;
}

ssize_t ReadOnce(int fd, void* buffer, std::size_t count) {
  ssize_t got = 0;
  do {
    got = read(fd, buffer, count);
  } while (got < 0 && errno == EINTR);
  return got;
}

}  // namespace hv::platform
