#include "zip/archive_file.h"

#include <algorithm>
#include <cstring>

#include "platform/low_file_calls.h"
#include "support/byte_order.h"

namespace hv {
namespace {

// A read of 2048 bytes, and room for some that are still to be taken.
constexpr std::size_t BufferSize = 2048 + 4;

}  // namespace

ArchiveFile::ArchiveFile() : buffer_(new uint8_t[BufferSize]), handle_(platform::LowNoHandle) {}

ArchiveFile::~ArchiveFile() {
  if (handle_ != platform::LowNoHandle) platform::LowClose(handle_);
}

bool ArchiveFile::Open(const char* path) {
  handle_ = platform::LowOpen(path, platform::LowAccess::Read);
  if (handle_ == platform::LowNoHandle) return false;
  size_ = platform::LowSeek(handle_, 0, platform::LowOrigin::End);
  return size_ >= 0 && platform::LowSeek(handle_, 0, platform::LowOrigin::Start) == 0;
}

bool ArchiveFile::Seek(int64_t position) {
  if (position < 0 || position > size_) return false;
  const int64_t bufferStart = bufferEnd_ - static_cast<int64_t>(filled_);
  if (position >= bufferStart && position <= bufferEnd_) {
    next_ = static_cast<std::size_t>(position - bufferStart);
    return true;
  }
  if (platform::LowSeek(handle_, position, platform::LowOrigin::Start) != position) return false;
  next_ = filled_ = 0;
  bufferEnd_ = position;
  return true;
}

bool ArchiveFile::Read(std::span<uint8_t> to) {
  while (!to.empty()) {
    if (next_ == filled_ && !More()) return false;
    const std::size_t part = std::min(to.size(), Unread().size());
    std::memcpy(to.data(), &buffer_[next_], part);
    Take(part);
    to = to.subspan(part);
  }
  return true;
}

bool ArchiveFile::HasSignatureAt(int64_t position, uint32_t signature) {
  uint8_t bytes[4];
  return Seek(position) && Read(bytes) && LoadLe32(bytes) == signature;
}

bool ArchiveFile::More() {
  filled_ -= next_;
  std::memmove(buffer_.get(), &buffer_[next_], filled_);
  next_ = 0;
  const int64_t got = platform::LowRead(handle_, &buffer_[filled_], BufferSize - filled_);
  if (got <= 0) return false;
  filled_ += static_cast<std::size_t>(got);
  bufferEnd_ += got;
  return true;
}

}  // namespace hv
