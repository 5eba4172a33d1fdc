#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstdlib>

#include "support/test_folder.h"
#include "support/zip_run.h"

namespace hvtest {

void SetVariable(const std::string& name, const std::string& value) {
  // The runtime hands this on to the system; an empty value unsets it in both.
  _putenv_s(name.c_str(), value.c_str());
}

std::size_t SweepStep() {
  return 13;
}

std::size_t OpenHandleCount() {
  DWORD count = 0;
  EXPECT_NE(GetProcessHandleCount(GetCurrentProcess(), &count), 0);
  return count;
}

}  // namespace hvtest
