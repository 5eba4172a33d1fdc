// Any bytes as a file of printer command records, walked and counted.

#include <cstdlib>
#include <cstring>
#include <string>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

template <std::size_t Size>
void CheckEnds(const char (&field)[Size]) {
  Check(std::memchr(field, 0, Size) != nullptr);
}

// The records from the first one whose key begins so; each call has the memory of the run.
void Walk(const std::string& path, const char* prefix, const uint8_t* data, std::size_t size) {
  int32_t handle = 0;
  const bool opened = hvfuzz::HadMemory(
      data, size, [&] { handle = HvDatOpenFile(path.c_str(), 0, DAT_FILE_COMMANDS); });
  Check(handle >= 0 || !opened);
  if (handle < 0) return;
  HvCommandRecord record = {};
  std::strcpy(record.szKey, prefix);
  int32_t code = 0;
  hvfuzz::HadMemory(data, size, [&] { code = HvDatGetFirstKey(handle, &record); });
  Check(code != 0 || std::strncmp(record.szKey, prefix, std::strlen(prefix)) == 0);
  for (std::size_t found = 0; code == 0; ++found) {
    Check(found < size);
    CheckEnds(record.szKey);
    CheckEnds(record.szDescr);
    CheckEnds(record.szDuration);
    hvfuzz::HadMemory(data, size, [&] { code = HvDatGetNextKey(handle, &record); });
  }
  Check(code == DAT_END_OF_FILE || code == DAT_NO_RECORD || code == DAT_FAILED);
  Check(HvDatCloseFile(handle) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string path = hvfuzz::WriteInput("r.dat", data, size);
  for (const char* const prefix : {"", "A", "AB"}) {
    Walk(path, prefix, data, size);
    char key[sizeof(HvCommandRecord)] = "";
    std::strcpy(key, prefix);
    const hvfuzz::RunMemory memory(data, size);
    const uint32_t count = HvDatQueryCount(path.c_str(), key, DAT_FILE_COMMANDS);
    Check(count <= size || (count & 0x8000) != 0);
  }
  return 0;
}
