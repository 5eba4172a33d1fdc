#include <cstdlib>

#include "support/test_folder.h"
#include "support/zip_run.h"

// The dynamic loader locks its own bookkeeping in a way that the thread sanitizer does not see.
extern "C" __attribute__((visibility("default"), used)) const char* __tsan_default_suppressions() {
  return "race:ld-linux";
}

namespace hvtest {

void SetVariable(const std::string& name, const std::string& value) {
  if (value.empty()) {
    unsetenv(name.c_str());
  } else {
    setenv(name.c_str(), value.c_str(), 1);
  }
}

std::size_t SweepStep() {
  return 1;
}

std::size_t OpenHandleCount() {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    count += entry.is_symlink() ? 1 : 0;
  }
  return count;
}

}  // namespace hvtest
