// What HvMacDownload, HvMacActivate and HvMacDelete send, byte for byte.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"

namespace {

using namespace hvtest;

const std::string DropShowpage = "userdict begin /showpage {} def end\n";
const std::string RestoreShowpage = "\nuserdict /showpage undef ";
const std::string DemoStart =
    "statusdict begin currentfilenameextend false setfilenameextend end\n";
const std::string DemoEnd = "\nstatusdict begin setfilenameextend end ";
const std::string Body = "body" + Uel;

std::string WriteFileTo(const std::string& place) {
  return "/writefile (%" + place +
         ") (w) file def\n{ currentfile read\nnot { exit } if dup 1 eq { pop exit } if\n"
         "writefile exch write } loop\n";
}

const std::string Start = "\x1B&f5y0X";
const std::string End = "\x1B&f1X";
const std::string Keep = "\x1B&f5y10X";
const std::string Print = "\x1B&f5y4X\xFF\x0C\x1B&f5y5X";
const std::string PpdsStart = Bytes("\x1B[l\x10\0\x01\0\x05");
const std::string PpdsOff = Bytes("\x1B[l\x01\0\x06");
const std::string PpdsPrint = Bytes("\x1B[l\x03\0\x05\0\x05\xFF\x0C") + PpdsOff;
const std::string PclXl = PjlLanguage("PCLXL");

constexpr uint32_t Once = MACRO_PRINT_ONCE;
constexpr uint32_t Store = MACRO_STORE;
constexpr uint32_t Raw = MACRO_SEND_RAW;
constexpr uint32_t Pjl = JOB_FLAG_PJL;
constexpr uint32_t EscK = JOB_FLAG_ESC_K;
constexpr uint32_t Filter = MACRO_FLAG_FILTER;
constexpr uint32_t Demo = MACRO_FLAG_DEMO;
constexpr uint32_t Call = MACRO_FLAG_CALL_MACRO;

class MacroDownload : public testing::Test {
 protected:
  SentMacro Download(const std::string& bytes, const HvJobInfo& job, HvMacroInfo info,
                     uint32_t mode, uint32_t validation) {
    const std::string source = folder_.Add("letterhead of the company.ps", bytes);
    const std::string out = folder_ / "out";
    std::filesystem::remove(out);
    return Sent(HvMacDownload(source.c_str(), out.c_str(), &job, &info, mode, validation), out);
  }

