// Jobs sent to a file destination: the framing of files, strings and storage commands byte by byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::Bytes;
using hvtest::Job;
using hvtest::OpenHandleCount;
using hvtest::ReadFile;
using hvtest::TestFolder;

constexpr uint32_t Pjl = JOB_FLAG_PJL;
constexpr uint32_t EscK = JOB_FLAG_ESC_K;
constexpr uint32_t Both = JOB_FLAG_PJL | JOB_FLAG_ESC_K;

const std::string Uel = "\x1B%-12345X";
const std::string EmptyPanel = "@PJL RDYMSG DISPLAY = \"\"\n";
const std::string EscKEnd = Bytes("\x1B[K\x01\x00\x06");

std::string Panel(const std::string& text) {
  return "@PJL RDYMSG DISPLAY = \"" + text + "\"\n";
}

// A folder with a file to print and the name of the file that is printed to.
class Sent : public testing::Test {
 protected:
  std::string Source(const std::string& bytes) { return folder_.Add("source", bytes); }
  std::string Destination() const { return folder_ / "out"; }

  TestFolder folder_;
};

using SendingFiles = Sent;
using SendingStrings = Sent;
using StorageCommands = Sent;

TEST_F(SendingFiles, FramesThemAsTheJobSays) {
  HvJobInfo withPersonality = Job(EscK, JOB_EMULATION_POSTSCRIPT);
  withPersonality.personality = 0x35;
  HvJobInfo otherFlags = Job(~Both, JOB_EMULATION_PCL, "name", 1);
  otherFlags.nbxAddress1 = 7;  // selects nothing without the second word
  const std::string pjlEnd = Uel + EmptyPanel + "@PJL RESET\n" + Uel;
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
      {"the language that has no name", Job(Pjl, 1, ""), Uel + EmptyPanel, pjlEnd},
      {"PPDS", Job(Pjl, 2), Uel + "@PJL ENTER LANGUAGE = PPDS\n", pjlEnd},
      {"PostScript", Job(Pjl, 3), Uel + "@PJL ENTER LANGUAGE = POSTSCRIPT\n", pjlEnd},
      {"GL", Job(Pjl, 4), Uel + "@PJL ENTER LANGUAGE = GL\n", pjlEnd},
      {"PCL XL", Job(Pjl, 6), Uel + "@PJL ENTER LANGUAGE = PCL\n", pjlEnd},
      {"20 characters of the name", Job(Pjl, 0, "12345678901234567890"),
       Uel + Panel("12345678901234567890"), pjlEnd},
      {"no more of them", Job(Pjl, 0, "123456789012345678901"), Uel + Panel("12345678901234567890"),
       pjlEnd},
      {"the most copies", Job(Pjl, 0, nullptr, 65535), Uel + "@PJL SET COPIES = 65535\n", pjlEnd},

      {"copies alone", Job(EscK, 0, "name", 3), "\x1B&l3X", EscKEnd},
      {"nothing to select", Job(EscK), "", EscKEnd},
      {"default language", Job(EscK, 1, nullptr, 3), Bytes("\x1B[K\x03\x00\x06\x31\x00"), EscKEnd},
      {"PPDS", Job(EscK, 2, nullptr, 3), Bytes("\x1B[K\x03\x00\x06\x31\x01"), EscKEnd},
      {"personality", withPersonality, Bytes("\x1B[K\x03\x00\x06\x35\x08"), EscKEnd},
      {"its default in the next job", Job(EscK, 3), Bytes("\x1B[K\x03\x00\x06\x31\x08"), EscKEnd},
      {"GL", Job(EscK, 4, nullptr, 3), Bytes("\x1B[K\x03\x00\x06\x31\x03"), EscKEnd},
      {"PCL with copies", Job(EscK, 5, nullptr, 65535),
       Bytes("\x1B[K\x03\x00\x06\x31\x02\x1B&l65535X"), EscKEnd},
      {"PCL XL with copies", Job(EscK, 6, nullptr, 2), Bytes("\x1B[K\x03\x00\x06\x31\x02\x1B&l2X"),
       EscKEnd},
      {"PCL without copies", Job(EscK, 5), Bytes("\x1B[K\x03\x00\x06\x31\x02"), EscKEnd},

      {"both flags", Job(Both, 5, "name", 3), Bytes("\x1B[K\x03\x00\x06\x31\x02\x1B&l3X"),
       pjlEnd + EscKEnd},

      {"no flag", Job(0, 5, "name"), "", ""},
      {"one copy", Job(0, 5, "name", 1), "", ""},
      {"three copies", Job(0, 5, "name", 3), "", "", 3},
      {"flags that mean nothing", otherFlags, "", ""},
  };
  const std::string payloads[] = {Bytes("a\x00\x1A\r\n\xFF"), "", std::string(5000, '7')};
  const std::size_t handles = OpenHandleCount();
  for (const auto& c : cases) {
    for (const std::string& payload : payloads) {
      SCOPED_TRACE(c.label);
      const std::string source = Source(payload);
      ASSERT_EQ(HvDatSendFile(source.c_str(), Destination().c_str(), &c.job, 0), HV_OK);
      std::string expected = c.before;
      for (int i = 0; i < c.times; ++i) expected += payload;
      EXPECT_EQ(ReadFile(Destination()), expected + c.after);
    }
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST_F(SendingFiles, ReplacesOrAppends) {
  const HvJobInfo job = Job(0);
  const std::string source = Source("new");
  folder_.Add("out", "something longer");
  EXPECT_EQ(HvDatSendFile(source.c_str(), Destination().c_str(), &job, 0), HV_OK);
  EXPECT_EQ(ReadFile(Destination()), "new");
  EXPECT_EQ(HvDatSendFile(source.c_str(), Destination().c_str(), &job, 2), HV_OK);
  EXPECT_EQ(HvDatSendString("$+", Destination().c_str(), &job, 1), HV_OK);
  EXPECT_EQ(ReadFile(Destination()), "newnew+");
  EXPECT_EQ(HvDatSendString("$short", Destination().c_str(), &job, 0), HV_OK);
  EXPECT_EQ(ReadFile(Destination()), "short");
  // Storage commands always replace.
  const HvJobInfo escK = Job(EscK);
  EXPECT_EQ(HvGenResource(STORAGE_FORMAT, Destination().c_str(), &escK, 1), HV_OK);
  EXPECT_EQ(ReadFile(Destination()), Bytes("\x1B[K\x03\x00\x06\xC0\x50"));
}

TEST_F(SendingFiles, LeavesAFileSentToItselfAlone) {
  const HvJobInfo job = Job(Pjl, 5, nullptr, 2);
  const std::string source = Source("precious");
  for (const uint32_t append : {0U, 1U}) {
    EXPECT_EQ(HvDatSendFile(source.c_str(), source.c_str(), &job, append), HV_CANNOT_OPEN);
  }
  EXPECT_EQ(ReadFile(source), "precious");
}

TEST_F(SendingFiles, RefusesWhatIsMissingOrNoFile) {
  const HvJobInfo job = Job(Pjl, 5);
  const std::string source = Source("bytes");
  fs::create_directory(folder_ / "directory");
  const std::string directory = folder_ / "directory";
  const struct {
    std::string file;
    std::string destination;
    uint32_t result;
  } cases[] = {
      {folder_ / "missing", Destination(), HV_NOT_FOUND},
      {"", Destination(), HV_NOT_FOUND},
      {folder_ / "*", Destination(), HV_NOT_FOUND},
      {directory, Destination(), HV_CANNOT_OPEN},
      {source, directory, HV_CANNOT_OPEN},
      {source, folder_ / "missing/out", HV_CANNOT_OPEN},
      {source, "", HV_CANNOT_OPEN},
      // The longest names that are looked at.
      {"missing/" + std::string(HV_MAX_PATH - 8, 'x'), Destination(), HV_NOT_FOUND},
      {source, "missing/" + std::string(HV_MAX_PATH - 8, 'x'), HV_CANNOT_OPEN},
  };
  const std::size_t handles = OpenHandleCount();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file + " -> " + c.destination);
    EXPECT_EQ(HvDatSendFile(c.file.c_str(), c.destination.c_str(), &job, 0), c.result);
    EXPECT_EQ(HvDatSendString(("%" + c.file).c_str(), c.destination.c_str(), &job, 0), c.result);
  }
  EXPECT_EQ(OpenHandleCount(), handles);
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"directory", "source"}));
}

