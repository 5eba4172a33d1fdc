// Parts of the font readers that no export shows alone: paths, byte order, device names of metrics.

#include <gtest/gtest.h>

#include <string>

#include "fonts/font_paths.h"
#include "fonts/pfm_reader.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

TEST(FontPaths, ReplaceTheTextBehindTheDotOfTheFileName) {
  const auto expect = [](const char* path, const char* extension, const char* result) {
    EXPECT_EQ(hv::ReplaceExtension(path, extension), result) << path;
  };
  expect("c:\\fonts\\a.pcl", "PFM", "c:\\fonts\\a.PFM");
  expect("a.b.pcl", "PFM", "a.b.PFM");
  expect("a.pcl", ".001", "a.001");
  expect("a.", "PFM", "a.PFM");
  expect("abc", "PFM", "abcPFM");
  expect("abc", ".PFM", "abc.PFM");
  expect("d.ir\\abc", "PFM", "d.ir\\abcPFM");
  expect("d.ir/abc", "PFM", "d.ir/abcPFM");
  expect("a.b:c", "PFM", "a.b:cPFM");
  expect("a.pcl", "", "a.");
  expect("", "PFM", "PFM");
}

TEST(FontPaths, CutOutBaseNameAndExtension) {
  const auto expect = [](const char* path, const char* base, const char* extension) {
    EXPECT_EQ(hv::FontBaseName(path), base) << path;
    EXPECT_EQ(hv::FontExtension(path), extension) << path;
  };
  expect("D:FONT.TTF", "FONT", "TTF");
  expect("c:\\dir.x\\Font.Bold.ttf", "Font", "TTF");
  expect("dir/font.abcd", "font", "ABC");
  expect("dir.txt\\font", "font", "TXT");
  expect("dir.x\\font", "font", "X\\F");
  expect("font", "font", "");
  expect("font.", "font", "");
  expect(".ttf", "", "TTF");
  expect("a:b:c.\xE4z", "c", "\xE4Z");
}

TEST(PfmReader, GivesTheDeviceName) {
  const hvtest::TestFolder folder;
  hvtest::PfmFile pfm;
  const auto device = [&](const std::string& bytes) {
    const std::string path = folder.Add("a.pfm", bytes);
    const auto image = hv::PfmOpen(path.c_str());
    return image ? hv::PfmDeviceName(*image) : "(none)";
  };
  EXPECT_EQ(device(pfm.Bytes()), "PostScript");
  std::string outside = pfm.Bytes();
  outside.replace(101, 4, hvtest::Le32(0xFFFFFFF0));
  EXPECT_EQ(device(outside), "");
  EXPECT_EQ(hv::PfmOpen((folder / "missing.pfm").c_str()), std::nullopt);
}

}  // namespace
