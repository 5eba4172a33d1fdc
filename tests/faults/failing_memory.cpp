#include "faults/failing_memory.h"

#include <cstdlib>
#include <new>

#include "api/caller_memory.h"

namespace {

// Of the thread that runs the test; others get their memory.
struct Plan {
  bool active = false;
  bool fromThenOn = false;
  bool failed = false;
  std::size_t untilFailure = 0;
  std::size_t allocated = 0;
};
thread_local Plan plan;
thread_local long liveBlocks = 0;

void* Allocate(std::size_t size) {
  if (plan.active) {
    const bool fails = plan.untilFailure == 0 && (plan.fromThenOn || !plan.failed);
    if (fails) {
      plan.failed = true;
      return nullptr;
    }
    if (plan.untilFailure > 0) --plan.untilFailure;
    plan.allocated += size;
  }
  void* const block = std::calloc(size == 0 ? 1 : size, 1);
  if (block != nullptr) ++liveBlocks;
  return block;
}

void Release(void* block) {
  if (block != nullptr) --liveBlocks;
  std::free(block);
}

}  // namespace

namespace hvtest {

FailingMemory::FailingMemory(std::size_t failing, bool fromThenOn) {
  plan = {true, fromThenOn, false, failing, 0};
}
FailingMemory::~FailingMemory() {
  plan = {};
}
bool FailingMemory::Failed() const {
  return plan.failed;
}
std::size_t FailingMemory::Allocated() const {
  return plan.allocated;
}

long LiveBlocks() {
  return liveBlocks;
}

}  // namespace hvtest

namespace hv {

void* AllocateForCaller(std::size_t size) {
  return Allocate(size);
}
void ReleaseForCaller(void* block) {
  Release(block);
}

}  // namespace hv

void* operator new(std::size_t size) {
  void* const block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
  std::free(block);
}
void operator delete(void* block) noexcept {
  Release(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  Release(block);
}
