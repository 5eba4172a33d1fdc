// The low-level file calls: a small integer handle, no buffer. All opens let others read and write.
// The handle is that of _lopen on Windows and a file descriptor on POSIX systems.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hv::platform {

enum class LowAccess : uint8_t { Read, Write, ReadWrite };
enum class LowOrigin : uint8_t { Start, Current, End };

constexpr int32_t LowNoHandle = -1;

// Creates the file or empties it, and opens it for writing; LowNoHandle on failure.
int32_t LowCreate(const char* path);
// Creates the file or empties it, and opens it for writing. The path is relative, with "/" between
// its parts, and taken as spelled, as MakeDirectoriesBelow takes it. A link of that name is
// replaced, not followed. LowNoHandle on failure, which is also that of a name that stands for no
// plain file or for the file behind the handle `spared`.
int32_t LowCreateBelow(const char* path, int32_t spared);
// Opens an existing file (a directory is none); LowNoHandle on failure.
int32_t LowOpen(const char* path, LowAccess access);
// The number of bytes read, fewer at the end of the file; -1 on failure.
int64_t LowRead(int32_t handle, void* buffer, std::size_t count);
// Writes in pieces of at most `piece` bytes; as many as the system takes go with one call. The
// number of bytes written; fewer when the disk is full or a write failed.
std::size_t LowWrite(int32_t handle, const void* bytes, std::size_t count, std::size_t piece);
// The new position from the start; -1 on failure.
int64_t LowSeek(int32_t handle, int64_t offset, LowOrigin origin);
// 0, or -1 on failure. The handle is gone in both cases.
int32_t LowClose(int32_t handle);

}  // namespace hv::platform
