// The operations on macros. Arguments have been checked by the exports; results are the codes of
// HvResult.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

uint32_t CreateMacro(const char* source, const char* destination, const HvJobInfo& job,
                     HvMacroInfo* info);

// mode: MACRO_PRINT_ONCE .. MACRO_SEND_RAW. With `wraps` the source becomes a macro on the way,
// else it is one already.
uint32_t DownloadMacro(const char* source, const char* destination, const HvJobInfo& job,
                       HvMacroInfo* info, uint32_t mode, bool wraps);

uint32_t ActivateMacro(const char* destination, const HvJobInfo& job, bool enable);
uint32_t DeleteMacro(const char* destination, const HvJobInfo& job);

}  // namespace hv
