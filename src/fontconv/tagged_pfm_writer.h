// Tagged font metrics as printer font metrics of the Windows PCL 5 driver. Lengths stay in design
// units, which are the master units of the PFM.
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"

namespace hv {

// Converts the tagged font metrics that a companion path of `fontInfo` names. Of several fonts the
// first one with the symbol set of the source is taken, else the first one. With `byHeader` the
// source is a PCL soft font; what selects the font on the printer comes from its header then.
// HV_OK, HV_BAD_ARGUMENT (no record, another selector), HV_CANNOT_OPEN (the source is a directory,
// or the output cannot be created), HV_UNUSABLE_FILE (metrics or header), or HV_SYSTEM_FAILURE with
// the output left as far as it was written.
uint32_t ConvertTaggedMetrics(const char* source, const std::string& output,
                              const HvFontInfo* fontInfo, uint32_t pathSelector, bool byHeader);

}  // namespace hv
