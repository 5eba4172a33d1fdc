#include "api/caller_memory.h"

#include <cstdlib>

namespace hv {

void* AllocateForCaller(std::size_t size) {
  return std::calloc(size == 0 ? 1 : size, 1);
}

void ReleaseForCaller(void* block) {
  std::free(block);
}

}  // namespace hv