TEST_F(SendingStrings, ReadsTheirNotation) {
  const struct {
    const char* text;
    std::string payload;
  } cases[] = {
      {"1B45", "\x1B\x45"},
      {"1b4fFf", "\x1B\x4F\xFF"},
      {"000100", Bytes("\x00\x01\x00")},
      {"", ""},

      {"$", ""},
      {"$plain % $ 1B", "plain % $ 1B"},
      {"$\\e", "e"},
      {"$a\\nb\\\\c\\\"\\N\\t\\$", "a\nb\\c\"Nt$"},
      {"$\\x1BE\\x1b\\xfF",
       "\x1B"
       "E\x1B\xFF"},
      {"$\\x1Gz", "\x01z"},  // two characters, whatever they are
      {"$AB\\x0", "AB"},
      {"$AB\\x", "AB"},
      {"$AB\\x4", "AB\x04"},
      {"$AB\\xG1CD", "AB"},
      {"$AB\\x00CD", "AB"},
      {"$AB\\", "AB"},
      {"$\xE4\xFF", "\xE4\xFF"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const HvJobInfo bare = Job(0, 5, "name", 3);
    EXPECT_EQ(HvDatSendString(c.text, Destination().c_str(), &bare, 0), HV_OK);
    EXPECT_EQ(ReadFile(Destination()), c.payload);
    // No copies and no ESC [ K.
    const HvJobInfo framed = Job(Both, 5, "name", 3);
    EXPECT_EQ(HvDatSendString(c.text, Destination().c_str(), &framed, 0), HV_OK);
    EXPECT_EQ(ReadFile(Destination()), Uel + Panel("name") + "@PJL ENTER LANGUAGE = PCL\n" +
                                           c.payload + Uel + EmptyPanel + Uel);
  }
}

TEST_F(SendingStrings, SendsTheFileThatTheyName) {
  const std::string text = "%" + Source("file bytes");
  const HvJobInfo copies = Job(0, 5, nullptr, 2);
  EXPECT_EQ(HvDatSendString(text.c_str(), Destination().c_str(), &copies, 0), HV_OK);
  EXPECT_EQ(ReadFile(Destination()), "file bytesfile bytes");
  const HvJobInfo escK = Job(EscK, 6, nullptr, 2);
  EXPECT_EQ(HvDatSendString(text.c_str(), Destination().c_str(), &escK, 0), HV_OK);
  EXPECT_EQ(ReadFile(Destination()),
            Bytes("\x1B[K\x03\x00\x06\x31\x02\x1B&l2X") + "file bytes" + EscKEnd);
}

TEST_F(StorageCommands, AreJobsOfTheirOwn) {
  HvJobInfo leadIn = Job(Both, 5);
  leadIn.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  HvJobInfo bareLeadIn = Job(0);
  bareLeadIn.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  const std::string pcl = Uel + "@PJL ENTER LANGUAGE = PCL\n";
  const std::string setup = Uel + Panel("Setup");
  const std::string end = Uel + EmptyPanel + Uel;
  const std::string targetDevice = Bytes("\x1B[K\x03\x00\x06\xC0\x31");
  const std::string targetRam = Bytes("\x1B[K\x03\x00\x06\xC0\x32");
  const std::string format = Bytes("\x1B[K\x03\x00\x06\xC0\x50");
  const std::string directory = Bytes("\x1B[K\x03\x00\x06\xC0\x46");
  const struct {
    const char* label;
    uint32_t operation;
    uint32_t device;
    HvJobInfo job;
    std::string expected;
  } cases[] = {
      {"the worked example", 3, 4, Job(Pjl, 0, "Setup"),
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Setup\"\n\x1B%-12345X@PJL QFORMAT DEVICE = disk1\n"
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X"},
      {"RAM whatever the device", 1, 4, Job(Pjl),
       Uel + Uel + "@PJL SET QDOWNLOADTARGET = ram\n" + end},
      {"RAM", 1, 5, Job(EscK, 5, "n", 3), targetRam},
      {"RAM", 1, 1, Job(Both), Uel + Uel + "@PJL SET QDOWNLOADTARGET = ram\n" + targetRam + end},
      {"RAM", 1, 1, Job(0), ""},
      {"no lead-in for RAM", 1, 2, bareLeadIn, ""},

      {"RAM as a device", 2, 1, Job(Pjl), Uel + Uel + "@PJL SET QDOWNLOADTARGET = ram\n" + end},
      {"flash 1", 2, 2, Job(Pjl, 5, nullptr, 3),
       pcl + Uel + "@PJL SET QDOWNLOADTARGET = flash1\n" + end},
      {"flash 2", 2, 3, Job(EscK), targetDevice},
      {"a device", 2, 5, Job(0), ""},
      {"lead-in of the class", 2, 5, leadIn,
       pcl + Bytes("\x1B[K\x01\x00\x01") + Uel + "@PJL SET QDOWNLOADTARGET = disk2\n" +
           targetDevice + end},
      {"lead-in without flags", 2, 5, bareLeadIn, Bytes("\x1B[K\x01\x00\x01")},

      {"format", 3, 3, Job(Both, 5), pcl + Uel + "@PJL QFORMAT DEVICE = flash2\n" + end},
      {"format", 3, 2, Job(EscK), format},
      {"format", 3, 2, Job(0), format},

      {"directory", 4, 1, Job(Both, 0, "Setup"), setup + Uel + "@PJL QPRINTDIRECTORY\n" + end},
      {"directory", 4, 1, Job(EscK), directory},
      {"directory", 4, 1, Job(0), directory},
      // A language that is none never indexes a table.
      {"language too high", 4, 1, Job(Pjl, 7), Uel + Uel + "@PJL QPRINTDIRECTORY\n" + end},
      {"language too low", 4, 1, Job(Pjl, -1), Uel + Uel + "@PJL QPRINTDIRECTORY\n" + end},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.label) + ", operation " + std::to_string(c.operation));
    ASSERT_EQ(HvGenResource(c.operation, Destination().c_str(), &c.job, c.device), HV_OK);
    EXPECT_EQ(ReadFile(Destination()), c.expected);
  }
}

