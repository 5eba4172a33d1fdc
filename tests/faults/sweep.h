// Sweeps: a scenario is run clean, then with the failure of one service call after the other.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "faults/scenario.h"

namespace hvtest {

// What came of a run under failures.
struct Attempt {
  bool failed = false;   // whether a failure was met
  bool residue = false;  // whether one kept a file from being removed
};

// Runs `use` while call number `failing`, from 0, fails, and with `fromThenOn` all after it too.
using Injector =
    std::function<Attempt(std::size_t failing, bool fromThenOn, const std::function<void()>& use)>;

struct SweepCounts {
  std::size_t scenarios = 0;
  std::size_t failures = 0;
};

// After each failure: only expected results, no memory, handle or file left over, what was there
// before still there or complete new, and the same use then succeeds with the same output. Fails
// the test otherwise.
SweepCounts Sweep(const std::vector<Scenario>& scenarios, Seam seam, const Injector& inject);

// Prints what a sweep did.
void Report(const char* family, const char* seam, const SweepCounts& counts);

}  // namespace hvtest
