// Cartridge metrics.

#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::DescribeFont("pcm", data, size);
  return 0;
}
