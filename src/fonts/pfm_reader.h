// Printer font metrics: PFM files and their PSM and PBM variants.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "api/hvapi.h"
#include "fonts/font_file.h"

namespace hv {

// The start of a PFM, as much of it as the names and metrics of a well-formed file take. It belongs
// to its reader, so that readers do not disturb each other.
using PfmImage = std::vector<uint8_t>;
constexpr std::size_t PfmImageSize = 4096;
// More than the tables and names of a PFM can take.
constexpr std::size_t LargestPfm = std::size_t{1024} * 1024;

// Loads the first `limit` bytes of the file. Empty when it cannot be opened or is no PFM.
std::optional<PfmImage> PfmOpen(const char* path, std::size_t limit = PfmImageSize);

// Whether the face name is where that of a well-formed file lies.
bool HasFaceNameInPlace(const PfmImage& image);

// The face name with " (It)" and " (Bd)" for its style, at most 90 characters; empty when the image
// has no face name.
std::string PfmFaceName(const PfmImage& image);

// The name of the device that the metrics are for; may be empty.
std::string PfmDeviceName(const PfmImage& image);

uint32_t DescribePfm(const FontFile& file, HvFontInfo* info);

}  // namespace hv
