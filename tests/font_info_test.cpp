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

using namespace hvtest;

TEST(FontInfo, ClearsTheRecordBeforeItChecksArguments) {
  const HvFontInfo empty = {};
  const std::string tooLong(261, 'x');
  const std::pair<const char*, uint32_t> cases[] = {
      {nullptr, HV_BAD_ARGUMENT}, {tooLong.c_str(), HV_BAD_ARGUMENT}, {"none.sfp", HV_NOT_FOUND}};
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
  const auto expect = [&](uint32_t code, std::initializer_list<const char*> names) {
    for (const char* const name : names) {
      EXPECT_EQ(DescribeFont(folder.Add(name, PclFont({}, {}))).code, code) << name;
    }
  };
  expect(HV_BAD_ARGUMENT, {"noextension", "empty."});
  expect(HV_UNUSABLE_FILE, {"a.cfg", "a.FF", "a.typ", "a.txt", "a.me", "a.bat", "a.Cmd", "a.com",
                            "a.Exe", "a.txtfile", "dir.txt/font"});
  expect(HV_OK, {"a.m", "a.abcd", "a.txt.sfp", "dir.xy/font"});
}

TEST(FontInfo, KnowsSomeKindsByNameAlone) {
  const auto expect = [](const std::string& file, uint32_t metrics, const char* kind,
                         const std::string& name) {
    const DescribedFont font = DescribeBytes(file, "12345", 2, metrics);
    EXPECT_EQ(Kind(font), kind) << file;
    EXPECT_EQ(font.info.name, name);
    EXPECT_EQ(font.info.fileSize, 5U);
    EXPECT_STREQ(font.info.companionPath1, "");
  };
  expect("Arial.Bold.ttf", 0, "0 5 21 03", "Arial");
  expect("arial.fot", 0, "27 2 21 03", "arial");
  expect("TR10000S.TFM", 1, "0 2 22 03", "TR10000S");
  expect("TR10000S.TFM", 0, "27 0 0 02", "");
  expect(std::string(85, 'n') + ".ttf", 0, "0 5 21 03", std::string(79, 'n'));
}

TEST(PclFontInfo, RecognisesFormatAndSizeTogether) {
  const auto expect = [](unsigned format, std::initializer_list<unsigned> sizes, const char* kind) {
    for (const unsigned size : sizes) {
      // The size is that which the descriptor claims.
      std::string file = PclFont({.size = 92, .format = format, .xResolution = 1200}, {});
      file.replace(file.find('W') + 1, 2, Be16(size));
      const DescribedFont font = DescribeBytes("font.sfl", file);
      EXPECT_EQ(Kind(font), kind) << format << "/" << size;
      EXPECT_EQ(font.info.memoryNeeded, font.code == HV_OK ? file.size() + 320 : 0U);
      EXPECT_EQ(font.info.xResolution, format == 20 ? 1200 : 0);
      EXPECT_EQ(font.info.yResolution, format == 20 ? 600 : 0);
    }
  };
  expect(0, {64}, "0 3 9 03");
  expect(5, {72, 74, 92}, "0 3 11 03");
  expect(9, {92}, "0 3 11 03");
  expect(10, {80}, "0 3 17 2B");
  expect(11, {88}, "0 3 18 2B");
  expect(12, {74}, "0 3 11 03");
  expect(15, {72}, "0 3 20 2B");
  expect(20, {68}, "0 3 8 03");
  expect(0, {72, 0}, "27 0 0 02");
  expect(5, {64, 0}, "27 0 0 02");
  expect(10, {88}, "27 0 0 02");
  expect(16, {72}, "27 0 0 02");
}

