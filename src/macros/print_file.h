// Print files that become macros or demonstration files: what can be one, and the names under which
// printers keep them.
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"

namespace hv {

// Behind the name of a demonstration page in the printer's storage.
constexpr const char* DemoExtension = ".demo";

// HV_OK, HV_NOT_FOUND, HV_UNUSABLE_FILE (a program or system file).
uint32_t CheckPrintFile(const char* path);

// The name in a field of HvMacroInfo or HvDemoInfo, or that of the file, in upper case, where it is
// empty. At most 23 characters.
constexpr std::size_t NameFieldSize = sizeof(HvMacroInfo::name);
static_assert(NameFieldSize == sizeof(HvDemoInfo::name));
std::string StoredName(const char (&name)[NameFieldSize], const char* source);

}  // namespace hv
