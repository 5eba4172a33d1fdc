// Metrics of DLF fonts.

#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::DescribeFont("fmf", data, size);
  return 0;
}