TEST(PclFontInfo, NeedsTheFontCommandAndAWholeDescriptor) {
  const std::string descriptor = PclDescriptor().Bytes();
  const std::pair<std::string, uint32_t> cases[] = {
      {"\x1B)s", HV_UNUSABLE_FILE},
      {"\x1B(s64W" + descriptor, HV_UNUSABLE_FILE},
      {"\x1B)sW" + descriptor, HV_OK},
      {"\x1B)s00064W" + descriptor, HV_OK},
      {"\x1B)s000064W" + descriptor, HV_UNUSABLE_FILE},
      {"\x1B)s64W" + descriptor.substr(0, 63), HV_UNUSABLE_FILE},
      // A descriptor of format 20 goes on with two words.
      {"\x1B)s68W" + PclDescriptor{.size = 68, .format = 20}.Bytes().substr(0, 67),
       HV_UNUSABLE_FILE},
  };
  for (const auto& [bytes, code] : cases) {
    EXPECT_EQ(DescribeBytes("font.pcl", bytes).code, code) << bytes.substr(0, 12);
  }
  const TestFolder folder;
  std::filesystem::create_directory(folder.Path() / "folder.sfp");
  EXPECT_EQ(DescribeFont(folder / "folder.sfp").code, HV_UNUSABLE_FILE);
}

TEST(PclFontInfo, NamesFontsByNameStyleSizeAndSymbolSet) {
  const std::pair<PclDescriptor, const char*> cases[] = {
      {{.fontType = 0, .height = 175}, "Courier           [10.5 Pt.] (Roman-8)"},
      {{.fontType = 2, .height = 166}, "Courier           [10.0 Pt.] (Roman-8)"},
      {{.height = 65535}, "Courier           [3932.1 Pt.] (Roman-8)"},
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
      {{.symbolSet = 18540}, "Courier           [12.0 Pt.] (Wingdings)"},
      {{.symbolSet = 65535}, "Courier           [12.0 Pt.] (2047_)"},
      // Typeface 0 of format 0, but for the line printer.
      {{.typeface = 0x1200}, "Courier           [12.0 Pt.] (Roman-8) *TF:0"},
      {{.typeface = 0, .name = "Line Printer 16."}, "Line Printer      [12.0 Pt.] (Roman-8)"},
      {{.size = 72, .format = 5, .typeface = 0}, "Courier           [12.0 Pt.] (Roman-8)"},
      // Some fonts have a resolution of their own.
      {{.size = 68, .format = 20, .xResolution = 1200}, "Courier           [ 6.0 Pt.] (Roman-8)"},
      {{.size = 68, .format = 20, .yResolution = 0}, ""},
      // Scalable fonts have no size, unbound ones no symbol set.
      {{.size = 80, .format = 10}, "Courier           [Outline]  (Roman-8)"},
      {{.size = 88, .format = 11, .fontType = 10}, "Courier           [Outline]  (unbound)"},
      {{.size = 88, .format = 11, .fontType = 11}, "Courier           [Outline]  (unbound)"},
      {{.fontType = 3}, ""},
      {{.fontType = 9}, ""},
      {{.fontType = 12}, ""},
  };
  for (const auto& [descriptor, name] : cases) {
    const DescribedFont font = DescribeBytes("font.sfp", PclFont(descriptor, {}));
    EXPECT_STREQ(font.info.name, name);
    EXPECT_EQ(font.code, *name == '\0' ? HV_UNUSABLE_FILE : HV_OK) << descriptor.fontType;
    EXPECT_TRUE(descriptor.fontType < 10 || *font.info.symbolSet == 0);
  }
}

TEST(PclFontInfo, DescribesVendorTypefaceAndNumber) {
  const auto expect = [](const PclDescriptor& descriptor, const char* text, uint32_t flags) {
    const DescribedFont font = DescribeBytes("font.sfp", PclFont(descriptor, {}));
    EXPECT_STREQ(font.info.description, text);
    EXPECT_STREQ(font.info.symbolSet, "8U");
    EXPECT_EQ(font.info.flags, flags);
  };
  expect({.spacing = 1, .typeface = 0xDABC}, "Ven:13  Typ:2748  Fon:?0", 0x07);
  expect({.spacing = 2, .typeface = 0x5ABC, .vendor = 0x80 | 'X', .fontNumber = 0xFFFFFF},
         "Ven:5  Typ:2748  Fon:X16777215", 0x03);
}

}  // namespace
