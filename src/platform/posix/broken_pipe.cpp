#include "platform/posix/broken_pipe.h"

#include <errno.h>
#include <time.h>

namespace hv::platform {
namespace {

sigset_t BrokenPipeSet() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  return set;
}

bool IsPending() {
  sigset_t pending;
  sigpending(&pending);
  return sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

BrokenPipeBlock::BrokenPipeBlock() : wasPending_(IsPending()) {
  const sigset_t set = BrokenPipeSet();
  pthread_sigmask(SIG_BLOCK, &set, &before_);
}

BrokenPipeBlock::~BrokenPipeBlock() {
  // Signals do not queue up: one that waited before is still there and none of ours.
  if (!wasPending_) {
    const sigset_t set = BrokenPipeSet();
    const timespec noWait = {0, 0};
    while (sigtimedwait(&set, nullptr, &noWait) < 0 && errno == EINTR) {
    }
  }
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace hv::platform
