#include "progress.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

#include "program.h"
#include "system.h"

namespace hvtool {
namespace {

constexpr uint64_t SmallestShown = 4U << 20;
constexpr std::size_t BarWidth = 40;
constexpr auto Interval = std::chrono::milliseconds(100);

// Set by --quiet.
bool isQuiet = false;

bool SomebodyLooks() {
  return !isQuiet && ErrorsGoToTerminal();
}

// The size of a regular file, 0 for anything else.
uint64_t FileSize(const std::filesystem::path& path) {
  std::error_code missing;
  const uintmax_t size = std::filesystem::file_size(path, missing);
  return missing ? 0 : size;
}

// Text of an archive or a font may hold anything, and too much of it.
std::string OneLine(const std::string& text) {
  constexpr std::size_t Longest = 24;
  std::string line = text.size() <= Longest ? text : "..." + text.substr(text.size() - Longest + 3);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return line;
}

}  // namespace

void AddQuietOption(CLI::App* command) {
  AddFlag(command, "-q,--quiet", &isQuiet, "Show no progress");
}

ProgressBar::ProgressBar() : isSeen_(SomebodyLooks()) {}

void ProgressBar::Show(uint64_t done, uint64_t total, const std::string& text) {
  if (!isSeen_) return;
  const double share =
      total == 0 ? 0.0 : static_cast<double>(std::min(done, total)) / static_cast<double>(total);
  const int percent = static_cast<int>(share * 100);
  const auto now = std::chrono::steady_clock::now();
  if (percent == percent_ && now - drawn_ < Interval) return;
  percent_ = percent;
  drawn_ = now;
  const std::size_t full = static_cast<std::size_t>(share * static_cast<double>(BarWidth));
  const std::string number = std::to_string(percent);
  const std::string bar = "[" + std::string(full, '#') + std::string(BarWidth - full, '.') + "] " +
                          std::string(3 - number.size(), ' ') + number + " %  " + OneLine(text);
  const std::string rest(width_ - std::min(width_, bar.size()), ' ');
  width_ = bar.size();
  std::fprintf(stderr, "\r%s%s", bar.c_str(), rest.c_str());
  std::fflush(stderr);
}

void ProgressBar::Clear() {
  if (width_ > 0) std::fprintf(stderr, "\r%s\r", std::string(width_, ' ').c_str());
  width_ = 0;
}

FileProgress::FileProgress(const std::filesystem::path& destination, uint64_t expected, bool append)
    : destination_(destination), expected_(expected) {
  if (!SomebodyLooks() || expected < SmallestShown) return;
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
  ProgressBar bar;
  std::unique_lock<std::mutex> lock(mutex_);
  while (!ended_.wait_for(lock, Interval, [this] { return end_; })) {
    const uint64_t size = FileSize(destination_);
    if (size <= before_) continue;
    const uint64_t done = std::min(size - before_, expected_);
    bar.Show(done, expected_,
             std::to_string(done >> 20) + " of " + std::to_string(expected_ >> 20) + " MB");
  }
}

}  // namespace hvtool
