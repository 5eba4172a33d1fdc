#include "support/font_file.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "hvapi.h"
#include "support/run_memory.h"

namespace hvfuzz {
namespace {

namespace fs = std::filesystem;

struct Folder {
  Folder() {
    const fs::path memory = "/dev/shm";
    const fs::path base = fs::is_directory(memory) ? memory : fs::temp_directory_path();
    path = (base / ("hvfuzz" + std::to_string(getpid()))).string();
    fs::create_directory(path);
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  std::string path;
};

void Check(bool condition) {
  if (!condition) std::abort();
}

template <std::size_t Size>
void CheckEnds(const char (&field)[Size]) {
  Check(std::memchr(field, 0, Size) != nullptr);
}

void ReleaseCartridge(HvFontCartridge* cartridge) {
  if (cartridge == nullptr) return;
  while (HvFontFace* const face = cartridge->faces) {
    cartridge->faces = face->next;
    Check(std::strlen(face->name) <= 90);
    HvMemFree(face->name);
    HvMemFree(face);
  }
  Check(std::strlen(cartridge->title) <= 79);
  HvMemFree(cartridge->title);
  HvMemFree(cartridge);
}

}  // namespace

const std::string& WorkFolder() {
  static const Folder Here;
  return Here.path;
}

std::string WriteInput(const std::string& name, const uint8_t* data, std::size_t size) {
  std::string path = WorkFolder() + "/" + name;
  fs::create_directories(fs::path(path).parent_path());
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  Check(file != nullptr);
  Check(size == 0 || std::fwrite(data, 1, size, file) == size);
  Check(std::fclose(file) == 0);
  return path;
}

void DescribeFont(const char* extension, const uint8_t* data, std::size_t size) {
  const std::string path = WriteInput(std::string("font.") + extension, data, size);
  for (const uint32_t mode : {0U, 2U, 4U, 5U}) {
    HvFontInfo info = {};
    uint32_t code = HV_OK;
    const bool hadMemory =
        HadMemory(data, size, [&] { code = HvFonQueryInfo(path.c_str(), &info, mode, 1); });
    Check(code == HV_OK || code == HV_UNUSABLE_FILE || code == HV_NOT_SUPPORTED ||
          code == HV_LIMIT_REACHED || (code == HV_NO_MEMORY && !hadMemory));
    CheckEnds(info.name);
    CheckEnds(info.description);
    CheckEnds(info.symbolSet);
    ReleaseCartridge(info.cartridge);
  }
}

void SendFont(const char* extension, const uint8_t* data, std::size_t size) {
  const std::string path = WriteInput(std::string("font.") + extension, data, size);
  const std::string out = WriteInput("out", nullptr, 0);
  HvJobInfo job = {};
  for (const int32_t emulation : {2, 3, 6}) {
    job.emulation = emulation;
    const RunMemory memory(data, size);
    HvFonDownload(path.c_str(), out.c_str(), &job, STORAGE_DEVICE_RAM);
  }
}

}  // namespace hvfuzz
