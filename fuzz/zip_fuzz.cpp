// Any bytes as a zip archive, extracted through the export. Nothing may come to be beside the
// folder that it is extracted into.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

namespace {

namespace fs = std::filesystem;

// Reports stop the run at the first member that fails, so that both ways are gone.
uint32_t HVAPI_CALL CheckReport(const char* name, uint32_t, uint16_t percent) {
  if (name == nullptr || percent > 100) std::abort();
  return 0;
}

std::size_t EntryCount(const fs::path& folder) {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static const fs::path Start = fs::current_path();
  const std::string archive = hvfuzz::WriteInput("archive.zip", data, size);
  const fs::path out = fs::path(hvfuzz::WorkFolder()) / "out";
  for (const HvZipProgress progress : {HvZipProgress{nullptr}, HvZipProgress{CheckReport}}) {
    fs::create_directory(out);
    fs::current_path(out);
    const char* const names = progress == nullptr ? nullptr : "*[!x]*";
    hvfuzz::HadMemory(data, size, [&] { HvZipExplode(archive.c_str(), names, progress); });
    if (!fs::equivalent(fs::current_path(), out)) std::abort();
    fs::current_path(Start);
    if (EntryCount(hvfuzz::WorkFolder()) != 2 || fs::file_size(archive) != size) std::abort();
    fs::remove_all(out);
  }
  return 0;
}
