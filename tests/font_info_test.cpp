// What HvFonQueryInfo says of fonts: arguments, extensions, and PCL soft fonts.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::DescribedFont;
using hvtest::DescribeFont;
using hvtest::PclDescriptor;
using hvtest::PclFont;
using hvtest::TestFolder;

TEST(FontInfo, ClearsTheRecordBeforeItChecksArguments) {
  const TestFolder folder;
  const HvFontInfo empty = {};
  const std::string tooLong(261, 'x');
  const std::string missing = folder / "missing.sfp";
  const std::pair<const char*, uint32_t> cases[] = {{nullptr, HV_BAD_ARGUMENT},
                                                    {tooLong.c_str(), HV_BAD_ARGUMENT},
                                                    {"", HV_NOT_FOUND},
                                                    {missing.c_str(), HV_NOT_FOUND}};
  for (const auto& [path, code] : cases) {
    HvFontInfo info;
    std::memset(&info, 0xAA, sizeof info);
    EXPECT_EQ(HvFonQueryInfo(path, &info, 0, 1), code);
    EXPECT_EQ(std::memcmp(&info, &empty, sizeof info), 0);
  }
}

TEST(FontInfo, GoesByTheExtensionOfTheWholePath) {
  const TestFolder folder;
  // The last dot of the whole path counts, also one of a directory.
  std::filesystem::create_directory(folder.Path() / "dir.txt");
  std::filesystem::create_directory(folder.Path() / "dir.xy");
  const std::pair<const char*, uint32_t> cases[] = {
      {"noextension", HV_BAD_ARGUMENT},
      {"empty.", HV_BAD_ARGUMENT},
      {"a.cfg", HV_UNUSABLE_FILE},
      {"a.FF", HV_UNUSABLE_FILE},
      {"a.typ", HV_UNUSABLE_FILE},
      {"a.txt", HV_UNUSABLE_FILE},
      {"a.me", HV_UNUSABLE_FILE},
      {"a.bat", HV_UNUSABLE_FILE},
      {"a.Cmd", HV_UNUSABLE_FILE},
      {"a.com", HV_UNUSABLE_FILE},
      {"a.Exe", HV_UNUSABLE_FILE},
      {"a.txtfile", HV_UNUSABLE_FILE},
      {"a.m", HV_OK},
      {"a.abcd", HV_OK},
      {"a.txt.sfp", HV_OK},
      {"a.pcl", HV_OK},
      {"dir.xy/font", HV_OK},
      {"dir.txt/font", HV_UNUSABLE_FILE},
  };
  for (const auto& [name, code] : cases) {
    EXPECT_EQ(DescribeFont(folder.Add(name, PclFont({}, {}))).code, code) << name;
  }
}

TEST(FontInfo, KnowsSomeKindsByNameAlone) {
  const TestFolder folder;
  const struct {
    std::string file;
    uint32_t metrics;
    uint32_t code;
    uint32_t fontClass;
    int32_t fontType;
    std::string name;
  } cases[] = {
      {"Arial.Bold.ttf", 0, HV_OK, FONT_CLASS_TRUETYPE, 21, "Arial"},
      {"arial.fot", 0, HV_UNUSABLE_FILE, FONT_CLASS_METRICS, 21, "arial"},
      {"TR10000S.TFM", 1, HV_OK, FONT_CLASS_METRICS, 22, "TR10000S"},
      {"TR10000S.TFM", 0, HV_UNUSABLE_FILE, 0, 0, ""},
      {std::string(85, 'n') + ".ttf", 0, HV_OK, FONT_CLASS_TRUETYPE, 21, std::string(79, 'n')},
  };
  for (const auto& c : cases) {
    const DescribedFont font = DescribeFont(folder.Add(c.file, "12345"), 2, c.metrics);
    EXPECT_EQ(font.code, c.code) << c.file;
    EXPECT_EQ(font.info.fontClass, c.fontClass) << c.file;
    EXPECT_EQ(font.info.fontType, c.fontType) << c.file;
    EXPECT_EQ(font.info.flags, c.fontType == 0 ? 0x02U : 0x03U) << c.file;
    EXPECT_EQ(font.info.fileSize, 5U);
    EXPECT_EQ(font.info.name, c.name);
    EXPECT_STREQ(font.info.companionPath1, "");
  }
}

