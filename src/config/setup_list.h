// The lists of printer variables that an INI file gives for the setups of a printer.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

constexpr bool IsSetupListKind(uint32_t kind) {
  return kind >= QSF_LIST_REQUIRED && kind <= QSF_LIST_ORDER;
}

// *values, in memory for the caller, and *count are set on success only.
uint32_t ReadSetupList(HvIniHandle* ini, uint32_t kind, uint8_t setupNumber, uint8_t** values,
                       uint16_t* count);

}  // namespace hv
