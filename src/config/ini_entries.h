// Reading and editing the entries of an open INI file. Section names and keys are found without
// regard to letter case.
#pragma once

#include <cstdint>
#include <string_view>

#include "api/hvapi.h"

namespace hv {

const char* IniRead(HvIniHandle* handle, const char* section, const char* key);

// Finds the value of the first entry of a key, which lies in the line until that is changed: HV_OK,
// HV_SECTION_MISSING or HV_KEY_MISSING.
uint32_t IniFindValue(HvIniHandle* handle, std::string_view section, std::string_view key,
                      std::string_view* value);

uint32_t IniRead2(HvIniHandle* handle, const char* section, const char* key,
                  const char* defaultValue, char* buffer, uint32_t size, uint32_t* count);

// Edits: 1, or 0 when nothing was changed or memory ran out.
uint32_t IniWrite(HvIniHandle* handle, std::string_view section, std::string_view key,
                  std::string_view value);
uint32_t IniWriteAll(HvIniHandle* handle, std::string_view section, std::string_view key,
                     std::string_view value);

void IniDelete(HvIniHandle* handle, const char* section, const char* key, const char* value);

}  // namespace hv
