// What HvFonQueryInfo says of files: arguments, kinds by extension, PCL soft fonts.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::PclDescriptor;
using hvtest::PclFont;
using hvtest::TestFolder;

struct Described {
  uint32_t code;
  HvFontInfo info;
};

Described Describe(const std::string& path, uint32_t mode = 0, uint32_t metrics = 1) {
  Described result;
  std::memset(&result.info, 0xAA, sizeof result.info);
  result.code = HvFonQueryInfo(path.c_str(), &result.info, mode, metrics);
  return result;
}

std::string NameOf(const PclDescriptor& descriptor) {
  const TestFolder folder;
  return Describe(folder.Add("font.sfp", PclFont(descriptor, {}))).info.name;
}

TEST(FontInfo, ClearsTheRecordBeforeItChecksArguments) {
  const TestFolder folder;
  const HvFontInfo empty = {};
  const std::string tooLong(261, 'x');
  const std::string missing = folder / "missing.sfp";
  const struct {
    const char* path;
    uint32_t code;
  } cases[] = {
      {nullptr, HV_BAD_ARGUMENT},
      {tooLong.c_str(), HV_BAD_ARGUMENT},
      {"", HV_NOT_FOUND},
      {missing.c_str(), HV_NOT_FOUND},
  };
  for (const auto& c : cases) {
    HvFontInfo info;
    std::memset(&info, 0xAA, sizeof info);
    EXPECT_EQ(HvFonQueryInfo(c.path, &info, 0, 1), c.code);
    EXPECT_EQ(std::memcmp(&info, &empty, sizeof info), 0);
  }
}

TEST(FontInfo, GoesByTheExtensionOfTheWholePath) {
  const TestFolder folder;
  const std::string font = PclFont({}, {});
  const struct {
    const char* name;
    uint32_t code;
  } cases[] = {
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
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Describe(folder.Add(c.name, font)).code, c.code) << c.name;
  }
  // The last dot of the whole path counts, also one of a directory.
  std::filesystem::create_directory(folder.Path() / "dir.txt");
  EXPECT_EQ(Describe(folder.Add("dir.txt/font", font)).code, HV_UNUSABLE_FILE);
  std::filesystem::create_directory(folder.Path() / "dir.xy");
  EXPECT_EQ(Describe(folder.Add("dir.xy/font", font)).code, HV_OK);
}

