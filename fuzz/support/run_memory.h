// Memory that runs out in half of the runs over exports. Which half that is, and at which of a
// call's allocations, follows from the input, so that a run can be repeated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "faults/failing_memory.h"

namespace hvfuzz {

class RunMemory {
 public:
  // For a call in the run over an input, until the end of the scope.
  RunMemory(const uint8_t* data, std::size_t size);

  // Whether the call did not get all that it asked for.
  bool Failed() const { return failing_.has_value() && failing_->Failed(); }

 private:
  std::optional<hvtest::FailingMemory> failing_;
};

// Makes a call of an export. True when it had all the memory that it asked for, so that its outcome
// is that of the input.
template <typename Call>
bool HadMemory(const uint8_t* data, std::size_t size, const Call& call) {
  const RunMemory memory(data, size);
  call();
  return !memory.Failed();
}

}  // namespace hvfuzz
