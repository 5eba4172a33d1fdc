// DLF fonts as metrics of the driver for "IBM LaserPrinter".
#pragma once

#include <cstdint>
#include <string>

namespace hv {

// Writes what the block of the font says (name, pitch, size, code page) in the layout of a PSM. The
// widths of a proportional font are not in it, so that the file has no table of them. HV_OK,
// HV_CANNOT_OPEN (source or output), HV_UNUSABLE_FILE for no DLF font, or HV_SYSTEM_FAILURE with
// the output left as far as it was written.
uint32_t ConvertDlf(const char* source, const std::string& output);

}  // namespace hv