  const TestFolder folder_;
};

// Besides what creating asks of them, too.
TEST_F(MacroDownload, ChecksItsArgumentsBeforeItReachesThePrinter) {
  const struct {
    int32_t emulation;
    uint16_t identifier;
    uint32_t target;
    uint32_t mode;
    uint32_t validation;
  } cases[] = {
      {5, 32768, 1, 1, 29}, {5, 5, 0, 1, 29}, {5, 5, 6, 1, 29}, {5, 5, 1, 0, 29},
      {5, 5, 1, 4, 29},     {5, 5, 1, 1, 1},  {5, 5, 1, 1, 46}, {6, 5, 1, 1, 29},
  };
  for (const auto& c : cases) {
    const HvJobInfo job = MacroJob(c.emulation, c.identifier);
    EXPECT_EQ(Download("x", job, MacroInfo(0, "", c.target), c.mode, c.validation),
              (SentMacro{HV_BAD_ARGUMENT, "(none)"}))
        << &c - cases;
  }
}

TEST_F(MacroDownload, SendsWhatLanguageAndModeAskFor) {
  const std::string pcl = Uel + PjlLanguage("PCL");
  const std::string psDefine = "serverdict begin 0 exitserver /Name {\n";
  const std::string psBody = DropShowpage + "body" + RestoreShowpage;
  const struct {
    uint32_t jobFlags;
    uint32_t mode;
    int32_t emulation;
    uint32_t flags;
    uint32_t target;
    uint32_t validation;
    std::string bytes;
  } cases[] = {
      {0, Once, 5, 0, 1, 0, Body + Print},
      {0, Once, 5, Filter | Call, 4, 29, Start + "\x1B&f7y3x5Y" + "body" + End + Print},
      {0, Once, 2, 0, 1, 29, PpdsStart + Body + PpdsPrint},
      {0, Once, 3, 0, 1, 29, Body},
      {0, Once, 3, Filter, 4, 29, psBody + "\nshowpage "},

      {0, Store, 5, Call, 1, 0, Body + Keep},
      {0, Store, 2, 0, 1, 29, PpdsStart + Body},
      {0, Store, 3, Filter | Demo, 1, 29, psDefine + psBody + "\nshowpage \n} def\n"},
      {0, Store, 3, Filter, 3, 29, WriteFileTo("flash2%Name") + psBody + "\x01\n"},
      {0, Store, 3, Demo, 4, 29,
       DemoStart + WriteFileTo("disk1%Name.demo") + Body + "\x01\n" + DemoEnd},

      {Pjl, Store, 5, 0, 1, 29, pcl + Start + Body + End + Keep + PjlEnd},
      {Pjl, Store, 5, 0, 4, 29,
       pcl + PjlTarget("disk1") + Start + Body + End + Keep + PjlTarget("ram") +
           "@PJL DEFAULT QRESOURCE:\"disk1:5.p5macro\" QDESCRIPTION = \"Name\"\n" + PjlEnd},
      {Pjl, Store, 2, 0, 3, 0,
       Uel + PjlLanguage("PPDS") + PjlTarget("flash2") + Body + PjlTarget("ram") + PjlEnd},
      {Pjl, Store, 3, 0, 4, 0, Uel + PjlLanguage("POSTSCRIPT") + Body + PjlEnd},
      {Pjl, Store, 6, 0, 5, 0,
       pcl + "@PJL SET QDOWNLOADTARGET = disk2\n" + PclXl + Body + PjlTarget("ram") + PjlEnd},
      {Pjl, Once, 5, 0, 4, 29, pcl + Start + Body + End + Print + PjlEnd},
      {Pjl, Once, 6, 0, 4, 0, pcl + PclXl + Body + PjlEnd},
      {Pjl, Raw, 5, Filter, 2, 29,
       pcl + PjlTarget("flash1") + Body + Keep + PjlTarget("ram") + PjlEnd},

      {EscK, Store, 5, 0, 4, 29,
       EscKLanguage(2) + EscKToDevice + Start + Body + End + Keep + EscKToRam},
  };
  for (const auto& c : cases) {
    HvMacroInfo info = MacroInfo(c.flags, "Name", c.target);
    info.callMacroId = 7;
    const HvJobInfo job = MacroJob(c.emulation, 5, c.jobFlags);
    EXPECT_EQ(Download(Body, job, info, c.mode, c.validation), (SentMacro{HV_OK, c.bytes}))
        << &c - cases;
  }
  // Raw, with any identifier.
  EXPECT_EQ(Download("x\x0C", MacroJob(5, 40000), MacroInfo(Filter), Raw, 0),
            (SentMacro{HV_OK, "x\x0C\x1B&f40000y10X"}));
}

TEST_F(MacroDownload, NamesWhatHasNoNameAfterItsFile) {
  EXPECT_EQ(Download("x", MacroJob(3), MacroInfo(), Store, 29).bytes,
            "serverdict begin 0 exitserver /LETTERHEAD OF THE COMPA {\nx\n} def\n");
  // A name that fills its field to the last byte.
  EXPECT_EQ(Download("x", MacroJob(3), MacroInfo(0, "123456789012345678901234"), Store, 29).bytes,
            "serverdict begin 0 exitserver /12345678901234567890123 {\nx\n} def\n");
}

TEST_F(MacroDownload, ConvertsAPclXlJobAndRunsItOnce) {
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  const std::string job = Uel + "@PJL X\n" + OnePagePclXlJob() + Uel;
  const HvMacroInfo info = MacroInfo(Filter, "Name", 2);
  EXPECT_EQ(Download(job, MacroJob(6), info, Once, 0).bytes,
            PclXl + ConvertedPclXlJob("Name", true));
  EXPECT_EQ(Download(job, MacroJob(6), info, Store, 0).bytes,
            "@PJL SET QDOWNLOADTARGET = flash1\n" + PclXl + ConvertedPclXlJob("Name", false));
  // A job that cannot be converted still ends as a job.
  EXPECT_EQ(Download("x", MacroJob(6, 5, Pjl), info, Once, 0),
            (SentMacro{HV_BAD_PCLXL, Uel + PjlLanguage("PCL") + PclXl + PjlEnd}));
  EXPECT_EQ(work.Names(), std::vector<std::string>{});
}

TEST_F(MacroDownload, EndsTheJobOfAMacroThatItRefuses) {
  const std::string large(65533, 'x');
  const HvJobInfo job = MacroJob(2, 5, Pjl);
  const std::string begin = Uel + PjlLanguage("PPDS");
  EXPECT_EQ(Download(large, job, MacroInfo(), Once, 29),
            (SentMacro{HV_LIMIT_REACHED, begin + PpdsOff + PjlEnd}));
  EXPECT_EQ(Download(large, job, MacroInfo(0, "", 2), Store, 29),
            (SentMacro{HV_LIMIT_REACHED, begin + PjlTarget("flash1") + PjlTarget("ram") + PjlEnd}));
  // One that is a macro already has no count to be told.
  EXPECT_EQ(Download(large, job, MacroInfo(), Store, 0).code, HV_OK);
  // Of a language without macros it is sent, but cannot be switched on.
  EXPECT_EQ(Download("x", MacroJob(4), MacroInfo(), Once, 29), (SentMacro{HV_BAD_ARGUMENT, "x"}));
}

TEST(MacroSwitch, SendsTheCommandOfTheLanguage) {
  const TestFolder folder;
  const std::string out = folder / "out";
  const struct {
    int32_t emulation;
    uint16_t identifier;
    SentMacro on;
    SentMacro off;
    SentMacro erased;
  } cases[] = {
      {5, 32767, {0, "\x1B&f32767y4X"}, {0, "\x1B&f32767y5X"}, {0, "\x1B&f32767y8X"}},
      {2, 0x1234, {0, Bytes("\x1B[l\x03\0\x05\x12\x34")}, {0, PpdsOff}, {0, ""}},
      {3, 5, {0, ""}, {0, ""}, {0, ""}},
      {6, 5, {0, ""}, {0, ""}, {1, ""}},
      {4, 5, {1, ""}, {1, ""}, {1, ""}},
      {7, 5, {1, ""}, {1, ""}, {1, ""}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.emulation);
    // The framing of the job does not count.
    const HvJobInfo job = MacroJob(c.emulation, c.identifier, Pjl | EscK);
    EXPECT_EQ(Sent(HvMacActivate(out.c_str(), &job, 2), out), c.on);
    EXPECT_EQ(Sent(HvMacActivate(out.c_str(), &job, 0), out), c.off);
    EXPECT_EQ(Sent(HvMacDelete(out.c_str(), &job), out), c.erased);
  }
}

TEST(MacroSwitch, ChecksItsArguments) {
  const TestFolder folder;
  const std::string out = folder / "out";
  const std::string tooLong(261, 'x');
  const HvJobInfo job = MacroJob(5);
  const HvJobInfo high = MacroJob(5, 32768);
  const std::string nowhere = folder / "none/out";
  const auto expect = [](const char* destination, const HvJobInfo* record, uint32_t code) {
    EXPECT_EQ(HvMacActivate(destination, record, 1), code);
    EXPECT_EQ(HvMacDelete(destination, record), code);
  };
  expect(nullptr, &job, HV_BAD_ARGUMENT);
  expect(out.c_str(), nullptr, HV_BAD_ARGUMENT);
  expect(tooLong.c_str(), &job, HV_BAD_ARGUMENT);
  expect(out.c_str(), &high, HV_BAD_ARGUMENT);
  expect(nowhere.c_str(), &job, HV_CANNOT_OPEN);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{});
}

}  // namespace
