// What HvMacDownload, HvMacActivate and HvMacDelete send, byte for byte.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/macro_files.h"

namespace {

using hvtest::Bytes;
using hvtest::MacroInfo;
using hvtest::MacroJob;
using hvtest::SentMacro;
using hvtest::TestFolder;

const std::string Uel = "\x1B%-12345X";
const std::string PjlEnd = Uel + "@PJL RDYMSG DISPLAY = \"\"\n" + Uel;
const std::string ToRam = Uel + "@PJL SET QDOWNLOADTARGET = ram\n";
const std::string DropShowpage = "userdict begin /showpage {} def end\n";
const std::string RestoreShowpage = "\nuserdict /showpage undef ";
const std::string DemoStart =
    "statusdict begin currentfilenameextend false setfilenameextend end\n";
const std::string DemoEnd = "\nstatusdict begin setfilenameextend end ";

std::string PjlBegin(const char* language) {
  return Uel + "@PJL ENTER LANGUAGE = " + language + "\n";
}

std::string ToDevice(const std::string& device) {
  return Uel + "@PJL SET QDOWNLOADTARGET = " + device + "\n";
}

std::string WriteFileTo(const std::string& place) {
  return "/writefile (%" + place +
         ") (w) file def\n{ currentfile read\nnot { exit } if dup 1 eq { pop exit } if\n"
         "writefile exch write } loop\n";
}

SentMacro Download(const TestFolder& folder, const std::string& bytes, const HvJobInfo& job,
                   HvMacroInfo info, uint32_t mode, uint32_t validation) {
  const std::string source = folder.Add("source.prn", bytes);
  const std::string out = folder / "out";
  std::filesystem::remove(out);
  const uint32_t code = HvMacDownload(source.c_str(), out.c_str(), &job, &info, mode, validation);
  return hvtest::Sent(code, out);
}

TEST(MacroDownload, ChecksItsArgumentsBeforeItReachesThePrinter) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "x");
  const std::string out = folder / "out";
  struct Arguments {
    const char* source;
    const char* destination;
    int32_t emulation = 5;
    uint16_t identifier = 5;
    uint32_t target = 1;
    uint32_t mode = 1;
    uint32_t validation = 29;
  };
  const std::string sameName = folder / "SOURCE";
  const std::string tooLong(261, 'x');
  const Arguments good = {source.c_str(), out.c_str()};
  const auto with = [&](auto member, auto value) {
    Arguments arguments = good;
    arguments.*member = value;
    return arguments;
  };
  const char* const none = nullptr;
  Arguments pclXl = with(&Arguments::emulation, 6);
  const Arguments bad[] = {
      with(&Arguments::source, none),
      with(&Arguments::source, tooLong.c_str()),
      with(&Arguments::destination, none),
      with(&Arguments::destination, tooLong.c_str()),
      with(&Arguments::destination, sameName.c_str()),
      with(&Arguments::emulation, -1),
      with(&Arguments::emulation, 0),
      with(&Arguments::emulation, 7),
      with(&Arguments::identifier, uint16_t{32768}),
      with(&Arguments::target, 0U),
      with(&Arguments::target, 6U),
      with(&Arguments::mode, 0U),
      with(&Arguments::mode, 4U),
      with(&Arguments::validation, 1U),
      with(&Arguments::validation, 46U),
      pclXl,
  };
  const auto code = [](const Arguments& a) {
    const HvJobInfo job = MacroJob(a.emulation, a.identifier);
    HvMacroInfo info = MacroInfo(0, "", a.target);
    return HvMacDownload(a.source, a.destination, &job, &info, a.mode, a.validation);
  };
  for (const Arguments& arguments : bad) {
    EXPECT_EQ(code(arguments), HV_BAD_ARGUMENT) << &arguments - bad;
  }
  HvMacroInfo info = MacroInfo();
  const HvJobInfo job = MacroJob(5);
  EXPECT_EQ(HvMacDownload(source.c_str(), out.c_str(), nullptr, &info, 1, 0), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacDownload(source.c_str(), out.c_str(), &job, nullptr, 1, 0), HV_BAD_ARGUMENT);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"source"});

  EXPECT_EQ(code(good), HV_OK);
  const std::string missing = folder / "missing";
  const std::string program = folder.Add("setup.exe", "x");
  const std::string nowhere = folder / "none/out";
  EXPECT_EQ(code(with(&Arguments::source, missing.c_str())), HV_NOT_FOUND);
  EXPECT_EQ(code(with(&Arguments::source, program.c_str())), HV_UNUSABLE_FILE);
  EXPECT_EQ(code(with(&Arguments::destination, nowhere.c_str())), HV_CANNOT_OPEN);
}

