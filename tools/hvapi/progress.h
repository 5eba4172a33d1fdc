// Progress bars on standard error, for a person at a terminal.
//
// A ProgressBar shows what a callback of the library reports. A FileProgress watches the size of a
// file destination that grows while an export writes it, since sending has no callback; there is no
// bar when little is to be sent, or when the destination is no regular file (a printer takes bytes
// without a size to be seen).
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

#include "command_line.h"

namespace hvtool {

// --quiet, which switches progress off.
void AddQuietOption(CLI::App* command);

class ProgressBar {
 public:
  ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() { Clear(); }

  // Whether there is a terminal to draw on.
  bool IsSeen() const { return isSeen_; }

  // Draws the bar again when the percentage or, some time ago, the text has changed. A total of 0
  // is a share of 0.
  void Show(uint64_t done, uint64_t total, const std::string& text);
  void Clear();

 private:
  bool isSeen_;
  std::size_t width_ = 0;
  int percent_ = -1;
  std::chrono::steady_clock::time_point drawn_;
};

class FileProgress {
 public:
  // `expected` bytes are about to be written to the file; with `append` behind what it holds.
  FileProgress(const std::filesystem::path& destination, uint64_t expected, bool append);
  FileProgress(const FileProgress&) = delete;
  FileProgress& operator=(const FileProgress&) = delete;
  ~FileProgress();  // takes the bar away

 private:
  void Watch();

  std::filesystem::path destination_;
  uint64_t expected_;
  uint64_t before_ = 0;
  std::mutex mutex_;
  std::condition_variable ended_;
  bool end_ = false;
  std::thread watcher_;
};

}  // namespace hvtool
