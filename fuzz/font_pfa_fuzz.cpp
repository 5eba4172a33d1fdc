// Type 1 fonts as text.

#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::DescribeFont("pfa", data, size);
  hvfuzz::SendFont("pfa", data, size);
  return 0;
}