struct Case {
  int32_t emulation;
  uint32_t flags;  // MACRO_FLAG_...
  uint32_t target;
  uint32_t validation;
  std::string bytes;
};

void ExpectSent(const TestFolder& folder, uint32_t mode, const std::vector<Case>& cases,
                uint32_t jobFlags = 0) {
  for (const Case& c : cases) {
    HvMacroInfo info = MacroInfo(c.flags, "Name", c.target);
    info.callMacroId = 7;
    const SentMacro sent = Download(folder, "body" + Uel, MacroJob(c.emulation, 5, jobFlags), info,
                                    mode, c.validation);
    EXPECT_EQ(sent.code, HV_OK);
    EXPECT_EQ(sent.bytes, c.bytes) << &c - cases.data();
  }
}

TEST(MacroDownload, PrintsAMacroOnce) {
  const TestFolder folder;
  const std::string body = "body" + Uel;
  const std::string off = "\x1B&f5y5X";
  const std::string print = "\x1B&f5y4X\xFF\x0C" + off;
  const std::string ppdsPrint = Bytes("\x1B[l\x03\0\x05\0\x05\xFF\x0C\x1B[l\x01\0\x06");
  ExpectSent(
      folder, MACRO_PRINT_ONCE,
      {
          {5, 0, 1, 29, "\x1B&f5y0X" + body + "\x1B&f1X" + print},
          {5, 0, 1, 0, body + print},
          {5, MACRO_FLAG_FILTER | MACRO_FLAG_CALL_MACRO, 4, 29,
           "\x1B&f5y0X\x1B&f7y3x5Y"
           "body\x1B&f1X" +
               print},
          {2, 0, 1, 29, Bytes("\x1B[l\x10\0\x01\0\x05") + body + ppdsPrint},
          {2, 0, 3, 0, body + ppdsPrint},
          {3, 0, 1, 29, body},
          {3, MACRO_FLAG_FILTER, 4, 29, DropShowpage + "body" + RestoreShowpage + "\nshowpage "},
          {3, MACRO_FLAG_FILTER, 1, 0, "body"},
          {6, 0, 4, 0, "@PJL ENTER LANGUAGE = PCLXL\n" + body},
      });
}

TEST(MacroDownload, StoresAMacro) {
  const TestFolder folder;
  const std::string body = "body" + Uel;
  const std::string keep = "\x1B&f5y10X";
  ExpectSent(
      folder, MACRO_STORE,
      {
          {1, 0, 1, 29, body},
          {4, 0, 2, 0, body},
          {5, 0, 1, 29, "\x1B&f5y0X" + body + "\x1B&f1X" + keep},
          {5, MACRO_FLAG_CALL_MACRO, 1, 0, body + keep},
          {2, 0, 1, 29, Bytes("\x1B[l\x10\0\x01\0\x05") + body},
          {3, 0, 1, 29, "serverdict begin 0 exitserver /Name {\n" + body + "\n} def\n"},
          {3, MACRO_FLAG_FILTER | MACRO_FLAG_DEMO, 1, 29,
           "serverdict begin 0 exitserver /Name {\n" + DropShowpage + "body" + RestoreShowpage +
               "\nshowpage \n} def\n"},
          {3, 0, 2, 29, WriteFileTo("flash1%Name") + body + "\x01\n"},
          {3, MACRO_FLAG_FILTER, 3, 29,
           WriteFileTo("flash2%Name") + DropShowpage + "body" + RestoreShowpage + "\x01\n"},
          {3, MACRO_FLAG_DEMO, 4, 29,
           DemoStart + WriteFileTo("disk1%Name.demo") + body + "\x01\n" + DemoEnd},
          {3, MACRO_FLAG_DEMO | MACRO_FLAG_FILTER, 5, 29,
           DemoStart + WriteFileTo("disk2%Name.demo") + DropShowpage + "body" + RestoreShowpage +
               "\nshowpage \x01\n" + DemoEnd},
          {3, MACRO_FLAG_DEMO, 4, 0, body},
          {6, 0, 1, 0, "@PJL SET QDOWNLOADTARGET = ram\n@PJL ENTER LANGUAGE = PCLXL\n" + body},
      });
}

