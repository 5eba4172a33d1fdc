// Printer font metrics as an AFM. Published source: Adobe Technical Note 5004, which describes the
// AFM format.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace hv {

// The text of the AFM, with line feeds. A PFM has no bounding boxes, so that the lines of its
// characters have none either. Empty when a table or a text of the PFM lies outside of it.
std::optional<std::string> AfmOfPfm(std::span<const uint8_t> pfm);

// Writes it. HV_OK, HV_CANNOT_OPEN (a directory as source, or an output that cannot be created),
// HV_WRITE_FAILED with the output left as far as it was written, HV_UNUSABLE_FILE for no PFM.
uint32_t WriteAfmFromPfm(const char* source, const std::string& output);

}  // namespace hv
