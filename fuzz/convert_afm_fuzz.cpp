// Font metrics as PFM and PSM, and the PFM back as AFM. A line "%%INF" parts the metrics from the
// INF beside them.

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  constexpr std::string_view Divider = "%%INF\n";
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::size_t divider = std::min(text.find(Divider), size);
  const std::size_t behind = std::min(divider + Divider.size(), size);
  hvfuzz::WriteInput("convert.INF", data + behind, size - behind);
  const std::string afm = hvfuzz::WriteInput("convert.afm", data, divider);
  const std::string output = hvfuzz::WorkFolder() + "/converted.x";
  int32_t code = HV_OK;
  const bool hadMemory = hvfuzz::HadMemory(data, size, [&] {
    code = HvFonConvert(afm.c_str(), output.c_str(), nullptr, 0, FONT_CONVERT_AFM_TO_PFM_PSM);
  });
  if (code == HV_LIMIT_REACHED || (code == HV_NO_MEMORY && !hadMemory)) return 0;
  if (code != HV_OK) std::abort();
  const std::string pfm = hvfuzz::WorkFolder() + "/converted.PFM";
  const std::string back = hvfuzz::WorkFolder() + "/converted.AFM";
  if (HvFonConvert(pfm.c_str(), back.c_str(), nullptr, 0, FONT_CONVERT_PFM_TO_AFM) != HV_OK) {
    std::abort();
  }
  return 0;
}
