// PCL soft fonts as printer font metrics of the Windows PCL driver.
#pragma once

#include <cstdint>
#include <string>

namespace hv {

// Converts the soft font `source`; with `described` the driver information holds a description of
// the font. The layout of the font is taken to be PclHeaderFamily. HV_OK, HV_CANNOT_OPEN (source or
// output), HV_UNUSABLE_FILE, or HV_SYSTEM_FAILURE with the output left as far as it was written.
uint32_t ConvertPclFont(const char* source, const std::string& output, bool described);

}  // namespace hv
