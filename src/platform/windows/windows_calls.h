// The Windows headers, and a handle that closes itself.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <utility>

namespace hv::platform {

// A handle of the CreateFile kind.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() {
    if (IsOpen()) CloseHandle(handle_);
  }

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }
  // The handle, which is the caller's to close from now on.
  HANDLE Release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

 private:
  HANDLE handle_;
};

// Whether two handles are of one and the same file.
bool IsSameFile(HANDLE a, HANDLE b);

}  // namespace hv::platform
