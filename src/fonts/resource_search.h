// Searches for macros and demonstration files. Arguments have been checked by the exports.
#pragma once

#include <cstdint>
#include <string>

#include "fonts/resource_list.h"

namespace hv {

// Each adds what it finds to the list; false when there is no memory for all of it.

// The files that are macros of the language, JOB_EMULATION_...
bool FindMacros(const std::string& directory, uint32_t language, uint32_t jobParameter,
                bool recurse, ResourceList* list);

// The files but for programs and system files.
bool FindDemos(const std::string& directory, bool recurse, ResourceList* list);

}  // namespace hv
