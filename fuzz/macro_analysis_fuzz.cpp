// Any bytes as a macro of each language, as they are and filtered.

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "api/hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

void Validate(const std::string& path, int32_t emulation, uint32_t flags, const uint8_t* data,
              std::size_t size) {
  HvJobInfo job = {};
  job.emulation = emulation;
  job.identifier = 77;
  HvMacroInfo info = {};
  info.flags = flags;
  info.target = STORAGE_DEVICE_DISK1;
  std::strcpy(info.name, "before");
  uint32_t code = HV_OK;
  const bool hadMemory =
      hvfuzz::HadMemory(data, size, [&] { code = HvMacValidate(path.c_str(), &job, &info); });
  Check(code == HV_OK || code == HV_BAD_ARGUMENT || code == HV_READ_FAILED ||
        code == HV_WRONG_LANGUAGE || code == HV_BAD_PCLXL || code == HV_PCLXL_JOB ||
        (code == HV_NO_MEMORY && !hadMemory));
  Check(std::memchr(info.name, 0, sizeof info.name) != nullptr);
  Check(info.target >= STORAGE_DEVICE_RAM && info.target <= STORAGE_DEVICE_DISK2);
  if (code == HV_OK) return;
  Check(std::strcmp(info.name, "before") == 0 && job.identifier == 77);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string path = hvfuzz::WriteInput("source", data, size);
  // The conversion of PCL XL works in the current directory.
  std::filesystem::current_path(hvfuzz::WorkFolder());
  for (const int32_t emulation : {2, 3, 4, 5, 6}) {
    for (const uint32_t flags : {0, int{MACRO_FLAG_FILTER}, int{MACRO_FLAG_PS_OVERLAY}}) {
      Validate(path, emulation, flags, data, size);
    }
  }
  for (const char* file : {"in.str", "temp.str", "out.str"}) Check(!std::filesystem::exists(file));
  return 0;
}
