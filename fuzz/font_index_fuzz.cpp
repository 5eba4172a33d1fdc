// Any bytes as the text of a font index, parsed and then searched by.

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "fonts/font_index.h"
#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const hv::FontIndexEntry& entry : hv::ParseFontIndex(text)) {
    const std::size_t longest = std::max(entry.fontPath.size(), entry.metricsPath.size());
    if (entry.fontPath.empty() || longest > 99 || entry.symbolSet.size() > 3) std::abort();
  }
  hvfuzz::WriteInput("index/GLUE.TXT", data, size);
  const std::string folder = hvfuzz::WorkFolder() + "/index";
  uint16_t count = 0;
  HvFoundResource* list = nullptr;
  hvfuzz::HadMemory(data, size,
                    [&] { list = HvFonFind(folder.c_str(), &count, FONT_KIND_ANY, 6, 5, 1); });
  uint16_t entries = 0;
  for (const HvFoundResource* entry = list; entry != nullptr; entry = entry->next) ++entries;
  if (entries != count) std::abort();
  HvFonFindFree(list);
  return 0;
}
