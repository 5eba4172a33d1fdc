// A disk that is full, for this process.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

namespace hvtest {

// While it lives no file can grow beyond `size` bytes: writes fail as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : signal_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {size, before_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    signal(SIGXFSZ, signal_);
  }

 private:
  rlimit before_ = {};
  sighandler_t signal_;
};

}  // namespace hvtest
