// Type 1 fonts in segments.

#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::DescribeFont("pfb", data, size);
  hvfuzz::SendFont("pfb", data, size);
  return 0;
}
