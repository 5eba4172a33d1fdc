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

// Memory that runs out, as an injector.
Attempt WithoutMemory(std::size_t failing, bool fromThenOn, const std::function<void()>& use);

// After each failure: only expected results, no memory, handle or file left over, what was there
// before still there or complete new, and the same use then succeeds with the same output. Fails
// the test otherwise. Prints under the name what it did.
void Sweep(const char* name, const std::vector<Scenario>& scenarios, Seam seam,
           const Injector& inject);

}  // namespace hvtest
