#include "support/font_conversion.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

namespace hvfuzz {
namespace {

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Converts and looks at what came of it.
void Convert(const std::string& source, HvFontInfo* info, uint32_t companions, int32_t type,
             const uint8_t* data, std::size_t size) {
  const std::string output = WorkFolder() + "/converted.out";
  int32_t code = HV_OK;
  const bool hadMemory = HadMemory(data, size, [&] {
    code = HvFonConvert(source.c_str(), output.c_str(), info, companions, type);
  });
  const bool isThere = std::filesystem::exists(output);
  if (!hadMemory && code != HV_OK) {
    std::filesystem::remove(output);
    return;
  }
  if (isThere != (code == HV_OK)) std::abort();
  if (!isThere) return;
  const std::string bytes = Bytes(output);
  std::filesystem::remove(output);
  if (bytes.compare(0, 17, "StartFontMetrics ") == 0) {
    if (bytes.find("\r\nEndFontMetrics\r\n") == std::string::npos) std::abort();
    return;
  }
  std::size_t declared = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    declared |= std::size_t{static_cast<uint8_t>(bytes.at(2 + i))} << (8 * i);
  }
  if (declared != bytes.size()) std::abort();
}

}  // namespace

void ConvertFont(const char* extension, const uint8_t* data, std::size_t size,
                 std::initializer_list<int32_t> types) {
  const std::string source = WriteInput(std::string("convert.") + extension, data, size);
  // The layout of a soft font's characters is that of the font described last.
  HvFontInfo described;
  HvFonQueryInfo(source.c_str(), &described, FONT_COMPANIONS_NONE, 0);
  for (const int32_t type : types) Convert(source, nullptr, 0, type, data, size);
}

void ConvertTagged(const std::string& source, const std::string& metrics, const char* symbolSet,
                   const uint8_t* data, std::size_t size) {
  HvFontInfo info = {};
  std::snprintf(info.companionPath1, sizeof info.companionPath1, "%s", metrics.c_str());
  std::snprintf(info.symbolSet, sizeof info.symbolSet, "%s", symbolSet);
  for (const int32_t type : {FONT_CONVERT_TFM_TO_PFM, FONT_CONVERT_TFM_TO_PFM_BY_HEADER}) {
    Convert(source, &info, FONT_COMPANIONS_METRICS, type, data, size);
  }
}

}  // namespace hvfuzz
