// Exports of the INI files.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "config/ini_entries.h"
#include "config/ini_file.h"

using hv::Guarded;
using hv::IsNonEmptyPath;

HvIniHandle* HVAPI_CALL HvIniOpen2(const char* path, uint32_t mode) {
  return Guarded(nullptr, [&]() -> HvIniHandle* {
    return IsNonEmptyPath(path) ? hv::IniOpen(path, mode) : nullptr;
  });
}

HvIniHandle* HVAPI_CALL HvIniOpen(const char* path) {
  HvIniHandle* const handle = HvIniOpen2(path, INI_OPEN_READ);
  if (handle == nullptr || handle->lines->next != nullptr) return handle;
  hv::IniFree(handle);
  return nullptr;
}

uint32_t HVAPI_CALL HvIniClose(HvIniHandle* handle) {
  return Guarded(0, [&]() -> uint32_t { return hv::IniClose(handle); });
}

const char* HVAPI_CALL HvIniRead(HvIniHandle* handle, const char* section, const char* key) {
  return Guarded("", [&] { return hv::IniRead(handle, section, key); });
}

uint32_t HVAPI_CALL HvIniRead2(HvIniHandle* handle, const char* section, const char* key,
                               const char* defaultValue, char* buffer, uint32_t size,
                               uint32_t* count) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (section == nullptr || key == nullptr || buffer == nullptr || size == 0 ||
        count == nullptr) {
      return HV_BAD_ARGUMENT;
    }
    return hv::IniRead2(handle, section, key, defaultValue, buffer, size, count);
  });
}

uint32_t HVAPI_CALL HvIniWrite(HvIniHandle* handle, const char* section, const char* key,
                               const char* value) {
  return Guarded(0, [&]() -> uint32_t {
    if (section == nullptr || key == nullptr || value == nullptr) return 0;
    return hv::IniWrite(handle, section, key, value);
  });
}

uint32_t HVAPI_CALL HvIniWriteAll(HvIniHandle* handle, const char* section, const char* key,
                                  const char* value) {
  return Guarded(0, [&]() -> uint32_t {
    if (section == nullptr || key == nullptr || value == nullptr) return 0;
    return hv::IniWriteAll(handle, section, key, value);
  });
}

uint32_t HVAPI_CALL HvIniDelete(HvIniHandle* handle, const char* section, const char* key,
                                const char* value) {
  return Guarded(0, [&]() -> uint32_t {
    if (section == nullptr) return 0;
    hv::IniDelete(handle, section, key, value);
    return 1;
  });
}
