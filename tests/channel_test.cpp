// Jobs sent to a file destination: the framing of files, strings and storage commands byte by byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

constexpr uint32_t Pjl = JOB_FLAG_PJL;
constexpr uint32_t EscK = JOB_FLAG_ESC_K;
constexpr uint32_t Both = JOB_FLAG_PJL | JOB_FLAG_ESC_K;

HvJobInfo LeadInJob(uint32_t flags) {
  HvJobInfo job = Job(flags, JOB_EMULATION_PCL);
  job.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  return job;
}

// A folder with a file to print and the name of the file that is printed to.
class Sent : public testing::Test {
 protected:
  ~Sent() override { EXPECT_EQ(OpenHandleCount(), handles_); }

  std::string Source(const std::string& bytes) { return folder_.Add("source", bytes); }

  TestFolder folder_;
  const std::string out_ = folder_ / "out";
  const char* const destination_ = out_.c_str();
  const std::size_t handles_ = OpenHandleCount();
};

using SendingFiles = Sent;
using SendingStrings = Sent;
using StorageCommands = Sent;

TEST_F(SendingFiles, FramesThemAsTheJobSays) {
  HvJobInfo withPersonality = Job(EscK, JOB_EMULATION_POSTSCRIPT);
  withPersonality.personality = 0x35;
  HvJobInfo otherFlags = Job(~Both, JOB_EMULATION_PCL, "name", 1);
  otherFlags.nbxAddress1 = 7;  // selects nothing without the second word
  const std::string pjlEnd = Uel + PjlPanel("") + "@PJL RESET\n" + Uel;
  const struct {
    const char* label;
    HvJobInfo job;
    std::string before;
    std::string after;
    int times = 1;
  } cases[] = {
      {"the worked example", Job(Pjl, JOB_EMULATION_PCL, "Weekly report", 3),
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Weekly report\"\n@PJL ENTER LANGUAGE = PCL\n"
       "@PJL SET COPIES = 3\n",
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n@PJL RESET\n\x1B%-12345X"},
      {"no name, no language, no copies", Job(Pjl), Uel, pjlEnd},
      {"the language that has no name", Job(Pjl, 1, ""), Uel + PjlPanel(""), pjlEnd},
      {"PPDS", Job(Pjl, 2), Uel + PjlLanguage("PPDS"), pjlEnd},
      {"PostScript", Job(Pjl, 3), Uel + PjlLanguage("POSTSCRIPT"), pjlEnd},
      {"GL", Job(Pjl, 4), Uel + PjlLanguage("GL"), pjlEnd},
      {"PCL XL", Job(Pjl, 6), Uel + PjlLanguage("PCL"), pjlEnd},
      {"20 characters of the name, the most copies", Job(Pjl, 0, "123456789012345678901", 65535),
       Uel + PjlPanel("12345678901234567890") + "@PJL SET COPIES = 65535\n", pjlEnd},
      {"copies alone", Job(EscK, 0, "name", 3), "\x1B&l3X", EscKEnd},
      {"nothing to select", Job(EscK), "", EscKEnd},
      {"default language", Job(EscK, 1, nullptr, 3), EscKLanguage(0), EscKEnd},
      {"PPDS", Job(EscK, 2, nullptr, 3), EscKLanguage(1), EscKEnd},
      {"personality", withPersonality, EscKLanguage(8, 0x35), EscKEnd},
      {"its default in the next job", Job(EscK, 3), EscKLanguage(8), EscKEnd},
      {"GL", Job(EscK, 4, nullptr, 3), EscKLanguage(3), EscKEnd},
      {"PCL", Job(EscK, 5, nullptr, 65535), EscKLanguage(2) + "\x1B&l65535X", EscKEnd},
      {"PCL XL", Job(EscK, 6, nullptr, 2), EscKLanguage(2) + "\x1B&l2X", EscKEnd},
      {"both", Job(Both, 5, "n", 3), EscKLanguage(2) + "\x1B&l3X", pjlEnd + EscKEnd},
      {"no flag", Job(0, 5, "name"), "", ""},
      {"three copies", Job(0, 5, "name", 3), "", "", 3},
      {"flags that mean nothing", otherFlags, "", ""},
  };
  for (const auto& c : cases) {
    for (const std::string& payload : {Bytes("a\x00\x1A\r\n\xFF"), ""s, std::string(5000, '7')}) {
      SCOPED_TRACE(c.label);
      ASSERT_EQ(HvDatSendFile(Source(payload).c_str(), destination_, &c.job, 0), HV_OK);
      std::string expected = c.before;
      for (int i = 0; i < c.times; ++i) expected += payload;
      EXPECT_EQ(ReadFile(out_), expected + c.after);
    }
  }
}

TEST_F(SendingFiles, ReplacesOrAppends) {
  const HvJobInfo job = Job(0);
  const std::string source = Source("new");
  folder_.Add("out", "something longer");
  EXPECT_EQ(HvDatSendFile(source.c_str(), destination_, &job, 0), HV_OK);
  EXPECT_EQ(ReadFile(out_), "new");
  EXPECT_EQ(HvDatSendFile(source.c_str(), destination_, &job, 2), HV_OK);
  EXPECT_EQ(HvDatSendString("$+", destination_, &job, 1), HV_OK);
  EXPECT_EQ(ReadFile(out_), "newnew+");
  EXPECT_EQ(HvDatSendString("$x", destination_, &job, 0), HV_OK);
  EXPECT_EQ(ReadFile(out_), "x");
}

TEST_F(SendingFiles, LeavesAFileSentToItselfAlone) {
  const HvJobInfo job = Job(Pjl, 5, nullptr, 2);
  const std::string source = Source("precious");
  for (const std::string& destination : {source, folder_ / "./SOURCE"}) {
    EXPECT_EQ(HvDatSendFile(source.c_str(), destination.c_str(), &job, 0), HV_CANNOT_OPEN);
    EXPECT_EQ(HvDatSendFile(source.c_str(), destination.c_str(), &job, 1), HV_CANNOT_OPEN);
  }
  EXPECT_EQ(ReadFile(source), "precious");
}

TEST_F(SendingFiles, RefusesWhatIsMissingOrNoFile) {
  const HvJobInfo job = Job(Pjl, 5);
  const std::string source = Source("bytes");
  const std::string directory = folder_ / "directory";
  std::filesystem::create_directory(directory);
  const std::string longest = "missing/" + std::string(HV_MAX_PATH - 8, 'x');
  const std::tuple<std::string, std::string, uint32_t> cases[] = {
      {folder_ / "missing", out_, HV_NOT_FOUND},
      {"", out_, HV_NOT_FOUND},
      {folder_ / "*", out_, HV_NOT_FOUND},
      {longest, out_, HV_NOT_FOUND},
      {directory, out_, HV_CANNOT_OPEN},
      {source, directory, HV_CANNOT_OPEN},
      {source, folder_ / "missing/out", HV_CANNOT_OPEN},
      {source, "", HV_CANNOT_OPEN},
      {source, longest, HV_CANNOT_OPEN},
  };
  for (const auto& [file, destination, code] : cases) {
    SCOPED_TRACE(file + " -> " + destination);
    EXPECT_EQ(HvDatSendFile(file.c_str(), destination.c_str(), &job, 0), code);
    EXPECT_EQ(HvDatSendString(("%" + file).c_str(), destination.c_str(), &job, 0), code);
  }
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"directory", "source"}));
}

