// A moment by which something has to be done, whatever happens meanwhile.
#pragma once

#include <algorithm>
#include <chrono>

namespace hv::platform {

class Deadline {
 public:
  using Clock = std::chrono::steady_clock;

  explicit Deadline(std::chrono::milliseconds fromNow) : moment_(Clock::now() + fromNow) {}

  bool HasPassed() const { return Clock::now() >= moment_; }

  // What is left, rounded up so that nobody who waits that long has to wait again; 0 when passed.
  std::chrono::milliseconds Left() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment_ - Clock::now());
    return std::max(left, std::chrono::milliseconds(0));
  }

 private:
  Clock::time_point moment_;
};

}  // namespace hv::platform