TEST(MacroDownload, FramesAJobWithPjl) {
  const TestFolder folder;
  const std::string body = "body" + Uel;
  const std::string pcl = "\x1B&f5y0X" + body + "\x1B&f1X";
  ExpectSent(
      folder, MACRO_STORE,
      {
          {5, 0, 1, 29, PjlBegin("PCL") + pcl + "\x1B&f5y10X" + PjlEnd},
          {5, 0, 4, 29,
           PjlBegin("PCL") + ToDevice("disk1") + pcl + "\x1B&f5y10X" + ToRam +
               "@PJL DEFAULT QRESOURCE:\"disk1:5.p5macro\" QDESCRIPTION = \"Name\"\n" + PjlEnd},
          {2, 0, 3, 0, PjlBegin("PPDS") + ToDevice("flash2") + body + ToRam + PjlEnd},
          {1, 0, 3, 0, Uel + ToDevice("flash2") + body + ToRam + PjlEnd},
          {3, 0, 4, 0, PjlBegin("POSTSCRIPT") + body + PjlEnd},
          {6, 0, 5, 0,
           PjlBegin("PCL") + "@PJL SET QDOWNLOADTARGET = disk2\n" +
               "@PJL ENTER LANGUAGE = PCLXL\n" + body + ToRam + PjlEnd},
      },
      JOB_FLAG_PJL);
  ExpectSent(folder, MACRO_PRINT_ONCE,
             {{5, 0, 4, 29, PjlBegin("PCL") + pcl + "\x1B&f5y4X\xFF\x0C\x1B&f5y5X" + PjlEnd},
              {6, 0, 4, 0, PjlBegin("PCL") + "@PJL ENTER LANGUAGE = PCLXL\n" + body + PjlEnd}},
             JOB_FLAG_PJL);
  ExpectSent(folder, MACRO_SEND_RAW,
             {{5, MACRO_FLAG_FILTER, 2, 29,
               PjlBegin("PCL") + ToDevice("flash1") + body + "\x1B&f5y10X" + ToRam + PjlEnd}},
             JOB_FLAG_PJL);
}

TEST(MacroDownload, FramesAJobForAPrinterWithoutPjl) {
  const TestFolder folder;
  const std::string body = "body" + Uel;
  const std::string toDevice = Bytes("\x1B[K\x03\0\x06\xC0\x31");
  const std::string toRam = Bytes("\x1B[K\x03\0\x06\xC0\x32");
  ExpectSent(folder, MACRO_STORE,
             {
                 {5, 0, 4, 29,
                  Bytes("\x1B[K\x03\0\x06\x31\x02") + toDevice + "\x1B&f5y0X" + body +
                      "\x1B&f1X\x1B&f5y10X" + toRam},
                 {3, 0, 4, 0, Bytes("\x1B[K\x03\0\x06\x31\x08") + body},
                 {2, 0, 1, 0, Bytes("\x1B[K\x03\0\x06\x31\x01") + body},
             },
             JOB_FLAG_ESC_K);
  HvJobInfo job = MacroJob(2, 5, JOB_FLAG_ESC_K);
  job.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  EXPECT_EQ(Download(folder, "x", job, MacroInfo(0, "", 2), MACRO_SEND_RAW, 0).bytes,
            Bytes("\x1B[K\x03\0\x06\x31\x01\x1B[K\x01\0\x01") + toDevice + "x" + toRam);
}

TEST(MacroDownload, SendsAnyIdentifierRaw) {
  const TestFolder folder;
  const SentMacro sent =
      Download(folder, "x\x0C", MacroJob(5, 40000), MacroInfo(MACRO_FLAG_FILTER), 3, 0);
  EXPECT_EQ(sent.code, HV_OK);
  EXPECT_EQ(sent.bytes, "x\x0C\x1B&f40000y10X");
}