TEST(PclFontInfo, RecognisesFormatAndSizeTogether) {
  const TestFolder folder;
  const struct {
    unsigned format;
    unsigned size;
    int32_t fontType;  // 0: not recognised
    uint32_t flags;
  } cases[] = {
      {0, 64, 9, 0x03},   {0, 72, 0, 0x02},   {0, 0, 0, 0x02},    {5, 72, 11, 0x03},
      {5, 74, 11, 0x03},  {5, 92, 11, 0x03},  {5, 64, 0, 0x02},   {5, 0, 0, 0x02},
      {9, 92, 11, 0x03},  {12, 74, 11, 0x03}, {10, 80, 17, 0x2B}, {10, 88, 0, 0x02},
      {11, 88, 18, 0x2B}, {15, 72, 20, 0x2B}, {15, 64, 0, 0x02},  {20, 68, 8, 0x03},
      {16, 72, 0, 0x02},  {20, 64, 0, 0x02},  {256, 64, 9, 0x03},
  };
  for (const auto& c : cases) {
    // Descriptors are read to their first 64 bytes at least, whatever size they claim.
    const std::string file =
        PclFont({.size = c.size, .format = c.format}, {}) + std::string(64, ' ');
    const DescribedFont font = DescribeFont(folder.Add("font.sfl", file));
    const std::string label = std::to_string(c.format) + "/" + std::to_string(c.size);
    EXPECT_EQ(font.code, c.fontType == 0 ? HV_UNUSABLE_FILE : HV_OK) << label;
    EXPECT_EQ(font.info.fontType, c.fontType) << label;
    EXPECT_EQ(font.info.flags, c.flags) << label;
    EXPECT_EQ(font.info.fontClass, c.fontType == 0 ? 0U : 3U) << label;
    EXPECT_EQ(font.info.memoryNeeded, c.fontType == 0 ? 0U : file.size() + 320) << label;
    EXPECT_EQ(font.info.xResolution, c.fontType == 8 ? 600 : 0) << label;
  }
}

TEST(PclFontInfo, NeedsTheFontCommandAndAWholeDescriptor) {
  const TestFolder folder;
  const std::string descriptor = PclDescriptor().Bytes();
  const std::pair<std::string, uint32_t> cases[] = {
      {"", HV_UNUSABLE_FILE},
      {"\x1B)", HV_UNUSABLE_FILE},
      {"\x1B)s", HV_UNUSABLE_FILE},
      {"\x1B(s64W" + descriptor, HV_UNUSABLE_FILE},
      {"\x1B)sW" + descriptor, HV_OK},
      {"\x1B)s00064W" + descriptor, HV_OK},
      {"\x1B)s000064W" + descriptor, HV_UNUSABLE_FILE},
      {"\x1B)s64W" + descriptor.substr(0, 63), HV_UNUSABLE_FILE},
      {"\x1B)s64W" + descriptor, HV_OK},
  };
  for (const auto& [bytes, code] : cases) {
    EXPECT_EQ(DescribeFont(folder.Add("font.pcl", bytes)).code, code) << bytes.substr(0, 12);
  }
  std::filesystem::create_directory(folder.Path() / "folder.sfp");
  EXPECT_EQ(DescribeFont(folder / "folder.sfp").code, HV_UNUSABLE_FILE);
}

TEST(PclFontInfo, ReadsTheTwoWordsBehindAFormat20Descriptor) {
  const TestFolder folder;
  PclDescriptor descriptor = {.size = 68, .format = 20, .xResolution = 1200, .yResolution = 600};
  const std::string file = PclFont(descriptor, {});
  const DescribedFont font = DescribeFont(folder.Add("font.pcl", file));
  EXPECT_EQ(font.code, HV_OK);
  EXPECT_EQ(font.info.xResolution, 1200);
  EXPECT_EQ(font.info.yResolution, 600);
  EXPECT_STREQ(font.info.name, "Courier           [ 6.0 Pt.] (Roman-8)");

  EXPECT_EQ(DescribeFont(folder.Add("font.pcl", file.substr(0, file.size() - 1))).code,
            HV_UNUSABLE_FILE);
  descriptor.yResolution = 0;
  EXPECT_EQ(DescribeFont(folder.Add("font.pcl", PclFont(descriptor, {}))).code, HV_UNUSABLE_FILE);
}

