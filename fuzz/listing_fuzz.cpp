// Any bytes as a configuration file in a folder whose files are listed with their descriptions.

#include <cstdlib>
#include <cstring>
#include <string>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::WriteInput("listed/a.cfg", data, size);
  const std::string folder = hvfuzz::WorkFolder() + "/listed";
  uint16_t count = 0;
  HvConfigFileEntry* list = nullptr;
  hvfuzz::HadMemory(data, size,
                    [&] { list = HvDatQueryFiles(folder.c_str(), DAT_KIND_CFG, &count); });
  if (count != (list == nullptr ? 0 : 1)) std::abort();
  if (list != nullptr && (list->next != nullptr ||
                          std::memchr(list->description, 0, sizeof list->description) == nullptr)) {
    std::abort();
  }
  HvDatQueryFilesFree(list);
  return 0;
}
