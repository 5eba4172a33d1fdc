// Work done in a process of its own, for what would disturb the test's: limits, mounts, signals,
// the working directory, standard output.
#pragma once

#include <functional>
#include <string>

namespace hvtest {

struct ChildResult {
  std::string answer;  // what the work returned
  std::string output;  // what stood on standard output at its end
  bool finished = false;
};

// Runs the work in a child process, for a minute at most. A child that a signal ended, or
// that leaks where that is seen, has not finished. Nothing is flushed for it. The work has a thread of
// its own there, for which no library remembers what was before, as that of CUPS does its server.
ChildResult RunInChild(const std::function<std::string()>& work);

}  // namespace hvtest
