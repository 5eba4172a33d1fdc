// PCL soft fonts as metrics of the Windows PCL driver.

#include "hvapi.h"
#include "support/font_conversion.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::ConvertFont("sfp", data, size,
                      {FONT_CONVERT_PCL_TO_PFM, FONT_CONVERT_PCL_TO_PFM_DESCRIBED});
  return 0;
}
