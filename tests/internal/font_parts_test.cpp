// The paths of fonts as text, of which no export shows all forms.

#include <gtest/gtest.h>

#include "fonts/font_paths.h"

namespace {

TEST(FontPaths, ReplaceTheTextBehindTheDotOfTheFileName) {
  const auto expect = [](const char* path, const char* extension, const char* result) {
    EXPECT_EQ(hv::ReplaceExtension(path, extension), result) << path;
  };
  expect("c:\\fonts\\a.pcl", "PFM", "c:\\fonts\\a.PFM");
  expect("a.b.pcl", "PFM", "a.b.PFM");
  expect("a.pcl", ".001", "a.001");
  expect("abc", "PFM", "abcPFM");
  expect("abc", ".PFM", "abc.PFM");
  expect("d.ir\\abc", "PFM", "d.ir\\abcPFM");
  expect("a.b:c", "PFM", "a.b:cPFM");
  expect("a.pcl", "", "a.");
}

TEST(FontPaths, CutOutBaseNameAndExtension) {
  const auto expect = [](const char* path, const char* base, const char* extension) {
    EXPECT_EQ(hv::FontBaseName(path), base) << path;
    EXPECT_EQ(hv::FontExtension(path), extension) << path;
  };
  expect("D:FONT.TTF", "FONT", "TTF");
  expect("c:\\dir.x\\Font.Bold.ttf", "Font", "TTF");
  expect("dir/font.abcd", "font", "ABC");
  expect("dir.x\\font", "font", "X\\F");
  expect("font.", "font", "");
  expect(".ttf", "", "TTF");
  expect("a:b:c.\xE4z", "c", "\xE4Z");
}

}  // namespace
