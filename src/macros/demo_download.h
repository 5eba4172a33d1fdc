// Demonstration files: print files that a printer keeps and prints from its own panel.
#pragma once

#include <cstdint>

#include "api/hvapi.h"

namespace hv {

// Arguments have been checked by the export; results are the codes of HvResult. The method chooses
// the language in the job, which keeps it.
uint32_t DownloadDemo(const char* source, const char* destination, HvJobInfo* job,
                      const HvDemoInfo& info);

}  // namespace hv