TEST(FontInfo, KnowsSomeKindsByNameAlone) {
  const TestFolder folder;
  const struct {
    const char* file;
    uint32_t metrics;
    uint32_t code;
    uint32_t fontClass;
    int32_t fontType;
    uint32_t flags;
    const char* name;
  } cases[] = {
      {"Arial.Bold.ttf", 0, HV_OK, FONT_CLASS_TRUETYPE, 21, 0x03, "Arial"},
      {"arial.fot", 0, HV_UNUSABLE_FILE, FONT_CLASS_METRICS, 21, 0x03, "arial"},
      {"TR10000S.TFM", 1, HV_OK, FONT_CLASS_METRICS, 22, 0x03, "TR10000S"},
      {"TR10000S.TFM", 0, HV_UNUSABLE_FILE, 0, 0, 0x02, ""},
  };
  for (const auto& c : cases) {
    const Described font = Describe(folder.Add(c.file, "12345"), 2, c.metrics);
    EXPECT_EQ(font.code, c.code) << c.file;
    EXPECT_EQ(font.info.fontClass, c.fontClass) << c.file;
    EXPECT_EQ(font.info.fontType, c.fontType) << c.file;
    EXPECT_EQ(font.info.flags, c.flags) << c.file;
    EXPECT_EQ(font.info.fileSize, 5U) << c.file;
    EXPECT_STREQ(font.info.name, c.name);
    EXPECT_STREQ(font.info.companionPath1, "");
  }
  const std::string longName(85, 'n');
  EXPECT_EQ(Describe(folder.Add(longName + ".ttf", "")).info.name, std::string(79, 'n'));
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
    PclDescriptor descriptor;
    descriptor.format = c.format;
    descriptor.size = c.size;
    std::string file = PclFont(descriptor, {});
    // Descriptors are read to their first 64 bytes at least, whatever size they claim.
    file += std::string(64, ' ');
    const Described font = Describe(folder.Add("font.sfl", file));
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
  const struct {
    std::string bytes;
    uint32_t code;
  } cases[] = {
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
  for (const auto& c : cases) {
    EXPECT_EQ(Describe(folder.Add("font.pcl", c.bytes)).code, c.code) << c.bytes.substr(0, 12);
  }
  std::filesystem::create_directory(folder.Path() / "folder.sfp");
  EXPECT_EQ(Describe(folder / "folder.sfp").code, HV_UNUSABLE_FILE);
}

TEST(PclFontInfo, ReadsTheTwoWordsBehindAFormat20Descriptor) {
  const TestFolder folder;
  PclDescriptor descriptor;
  descriptor.format = 20;
  descriptor.size = 68;
  descriptor.xResolution = 1200;
  descriptor.yResolution = 600;
  const std::string file = PclFont(descriptor, {});
  const Described font = Describe(folder.Add("font.pcl", file));
  EXPECT_EQ(font.code, HV_OK);
  EXPECT_EQ(font.info.xResolution, 1200);
  EXPECT_EQ(font.info.yResolution, 600);
  EXPECT_STREQ(font.info.name, "Courier           [ 6.0 Pt.] (Roman-8)");

  EXPECT_EQ(Describe(folder.Add("font.pcl", file.substr(0, file.size() - 1))).code,
            HV_UNUSABLE_FILE);
  descriptor.yResolution = 0;
  EXPECT_EQ(Describe(folder.Add("font.pcl", PclFont(descriptor, {}))).code, HV_UNUSABLE_FILE);
}

TEST(PclFontInfo, NamesBitmapFonts) {
  PclDescriptor base;
  base.name = "CG Times";
  base.typeface = 5;
  const auto with = [&](auto change) {
    PclDescriptor descriptor = base;
    change(descriptor);
    return NameOf(descriptor);
  };
  using D = PclDescriptor;
  // Sizes.
  EXPECT_EQ(with([](D& d) { d.height = 200; }), "CG Times     [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.height = 175; }), "CG Times     [10.5 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.height = 0; }), "CG Times     [ 0.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.height = 166; }), "CG Times     [10.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.height = 65535; }), "CG Times     [3932.1 Pt.] (Roman-8)");
  // Styles.
  EXPECT_EQ(with([](D& d) { d.strokeWeight = 3; }), "CG Times  Bd [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.strokeWeight = -7; }), "CG Times  Ut [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.strokeWeight = 7; }), "CG Times  Uk [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.strokeWeight = 8; }), "CG Times     [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.strokeWeight = -8; }), "CG Times     [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) { d.styleLow = 0xFD; }), "CG Times  It [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) {
              d.styleLow = 2;
              d.strokeWeight = -3;
            }),
            "CG TimesLtAl [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) {
              d.name = "Times Italic";
              d.styleLow = 1;
              d.strokeWeight = 3;
            }),
            "Times Italic  Bd [12.0 Pt.] (Roman-8)");
  // Names of 16 characters show 13; bytes behind a NUL are none of the name.
  EXPECT_EQ(with([](D& d) { d.name = "ABCDEFGHIJKLMNOP"; }),
            "ABCDEFGHIJKLM     [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) {
              d.name = std::string("Times\0Italic", 12);
              d.styleLow = 1;
            }),
            "Times  It [12.0 Pt.] (Roman-8)");
  // Symbol sets.
  EXPECT_EQ(with([](D& d) { d.symbolSet = 0x02; }), "CG Times     [12.0 Pt.] (Line Draw-7)");
  EXPECT_EQ(with([](D& d) { d.symbolSet = 18540; }), "CG Times     [12.0 Pt.] (Wingdings)");
  EXPECT_EQ(with([](D& d) { d.symbolSet = 65535; }), "CG Times     [12.0 Pt.] (2047_)");
  // Typeface 0 of format 0, but for the line printer.
  EXPECT_EQ(with([](D& d) { d.typeface = 0x1200; }), "CG Times     [12.0 Pt.] (Roman-8) *TF:0");
  EXPECT_EQ(with([](D& d) {
              d.typeface = 0;
              d.name = "Line Printer 16.";
            }),
            "Line Printer      [12.0 Pt.] (Roman-8)");
  EXPECT_EQ(with([](D& d) {
              d.typeface = 0;
              d.format = 5;
              d.size = 72;
            }),
            "CG Times     [12.0 Pt.] (Roman-8)");
}

TEST(PclFontInfo, NamesScalableFontsAndUnboundOnes) {
  PclDescriptor descriptor;
  descriptor.format = 10;
  descriptor.size = 80;
  descriptor.name = "CG Times";
  EXPECT_EQ(NameOf(descriptor), "CG Times          [Outline]  (Roman-8)");

  const TestFolder folder;
  descriptor.format = 11;
  descriptor.size = 88;
  for (const unsigned fontType : {10U, 11U}) {
    descriptor.fontType = fontType;
    const Described font = Describe(folder.Add("font.sfs", PclFont(descriptor, {})));
    EXPECT_STREQ(font.info.name, "CG Times          [Outline]  (unbound)");
    EXPECT_STREQ(font.info.symbolSet, "");
  }
  for (const unsigned fontType : {3U, 9U, 12U, 255U}) {
    descriptor.fontType = fontType;
    const Described font = Describe(folder.Add("font.sfs", PclFont(descriptor, {})));
    EXPECT_EQ(font.code, HV_UNUSABLE_FILE) << fontType;
    EXPECT_STREQ(font.info.name, "") << fontType;
  }
}

TEST(PclFontInfo, DescribesVendorTypefaceAndNumber) {
  const TestFolder folder;
  PclDescriptor descriptor;
  descriptor.typeface = 0x5ABC;
  descriptor.spacing = 1;
  const Described plain = Describe(folder.Add("font.sfp", PclFont(descriptor, {})));
  EXPECT_STREQ(plain.info.description, "Ven:5  Typ:2748  Fon:?0");
  EXPECT_STREQ(plain.info.symbolSet, "8U");
  EXPECT_EQ(plain.info.flags, 0x07U);

  descriptor.vendor = 0x80 | 'X';
  descriptor.fontNumber = 0xFFFFFF;
  descriptor.spacing = 2;
  const Described vendor = Describe(folder.Add("font.sfp", PclFont(descriptor, {})));
  EXPECT_STREQ(vendor.info.description, "Ven:5  Typ:2748  Fon:X16777215");
  EXPECT_EQ(vendor.info.flags, 0x03U);
}

}  // namespace
