// The font exports as tests call them.
#pragma once

#include <cstring>
#include <filesystem>
#include <string>

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