TEST(MacroDownload, NamesWhatHasNoNameAfterItsFile) {
  const TestFolder folder;
  const std::string source = folder.Add("letterhead of the company.ps", "x");
  const std::string out = folder / "out";
  const HvJobInfo job = MacroJob(3);
  HvMacroInfo info = MacroInfo();
  EXPECT_EQ(HvMacDownload(source.c_str(), out.c_str(), &job, &info, MACRO_STORE, 29), HV_OK);
  EXPECT_EQ(hvtest::ReadFile(out),
            "serverdict begin 0 exitserver /LETTERHEAD OF THE COMPA {\nx\n} def\n");
  // A name that fills its field to the last byte.
  info = MacroInfo(0, "123456789012345678901234");
  EXPECT_EQ(HvMacDownload(source.c_str(), out.c_str(), &job, &info, MACRO_STORE, 29), HV_OK);
  EXPECT_EQ(hvtest::ReadFile(out),
            "serverdict begin 0 exitserver /12345678901234567890123 {\nx\n} def\n");
}

TEST(MacroDownload, ConvertsAPclXlJobAndRunsItOnce) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder here(folder.Path());
  const std::string job = Uel + "@PJL X\n" + hvtest::OnePagePclXlJob() + Uel;
  const HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "Name", 2);
  EXPECT_EQ(Download(folder, job, MacroJob(6), info, MACRO_PRINT_ONCE, 0).bytes,
            "@PJL ENTER LANGUAGE = PCLXL\n" + hvtest::ConvertedPclXlJob("Name", true));
  EXPECT_EQ(Download(folder, job, MacroJob(6), info, MACRO_STORE, 0).bytes,
            "@PJL SET QDOWNLOADTARGET = flash1\n@PJL ENTER LANGUAGE = PCLXL\n" +
                hvtest::ConvertedPclXlJob("Name", false));
  // A job that cannot be converted still ends as a job.
  const SentMacro bad =
      Download(folder, "x", MacroJob(6, 5, JOB_FLAG_PJL), info, MACRO_PRINT_ONCE, 0);
  EXPECT_EQ(bad.code, HV_BAD_PCLXL);
  EXPECT_EQ(bad.bytes, PjlBegin("PCL") + "@PJL ENTER LANGUAGE = PCLXL\n" + PjlEnd);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"out", "source.prn"}));
}

TEST(MacroDownload, EndsTheJobOfAMacroThatItRefuses) {
  const TestFolder folder;
  const std::string large(65533, 'x');
  const std::string off = Bytes("\x1B[l\x01\0\x06");
  const HvJobInfo job = MacroJob(2, 5, JOB_FLAG_PJL);
  const SentMacro printed = Download(folder, large, job, MacroInfo(), MACRO_PRINT_ONCE, 29);
  EXPECT_EQ(printed.code, HV_LIMIT_REACHED);
  EXPECT_EQ(printed.bytes, PjlBegin("PPDS") + off + PjlEnd);
  const SentMacro stored = Download(folder, large, job, MacroInfo(0, "", 2), MACRO_STORE, 29);
  EXPECT_EQ(stored.code, HV_LIMIT_REACHED);
  EXPECT_EQ(stored.bytes, PjlBegin("PPDS") + ToDevice("flash1") + ToRam + PjlEnd);
  // One that is a macro already has no count to be told.
  EXPECT_EQ(Download(folder, large, job, MacroInfo(), MACRO_STORE, 0).code, HV_OK);
  // Languages without macros are sent, but cannot be switched on.
  for (const int32_t emulation : {1, 4}) {
    const SentMacro sent =
        Download(folder, "x", MacroJob(emulation), MacroInfo(), MACRO_PRINT_ONCE, 29);
    EXPECT_EQ(sent.code, HV_BAD_ARGUMENT);
    EXPECT_EQ(sent.bytes, "x");
  }
}

TEST(MacroDownload, WritesInPiecesOfTheFilter) {
  hvtest::FakeNbx nbx(TEST_BINARY_FOLDER);
  const TestFolder folder;
  HvJobInfo job = MacroJob(5);
  job.nbxAddress1 = 1;
  job.nbxAddress2 = 2;
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER);
  const std::string source = folder.Add("source", std::string(1500, 'x'));
  EXPECT_EQ(HvMacDownload(source.c_str(), "printer", &job, &info, MACRO_STORE, 29), HV_OK);
  std::vector<std::size_t> sizes;
  for (const std::string& call : nbx.TakeCalls()) {
    if (call.rfind("NbxWrite", 0) == 0) sizes.push_back((call.size() - call.rfind(' ') - 1) / 2);
  }
  EXPECT_EQ(sizes, (std::vector<std::size_t>{7, 1024, 476, 5, 8}));
}