TEST_F(SendingStrings, ReadsTheirNotation) {
  const std::pair<const char*, std::string> cases[] = {
      {"1b4fFf", "\x1B\x4F\xFF"},
      {"000100", Bytes("\x00\x01\x00")},
      {"", ""},
      {"$", ""},
      {"$plain % $ 1B", "plain % $ 1B"},
      {"$a\\nb\\\\c\\\"\\N\\e\\$", "a\nb\\c\"Ne$"},
      {"$\\x1BZ\\x1b\\xfF", "\x1BZ\x1B\xFF"},
      {"$\\x1Gz", "\x01z"},  // two characters, whatever they are
      {"$AB\\x0", "AB"},
      {"$AB\\x", "AB"},
      {"$AB\\x4", "AB\x04"},
      {"$AB\\xG1CD", "AB"},
      {"$AB\\", "AB"},
      {"$\xE4\xFF", "\xE4\xFF"},
  };
  const HvJobInfo bare = Job(0, 5, "name", 3);
  const HvJobInfo framed = Job(Both, 5, "name", 3);
  for (const auto& [text, payload] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(HvDatSendString(text, destination_, &bare, 0), HV_OK);
    EXPECT_EQ(ReadFile(out_), payload);
    // No copies and no ESC [ K.
    EXPECT_EQ(HvDatSendString(text, destination_, &framed, 0), HV_OK);
    EXPECT_EQ(ReadFile(out_), Uel + PjlPanel("name") + PjlLanguage("PCL") + payload + PjlEnd);
  }
}

TEST_F(SendingStrings, SendsTheFileThatTheyName) {
  const HvJobInfo escK = Job(EscK, 6, nullptr, 2);
  EXPECT_EQ(HvDatSendString(("%" + Source("bytes")).c_str(), destination_, &escK, 0), HV_OK);
  EXPECT_EQ(ReadFile(out_), EscKLanguage(2) + "\x1B&l2Xbytes" + EscKEnd);
}