TEST_F(Sent, BadArgumentsReachNothing) {
  const HvJobInfo good = Job(Pjl, 5, "name");
  const HvJobInfo tooHigh = Job(Pjl, 7);
  const HvJobInfo tooLow = Job(Pjl, -1);
  const std::string source = Source("bytes");
  const std::string out = Destination();
  const char* const s = source.c_str();
  const char* const d = out.c_str();
  const std::string text261(HV_MAX_PATH + 1, 'x');
  const char* const tooLong = text261.c_str();
  const char* const tooLongForStorage = text261.c_str() + 1;

  const struct {
    const char* text;
    const char* destination;
    const HvJobInfo* job;
  } strings[] = {
      {nullptr, d, &good},   {"$a", nullptr, &good}, {"$a", d, nullptr},  {"1B4", d, &good},
      {"1G", d, &good},      {"G1", d, &good},       {"1B 4", d, &good},  {" 1B4", d, &good},
      {"1B4G", d, &good},    {"$a", tooLong, &good}, {"$a", d, &tooHigh}, {"$a", d, &tooLow},
      {"%", nullptr, &good}, {"%", tooLong, &good},
  };
  for (const auto& c : strings) {
    EXPECT_EQ(HvDatSendString(c.text, c.destination, c.job, 0), HV_BAD_ARGUMENT)
        << (c.text == nullptr ? "NULL" : c.text);
  }
  const struct {
    const char* file;
    const char* destination;
    const HvJobInfo* job;
  } files[] = {
      {nullptr, d, &good}, {s, nullptr, &good}, {s, d, nullptr}, {tooLong, d, &good},
      {s, tooLong, &good}, {s, d, &tooHigh},    {s, d, &tooLow},
  };
  for (const auto& c : files) {
    EXPECT_EQ(HvDatSendFile(c.file, c.destination, c.job, 0), HV_BAD_ARGUMENT);
  }
  const struct {
    uint32_t operation;
    const char* destination;
    const HvJobInfo* job;
    uint32_t device;
  } resources[] = {
      {0, d, &good, 1},       {5, d, &good, 1},   {0x10001, d, &good, 1},
      {1, nullptr, &good, 1}, {1, d, nullptr, 1}, {1, tooLongForStorage, &good, 1},
      {4, d, &good, 0},       {4, d, &good, 6},   {4, d, &good, 0x10001},
  };
  for (const auto& c : resources) {
    EXPECT_EQ(HvGenResource(c.operation, c.destination, c.job, c.device), HV_BAD_ARGUMENT);
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
    EXPECT_EQ(query(1, 2, buffer.data(), 65535), HV_OK);
    EXPECT_EQ(query(0, 0, buffer.data(), 1023), HV_BAD_ARGUMENT);
    EXPECT_EQ(query(0, 0, buffer.data(), 0x10000), HV_BAD_ARGUMENT);  // 0 in 16 bits
    EXPECT_EQ(query(0, 0, nullptr, 1024), HV_BAD_ARGUMENT);
  }
  EXPECT_EQ(buffer, std::vector<char>(1024, 'x'));
}

}  // namespace
