// Metrics read from an AFM as printer font metrics of two Windows drivers. Published source of the
// layout: the Windows device development kit, "Printer Font Metrics".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fontconv/font_metrics_record.h"

namespace hv {

enum class MetricsVariant : uint8_t {
  LaserPrinterPsm = 2,  // for the driver of the device LaserPrinterDevice
  PostScriptPfm = 3,    // for the PostScript driver
};

constexpr std::string_view LaserPrinterDevice = "IBM LaserPrinter";

// The units of the em of a PostScript font.
constexpr int32_t UnitsPerEm = 1000;

// The file for the metrics, complete. Names that are too long for the fields of a PSM are cut.
std::vector<uint8_t> AssembleMetrics(const FontMetricsRecord& record, MetricsVariant variant);

// Writes it. A file that cannot be written is no error: what was there before stays.
void WriteMetricsFile(const FontMetricsRecord& record, const std::string& path,
                      MetricsVariant variant);

}  // namespace hv
