#include "support/font_conversion.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "hvapi.h"
#include "support/font_file.h"

namespace hvfuzz {
namespace {

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void CheckAndRemove(const std::string& output, int32_t code) {
  const bool isThere = std::filesystem::exists(output);
  if (isThere != (code == HV_OK)) std::abort();
  if (!isThere) return;
  const std::string bytes = Bytes(output);
  std::filesystem::remove(output);
  if (bytes.compare(0, 17, "StartFontMetrics ") == 0) {
    if (bytes.find("\r\nEndFontMetrics\r\n") == std::string::npos) std::abort();
    return;
  }
  std::size_t size = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    size |= std::size_t{static_cast<uint8_t>(bytes.at(2 + i))} << (8 * i);
  }
  if (size != bytes.size()) std::abort();
}

}  // namespace

void ConvertFont(const char* extension, const uint8_t* data, std::size_t size,
                 std::initializer_list<int32_t> types) {
  const std::string source = WriteInput(std::string("convert.") + extension, data, size);
  const std::string output = WorkFolder() + "/converted.out";
  HvFontInfo info;
  HvFonQueryInfo(source.c_str(), &info, 0, 0);
  for (const int32_t type : types) {
    CheckAndRemove(output, HvFonConvert(source.c_str(), output.c_str(), nullptr, 0, type));
  }
}

void ConvertTagged(const std::string& source, const std::string& metrics, const char* symbolSet) {
  const std::string output = WorkFolder() + "/converted.out";
  HvFontInfo info = {};
  std::strncpy(info.companionPath1, metrics.c_str(), sizeof info.companionPath1);
  std::strncpy(info.symbolSet, symbolSet, sizeof info.symbolSet);
  for (const int32_t type : {FONT_CONVERT_TFM_TO_PFM, FONT_CONVERT_TFM_TO_PFM_BY_HEADER}) {
    const int32_t code =
        HvFonConvert(source.c_str(), output.c_str(), &info, FONT_COMPANIONS_METRICS, type);
    CheckAndRemove(output, code);
  }
}

}  // namespace hvfuzz
