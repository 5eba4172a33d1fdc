// What an operator panel file says of the controls and pages of a panel. Negative results are the
// OPC_ codes.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

// `step` is left alone where the file has no limits for the control.
void ReadSpinLimits(HvIniHandle* file, int16_t controlId, int32_t* minimum, int32_t* maximum,
                    int32_t* step);

// The following take NULL for their buffer to ask for the bytes that it needs.
int32_t ReadComboValues(HvIniHandle* file, int16_t controlId, uint32_t subIndex, uint16_t* values,
                        uint32_t valuesSize);
int32_t ReadPageDefaults(HvIniHandle* file, uint32_t pageNumber, HvPageDefault* entries,
                         uint32_t entriesSize);
int32_t ReadPageVariables(HvIniHandle* file, uint32_t pageNumber, uint8_t* variables,
                          uint32_t variablesSize);

int32_t ReadMaxEditLength(HvIniHandle* file, int16_t controlId);

}  // namespace hv
