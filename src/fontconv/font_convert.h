// Font conversion: one worker a kind of source, and the names of what they write.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

// `source` is a path that was checked; `destination` may be NULL and is checked for its length.
// The result is that of HvFonConvert.
uint32_t ConvertFont(const char* source, const char* destination, const HvFontInfo* fontInfo,
                     uint32_t pathSelector, int32_t type);

}  // namespace hv