TEST(MacroDownload, ReportsTheWriteThatThePrinterRefuses) {
  hvtest::FakeNbx nbx(TEST_BINARY_FOLDER);
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder here(folder.Path());
  const std::string source = folder.Add("source", hvtest::OnePagePclXlJob());
  for (const int32_t emulation : {2, 3, 5, 6}) {
    HvJobInfo job = MacroJob(emulation, 5, JOB_FLAG_PJL);
    job.nbxAddress2 = 2;
    for (const uint32_t mode : {MACRO_PRINT_ONCE, MACRO_STORE}) {
      // Until a number that no write of the job has.
      uint32_t code = HV_PRINTER_REFUSED;
      for (int failing = 1; code != HV_OK; ++failing) {
        ASSERT_LT(failing, 40);
        const hvtest::ScopedVariable fail("FAKE_NBX_FAIL_WRITE", std::to_string(failing));
        HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER | MACRO_FLAG_DEMO, "Name", 4);
        const uint32_t validation = emulation == 6 ? HV_OK : HV_WRONG_LANGUAGE;
        code = HvMacDownload("source", "printer", &job, &info, mode, validation);
        EXPECT_TRUE(code == HV_OK || code == HV_PRINTER_REFUSED) << emulation << " " << failing;
        const std::vector<std::string> calls = nbx.TakeCalls();
        EXPECT_EQ(calls.back().rfind("NbxClose", 0), 0U);
        EXPECT_EQ(folder.Names(), std::vector<std::string>{"source"});
      }
    }
  }
}

TEST(MacroSwitch, SendsTheCommandOfTheLanguage) {
  const TestFolder folder;
  const std::string out = folder / "out";
  const struct {
    int32_t emulation;
    uint16_t identifier;
    uint32_t activateCode;
    uint32_t deleteCode;
    std::string on;
    std::string off;
    std::string erase;
  } cases[] = {
      {5, 123, 0, 0, "\x1B&f123y4X", "\x1B&f123y5X", "\x1B&f123y8X"},
      {5, 32767, 0, 0, "\x1B&f32767y4X", "\x1B&f32767y5X", "\x1B&f32767y8X"},
      {2, 0x1234, 0, 0, Bytes("\x1B[l\x03\0\x05\x12\x34"), Bytes("\x1B[l\x01\0\x06"), ""},
      {3, 5, 0, 0, "", "", ""},
      {6, 5, 0, 1, "", "", ""},
      {4, 5, 1, 1, "", "", ""},
      {1, 5, 1, 1, "", "", ""},
      {0, 5, 1, 1, "", "", ""},
      {7, 5, 1, 1, "", "", ""},
  };
  for (const auto& c : cases) {
    // The framing of the job does not count.
    const HvJobInfo job = MacroJob(c.emulation, c.identifier, JOB_FLAG_PJL | JOB_FLAG_ESC_K);
    const SentMacro on = hvtest::Sent(HvMacActivate(out.c_str(), &job, 2), out);
    const SentMacro off = hvtest::Sent(HvMacActivate(out.c_str(), &job, 0), out);
    const SentMacro erased = hvtest::Sent(HvMacDelete(out.c_str(), &job), out);
    EXPECT_EQ(on.code, c.activateCode) << c.emulation;
    EXPECT_EQ(off.code, c.activateCode) << c.emulation;
    EXPECT_EQ(erased.code, c.deleteCode) << c.emulation;
    EXPECT_EQ(on.bytes, c.on);
    EXPECT_EQ(off.bytes, c.off);
    EXPECT_EQ(erased.bytes, c.erase);
  }
}

TEST(MacroSwitch, ChecksItsArguments) {
  const TestFolder folder;
  const std::string out = folder / "out";
  const std::string tooLong(261, 'x');
  const HvJobInfo job = MacroJob(5);
  const HvJobInfo high = MacroJob(5, 32768);
  const std::string nowhere = folder / "none/out";
  const struct {
    const char* destination;
    const HvJobInfo* job;
    uint32_t code;
  } cases[] = {
      {nullptr, &job, HV_BAD_ARGUMENT},         {out.c_str(), nullptr, HV_BAD_ARGUMENT},
      {tooLong.c_str(), &job, HV_BAD_ARGUMENT}, {out.c_str(), &high, HV_BAD_ARGUMENT},
      {nowhere.c_str(), &job, HV_CANNOT_OPEN},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(HvMacActivate(c.destination, c.job, 1), c.code);
    EXPECT_EQ(HvMacDelete(c.destination, c.job), c.code);
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{});
}

}  // namespace
