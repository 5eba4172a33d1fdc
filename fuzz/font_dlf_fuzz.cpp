// DLF fonts.

#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::DescribeFont("dlf", data, size);
  hvfuzz::SendFont("dlf", data, size);
  return 0;
}
