// PCL soft fonts: descriptors, and names made up of them.

#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::DescribeFont("sfp", data, size);
  hvfuzz::SendFont("sfp", data, size);
  return 0;
}
