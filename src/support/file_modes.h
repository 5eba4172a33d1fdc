// Stream open modes by number, as jobs and callers give them.
#pragma once

#include <cstdint>

namespace hv {

constexpr const char* FileModeTable[] = {"",   "r",  "w",  "a",  "rb",  "wb",
                                         "ab", "r+", "w+", "a+", "rb+", "wb+"};
constexpr uint32_t FileModeReplace = 5;
constexpr uint32_t FileModeAppend = 6;

}  // namespace hv
