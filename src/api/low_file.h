// Files opened through the low-level handles, by a record that remembers the last failure.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/low_file_calls.h"

namespace hv {

enum LowFileError : uint32_t {
  LowFileOk = 0,
  LowFileOpenFailed = 3,
  LowFileCloseFailed = 4,
  LowFileReadFailed = 6,
  LowFileSeekFailed = 8,
  LowFileEnded = 9  // a read gave fewer bytes than asked
};

struct LowFileRecord {
  // Set by the caller:
  //   1, 4           read
  //   2, 5           write, created or emptied first
  //   3, 6           write
  //   7, 8, 10, 11   read and write, created or emptied first
  //   9, 12          read and write
  //   any other      read
  uint32_t openMode = 0;
  int32_t handle = platform::LowNoHandle;
  uint32_t error = LowFileOk;
};

// The handle; -1 on failure, with `error` LowFileOpenFailed.
int32_t LowFileOpen(const char* path, LowFileRecord* record);
// 0, or -1 on failure, with `error` LowFileCloseFailed. The record holds no handle afterwards.
int32_t LowFileClose(LowFileRecord* record);
// The bytes read, or -1; `error` becomes LowFileReadFailed or LowFileEnded.
int64_t LowFileRead(void* buffer, std::size_t count, LowFileRecord* record);
// The new position, or -1, with `error` LowFileSeekFailed.
int64_t LowFileSeek(int64_t offset, platform::LowOrigin origin, LowFileRecord* record);

// The two's complement of the 16-bit sum of the file's little-endian words. Word number skipWord,
// from 1, is left out; 0 leaves out none. A last single byte is the low byte of a word whose high
// byte is that of the word before it, 0 when there is none. A read error gives 0.
uint16_t FileWordChecksum(uint16_t skipWord, LowFileRecord* record);

}  // namespace hv
