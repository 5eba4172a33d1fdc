#include "zip/output_window.h"

#include <algorithm>
#include <cstring>

#include "platform/low_file_calls.h"
#include "zip/crc32.h"

namespace hv {

OutputWindow::OutputWindow() : ring_(new uint8_t[RingSize + Margin]) {}

void OutputWindow::Begin(int32_t handle, uint64_t limit) {
  std::memset(ring_.get(), 0, RingSize + Margin);
  at_ = 0;
  flushed_ = 0;
  limit_ = limit;
  handle_ = handle;
  crc_ = 0;
  writeFailed_ = overflowed_ = false;
}

void OutputWindow::Append(std::span<const uint8_t> bytes) {
  while (!bytes.empty()) {
    const std::size_t part = std::min(bytes.size(), RingSize - at_);
    std::memcpy(&ring_[at_], bytes.data(), part);
    MoveTo(at_ + part);
    bytes = bytes.subspan(part);
  }
}

void OutputWindow::Copy(std::size_t distance, std::size_t length) {
  std::size_t from = at_ >= distance ? at_ - distance : at_ + RingSize - distance;
  if (length <= distance && length < RingSize - std::max(from, at_)) {
    std::memcpy(&ring_[at_], &ring_[from], length);
    at_ += length;
    return;
  }
  // A match may reach into itself and around the end of the ring.
  while (length-- > 0) {
    Put(ring_[from]);
    if (++from == RingSize) from = 0;
  }
}

void OutputWindow::Finish() {
  Write({ring_.get(), at_});
  flushed_ += at_;
  at_ = 0;
}

void OutputWindow::MoveTo(std::size_t at) {
  at_ = at;
  if (at_ >= RingSize) Wrap();
}

void OutputWindow::Wrap() {
  Write({ring_.get(), RingSize});
  flushed_ += RingSize;
  at_ -= RingSize;
  std::memcpy(ring_.get(), &ring_[RingSize], at_);
}

void OutputWindow::Write(std::span<const uint8_t> bytes) {
  if (Stopped()) return;
  if (bytes.size() > limit_ - flushed_) {
    overflowed_ = true;
    bytes = bytes.first(static_cast<std::size_t>(limit_ - flushed_));
  }
  crc_ = UpdateCrc32(crc_, bytes);
  writeFailed_ = platform::LowWrite(handle_, bytes.data(), bytes.size(), PieceSize) < bytes.size();
}

}  // namespace hv
