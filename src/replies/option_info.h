// Option information: the reply that lists a printer's options and groups of values.
#pragma once

#include "api/hvapi.h"

namespace hv {

// NULL when there is no memory for the record. See ReplyReader for what `reply` is.
HvOptionInfo* ParseOptionInfo(const uint8_t* reply);

void FreeOptionInfo(HvOptionInfo* info);

}  // namespace hv