TEST_F(StorageCommands, AreJobsOfTheirOwn) {
  const std::string pcl = Uel + PjlLanguage("PCL");
  const std::string list = Uel + "@PJL QPRINTDIRECTORY\n" + PjlEnd;
  const std::tuple<uint32_t, uint32_t, HvJobInfo, std::string> cases[] = {
      {3, 4, Job(Pjl, 0, "Setup"),
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Setup\"\n\x1B%-12345X@PJL QFORMAT DEVICE = disk1\n"
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X"},
      {1, 4, Job(Pjl), Uel + PjlTarget("ram") + PjlEnd},  // whatever the device
      {1, 1, Job(Both), Uel + PjlTarget("ram") + EscKToRam + PjlEnd},
      {1, 2, LeadInJob(0), ""},
      {2, 2, Job(Pjl, 5, nullptr, 3), pcl + PjlTarget("flash1") + PjlEnd},
      {2, 3, Job(EscK), EscKToDevice},
      {2, 5, Job(0), ""},
      {2, 5, LeadInJob(Both), pcl + EscKLeadIn + PjlTarget("disk2") + EscKToDevice + PjlEnd},
      {2, 5, LeadInJob(0), EscKLeadIn},
      {3, 3, Job(Both, 5), pcl + Uel + "@PJL QFORMAT DEVICE = flash2\n" + PjlEnd},
      {3, 2, Job(0), Bytes("\x1B[K\x03\x00\x06\xC0\x50")},
      {4, 1, Job(Both, 0, "Setup"), Uel + PjlPanel("Setup") + list},
      {4, 1, Job(0), Bytes("\x1B[K\x03\x00\x06\xC0\x46")},
      // A language that is none never indexes a table.
      {4, 1, Job(Pjl, 7), Uel + list},
      {4, 1, Job(Pjl, -1), Uel + list},
  };
  for (const auto& [operation, device, job, expected] : cases) {
    // They always replace what is there.
    EXPECT_EQ(HvGenResource(operation, destination_, &job, device), HV_OK);
    EXPECT_EQ(ReadFile(out_), expected) << operation << " for " << device;
  }
}

TEST_F(Sent, BadArgumentsReachNothing) {
  const HvJobInfo good = Job(Pjl, 5, "name");
  const HvJobInfo tooHigh = Job(Pjl, 7);
  const HvJobInfo tooLow = Job(Pjl, -1);
  const std::string source = Source("bytes");
  const char* const s = source.c_str();
  const char* const d = destination_;
  const std::string text261(HV_MAX_PATH + 1, 'x');
  const char* const tooLong = text261.c_str();
  const std::tuple<const char*, const char*, const HvJobInfo*> common[] = {
      {nullptr, d, &good}, {s, nullptr, &good}, {s, d, nullptr},     {s, tooLong, &good},
      {s, d, &tooHigh},    {s, d, &tooLow},     {tooLong, d, &good},
  };
  for (const auto& [file, destination, job] : common) {
    SCOPED_TRACE(destination == nullptr ? "NULL" : destination);
    EXPECT_EQ(HvDatSendFile(file, destination, job, 0), HV_BAD_ARGUMENT);
    const char* const text = file == s ? "$a" : file == nullptr ? nullptr : "1B4";
    EXPECT_EQ(HvDatSendString(text, destination, job, 0), HV_BAD_ARGUMENT);
  }
  for (const char* const text : {"1G", "G1", "1B 4", " 1B4", "1B4G"}) {
    EXPECT_EQ(HvDatSendString(text, d, &good, 0), HV_BAD_ARGUMENT) << text;
  }
  EXPECT_EQ(HvDatSendString("%", nullptr, &good, 0), HV_BAD_ARGUMENT);
  const std::tuple<uint32_t, const char*, const HvJobInfo*, uint32_t> resources[] = {
      {0, d, &good, 1},       {5, d, &good, 1},   {0x10001, d, &good, 1},
      {1, nullptr, &good, 1}, {1, d, nullptr, 1}, {1, tooLong + 1, &good, 1},
      {4, d, &good, 0},       {4, d, &good, 6},   {4, d, &good, 0x10001},
  };
  for (const auto& [operation, destination, job, device] : resources) {
    EXPECT_EQ(HvGenResource(operation, destination, job, device), HV_BAD_ARGUMENT);
  }
  // One character fewer is no bad argument.
  EXPECT_EQ(HvGenResource(1, ("missing/" + std::string(HV_MAX_PATH - 9, 'x')).c_str(), &good, 1),
            HV_CANNOT_OPEN);
  EXPECT_EQ(folder_.Names(), std::vector<std::string>{"source"});
}

TEST(ListQueries, CheckTheirBufferAlone) {
  std::vector<char> buffer(1024, 'x');
  for (const auto query : {HvGenQueryAdapters, HvGenQueryQueues}) {
    EXPECT_EQ(query(0, 0, buffer.data(), 1024), HV_OK);
    EXPECT_EQ(query(0, 0, buffer.data(), 1023), HV_BAD_ARGUMENT);
    EXPECT_EQ(query(0, 0, buffer.data(), 0x10000), HV_BAD_ARGUMENT);  // 0 in 16 bits
    EXPECT_EQ(query(0, 0, nullptr, 1024), HV_BAD_ARGUMENT);
  }
  EXPECT_EQ(buffer, std::vector<char>(1024, 'x'));
}

}  // namespace
