#include "platform/low_file_calls.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>

#include "platform/posix/descriptor.h"
#include "platform/posix/names.h"

namespace hv::platform {
namespace {

constexpr mode_t NewFileMode = 0666;

bool IsSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

int32_t LowCreate(const char* path) {
  return open(SystemName(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, NewFileMode);
}

int32_t LowCreateBelow(const char* path, int32_t spared) {
  // Without O_NONBLOCK a pipe of that name would wait for its reader.
  constexpr int Flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  Descriptor file(open(path, Flags, NewFileMode));
  if (!file.IsOpen() && errno == ELOOP && unlink(path) == 0) {
    file = Descriptor(open(path, Flags | O_EXCL, NewFileMode));
  }
  struct stat status;
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return LowNoHandle;
  }
  struct stat sparedStatus;
  if (fstat(spared, &sparedStatus) == 0 && IsSameFile(status, sparedStatus)) return LowNoHandle;
  if (status.st_size > 0 && ftruncate(file.Get(), 0) != 0) return LowNoHandle;
  return file.Release();
}

int32_t LowOpen(const char* path, LowAccess access) {
  const int flags = access == LowAccess::Read    ? O_RDONLY
                    : access == LowAccess::Write ? O_WRONLY
                                                 : O_RDWR;
  const int fd = open(SystemName(path).c_str(), flags | O_CLOEXEC);
  struct stat status;
  if (fd >= 0 && (fstat(fd, &status) != 0 || S_ISDIR(status.st_mode))) {
    close(fd);
    return LowNoHandle;
  }
  return fd;
}

int64_t LowRead(int32_t handle, void* buffer, std::size_t count) {
  // A pipe or a terminal gives what it has; only the end of the file gives fewer than asked here.
  char* next = static_cast<char*>(buffer);
  std::size_t left = count;
  while (left > 0) {
    const ssize_t got = ReadOnce(handle, next, left);
    if (got < 0) return -1;
    if (got == 0) break;
    next += got;
    left -= static_cast<std::size_t>(got);
  }
  return static_cast<int64_t>(count - left);
}

std::size_t LowWrite(int32_t handle, const void* bytes, std::size_t count, std::size_t piece) {
  constexpr std::size_t PiecesOfCall = 32;
  char* const from = static_cast<char*>(const_cast<void*>(bytes));
  std::size_t done = 0;
  while (done < count) {
    iovec pieces[PiecesOfCall];
    int pieceCount = 0;
    for (std::size_t at = done; at < count && pieceCount < static_cast<int>(PiecesOfCall);) {
      const std::size_t size = std::min(count - at, piece);
      pieces[pieceCount++] = {from + at, size};
      at += size;
    }
    const ssize_t written = writev(handle, pieces, pieceCount);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    done += static_cast<std::size_t>(written);
  }
  return done;
}

int64_t LowSeek(int32_t handle, int64_t offset, LowOrigin origin) {
  const int whence = origin == LowOrigin::Start     ? SEEK_SET
                     : origin == LowOrigin::Current ? SEEK_CUR
                                                    : SEEK_END;
  return lseek(handle, offset, whence);
}

int32_t LowClose(int32_t handle) {
  return close(handle) == 0 ? 0 : -1;
}

}  // namespace hv::platform
