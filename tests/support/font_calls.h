// The font exports as tests call them.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace hvtest {

struct DescribedFont {
  uint32_t code;
  HvFontInfo info;
};

inline DescribedFont DescribeFont(const std::string& path, uint32_t companions = 0,
                                  uint32_t metrics = 1) {
  DescribedFont font;
  std::memset(&font.info, 0xAA, sizeof font.info);
  font.code = HvFonQueryInfo(path.c_str(), &font.info, companions, metrics);
  return font;
}

// The same for a file of that name alone in its folder.
inline DescribedFont DescribeBytes(const std::string& file, const std::string& bytes,
                                   uint32_t companions = 0, uint32_t metrics = 1) {
  const TestFolder folder;
  return DescribeFont(folder.Add(file, bytes), companions, metrics);
}

// Result, class, type and flags, these in hexadecimal: "0 3 9 03".
inline std::string Kind(const DescribedFont& font) {
  char text[64];
  std::snprintf(text, sizeof text, "%u %u %d %02X", font.code, font.info.fontClass,
                font.info.fontType, font.info.flags);
  return text;
}

// The names of the faces of a cartridge, which is released.
inline std::vector<std::string> TakeFaces(HvFontInfo* info) {
  std::vector<std::string> faces;
  if (info->cartridge == nullptr) return faces;
  while (HvFontFace* const face = info->cartridge->faces) {
    info->cartridge->faces = face->next;
    faces.emplace_back(face->name);
    HvMemFree(face->name);
    HvMemFree(face);
  }
  HvMemFree(info->cartridge->title);
  HvMemFree(info->cartridge);
  info->cartridge = nullptr;
  return faces;
}

inline int32_t Convert(const std::string& source, const std::string& destination, int32_t type,
                       const HvFontInfo* info = nullptr, uint32_t selector = 0) {
  return HvFonConvert(source.c_str(), destination.c_str(), info, selector, type);
}

// What a file of the folder becomes under the same name with the extension, a file that is
// described in its turn; "code N" when there is none. The source is described first, as the layout
// of soft fonts follows from that.
inline std::string Converted(const TestFolder& folder, const std::string& file, int32_t type,
                             const char* extension, const HvFontInfo* info = nullptr) {
  const std::size_t before = folder.Names().size();
  DescribeFont(folder / file);
  const int32_t code = Convert(folder / file, "", type, info, FONT_COMPANIONS_METRICS);
  if (code != HV_OK) {
    EXPECT_EQ(folder.Names().size(), before);
    return "code " + std::to_string(code);
  }
  const std::string made = folder / file.substr(0, file.find('.') + 1) + extension;
  EXPECT_NE(DescribeFont(made).code, HV_UNUSABLE_FILE);
  return ReadFile(made);
}

inline std::string Converted(const std::string& file, const std::string& bytes, int32_t type,
                             const char* extension) {
  const TestFolder folder;
  folder.Add(file, bytes);
  return Converted(folder, file, type, extension);
}

}  // namespace hvtest
