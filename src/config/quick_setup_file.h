// Quick setup files: blocks of printer variables behind a header with a checksum.
#pragma once

#include <cstdint>
#include <memory>

#include "api/hvapi.h"

namespace hv {

struct QuickSetupCloser {
  void operator()(HvQsfHandle* handle) const;
};
using QuickSetup = std::unique_ptr<HvQsfHandle, QuickSetupCloser>;

// Opens the file and checks its header. *setup is set on success only.
uint32_t OpenQuickSetup(const char* path, uint8_t fileType, QuickSetup* setup);

// *data and *count are set when the block, 1, 2 or 5, has entries and could be read.
uint32_t ReadQuickSetupBlock(HvQsfHandle* handle, uint32_t block, uint8_t** data, uint16_t* count);

}  // namespace hv
