// Extraction of archives: members into files below the current directory.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

// Extracts the members that match `pattern`, all for an empty one, from `archive`, or from the file
// of that name with ".zip" behind it. `progress` may be NULL. Returns a code of HvResult.
uint32_t ExplodeArchive(const char* archive, const char* pattern, HvZipProgress progress);

}  // namespace hv
