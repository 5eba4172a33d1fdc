// System calls that fail when a test wants them to. The program is linked so that the calls of the
// library come here first (see tests/CMakeLists.txt).
#pragma once

#include <cstddef>

namespace hvtest {

// Until the end of the scope the system call number `failing`, from 0, fails, and with `fromThenOn`
// all after it too. What a failed close had open is closed all the same.
class FailingSystem {
 public:
  FailingSystem(std::size_t failing, bool fromThenOn);
  FailingSystem(const FailingSystem&) = delete;
  FailingSystem& operator=(const FailingSystem&) = delete;
  ~FailingSystem();

  bool Failed() const;
  // Whether a file could not be removed, so that it stays.
  bool KeptFile() const;
};

}  // namespace hvtest
