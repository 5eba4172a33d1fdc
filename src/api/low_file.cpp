#include "api/low_file.h"

#include <memory>

#include "support/byte_order.h"

namespace hv {
namespace {

using platform::LowAccess;

struct LowOpenMode {
  LowAccess access;
  bool create;
};

// By openMode; those outside the table are read modes.
constexpr LowOpenMode LowOpenModes[] = {
    {LowAccess::Read, false},       // 0
    {LowAccess::Read, false},       // 1
    {LowAccess::Write, true},       // 2
    {LowAccess::Write, false},      // 3
    {LowAccess::Read, false},       // 4
    {LowAccess::Write, true},       // 5
    {LowAccess::Write, false},      // 6
    {LowAccess::ReadWrite, true},   // 7
    {LowAccess::ReadWrite, true},   // 8
    {LowAccess::ReadWrite, false},  // 9
    {LowAccess::ReadWrite, true},   // 10
    {LowAccess::ReadWrite, true},   // 11
    {LowAccess::ReadWrite, false},  // 12
};

// An even number, so that a word never lies across two reads.
constexpr std::size_t ChecksumBufferSize = 32768;

}  // namespace

int32_t LowFileOpen(const char* path, LowFileRecord* record) {
  const LowOpenMode mode =
      LowOpenModes[record->openMode < std::size(LowOpenModes) ? record->openMode : 0];
  record->error = LowFileOk;
  record->handle = platform::LowNoHandle;
  if (mode.create) {
    const int32_t created = platform::LowCreate(path);
    if (created != platform::LowNoHandle) platform::LowClose(created);
  }
  record->handle = platform::LowOpen(path, mode.access);
  if (record->handle == platform::LowNoHandle) record->error = LowFileOpenFailed;
  return record->handle;
}

int32_t LowFileClose(LowFileRecord* record) {
  const int32_t result = platform::LowClose(record->handle);
  if (result != 0) record->error = LowFileCloseFailed;
  record->handle = platform::LowNoHandle;
  return result;
}

int64_t LowFileRead(void* buffer, std::size_t count, LowFileRecord* record) {
  const int64_t got = platform::LowRead(record->handle, buffer, count);
  if (got < 0) {
    record->error = LowFileReadFailed;
  } else if (static_cast<std::size_t>(got) < count) {
    record->error = LowFileEnded;
  }
  return got;
}

int64_t LowFileSeek(int64_t offset, platform::LowOrigin origin, LowFileRecord* record) {
  const int64_t position = platform::LowSeek(record->handle, offset, origin);
  if (position < 0) record->error = LowFileSeekFailed;
  return position;
}

uint16_t FileWordChecksum(uint16_t skipWord, LowFileRecord* record) {
  const auto buffer = std::make_unique<uint8_t[]>(ChecksumBufferSize);
  LowFileSeek(0, platform::LowOrigin::Start, record);
  uint16_t sum = 0;
  uint16_t number = 0;
  const auto takeWord = [&](uint16_t word) {
    ++number;
    if (skipWord == 0 || number != skipWord) sum = static_cast<uint16_t>(sum - word);
  };
  uint8_t previousHigh = 0;
  int64_t got = 0;
  do {
    got = LowFileRead(buffer.get(), ChecksumBufferSize, record);
    if (got < 0) return 0;
    const std::size_t size = static_cast<std::size_t>(got);
    for (std::size_t i = 0; i + 1 < size; i += 2) takeWord(LoadLe16(&buffer[i]));
    if (size >= 2) previousHigh = buffer[(size & ~std::size_t{1}) - 1];
    if (size % 2 != 0) takeWord(static_cast<uint16_t>(buffer[size - 1] | previousHigh << 8));
  } while (got == static_cast<int64_t>(ChecksumBufferSize));
  record->error = LowFileOk;
  return sum;
}

}  // namespace hv
