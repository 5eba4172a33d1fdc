// Whether a file already is a macro of a printer language. Arguments have been checked by the
// caller; results are the codes of HvMacValidate.
#pragma once

#include "api/hvapi.h"

namespace hv {

uint32_t ValidateMacro(const char* source, HvJobInfo* job, HvMacroInfo* info);

}  // namespace hv
