// DLF fonts of PPDS printers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "fonts/font_file.h"
#include "platform/stream.h"

namespace hv {

// One line that describes a DLF font: name, pitch or point size, code page; at most `limit`
// characters of it. Empty for a file that is no DLF font.
std::string DlfDescribe(platform::Stream* file, std::size_t limit);

uint32_t DescribeDlf(const FontFile& file, HvFontInfo* info);

}  // namespace hv
