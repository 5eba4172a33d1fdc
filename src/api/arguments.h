// Argument checks that many exports share.
#pragma once

#include "api/hvapi.h"
#include "support/fixed_text.h"

namespace hv {

// A path or destination that is there and not too long.
inline bool IsPathArgument(const char* path) {
  return path != nullptr && TextFits(path, HV_MAX_PATH);
}

// The same for arguments that may not be the empty text either.
inline bool IsNonEmptyPath(const char* path) {
  return IsPathArgument(path) && *path != '\0';
}

inline bool IsKnownEmulation(const HvJobInfo& job) {
  return job.emulation >= JOB_EMULATION_NONE && job.emulation <= JOB_EMULATION_PCLXL;
}

}  // namespace hv
