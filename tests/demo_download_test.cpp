// What HvDemDownload sends, byte for byte.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using hvtest::Bytes;
using hvtest::TestFolder;

const std::string Uel = "\x1B%-12345X";
const std::string PjlTrailer = Uel + "@PJL RDYMSG DISPLAY = \"\"\n" + Uel;

HvDemoInfo Demo(int32_t method, uint32_t target = STORAGE_DEVICE_FLASH1, const char* name = "") {
  HvDemoInfo info = {};
  info.method = method;
  info.target = target;
  std::string(name).copy(info.name, sizeof info.name);
  return info;
}

struct Sent {
  uint32_t code;
  std::string bytes;
  int32_t emulation;
};

// Sends `source` to a file that is not there before.
Sent Download(const TestFolder& folder, const std::string& source, const HvDemoInfo& info,
              HvJobInfo job = {}) {
  const std::string destination = folder / "printer.out";
  std::filesystem::remove(destination);
  const uint32_t code = HvDemDownload(source.c_str(), destination.c_str(), &job, &info);
  return {code, std::filesystem::exists(destination) ? hvtest::ReadFile(destination) : "(none)",
          job.emulation};
}

TEST(DemoDownload, ChecksArgumentsBeforeItReachesThePrinter) {
  const TestFolder folder;
  const std::string source = folder.Add("page.ps", "%!PS");
  const std::string out = folder / "out";
  const std::string tooLong(261, 'x');
  std::string otherCase = source;
  for (char& c : otherCase) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  HvJobInfo job = {};
  const HvDemoInfo good = Demo(DEMO_METHOD_POSTSCRIPT);
  EXPECT_EQ(HvDemDownload(nullptr, out.c_str(), &job, &good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(source.c_str(), nullptr, &job, &good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(source.c_str(), out.c_str(), nullptr, &good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(source.c_str(), out.c_str(), &job, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(source.c_str(), otherCase.c_str(), &job, &good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(tooLong.c_str(), out.c_str(), &job, &good), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvDemDownload(source.c_str(), tooLong.c_str(), &job, &good), HV_BAD_ARGUMENT);
  for (const uint32_t target : {0U, 1U, 6U, 0xFFFFFFFFU}) {
    const HvDemoInfo bad = Demo(DEMO_METHOD_POSTSCRIPT, target);
    EXPECT_EQ(HvDemDownload(source.c_str(), out.c_str(), &job, &bad), HV_BAD_ARGUMENT) << target;
  }
  for (const int32_t method : {-1, 0, 6}) {
    const HvDemoInfo bad = Demo(method);
    EXPECT_EQ(HvDemDownload(source.c_str(), out.c_str(), &job, &bad), HV_BAD_ARGUMENT) << method;
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"page.ps"});
}

TEST(DemoDownload, RefusesSourcesBeforeItReachesThePrinter) {
  const TestFolder folder;
  folder.Add("setup.exe", "MZ");
  std::filesystem::create_directory(folder.Path() / "folder");
  const struct {
    const char* source;
    uint32_t code;
  } cases[] = {
      {"missing.ps", HV_NOT_FOUND}, {"setup.exe", HV_UNUSABLE_FILE}, {"folder", HV_CANNOT_OPEN}};
  for (const auto& each : cases) {
    const Sent sent = Download(folder, folder / each.source, Demo(DEMO_METHOD_PJL_FILE));
    EXPECT_EQ(sent.code, each.code) << each.source;
    EXPECT_EQ(sent.bytes, "(none)") << each.source;
  }
}

TEST(DemoDownload, WritesTheFileByAPostScriptProgram) {
  const TestFolder folder;
  const std::string source = folder.Add("page", Bytes("\x01\xAB\xFF"));
  const Sent sent =
      Download(folder, source, Demo(DEMO_METHOD_POSTSCRIPT, STORAGE_DEVICE_FLASH2, "Logo"),
               hvtest::Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "Demo"));
  EXPECT_EQ(sent.code, HV_OK);
  EXPECT_EQ(sent.emulation, JOB_EMULATION_POSTSCRIPT);
  EXPECT_EQ(sent.bytes, Uel +
                            "@PJL RDYMSG DISPLAY = \"Demo\"\n"
                            "@PJL ENTER LANGUAGE = POSTSCRIPT\n"
                            "statusdict begin currentfilenameextend false setfilenameextend end\n"
                            "/wf (%flash2%Logo.demo) (w) file def\n"
                            "/rf currentfile (ASCIIHexDecode) filter def\n"
                            "{ rf read\nnot { exit } if\nwf exch write } loop\n"
                            "01ABFF"
                            ">\nstatusdict begin setfilenameextend end\n" +
                            PjlTrailer);
}

TEST(DemoDownload, WritesTheFileByPjlCommands) {
  const TestFolder folder;
  const std::string source = folder.Add("page", "demo page");
  const std::string commands =
      "@PJL QOPENFILE DEVICE=disk1 FILENAME=\"Logo.demo\" ACCESS=WO\n"
      "@PJL QWRITEFILE DEVICE=disk1 FILENAME=\"Logo.demo\" START=0 \n"
      "demo page"
      "@PJL END DATA\n"
      "@PJL QCLOSEFILE DEVICE=disk1 FILENAME=\"Logo.demo\"\n";
  const HvDemoInfo info = Demo(DEMO_METHOD_PJL_FILE, STORAGE_DEVICE_DISK1, "Logo");
  const Sent sent = Download(folder, source, info, hvtest::Job(JOB_FLAG_PJL));
  EXPECT_EQ(sent.code, HV_OK);
  EXPECT_EQ(sent.emulation, JOB_EMULATION_PCL);
  EXPECT_EQ(sent.bytes, Uel + "@PJL ENTER LANGUAGE = PCL\n" + Uel +
                            "@PJL SET QDOWNLOADTARGET = disk1\n" + Uel + commands + Uel +
                            "@PJL SET QDOWNLOADTARGET = ram\n" + PjlTrailer);
  EXPECT_EQ(Download(folder, source, info).bytes, Uel + commands);
}

TEST(DemoDownload, WritesTheFileByDemoFileCommands) {
  const TestFolder folder;
  const std::string source = folder.Add("page", "demo page");
  HvJobInfo job = hvtest::Job(JOB_FLAG_PJL | JOB_FLAG_ESC_K);
  job.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  const Sent sent =
      Download(folder, source, Demo(DEMO_METHOD_PJL_DEMO_FILE, STORAGE_DEVICE_FLASH1, "Logo"), job);
  EXPECT_EQ(sent.code, HV_OK);
  EXPECT_EQ(sent.bytes, Bytes("\x1B[K\x03\x00\x06\x31\x02") + Uel + "@PJL ENTER LANGUAGE = PCL\n" +
                            Bytes("\x1B[K\x01\x00\x01") + Uel +
                            "@PJL SET QDOWNLOADTARGET = flash1\n" +
                            Bytes("\x1B[K\x03\x00\x06\xC0\x31") + Uel +
                            "@PJL QOPENDEMOFILE NAME=\"Logo\"\n"
                            "demo page"
                            "\x1BM@PJL QCLOSEDEMOFILE\n" +
                            Uel + "@PJL SET QDOWNLOADTARGET = ram\n" +
                            Bytes("\x1B[K\x03\x00\x06\xC0\x32") + PjlTrailer);
}

TEST(DemoDownload, PutsAHeaderBeforeTheFile) {
  const TestFolder folder;
  const std::string page(70000, 'p');
  const std::string source = folder.Add("page", page);
  HvJobInfo job = hvtest::Job(0);
  job.identifier = 0x1234;
  HvDemoInfo info = Demo(DEMO_METHOD_ESC_D, STORAGE_DEVICE_DISK2, "LONGDEMONAME.PCL");
  info.flags = 0xFFFFFFFF;
  info.headerByte = 0x55;
  const Sent sent = Download(folder, source, info, job);
  EXPECT_EQ(sent.code, HV_OK);
  EXPECT_EQ(sent.bytes.substr(0, 23), Bytes("\x1B[D\x00\x34\x01\x55LONGDEMONAME\x00\x01\x11\x70"));
  EXPECT_TRUE(sent.bytes.substr(23) == page);

  EXPECT_EQ(Download(folder, folder.Add("x", "1"), Demo(DEMO_METHOD_ESC_D, 2, "Abc")).bytes,
            Bytes("\x1B[D\x00\x00\x00\x00"
                  "Abc\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x01"
                  "1"));
}

TEST(DemoDownload, SendsNothingButTheFraming) {
  const TestFolder folder;
  const std::string source = folder.Add("page", "demo page");
  const HvDemoInfo info = Demo(DEMO_METHOD_NOTHING);
  const Sent framed = Download(folder, source, info, hvtest::Job(JOB_FLAG_PJL, JOB_EMULATION_PPDS));
  EXPECT_EQ(framed.code, HV_OK);
  EXPECT_EQ(framed.emulation, JOB_EMULATION_PPDS);
  EXPECT_EQ(framed.bytes, Uel + "@PJL ENTER LANGUAGE = PPDS\n" + PjlTrailer);
  // A language that is none names nothing.
  for (const int32_t emulation : {-1, 7}) {
    const Sent bare = Download(folder, source, info, hvtest::Job(JOB_FLAG_ESC_K, emulation));
    EXPECT_EQ(bare.code, HV_OK);
    EXPECT_EQ(bare.bytes, "");
  }
}

TEST(DemoDownload, NamesTheFile) {
  const TestFolder folder;
  const struct {
    const char* file;
    const char* name;
    const char* expected;
  } cases[] = {
      {"tour.pcl", "", "TOUR.PCL"},
      {"a very long file name of a tour.pcl", "", "A VERY LONG FILE NAME O"},
      {"tour.pcl", "24 characters without NUL", "24 characters without N"},
  };
  for (const auto& each : cases) {
    const std::string source = folder.Add(each.file, "");
    const Sent sent = Download(folder, source, Demo(DEMO_METHOD_PJL_DEMO_FILE, 2, each.name));
    EXPECT_EQ(sent.bytes, Uel + "@PJL QOPENDEMOFILE NAME=\"" + each.expected +
                              "\"\n\x1BM@PJL QCLOSEDEMOFILE\n");
  }
}

TEST(DemoDownload, EndsWithTheFirstWriteThatFails) {
  const TestFolder folder;
  const std::string source = folder.Add("page", "demo page");
  hvtest::FakeNbx nbx(TEST_BINARY_FOLDER);
  const hvtest::ScopedVariable failing("FAKE_NBX_FAIL", "NbxWrite");
  for (int32_t method = DEMO_METHOD_POSTSCRIPT; method <= DEMO_METHOD_PJL_DEMO_FILE; ++method) {
    HvJobInfo job = {};
    job.nbxAddress2 = 1;
    const HvDemoInfo info = Demo(method);
    EXPECT_EQ(HvDemDownload(source.c_str(), "printer", &job, &info), HV_PRINTER_REFUSED) << method;
    int writes = 0;
    for (const std::string& call : nbx.TakeCalls()) writes += call.rfind("NbxWrite", 0) == 0;
    EXPECT_EQ(writes, 1) << method;
    EXPECT_FALSE(nbx.IsLoaded());
  }
}

TEST(DemoDownload, KeepsTheLanguageOfAJobThatDidNotBegin) {
  const TestFolder folder;
  const std::string source = folder.Add("page", "demo page");
  HvJobInfo job = hvtest::Job(JOB_FLAG_PJL, JOB_EMULATION_PPDS);
  const HvDemoInfo info = Demo(DEMO_METHOD_POSTSCRIPT);
  EXPECT_EQ(HvDemDownload(source.c_str(), (folder / "no/such/folder").c_str(), &job, &info),
            HV_CANNOT_OPEN);
  EXPECT_EQ(+job.emulation, JOB_EMULATION_PPDS);
}

}  // namespace
