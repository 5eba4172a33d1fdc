// The configuration files of a directory that describe themselves.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

// Appends the files of `directory` of the kind (DAT_KIND_...) to `list`, which is empty before, and
// counts them. When memory runs out, the list ends with the last file found and is whole.
void ListConfigFiles(const char* directory, uint32_t fileKind, HvConfigFileEntry** list,
                     uint16_t* count);

}  // namespace hv
