// FMF files, the metrics of DLF fonts.
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "fonts/font_file.h"
#include "platform/stream.h"

namespace hv {

// The name that the file holds; empty for a file without.
std::string FmfFontName(platform::Stream* file);

uint32_t DescribeFmf(const FontFile& file, HvFontInfo* info);

}  // namespace hv
