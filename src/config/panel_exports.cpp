// Exports of the operator panel files.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "config/panel_file.h"
#include "config/panel_registrations.h"

using hv::Guarded;

namespace {

int16_t ControlId(int32_t argument) {
  return static_cast<int16_t>(argument);
}

}  // namespace

HvIniHandle* HVAPI_CALL HvOpcRegisterCfg(uint32_t configNumber, const char* directory) {
  return Guarded(nullptr, [&]() -> HvIniHandle* {
    const uint16_t number = static_cast<uint16_t>(configNumber);
    if (number == 0 || (directory != nullptr && !hv::IsPathArgument(directory))) return nullptr;
    return hv::RegisterPanelFile(number, directory);
  });
}

uint32_t HVAPI_CALL HvOpcUnregisterCfg(HvIniHandle* handle) {
  return Guarded(0, [&]() -> uint32_t { return hv::UnregisterPanelFile(handle); });
}

uint32_t HVAPI_CALL HvOpcGetFileName(uint32_t configNumber, char* buffer) {
  return Guarded(0, [&]() -> uint32_t {
    if (buffer == nullptr) return 0;
    hv::FormatPanelFileName(static_cast<uint16_t>(configNumber), buffer);
    return 1;
  });
}

void HVAPI_CALL HvOpcGetSpinControlLimits(HvIniHandle* handle, int32_t controlId, int32_t* minimum,
                                          int32_t* maximum, int32_t* step) {
  Guarded(0, [&] {
    if (minimum == nullptr || maximum == nullptr || step == nullptr) return 0;
    hv::ReadSpinLimits(handle, ControlId(controlId), minimum, maximum, step);
    return 0;
  });
}

int32_t HVAPI_CALL HvOpcGetTextListing(HvIniHandle* handle, int32_t controlId, uint32_t subIndex,
                                       uint16_t* values, uint32_t valuesSize) {
  return Guarded(OPC_NO_MEMORY, [&]() -> int32_t {
    return hv::ReadComboValues(handle, ControlId(controlId), subIndex, values, valuesSize);
  });
}

int32_t HVAPI_CALL HvOpcGetMaxEditLength(HvIniHandle* handle, int32_t controlId) {
  return Guarded(0,
                 [&]() -> int32_t { return hv::ReadMaxEditLength(handle, ControlId(controlId)); });
}

int32_t HVAPI_CALL HvOpcGetPageDefaults(HvIniHandle* handle, uint32_t pageNumber,
                                        HvPageDefault* entries, uint32_t entriesSize) {
  return Guarded(OPC_MISSING, [&]() -> int32_t {
    return hv::ReadPageDefaults(handle, pageNumber, entries, entriesSize);
  });
}

int32_t HVAPI_CALL HvOpcGetPageOmVars(HvIniHandle* handle, uint32_t pageNumber, uint8_t* variables,
                                      uint32_t variablesSize) {
  return Guarded(OPC_MISSING, [&]() -> int32_t {
    return hv::ReadPageVariables(handle, pageNumber, variables, variablesSize);
  });
}
