#include "platform/low_file_calls.h"

#include <algorithm>

#include "platform/windows/windows_calls.h"

namespace hv::platform {
namespace {

static_assert(LowNoHandle == HFILE_ERROR);

constexpr int NormalAttributes = 0;

// The handles of this layer are ordinary ones.
HANDLE HandleOf(int32_t handle) {
  return reinterpret_cast<HANDLE>(static_cast<intptr_t>(handle));
}

HANDLE OpenToReplace(const char* path, DWORD disposition) {
  return CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

// Takes a link away; what it leads to stays.
bool RemoveLink(const char* path) {
  const DWORD attributes = GetFileAttributesA(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return false;
  const bool isDirectory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return (isDirectory ? RemoveDirectoryA(path) : DeleteFileA(path)) != 0;
}

}  // namespace

int32_t LowCreate(const char* path) {
  return _lcreat(path, NormalAttributes);
}

int32_t LowCreateBelow(const char* path, int32_t spared) {
  FileHandle file(OpenToReplace(path, RemoveLink(path) ? CREATE_NEW : OPEN_ALWAYS));
  if (!file.IsOpen() || GetFileType(file.Get()) != FILE_TYPE_DISK ||
      IsSameFile(file.Get(), HandleOf(spared)) || SetEndOfFile(file.Get()) == 0) {
    return LowNoHandle;
  }
  return static_cast<int32_t>(reinterpret_cast<intptr_t>(file.Release()));
}

int32_t LowOpen(const char* path, LowAccess access) {
  const int mode = access == LowAccess::Read    ? OF_READ
                   : access == LowAccess::Write ? OF_WRITE
                                                : OF_READWRITE;
  return _lopen(path, mode | OF_SHARE_DENY_NONE);
}

int64_t LowRead(int32_t handle, void* buffer, std::size_t count) {
  const UINT got = _lread(handle, buffer, count);
  return got == static_cast<UINT>(HFILE_ERROR) ? -1 : int64_t{got};
}

std::size_t LowWrite(int32_t handle, const void* bytes, std::size_t count, std::size_t piece) {
  const char* const from = static_cast<const char*>(bytes);
  std::size_t done = 0;
  while (done < count) {
    // Never nothing, which would cut the file off where it stands.
    const UINT size = std::min(count - done, piece);
    const UINT written = _lwrite(handle, from + done, size);
    if (written == static_cast<UINT>(HFILE_ERROR)) break;
    done += written;
    if (written < size) break;
  }
  return done;
}

int64_t LowSeek(int32_t handle, int64_t offset, LowOrigin origin) {
  // _llseek could not tell positions behind 2 GiB from errors.
  const DWORD method = origin == LowOrigin::Start     ? FILE_BEGIN
                       : origin == LowOrigin::Current ? FILE_CURRENT
                                                      : FILE_END;
  LARGE_INTEGER distance;
  LARGE_INTEGER position;
  distance.QuadPart = offset;
  const bool moved = SetFilePointerEx(HandleOf(handle), distance, &position, method) != 0;
  return moved ? position.QuadPart : -1;
}

int32_t LowClose(int32_t handle) {
  return _lclose(handle) == 0 ? 0 : -1;
}

}  // namespace hv::platform
