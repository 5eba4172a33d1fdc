// Which files HvMacValidate takes for macros, and what it finds in them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"

namespace {

using namespace hvtest;

struct Finding {
  uint32_t code = 0;
  HvJobInfo job = {};
  HvMacroInfo info = {};
};

class MacroValidate : public testing::Test {
 protected:
  Finding Validate(const std::string& bytes, int32_t emulation, uint32_t flags = 0,
                   uint32_t mask = 0) {
    const std::string source = folder_.Add("source", bytes);
    Finding found;
    found.job = MacroJob(emulation, 99);
    found.info = MacroInfo(flags, "before", STORAGE_DEVICE_FLASH2);
    found.info.macroId = 98;
    found.info.filterMask = mask;
    found.code = HvMacValidate(source.c_str(), &found.job, &found.info);
    if (found.code != HV_OK) ExpectUntouched(found, bytes);
    return found;
  }

  static void ExpectUntouched(const Finding& found, const std::string& what) {
    EXPECT_STREQ(found.info.name, "before") << what;
    EXPECT_EQ(+found.info.target, uint32_t{STORAGE_DEVICE_FLASH2}) << what;
    EXPECT_EQ(+found.info.macroId, 98) << what;
    EXPECT_EQ(+found.job.identifier, 99) << what;
  }

