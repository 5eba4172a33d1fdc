// Any bytes as a quick setup file, whose checksum is made to fit: what a block gives is a part of the
// file.

#include <cstdlib>
#include <string>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/quick_setup_builder.h"
#include "support/run_memory.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

void CheckBlock(HvQsfHandle* setup, uint32_t number, const std::string& bytes, const uint8_t* data,
                std::size_t size) {
  uint8_t* block = nullptr;
  uint16_t count = 0;
  uint32_t code = HV_OK;
  const bool hadMemory = hvfuzz::HadMemory(
      data, size, [&] { code = HvQsfGetVariables(setup, number, &block, &count); });
  Check(code == HV_OK || code == HV_UNUSABLE_FILE || !hadMemory);
  Check(code == HV_OK || block == nullptr);
  // Version 1.1 puts the size before the bytes.
  if (block != nullptr && bytes[5] == 1 && bytes[6] == 1) {
    const std::size_t length = block[0] | block[1] << 8 | block[2] << 16;
    Check(block[3] == 0 && length <= bytes.size());
    Check(bytes.find(std::string(reinterpret_cast<char*>(block) + 6, length)) != bytes.npos);
  }
  HvMemFree(block);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string bytes =
      hvtest::WithChecksum(std::string(reinterpret_cast<const char*>(data), size));
  const std::string path =
      hvfuzz::WriteInput("a.qsf", reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  HvQsfHandle* setup = nullptr;
  uint32_t code = HV_OK;
  const uint32_t type = size > 4 ? data[4] : 0;
  hvfuzz::HadMemory(data, size, [&] { code = HvQsfOpen(path.c_str(), type, &setup); });
  Check((code == HV_OK) == (setup != nullptr) && code != HV_BAD_CHECKSUM);
  if (setup == nullptr) return 0;
  for (const uint32_t number : {1U, 2U, 5U}) CheckBlock(setup, number, bytes, data, size);
  HvQsfClose(setup);
  return 0;
}
