// DLF fonts as metrics for "IBM LaserPrinter".

#include "hvapi.h"
#include "support/font_conversion.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::ConvertFont("dlf", data, size, {FONT_CONVERT_DLF_TO_PBM});
  return 0;
}
