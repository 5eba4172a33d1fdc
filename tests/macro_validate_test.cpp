// Which files HvMacValidate takes for macros, and what it finds in them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"

namespace {

using namespace hvtest;

// What validation gives and changes; as it is here when it changes nothing.
struct Finding {
  uint32_t code = HV_OK;
  int identifier = 99;
  std::string name = "before";
  uint32_t target = STORAGE_DEVICE_FLASH2;
  uint32_t flags = 0;

  bool operator==(const Finding&) const = default;
};

void PrintTo(const Finding& found, std::ostream* out) {
  *out << "code " << found.code << ", " << found.identifier << ", \"" << found.name << "\", target "
       << found.target << ", flags " << found.flags;
}

Finding Failure(uint32_t code) {
  return {code};
}
Finding Numbered(int identifier) {
  return {HV_OK, identifier};
}
Finding Named(const char* name, uint32_t target = STORAGE_DEVICE_FLASH2, uint32_t flags = 0) {
  return {HV_OK, 99, name, target, flags};
}

class MacroValidate : public testing::Test {
 protected:
  Finding Validate(const std::string& bytes, int32_t emulation, uint32_t flags = 0,
                   uint32_t mask = 0) {
    HvJobInfo job = MacroJob(emulation, 99);
    HvMacroInfo info = MacroInfo(flags, "before", STORAGE_DEVICE_FLASH2);
    info.macroId = 99;
    info.filterMask = mask;
    const uint32_t code = HvMacValidate(folder_.Add("source", bytes).c_str(), &job, &info);
    EXPECT_EQ(+info.macroId, +job.identifier);
    return {code, job.identifier, info.name, info.target, info.flags & ~flags};
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
  for (const int32_t emulation : {1, 4, 7}) {
    EXPECT_EQ(Validate("text", emulation), Failure(HV_BAD_ARGUMENT)) << emulation;
  }
}

TEST_F(MacroValidate, KnowsAMacroByItsEndsAndFindsNameAndPlace) {
  const Finding none = Failure(HV_WRONG_LANGUAGE);
  const std::string stored = "serverdict begin 0 exitserver /";
  const std::string demo = "statusdict begin currentfilenameextend false setfilenameextend end";
  const std::string comment = "%%Quintar Overlay: ";
  const std::string longName = "123456789012345678901234567890";
  const std::string cut = "12345678901234567890123";
  const Finding noStream = Failure(HV_BAD_PCLXL);
  const std::string header = ") HP-PCL XL;1;1;\n";
  const std::string stream = "\xC8\xC0\x04Logo\xF8\x8B[";
  const ScopedCurrentFolder here(folder_.Path());
  constexpr uint32_t Overlay = MACRO_FLAG_PS_OVERLAY;
  constexpr uint32_t Demo = MACRO_FLAG_DEMO;
  const struct {
    int32_t emulation;
    uint32_t flags;
    std::string bytes;
    Finding found;
  } cases[] = {
      {5, 0, "\x1B&f12y0Xbody\x1B&f1X", Numbered(12)},
      {5, 0, "\x1B&f12y0Xbody\x1B&f1Xabc", Numbered(12)},
      {5, 0, "\x1B&f12y0Xbody\x1B&f1xabc", Numbered(12)},
      {5, 0, "\x1B&f12y0Xbody\x1B&f1Xabcdef", Numbered(12)},
      {5, 0, "\x1B&f12y0Xbody\x1B&f1xabcdef", none},
      {5, 0, "\x1B&f12y0Xbody\x1B&f1Xabcdefg", none},
      {5, 0, "\x1B&f12Y\x1B&f0xbody\x1B&f1X", Numbered(12)},
      {5, 0, "\x1B&f65535y0x\x1B&f1x", Numbered(65535)},
      {5, 0, "\x1B&f65536y0X\x1B&f1X", none},
      {5, 0, "\x1B&fy0Xbody\x1B&f1X", none},
      {5, 0, "\x1B&f1a2y0Xbody\x1B&f1X", none},
      {5, 0, "\x1B&f12y1Xbody\x1B&f1X", none},
      {5, 0, "\x1B&f12y0Xbody\x1B&f2Xabc", none},
      {5, 0, "\x1B&f12y0Xbody\x1B&f1Yabc", none},
      {5, 0, "x\x1B&f12y0Xbody\x1B&f1X", none},
      {5, 0, "\x1B&f1y0X", none},
      {5, 0, "\x1B&f1y0Xabc", none},

      {3, 0, stored + "Logo {\n", Named("Logo", 1)},
      {3, Demo, stored + "Logo", Named("Logo", 1)},
      {3, 0, stored + "A" + Bytes("\0B"), Named("A", 1)},
      {3, 0, stored + longName + " {", Named(cut.c_str(), 1)},
      {3, 0, "/writefile (%disk1%Logo) (w)", Named("Logo", 4)},
      {3, 0, "/writefile (%ram%) (w)", Named("", 1)},
      {3, 0, demo + " % comment\n/writefile (%flash1%Demo.demo)", Named("Demo.demo", 2, Demo)},
      {3, 0, "/writefile (%disk2%" + longName + ")", Named(cut.c_str(), 5)},
      {3, 0, demo + "\n/writefile (%disk3%Logo)", none},
      {3, 0, "/writefile (%disk1%Logo", none},
      {3, 0, " " + stored + "Logo {\n", none},

      {3, Overlay, "%!PS-Adobe-3.0\n" + comment + "Letter head\nbody", Named("Letter head")},
      {3, Overlay, "%!PS\n" + comment + "No end", Named("No end")},
      {3, Overlay, "%!PS\n" + comment + "\n", Named("")},
      {3, Overlay, "%!PS\n" + comment, Named("before")},
      {3, Overlay, "%!PS" + std::string(76, ' ') + comment + "80\n", Named("80")},
      {3, Overlay, "%!PS", none},
      {3, Overlay, "\n%!PS\n", none},

      {2, 0, Bytes("\x1B[l\x05\0\x01\0\x07xy"), Finding()},
      {2, 0, "\x1B[Lx", none},
      // What is too short to tell passes.
      {2, 0, "ab", Finding()},

      {6, 0, ConvertedPclXlJob("Letterhead", false), Named("Letterhead")},
      {6, 0, header + "\xC8\xC0\x1E" + longName + "\xF8\x8B[", Named(cut.c_str())},
      {6, 0, header + std::string(489, 'x') + stream, Named("Logo")},
      {6, 0, header + std::string(490, 'x') + stream, noStream},
      {6, 0, header + "\xC8\xC0\x03Logo\xF8\x8B[", noStream},
      {6, 0, header + "\xC8\xC1\x04Logo\xF8\x8B[", noStream},
      {6, 0, header + "Logo[", noStream},
      {6, 0, header + "\xC8[", noStream},
      {6, 0, ") HP-PCL XL;2;0;\n" + stream, noStream},
      {6, 0, header.substr(0, 16), Failure(HV_READ_FAILED)},
      // Whether it can be converted.
      {6, MACRO_FLAG_FILTER, OnePagePclXlJob(), Finding()},
      {6, MACRO_FLAG_FILTER, OnePagePclXlJob().substr(1), noStream},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Validate(c.bytes, c.emulation, c.flags), c.found)
        << c.emulation << ": " << testing::PrintToString(c.bytes);
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"source"});
  }
}

