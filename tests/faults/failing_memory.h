// Memory that runs out when a test wants it to: operator new and the memory for callers both come
// from here in the programs that link failing_memory.cpp.
#pragma once

#include <cstddef>

namespace hvtest {

// Until the end of the scope the allocation number `failing`, from 0, fails, and with `fromThenOn`
// all after it too.
class FailingMemory {
 public:
  FailingMemory(std::size_t failing, bool fromThenOn);
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
  ~FailingMemory();

  // Whether an allocation has failed.
  bool Failed() const;
  // Bytes that have been allocated meanwhile.
  std::size_t Allocated() const;
};

// The blocks that this thread has allocated, less those that it has released.
long LiveBlocks();

}  // namespace hvtest
