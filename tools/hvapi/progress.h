// A progress bar on standard error for a file destination that grows while an export writes it.
//
// The library reports no progress of its own, so the size of the destination is watched. There is
// no bar when standard error is no terminal, when little is to be sent, or when the destination is
// no regular file (a printer takes bytes without a size to be seen).
#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <thread>

namespace hvtool {

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
