// What HvDemDownload sends, byte for byte.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

constexpr uint32_t Pjl = JOB_FLAG_PJL;

HvDemoInfo Demo(int32_t method, uint32_t target = STORAGE_DEVICE_FLASH1) {
  return {0, method, "Logo", 0, target};
}

class DemoDownload : public testing::Test {
 protected:
  const TestFolder folder_;
  const std::string page_ = folder_.Add("page", "demo page");
};

TEST_F(DemoDownload, ChecksWhatItGetsBeforeItReachesThePrinter) {
  folder_.Add("setup.exe", "MZ");
  std::filesystem::create_directory(folder_ / "folder");
  const std::string out = folder_ / "out";
  const std::string tooLong(261, 'x');
  const HvDemoInfo good = Demo(DEMO_METHOD_POSTSCRIPT);
  HvJobInfo job = {};
  const auto code = [&](const char* source, const char* destination, const HvDemoInfo& info) {
    return HvDemDownload(source, destination, &job, &info);
  };
  EXPECT_EQ(code(nullptr, out.c_str(), good), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(page_.c_str(), nullptr, good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(page_.c_str(), out.c_str(), nullptr, &good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(page_.c_str(), out.c_str(), &job, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(page_.c_str(), (folder_ / "PAGE").c_str(), good), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(tooLong.c_str(), out.c_str(), good), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(page_.c_str(), tooLong.c_str(), good), HV_BAD_ARGUMENT);
  for (const uint32_t target : {1U, 6U}) {
    EXPECT_EQ(code(page_.c_str(), out.c_str(), Demo(DEMO_METHOD_PJL_FILE, target)), HV_BAD_ARGUMENT)
        << target;
  }
  for (const int32_t method : {0, 6}) {
    EXPECT_EQ(code(page_.c_str(), out.c_str(), Demo(method)), HV_BAD_ARGUMENT) << method;
  }
  EXPECT_EQ(code((folder_ / "missing.ps").c_str(), out.c_str(), good), HV_NOT_FOUND);
  EXPECT_EQ(code((folder_ / "setup.exe").c_str(), out.c_str(), good), HV_UNUSABLE_FILE);
  EXPECT_EQ(code((folder_ / "folder").c_str(), out.c_str(), good), HV_CANNOT_OPEN);
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"folder", "page", "setup.exe"}));
  // The job keeps its language where it did not begin.
  EXPECT_EQ(code(page_.c_str(), (folder_ / "no/such/folder").c_str(), good), HV_CANNOT_OPEN);
  EXPECT_EQ(+job.emulation, 0);
}

TEST_F(DemoDownload, SendsWhatTheMethodSays) {
  const std::string hex = folder_.Add("hex", Bytes("\x01\xAB\xFF"));
  const std::string large = folder_.Add("large", std::string(70000, 'p'));
  HvJobInfo leadIn = Job(Pjl | JOB_FLAG_ESC_K);
  leadIn.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  HvJobInfo numbered = Job(0);
  numbered.identifier = 0x1234;
  const HvDemoInfo flagged = {0xFFFFFFFF, DEMO_METHOD_ESC_D, "LONGDEMONAME.PCL", 0x55,
                              STORAGE_DEVICE_DISK2};
  const HvDemoInfo unnamed = {0, DEMO_METHOD_ESC_D, "", 0, STORAGE_DEVICE_FLASH1};
  HvDemoInfo longest = Demo(DEMO_METHOD_PJL_DEMO_FILE);
  std::memcpy(longest.name, "24 characters, no end NUL", sizeof longest.name);
  const HvDemoInfo pjlFile = Demo(DEMO_METHOD_PJL_FILE, STORAGE_DEVICE_DISK1);
  const HvDemoInfo nothing = Demo(DEMO_METHOD_NOTHING);
  const std::string writeFile =
      "@PJL QOPENFILE DEVICE=disk1 FILENAME=\"Logo.demo\" ACCESS=WO\n"
      "@PJL QWRITEFILE DEVICE=disk1 FILENAME=\"Logo.demo\" START=0 \n"
      "demo page@PJL END DATA\n"
      "@PJL QCLOSEFILE DEVICE=disk1 FILENAME=\"Logo.demo\"\n";
  const struct {
    std::string source;
    HvDemoInfo info;
    HvJobInfo job;
    int32_t emulation;  // of the job record behind the call
    std::string bytes;
  } cases[] = {
      {hex, Demo(DEMO_METHOD_POSTSCRIPT, STORAGE_DEVICE_FLASH2), Job(Pjl, 5, "Demo"), 3,
       Uel + PjlPanel("Demo") + PjlLanguage("POSTSCRIPT") +
           "statusdict begin currentfilenameextend false setfilenameextend end\n"
           "/wf (%flash2%Logo.demo) (w) file def\n"
           "/rf currentfile (ASCIIHexDecode) filter def\n"
           "{ rf read\nnot { exit } if\nwf exch write } loop\n"
           "01ABFF"
           ">\nstatusdict begin setfilenameextend end\n" +
           PjlEnd},
      {page_, pjlFile, Job(Pjl), 5,
       Uel + PjlLanguage("PCL") + PjlTarget("disk1") + Uel + writeFile + PjlTarget("ram") + PjlEnd},
      {page_, pjlFile, Job(0), 5, Uel + writeFile},
      {page_, Demo(DEMO_METHOD_PJL_DEMO_FILE), leadIn, 5,
       EscKLanguage(2) + Uel + PjlLanguage("PCL") + EscKLeadIn + PjlTarget("flash1") +
           EscKToDevice + Uel +
           "@PJL QOPENDEMOFILE NAME=\"Logo\"\ndemo page\x1BM@PJL QCLOSEDEMOFILE\n" +
           PjlTarget("ram") + EscKToRam + PjlEnd},
      {large, flagged, numbered, 5,
       Bytes("\x1B[D\x00\x34\x01\x55LONGDEMONAME\x00\x01\x11\x70") + std::string(70000, 'p')},
      // The name of the file, where no other is given.
      {page_, unnamed, Job(0), 5,
       Bytes("\x1B[D\x00\x00\x00\x00") + "PAGE" + std::string(11, '\0') + "\x09" + "demo page"},
      {page_, longest, Job(0), 5,
       Uel + "@PJL QOPENDEMOFILE NAME=\"24 characters, no end N\"\ndemo page\x1BM@PJL "
             "QCLOSEDEMOFILE\n"},
      {page_, nothing, Job(Pjl, 2), 2, Uel + PjlLanguage("PPDS") + PjlEnd},
      // A language that is none names nothing.
      {page_, nothing, Job(JOB_FLAG_ESC_K, 7), 7, ""},
  };
  const std::string out = folder_ / "out";
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    HvJobInfo job = c.job;
    EXPECT_EQ(HvDemDownload(c.source.c_str(), out.c_str(), &job, &c.info), HV_OK);
    EXPECT_EQ(ReadFile(out), c.bytes);
    EXPECT_EQ(+job.emulation, c.emulation);
  }
}

}  // namespace
