// Printer font metrics as AFM.

#include "hvapi.h"
#include "support/font_conversion.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::ConvertFont("pfm", data, size, {FONT_CONVERT_PFM_TO_AFM});
  return 0;
}