  const TestFolder folder_;
};

TEST_F(MacroValidate, ChecksItsArguments) {
  HvJobInfo job = MacroJob(5);
  HvMacroInfo info = MacroInfo();
  const std::string source = folder_.Add("source", "text");
  const std::string tooLong(261, 'x');
  EXPECT_EQ(HvMacValidate(nullptr, &job, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacValidate(tooLong.c_str(), &job, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacValidate(source.c_str(), nullptr, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacValidate(source.c_str(), &job, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacValidate((folder_ / "missing.exe").c_str(), &job, &info), HV_NOT_FOUND);
  EXPECT_EQ(HvMacValidate(folder_.Add("a.Dll", "x").c_str(), &job, &info), HV_UNUSABLE_FILE);
  EXPECT_EQ(HvMacValidate(folder_.Path().string().c_str(), &job, &info), HV_CANNOT_OPEN);
  for (const int32_t emulation : {-1, 0, 1, 4, 7}) {
    EXPECT_EQ(Validate("text", emulation).code, HV_BAD_ARGUMENT) << emulation;
  }
}

TEST_F(MacroValidate, KnowsAPclMacroByItsTwoEnds) {
  const struct {
    std::string bytes;
    int identifier;  // -1: no macro
  } cases[] = {
      {"\x1B&f12y0Xbody\x1B&f1X", 12},
      {"\x1B&f12y0Xbody\x1B&f1Xabc", 12},
      {"\x1B&f12y0Xbody\x1B&f1xabc", 12},
      {"\x1B&f12y0Xbody\x1B&f1X\n", 12},
      {"\x1B&f12y0Xbody\x1B&f1Xabcdef", 12},
      {"\x1B&f12y0Xbody\x1B&f1xabcdef", -1},
      {"\x1B&f12y0Xbody\x1B&f1Xabcdefg", -1},
      {"\x1B&f12Y\x1B&f0Xbody\x1B&f1X", 12},
      {"\x1B&f12Y\x1B&f0xbody\x1B&f1X", 12},
      {"\x1B&f65535y0x\x1B&f1X", 65535},
      {"\x1B&f0y0X\x1B&f1X", 0},
      {"\x1B&f65536y0X\x1B&f1X", -1},
      {"\x1B&f99999999999y0X\x1B&f1X", -1},
      {"\x1B&fy0Xbody\x1B&f1X", -1},
      {"\x1B&f1a2y0Xbody\x1B&f1X", -1},
      {"\x1B&f12y1Xbody\x1B&f1X", -1},
      {"\x1B&f12y0Xbody", -1},
      {"\x1B&f12y0Xbody\x1B&f2Xabc", -1},
      {"\x1B&f12y0Xbody\x1B&f1Yabc", -1},
      {"x\x1B&f12y0Xbody\x1B&f1X", -1},
      {"\x1B&f1y0X", -1},
      {"\x1B&f1y0Xabc", -1},
      {"\x1B&", -1},
      {"", -1},
  };
  for (const auto& c : cases) {
    const Finding found = Validate(c.bytes, 5);
    EXPECT_EQ(found.code, c.identifier < 0 ? HV_WRONG_LANGUAGE : HV_OK) << c.bytes;
    if (c.identifier < 0) continue;
    EXPECT_EQ(+found.info.macroId, c.identifier) << c.bytes;
    EXPECT_EQ(+found.job.identifier, c.identifier) << c.bytes;
    EXPECT_STREQ(found.info.name, "before");
  }
}

TEST_F(MacroValidate, FindsNameAndPlaceOfAPostScriptMacro) {
  const std::string demo = "statusdict begin currentfilenameextend false setfilenameextend end";
  const struct {
    std::string bytes;
    uint32_t flags;
    const char* name;  // NULL: no macro
    uint32_t target;
    bool isDemo;
  } cases[] = {
      {"serverdict begin 0 exitserver /Logo {\n", 0, "Logo", 1, false},
      {"serverdict begin 0 exitserver /Logo", MACRO_FLAG_DEMO, "Logo", 1, true},
      {"serverdict begin 0 exitserver /A" + Bytes("\0B"), 0, "A", 1, false},
      {"serverdict begin 0 exitserver /123456789012345678901234567890 {", 0,
       "12345678901234567890123", 1, false},
      {"/writefile (%disk1%Logo) (w)", 0, "Logo", 4, false},
      {"/writefile (%ram%) (w)", 0, "", 1, false},
      {demo + " % comment\n/writefile (%flash1%Demo.demo) (w)", 0, "Demo.demo", 2, true},
      {"/writefile (%disk2%123456789012345678901234567890)", 0, "12345678901234567890123", 5,
       false},
      {demo + "\n/writefile (%disk3%Logo)", 0, nullptr, 0, false},
      {"/writefile (%disk1disk1disk1disk1disk1%Logo)", 0, nullptr, 0, false},
      {"/writefile (%disk1%Logo", 0, nullptr, 0, false},
      {"/writefile (%disk1", 0, nullptr, 0, false},
      {"/writefile", 0, nullptr, 0, false},
      {demo, 0, nullptr, 0, false},
      {" serverdict begin 0 exitserver /Logo {\n", 0, nullptr, 0, false},
      {"%!PS\n", 0, nullptr, 0, false},
      {"", 0, nullptr, 0, false},
  };
  for (const auto& c : cases) {
    const Finding found = Validate(c.bytes, 3, c.flags);
    EXPECT_EQ(found.code, c.name == nullptr ? HV_WRONG_LANGUAGE : HV_OK) << c.bytes;
    if (c.name == nullptr) continue;
    EXPECT_STREQ(found.info.name, c.name) << c.bytes;
    EXPECT_EQ(+found.info.target, c.target) << c.bytes;
    EXPECT_EQ((found.info.flags & MACRO_FLAG_DEMO) != 0, c.isDemo) << c.bytes;
    EXPECT_EQ(+found.info.macroId, 99) << c.bytes;
  }
}

TEST_F(MacroValidate, FindsTheNameOfAPostScriptOverlay) {
  const std::string comment = "%%Quintar Overlay: ";
  const struct {
    std::string bytes;
    const char* name;
  } cases[] = {
      {"%!PS-Adobe-3.0\n" + comment + "Letter head\nbody", "Letter head"},
      {"%!PS\nbody\n" + comment + "123456789012345678901234567890\n", "12345678901234567890123"},
      {"%!PS\n" + comment + "No end", "No end"},
      {"%!PS\n" + comment + "\n", ""},
      {"%!PS\n" + comment, "before"},
      {"%!PS\n %%Quintar Overlay: x\n", "before"},
      {"%!PS-Adobe-3.0", "before"},
      {"%!PS" + std::string(76, ' ') + comment + "Behind 80 bytes\n", "Behind 80 bytes"},
      {"%!PS", nullptr},
      {"\n%!PS\n", nullptr},
      {"", nullptr},
  };
  for (const auto& c : cases) {
    const Finding found = Validate(c.bytes, 3, MACRO_FLAG_PS_OVERLAY);
    EXPECT_EQ(found.code, c.name == nullptr ? HV_WRONG_LANGUAGE : HV_OK) << c.bytes;
    EXPECT_STREQ(found.info.name, c.name == nullptr ? "before" : c.name) << c.bytes;
  }
}

TEST_F(MacroValidate, KnowsAPpdsMacroByItsStart) {
  EXPECT_EQ(Validate(Bytes("\x1B[l\x05\0\x01\0\x07xy"), 2).code, HV_OK);
  EXPECT_EQ(Validate("\x1B[Lx", 2).code, HV_WRONG_LANGUAGE);
  // What is too short to tell passes.
  EXPECT_EQ(Validate("ab", 2).code, HV_OK);
  EXPECT_EQ(Validate("", 2).code, HV_OK);
}

TEST_F(MacroValidate, RefusesPclXlJobsOfOtherLanguages) {
  const std::string macro = "\x1B&f12y0Xbody\x1B&f1X";
  const struct {
    std::string text;
    bool announces;
  } cases[] = {
      {"@PJL ENTER LANGUAGE = PCLXL\n", true},
      {"=PCLXL", true},
      {"== PCLXL", true},
      {"=  PCLXL", false},
      {"=PCLX", false},
      {"PCLXL", false},
      {"= PCLX=PCLXL", true},
      {"=pclxl", false},
  };
  for (const auto& c : cases) {
    for (const std::size_t before : {std::size_t{0}, std::size_t{1015}, std::size_t{1020}}) {
      const std::string bytes = macro + std::string(before, 'x') + c.text;
      for (const int32_t emulation : {2, 3, 4, 5}) {
        const bool refused = Validate(bytes, emulation).code == HV_PCLXL_JOB;
        EXPECT_EQ(refused, c.announces) << c.text << " behind " << before;
      }
    }
  }
}

TEST_F(MacroValidate, FiltersFirstWhereThatIsAskedFor) {
  const std::string framed =
      "\x1B%-12345X@PJL ENTER LANGUAGE = PCL\n\x1B&f12y0X\033E\x1B&f1X\x1B%-12345X";
  EXPECT_EQ(Validate(framed, 5).code, HV_WRONG_LANGUAGE);
  const Finding found = Validate(framed, 5, MACRO_FLAG_FILTER);
  EXPECT_EQ(found.code, HV_OK);
  EXPECT_EQ(+found.info.macroId, 12);

  const TestFolder temporary;
  const ScopedVariable tmp("TMP", temporary.Path().string());
  const Finding masked = Validate(framed, 5, MACRO_FLAG_FILTER_MASK, FILTER_DROP_MACRO_DEFINITION);
  EXPECT_EQ(masked.code, HV_WRONG_LANGUAGE);
  EXPECT_EQ(+masked.info.flags, uint32_t{MACRO_FLAG_FILTER_MASK | MACRO_FLAG_FILTER});
  EXPECT_EQ(temporary.Names(), std::vector<std::string>{});
  EXPECT_EQ(ReadFile(folder_ / "source"), framed);
}

TEST_F(MacroValidate, FindsTheNameOfAPclXlStream) {
  const std::string header = ") HP-PCL XL;1;1;\n";
  const std::string name = "\xC8\xC0\x04Logo\xF8\x8B[";
  const std::string longName =
      "\xC8\xC0\x18"
      "123456789012345678901234\xF8\x8B[";
  const struct {
    std::string bytes;
    uint32_t code;
    const char* name;
  } cases[] = {
      {ConvertedPclXlJob("Letterhead", false), HV_OK, "Letterhead"},
      {header + name, HV_OK, "Logo"},
      {header + longName, HV_OK, "12345678901234567890123"},
      {header + std::string(489, 'x') + name, HV_OK, "Logo"},
      {header + std::string(490, 'x') + name, HV_BAD_PCLXL, "before"},
      {header + "\xC8\xC0\x03Logo\xF8\x8B[", HV_BAD_PCLXL, "before"},
      {header + "\xC8\xC1\x04Logo\xF8\x8B[", HV_BAD_PCLXL, "before"},
      {header + "Logo[", HV_BAD_PCLXL, "before"},
      {header + "\xC8\xC0[", HV_BAD_PCLXL, "before"},
      {header + "\xC8[", HV_BAD_PCLXL, "before"},
      {header, HV_BAD_PCLXL, "before"},
      {") HP-PCL XL;2;0;\n" + name, HV_BAD_PCLXL, "before"},
      {header.substr(0, 16), HV_READ_FAILED, "before"},
      {"", HV_READ_FAILED, "before"},
  };
  for (const auto& c : cases) {
    const Finding found = Validate(c.bytes, 6);
    EXPECT_EQ(found.code, c.code) << c.bytes;
    EXPECT_STREQ(found.info.name, c.name) << c.bytes;
    EXPECT_EQ(+found.info.macroId, 98);
  }
}

TEST_F(MacroValidate, TellsWhetherAPclXlJobCanBeConverted) {
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  const std::string job = OnePagePclXlJob();
  const Finding good = Validate(job, 6, MACRO_FLAG_FILTER);
  EXPECT_EQ(good.code, HV_OK);
  ExpectUntouched(good, "a job");
  EXPECT_EQ(Validate(job.substr(1), 6, MACRO_FLAG_FILTER).code, HV_BAD_PCLXL);
  EXPECT_EQ(work.Names(), std::vector<std::string>{});
}

}  // namespace
