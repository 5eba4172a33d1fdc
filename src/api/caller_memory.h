// Memory that is handed to callers. All of it comes from here, so that HvMemFree and the families'
// release exports can give it back whatever it is.
#pragma once

#include <cstddef>
#include <memory>

namespace hv {

// Zeroed memory, or NULL when there is none. At least one byte.
void* AllocateForCaller(std::size_t size);

// Releases what AllocateForCaller gave; NULL does nothing.
void ReleaseForCaller(void* block);

struct CallerMemoryDeleter {
  void operator()(void* block) const { ReleaseForCaller(block); }
};

// Owns such memory until release() hands it to the caller.
template <typename T>
using CallerMemory = std::unique_ptr<T, CallerMemoryDeleter>;

}  // namespace hv
