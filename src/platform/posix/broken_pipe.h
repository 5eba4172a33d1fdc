// Writing to pipes, and calls of other libraries that write to a connection, without the signal of a
// broken one.
#pragma once

#include <signal.h>

namespace hv::platform {

// While it lives, a pipe or connection that the peer closed raises no signal in this thread; the
// failing call says so alone. The signal's disposition and the signals of others are as before.
class BrokenPipeBlock {
 public:
  BrokenPipeBlock();
  BrokenPipeBlock(const BrokenPipeBlock&) = delete;
  BrokenPipeBlock& operator=(const BrokenPipeBlock&) = delete;
  ~BrokenPipeBlock();

 private:
  bool wasPending_;
  sigset_t before_;
};

}  // namespace hv::platform
