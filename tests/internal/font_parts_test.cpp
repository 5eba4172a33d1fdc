// Parts of the font readers that no export shows alone: paths, byte order, the descriptor family,
// names of typefaces, device names of metrics.

#include <gtest/gtest.h>

#include <string>

#include "fonts/font_paths.h"
#include "fonts/pcl_header_family.h"
#include "fonts/pfm_reader.h"
#include "fonts/round_tenths.h"
#include "fonts/soft_font_descriptor.h"
#include "fonts/typeface_names.h"
#include "support/byte_order.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hv::PclFamily;

TEST(FontPaths, ReplaceTheTextBehindTheDotOfTheFileName) {
  const struct {
    const char* path;
    const char* extension;
    const char* result;
  } cases[] = {
      {"c:\\fonts\\a.pcl", "PFM", "c:\\fonts\\a.PFM"},
      {"a.b.pcl", "PFM", "a.b.PFM"},
      {"a.pcl", ".001", "a.001"},
      {"a.", "PFM", "a.PFM"},
      {"abc", "PFM", "abcPFM"},
      {"abc", ".PFM", "abc.PFM"},
      {"d.ir\\abc", "PFM", "d.ir\\abcPFM"},
      {"d.ir/abc", "PFM", "d.ir/abcPFM"},
      {"a.b:c", "PFM", "a.b:cPFM"},
      {"a.pcl", "", "a."},
      {"", "PFM", "PFM"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hv::ReplaceExtension(c.path, c.extension), c.result) << c.path;
  }
}

TEST(FontPaths, CutOutBaseNameAndExtension) {
  const struct {
    const char* path;
    const char* base;
    const char* extension;
  } cases[] = {
      {"D:FONT.TTF", "FONT", "TTF"},
      {"c:\\dir.x\\Font.Bold.ttf", "Font", "TTF"},
      {"dir/font.abcd", "font", "ABC"},
      {"dir.txt\\font", "font", "TXT"},
      {"dir.x\\font", "font", "X\\F"},
      {"font", "font", ""},
      {"font.", "font", ""},
      {".ttf", "", "TTF"},
      {"a:b:c.\xE4z", "c", "\xE4Z"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hv::FontBaseName(c.path), c.base) << c.path;
    EXPECT_EQ(hv::FontExtension(c.path), c.extension) << c.path;
  }
}

TEST(ByteOrder, Swaps) {
  uint16_t word = 0x12FE;
  hv::SwapBytes16(&word);
  EXPECT_EQ(word, 0xFE12);
  uint32_t doubleWord = 0x123456FE;
  hv::SwapBytes32(&doubleWord);
  EXPECT_EQ(doubleWord, 0xFE563412U);
}

TEST(RoundTenths, RoundsHalvesUpward) {
  const struct {
    uint64_t numerator;
    uint64_t denominator;
    const char* shown;
  } cases[] = {
      {1046, 100, " 10.5"}, {1096, 100, " 11.0"}, {1045, 100, " 10.5"},
      {1044, 100, " 10.4"}, {1, 3, "  0.3"},      {99995, 100, "1000.0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hv::FormatTenths(hv::RoundTenths(c.numerator, c.denominator), 3), c.shown);
  }
}

TEST(PclHeaderFamily, FollowsTheDescriptorReadLast) {
  const hvtest::TestFolder folder;
  const struct {
    unsigned format;
    unsigned size;
    PclFamily family;
  } cases[] = {
      {10, 80, PclFamily::Scalable}, {5, 74, PclFamily::Format5},   {9, 92, PclFamily::Format9},
      {12, 72, PclFamily::Format9},  {0, 64, PclFamily::Format0},   {11, 88, PclFamily::Scalable},
      {20, 68, PclFamily::Scalable}, {0, 65, PclFamily::Scalable},  // not known: stays as it was
      {5, 72, PclFamily::Format5},   {15, 72, PclFamily::Scalable},
  };
  for (const auto& c : cases) {
    hvtest::PclDescriptor descriptor;
    descriptor.format = c.format;
    descriptor.size = c.size;
    descriptor.fontType = 99;  // recognised all the same
    const std::string path = folder.Add("a.sfp", hvtest::PclFont(descriptor, {}));
    HvFontInfo info = {};
    EXPECT_EQ(hv::PclReadFontDescriptor(hv::PclFontOpen(path.c_str()).get(), &info),
              HV_UNUSABLE_FILE);
    EXPECT_EQ(hv::PclHeaderFamily(), c.family) << c.format;
  }
}

TEST(TypefaceNames, EndBehindTheLastNumber) {
  EXPECT_EQ(hv::TypefaceName(0), "M,LinePrinter");
  EXPECT_EQ(hv::TypefaceName(86), "");
  EXPECT_EQ(hv::TypefaceName(139), "R,Bitstream Amerigo");
  EXPECT_EQ(hv::TypefaceName(140), "");
  EXPECT_EQ(hv::TypefaceName(0xFFFFFFFF), "");
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
