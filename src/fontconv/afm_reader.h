// Adobe Font Metrics files and the INF files beside them, read into Windows code positions.
// Published source: Adobe Technical Note 5004, which describes the AFM format.
#pragma once

#include <cstdint>

#include "fontconv/font_metrics_record.h"
#include "platform/stream.h"

namespace hv {

// How the average width of a font is worked out.
enum class WidthRule : uint8_t {
  Weighted = 2,  // over the small letters and the space, by their frequency
  Plain = 3,     // over all codes
};

// Reads an AFM and, when there is one, its INF (else NULL), both opened in binary mode, into the
// record. HV_OK, HV_LIMIT_REACHED for a file of more than 65,534 bytes, or HV_UNUSABLE_FILE for one
// that cannot be read to its end. Malformed lines are no errors: a number that is missing is 0, a
// word that is not known is passed over. Names are cut at 79 characters, kerning pairs past 1024
// and codes above 255 are dropped.
uint32_t ReadAfmAndInf(platform::Stream* afm, platform::Stream* inf, FontMetricsRecord* record,
                       WidthRule rule);

// Works out avgWidth alone.
void RecomputeAverageWidth(FontMetricsRecord* record, WidthRule rule);

}  // namespace hv
