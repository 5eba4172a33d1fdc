// A stream over bytes in memory, for tests that are built of the library's own objects.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/stream.h"

namespace hvtest {

// A source that gives at most `piece` bytes at a time, or a sink that counts its pieces.
class MemoryStream final : public hv::platform::Stream {
 public:
  explicit MemoryStream(std::string bytes = {}, std::size_t piece = std::string::npos)
      : bytes_(std::move(bytes)), piece_(piece) {}

  std::size_t Read(void* buffer, std::size_t count) override {
    const std::size_t got = std::min({count, piece_, bytes_.size() - at_});
    std::memcpy(buffer, bytes_.data() + at_, got);
    at_ += got;
    return got;
  }
  int ReadByte() override { return at_ < bytes_.size() ? bytes_[at_++] & 0xFF : -1; }
  std::size_t Write(const void* bytes, std::size_t count) override {
    bytes_.append(static_cast<const char*>(bytes), count);
    pieces_.push_back(count);
    return count;
  }
  bool Flush() override { return true; }
  int64_t Position() override { return static_cast<int64_t>(at_); }
  bool Seek(int64_t position) override {
    at_ = static_cast<std::size_t>(position);
    return true;
  }
  bool AtEnd() const override { return at_ == bytes_.size(); }
  bool HasError() const override { return false; }
  bool Close() override { return true; }

  const std::string& Content() const { return bytes_; }
  const std::vector<std::size_t>& Pieces() const { return pieces_; }

 private:
  std::string bytes_;
  std::size_t piece_;
  std::size_t at_ = 0;
  std::vector<std::size_t> pieces_;
};

}  // namespace hvtest
