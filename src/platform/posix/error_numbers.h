// errno values as Windows error numbers.
#pragma once

#include "platform/system_error.h"

namespace hv::platform {

SystemError ErrorOfErrno(int number);

}  // namespace hv::platform
