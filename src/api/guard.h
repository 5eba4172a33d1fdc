// The guard that every export runs in: no C++ exception leaves the library.
#pragma once

#include <type_traits>

namespace hv {

// Runs body and returns its result, or onNoMemory when memory ran out on the way. What body owned
// is released by then.
template <typename Body>
std::invoke_result_t<Body> Guarded(std::invoke_result_t<Body> onNoMemory, Body body) noexcept {
  try {
    return body();
  } catch (...) {
    // Only the standard library throws in here, and only for want of memory (std::bad_alloc, or
    // std::length_error for more than there can be).
    return onNoMemory;
  }
}

}  // namespace hv
