// What a font or font-metrics file is. Arguments have been checked by the export.
#pragma once

#include "api/hvapi.h"

namespace hv {

// Fills a cleared record. Results are those of HvFonQueryInfo.
uint32_t QueryFontInformation(const char* fontPath, HvFontInfo* info, uint32_t companionMode,
                              bool allowMetricFiles);

}  // namespace hv
