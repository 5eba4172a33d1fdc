// Printer font metrics for the Windows PCL drivers: which sections there are and where they lie.
// The values of the header and of the extended text metrics come from the converters.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fontconv/font_metrics_record.h"
#include "fonts/pfm_header.h"

namespace hv {

struct DriverPfm {
  std::array<uint8_t, PfmHeaderSize> header = {};  // all but the size and the offsets
  std::array<uint8_t, PfmMetricsSize> metrics = {};
  std::vector<uint16_t> widths;   // of the first character to the one behind the last; may be empty
  bool leadsToTables = false;     // whether the extension names the width and kerning tables
  std::vector<KernPair> kerning;  // written when the extension leads to it
  std::string faceName;
  std::string deviceName;
  uint16_t symbolSet = 0;
  uint16_t translationTable = 0;           // see FindTranslation
  uint32_t memoryUsage = 0;                // of the font in the printer, in bytes
  std::optional<std::string> description;  // makes the driver information the longer one
  std::string selection;                   // the escape sequence; empty for none
};

// The complete file, its offsets and its size filled in.
std::vector<uint8_t> AssembleDriverPfm(const DriverPfm& pfm);

}  // namespace hv
