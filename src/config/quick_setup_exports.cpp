// Exports of the quick setup files.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "config/quick_setup_file.h"
#include "config/setup_list.h"

using hv::Guarded;

namespace {

bool IsBlock(uint32_t number) {
  return number == 1 || number == 2 || number == 5;
}

// Clears the results of a call; false when one has no place.
bool ClearResults(uint8_t** data, uint16_t* count) {
  if (data != nullptr) *data = nullptr;
  if (count != nullptr) *count = 0;
  return data != nullptr && count != nullptr;
}

}  // namespace

uint32_t HVAPI_CALL HvQsfOpen(const char* path, uint32_t fileType, HvQsfHandle** handle) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (handle == nullptr) return HV_BAD_ARGUMENT;
    *handle = nullptr;
    if (!hv::IsPathArgument(path)) return HV_BAD_ARGUMENT;
    hv::QuickSetup setup;
    const uint32_t code = hv::OpenQuickSetup(path, static_cast<uint8_t>(fileType), &setup);
    *handle = setup.release();
    return code;
  });
}

void HVAPI_CALL HvQsfClose(HvQsfHandle* handle) {
  hv::QuickSetup(handle).reset();
}

uint32_t HVAPI_CALL HvQsfGetVariables(HvQsfHandle* handle, uint32_t block, uint8_t** data,
                                      uint16_t* count) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    const bool hasResults = ClearResults(data, count);
    if (!hasResults || handle == nullptr || !IsBlock(block)) return HV_BAD_ARGUMENT;
    return hv::ReadQuickSetupBlock(handle, block, data, count);
  });
}

uint32_t HVAPI_CALL HvQsfIniGetSection(HvIniHandle* iniHandle, uint32_t kind, uint32_t setupNumber,
                                       uint8_t** values, uint16_t* count) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    const bool hasResults = ClearResults(values, count);
    if (!hasResults || iniHandle == nullptr || !hv::IsSetupListKind(kind)) return HV_BAD_ARGUMENT;
    return hv::ReadSetupList(iniHandle, kind, static_cast<uint8_t>(setupNumber), values, count);
  });
}
