// Operator panel files by their configuration number: INI files that all who register a number
// share. All calls may overlap.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "api/hvapi.h"

namespace hv {

// The longest name of a panel file and its NUL.
constexpr std::size_t PanelFileNameSize = 18;

// Writes PanelFileNameSize bytes at most.
void FormatPanelFileName(uint16_t configNumber, char* buffer);

// The handle of a number other than 0, or NULL. directory may be NULL.
HvIniHandle* RegisterPanelFile(uint16_t configNumber, const char* directory);
// Whether the handle was registered and, where this was the last registration, could be closed.
bool UnregisterPanelFile(HvIniHandle* handle);

// The value of an entry as far as the buffer takes it; empty where there is no such entry or no
// file.
std::string_view ReadPanelEntry(HvIniHandle* file, const std::string& section,
                                const std::string& key, std::span<char> buffer);

}  // namespace hv