TEST(PclFontInfo, NamesFontsByNameStyleSizeAndSymbolSet) {
  const TestFolder folder;
  const std::pair<PclDescriptor, const char*> cases[] = {
      {{.height = 175}, "Courier           [10.5 Pt.] (Roman-8)"},
      {{.height = 0}, "Courier           [ 0.0 Pt.] (Roman-8)"},
      {{.height = 166}, "Courier           [10.0 Pt.] (Roman-8)"},
      {{.height = 65535}, "Courier           [3932.1 Pt.] (Roman-8)"},
      {{.strokeWeight = 3}, "Courier        Bd [12.0 Pt.] (Roman-8)"},
      {{.strokeWeight = -7}, "Courier        Ut [12.0 Pt.] (Roman-8)"},
      {{.strokeWeight = 7}, "Courier        Uk [12.0 Pt.] (Roman-8)"},
      {{.strokeWeight = 8}, "Courier           [12.0 Pt.] (Roman-8)"},
      {{.strokeWeight = -8}, "Courier           [12.0 Pt.] (Roman-8)"},
      {{.styleLow = 0xFD}, "Courier        It [12.0 Pt.] (Roman-8)"},
      {{.styleLow = 2, .strokeWeight = -3, .name = "CG Times"},
       "CG TimesLtAl [12.0 Pt.] (Roman-8)"},
      {{.styleLow = 1, .strokeWeight = 3, .name = "Times Italic"},
       "Times Italic  Bd [12.0 Pt.] (Roman-8)"},
      // Names of 16 characters show 13; bytes behind a NUL are none of the name.
      {{.name = "ABCDEFGHIJKLMNOP"}, "ABCDEFGHIJKLM     [12.0 Pt.] (Roman-8)"},
      {{.styleLow = 1, .name = std::string("Times\0Italic", 12)}, "Times  It [12.0 Pt.] (Roman-8)"},
      {{.symbolSet = 0x02}, "Courier           [12.0 Pt.] (Line Draw-7)"},
      {{.symbolSet = 18540}, "Courier           [12.0 Pt.] (Wingdings)"},
      {{.symbolSet = 65535}, "Courier           [12.0 Pt.] (2047_)"},
      // Typeface 0 of format 0, but for the line printer.
      {{.typeface = 0x1200}, "Courier           [12.0 Pt.] (Roman-8) *TF:0"},
      {{.typeface = 0, .name = "Line Printer 16."}, "Line Printer      [12.0 Pt.] (Roman-8)"},
      {{.size = 72, .format = 5, .typeface = 0}, "Courier           [12.0 Pt.] (Roman-8)"},
      // Scalable fonts have no size, unbound ones no symbol set.
      {{.size = 80, .format = 10}, "Courier           [Outline]  (Roman-8)"},
      {{.size = 88, .format = 11, .fontType = 10}, "Courier           [Outline]  (unbound)"},
      {{.size = 88, .format = 11, .fontType = 11}, "Courier           [Outline]  (unbound)"},
      {{.fontType = 3}, ""},
      {{.fontType = 9}, ""},
      {{.fontType = 12}, ""},
      {{.fontType = 255}, ""},
  };
  for (const auto& [descriptor, name] : cases) {
    const DescribedFont font = DescribeFont(folder.Add("font.sfp", PclFont(descriptor, {})));
    EXPECT_STREQ(font.info.name, name);
    EXPECT_EQ(font.code, *name == '\0' ? HV_UNUSABLE_FILE : HV_OK) << descriptor.fontType;
    EXPECT_TRUE(descriptor.fontType < 10 || *font.info.symbolSet == 0);
  }
}

TEST(PclFontInfo, DescribesVendorTypefaceAndNumber) {
  const TestFolder folder;
  const DescribedFont plain =
      DescribeFont(folder.Add("font.sfp", PclFont({.spacing = 1, .typeface = 0x5ABC}, {})));
  EXPECT_STREQ(plain.info.description, "Ven:5  Typ:2748  Fon:?0");
  EXPECT_STREQ(plain.info.symbolSet, "8U");
  EXPECT_EQ(plain.info.flags, 0x07U);

  const PclDescriptor descriptor = {
      .spacing = 2, .typeface = 0x5ABC, .vendor = 0x80 | 'X', .fontNumber = 0xFFFFFF};
  const DescribedFont vendor = DescribeFont(folder.Add("font.sfp", PclFont(descriptor, {})));
  EXPECT_STREQ(vendor.info.description, "Ven:5  Typ:2748  Fon:X16777215");
  EXPECT_EQ(vendor.info.flags, 0x03U);
}

}  // namespace
