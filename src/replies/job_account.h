// Job accounting: the alert by which a printer reports a finished job.
#pragma once

#include "api/hvapi.h"

namespace hv {

// NULL when there is no memory for the record. See ReplyReader for what `reply` is.
HvJobAccount* ParseJobAccount(const uint8_t* reply);

void FreeJobAccount(HvJobAccount* record);

}  // namespace hv
