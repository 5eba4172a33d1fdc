// The library information record.
#pragma once

#include "api/hvapi.h"

namespace hv {

void FillLibraryInformation(HvApiInfo* record);

}  // namespace hv
