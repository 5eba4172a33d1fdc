// Any bytes as an INI file of setup lists: all variables of a list, or none.

#include <cstdlib>
#include <string>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string path = hvfuzz::WriteInput("s.ini", data, size);
  HvIniHandle* const ini = HvIniOpen2(path.c_str(), INI_OPEN_READ);
  for (const uint32_t kind :
       {QSF_LIST_REQUIRED, QSF_LIST_OPTIONAL, QSF_LIST_EXCLUDE, QSF_LIST_ORDER}) {
    uint8_t* values = nullptr;
    uint16_t count = 0;
    uint32_t code = HV_OK;
    const bool hadMemory = hvfuzz::HadMemory(
        data, size, [&] { code = HvQsfIniGetSection(ini, kind, 5, &values, &count); });
    if ((code == HV_OK) != (values != nullptr) || (code == HV_NO_MEMORY && hadMemory)) {
      std::abort();
    }
    // Each variable stands in the file with a digit at least.
    if (std::size_t{count} > size) std::abort();
    for (std::size_t i = 0; values != nullptr && i < std::size_t{2} * count; ++i) {
      volatile uint8_t read = values[i];
      static_cast<void>(read);
    }
    HvMemFree(values);
  }
  HvIniClose(ini);
  return 0;
}
