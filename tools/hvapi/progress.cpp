#include "progress.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

#include "system.h"

namespace hvtool {
namespace {

constexpr uint64_t SmallestShown = 4U << 20;
constexpr std::size_t BarWidth = 40;
constexpr auto Interval = std::chrono::milliseconds(100);

// The size of a regular file, 0 for anything else.
uint64_t FileSize(const std::filesystem::path& path) {
  std::error_code missing;
  const uintmax_t size = std::filesystem::file_size(path, missing);
  return missing ? 0 : size;
}

std::string Bar(uint64_t done, uint64_t expected) {
  const double share = static_cast<double>(done) / static_cast<double>(expected);
  const std::size_t full = static_cast<std::size_t>(share * static_cast<double>(BarWidth));
  const std::string percent = std::to_string(static_cast<int>(share * 100));
  return "[" + std::string(full, '#') + std::string(BarWidth - full, '.') + "] " +
         std::string(3 - percent.size(), ' ') + percent + " %  " + std::to_string(done >> 20) +
         " of " + std::to_string(expected >> 20) + " MB";
}

}  // namespace

FileProgress::FileProgress(const std::filesystem::path& destination, uint64_t expected, bool append)
    : destination_(destination), expected_(expected) {
  if (!ErrorsGoToTerminal() || expected < SmallestShown) return;
  if (append) before_ = FileSize(destination);
  watcher_ = std::thread([this] { Watch(); });
}

FileProgress::~FileProgress() {
  if (!watcher_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    end_ = true;
  }
  ended_.notify_one();
  watcher_.join();
}

void FileProgress::Watch() {
  std::size_t shown = 0;
  std::unique_lock<std::mutex> lock(mutex_);
  while (!ended_.wait_for(lock, Interval, [this] { return end_; })) {
    const uint64_t size = FileSize(destination_);
    if (size <= before_) continue;
    const std::string bar = Bar(std::min(size - before_, expected_), expected_);
    shown = std::max(shown, bar.size());
    std::fprintf(stderr, "\r%s", bar.c_str());
    std::fflush(stderr);
  }
  if (shown > 0) std::fprintf(stderr, "\r%s\r", std::string(shown, ' ').c_str());
}

}  // namespace hvtool