TEST_F(MacroValidate, RefusesPclXlJobsOfOtherLanguages) {
  const std::string macro = "\x1B&f12y0Xbody\x1B&f1X";
  const std::pair<std::string, bool> cases[] = {
      {"@PJL ENTER LANGUAGE = PCLXL\n", true},
      {"=PCLXL", true},
      {"== PCLXL", true},
      {"=  PCLXL", false},
      {"=PCLX", false},
      {"= PCLX=PCLXL", true},
  };
  for (const auto& [text, announces] : cases) {
    // From one buffer into the next.
    const std::string bytes = macro + std::string(1004, 'x') + text;
    for (const int32_t emulation : {2, 3, 4, 5}) {
      EXPECT_EQ(Validate(bytes, emulation).code == HV_PCLXL_JOB, announces) << text;
    }
  }
}

TEST_F(MacroValidate, FiltersFirstWhereThatIsAskedFor) {
  const std::string framed = Uel + PjlLanguage("PCL") + "\x1B&f12y0X\033E\x1B&f1X" + Uel;
  const TestFolder temporary;
  const ScopedVariable tmp("TMP", temporary.Path().string());
  EXPECT_EQ(Validate(framed, 5), Failure(HV_WRONG_LANGUAGE));
  EXPECT_EQ(Validate(framed, 5, MACRO_FLAG_FILTER), Numbered(12));
  Finding masked = Failure(HV_WRONG_LANGUAGE);
  masked.flags = MACRO_FLAG_FILTER;
  EXPECT_EQ(Validate(framed, 5, MACRO_FLAG_FILTER_MASK, FILTER_DROP_MACRO_DEFINITION), masked);
  EXPECT_EQ(temporary.Names(), std::vector<std::string>{});
  EXPECT_EQ(ReadFile(folder_ / "source"), framed);
}

}  // namespace
