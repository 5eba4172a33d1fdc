// The compressed part of a deflated block: literals and matches up to the end of the block.
#pragma once

#include "zip/bit_reader.h"
#include "zip/inflate_codes.h"
#include "zip/output_window.h"

namespace hv {

// False when the data are damaged or end early. When the window stops it returns soon.
bool InflateBlock(BitReader& reader, const InflateTables& tables, OutputWindow& window);

}  // namespace hv
