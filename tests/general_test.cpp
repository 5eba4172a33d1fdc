// Library information, memory release, parts of a path.

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <tuple>

#include "hvapi.h"

TEST(ApiInfo, HoldsTheDocumentedWords) {
  struct {
    HvApiInfo info;
    unsigned char behind[16];
  } record;
  std::memset(&record, 0xAA, sizeof record);
  HvGenQueryApiInfo(&record.info);

  const std::map<int, int> expected = {{0, 830}, {1, 32}, {2, 2},  {3, 2},  {11, 1}, {12, 1},
                                       {16, 1},  {17, 1}, {20, 1}, {23, 1}, {26, 1}, {28, 1}};
  for (int i = 0; i < 64; ++i) {
    const auto word = expected.find(i);
    EXPECT_EQ(record.info.words[i], word == expected.end() ? 0 : word->second) << "word " << i;
  }
  for (const unsigned char byte : record.behind) EXPECT_EQ(byte, 0xAA);
}

TEST(PathCopies, SplitAtTheLastSeparatorAndUpperCase) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"c:\\fonts\\arial.pcl", "C:\\FONTS\\", "ARIAL.PCL"},
      {"a:b/c\\d", "A:B/C\\", "D"},
      {"name", "", "NAME"},
      {"c:", "C:", ""},
      {"c:x", "C:", "X"},
      {"", "", ""},
      {"\\", "\\", ""},
      {"/a\\b:c", "/A\\B:", "C"},
      {"dir/\xE4\xF6z{`[", "DIR/", "\xE4\xF6Z{`["},
      {nullptr, "", ""},
  };
  for (const auto& [path, directoryPart, filePart] : cases) {
    char file[40] = "untouched";
    char directory[40] = "untouched";
    EXPECT_EQ(HvStrCpyFile(file, path), file);
    EXPECT_EQ(HvStrCpyPath(directory, path), directory);
    EXPECT_STREQ(file, filePart) << (path ? path : "NULL");
    EXPECT_STREQ(directory, directoryPart) << (path ? path : "NULL");
  }
}

TEST(PathCopies, NeedNoBufferOfTheirOwn) {
  char path[] = "dir/name.txt";
  EXPECT_STREQ(HvStrCpyFile(path, path), "NAME.TXT");
  EXPECT_STREQ(HvStrCpyFile(nullptr, "a/b"), "");
  EXPECT_STREQ(HvStrCpyPath(nullptr, "a/b"), "");
  HvMemFree(nullptr);
}
