// Queues that are directories: the documents that appear in them, and what a failure leaves.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;
using Names = std::vector<std::string>;

// A ticket with each digit of its time as 9.
std::string WithoutTime(std::string ticket) {
  std::size_t at = ticket.find("\ntime=");
  while (at < ticket.size() && ticket.compare(at, 7, "\nbytes=") != 0) {
    if (ticket[at] >= '0' && ticket[at] <= '9') ticket[at] = '9';
    ++at;
  }
  return ticket;
}

class SpoolQueues : public testing::Test {
 protected:
  SpoolQueues() { fs::create_directory(spool_ / "queue"); }

  // Sends a text as a document without framing.
  uint32_t Print(const std::string& text, const char* name = "name") {
    const HvJobInfo job = Job(0, 0, name);
    return HvDatSendString(("$" + text).c_str(), "queue", &job, 0);
  }

  Names Queued() const {
    Names names;
    for (const auto& entry : fs::directory_iterator(spool_ / "queue")) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string Queued(const std::string& name) const { return ReadFile(spool_ / ("queue/" + name)); }

  TestFolder spool_;
  ScopedVariable variable_{"HVAPI_SPOOL", spool_.Path().string()};
  ScopedVariable noOtherQueues_{"CUPS_SERVER", spool_ / "no server"};
};

TEST_F(SpoolQueues, HoldADocumentAndItsTicket) {
  const std::size_t handles = OpenHandleCount();
  const HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "Weekly\nreport\x7F\xE4", 3);
  EXPECT_EQ(HvDatSendString("$a\\nb", "queue", &job, 1), HV_OK);
  EXPECT_EQ(Print("", nullptr), HV_OK);
  EXPECT_EQ(Queued(), (Names{"000001.job", "000001.prn", "000002.job", "000002.prn"}));
  const std::string document =
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Weekly\nreport\x7F\xE4\"\n"
      "@PJL ENTER LANGUAGE = PCL\na\nb\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X";
  EXPECT_EQ(Queued("000001.prn"), document);
  const std::string user = "\nuser=" + UserNameOfSystem();
  const std::string time = "\ntime=9999-99-99T99:99:99Z";
  EXPECT_EQ(WithoutTime(Queued("000001.job")), "name=Weekly report\x7F\xE4" + user + time +
                                                   "\nbytes=" + std::to_string(document.size()) +
                                                   "\n");
  EXPECT_EQ(WithoutTime(Queued("000002.job")), "name=Pallado Job" + user + time + "\nbytes=0\n");
  EXPECT_EQ(Queued("000002.prn"), "");
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST_F(SpoolQueues, CountOnFromTheLastDocument) {
  const std::pair<const char*, std::string> cases[] = {
      {"000007.prn", "000008"},
      {"000041.job", "000042"},
      {"999999.prn", "1000000"},
      {"1000005.job", "1000006"},
      // Files of others do not count.
      {"2000000.txt", "1000007"},
      {"00000A.prn", "1000008"},
      {"99999999.prn~", "1000009"},
      {".99999999.prn", "1000010"},
  };
  for (const auto& [there, next] : cases) {
    SCOPED_TRACE(there);
    spool_.Add(std::string("queue/") + there, "other");
    EXPECT_EQ(Print(next), HV_OK);
    EXPECT_EQ(Queued(next + ".prn"), next);
    EXPECT_EQ(Queued(there), "other");
  }
}

TEST_F(SpoolQueues, WhoseNumbersAreUsedUpOverwriteNothing) {
  spool_.Add("queue/999999999999999999.prn", "the last");
  Print("lost");
  EXPECT_EQ(Queued(), Names{"999999999999999999.prn"});
  EXPECT_EQ(Queued("999999999999999999.prn"), "the last");
}

TEST_F(SpoolQueues, TakeDocumentsOfThreadsAndProcessesAtOnce) {
  constexpr int Writers = 4;
  constexpr int DocumentsEach = 8;
  const auto printAll = [this](int writer) {
    for (int i = 0; i < DocumentsEach; ++i) {
      // Of different lengths, so that a mixture of two shows in the ticket.
      const std::string text(static_cast<std::size_t>(1 + writer * DocumentsEach + i), 'x');
      if (Print(text) != HV_OK) return false;
    }
    return true;
  };
  std::vector<pid_t> children;
  for (int writer = 0; writer < Writers; ++writer) {
    const pid_t child = fork();
    if (child == 0) _exit(printAll(writer) ? 0 : 1);
    children.push_back(child);
  }
  std::vector<std::thread> threads;
  for (int writer = Writers; writer < 2 * Writers; ++writer) {
    threads.emplace_back([&, writer] { EXPECT_TRUE(printAll(writer)); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const pid_t child : children) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }

  constexpr std::size_t All = 2 * Writers * DocumentsEach;
  EXPECT_EQ(Queued().size(), 2 * All);
  std::set<std::size_t> lengths;
  for (std::size_t number = 1; number <= All; ++number) {
    const std::string digits = std::to_string(number);
    const std::string stem = std::string(6 - digits.size(), '0') + digits;
    const std::size_t length = Queued(stem + ".prn").size();
    EXPECT_NE(Queued(stem + ".job").find("\nbytes=" + std::to_string(length) + "\n"),
              std::string::npos)
        << stem;
    lengths.insert(length);
  }
  EXPECT_EQ(lengths.size(), All);
  EXPECT_EQ(*lengths.rbegin(), All);
}

// Names that are no queue of the folder, and a queue that takes no document, are files.
TEST_F(SpoolQueues, AreNamedPlainlyOrNotMeant) {
  const std::string spool = spool_.Path().string();
  // folder of the queues, destination, what is made in the current folder
  const std::tuple<std::string, const char*, std::string> cases[] = {
      {spool, "sub/../queue", "queue"},
      {spool, "missing", "missing"},
      {spool, ".", ""},
      {spool, "..", ""},
      {"/proc", "self", "self"},
  };
  for (const auto& [folder, destination, made] : cases) {
    SCOPED_TRACE(destination);
    const TestFolder work;
    const ScopedCurrentFolder here(work.Path());
    fs::create_directory("sub");
    const ScopedVariable queues("HVAPI_SPOOL", folder);
    const HvJobInfo job = Job(0);
    testing::internal::CaptureStdout();
    EXPECT_EQ(HvDatSendString("$bytes", destination, &job, 0),
              made.empty() ? HV_CANNOT_OPEN : HV_OK);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(work.Names(), made.empty() ? Names{"sub"} : (Names{made, "sub"}));
    EXPECT_EQ(made.empty() ? "bytes" : ReadFile(made), "bytes");
  }
  EXPECT_EQ(Queued(), Names{});
}

TEST_F(SpoolQueues, TakeAFileThatHasTheirName) {
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  work.Add("queue", "a page");
  const HvJobInfo job = Job(0);
  EXPECT_EQ(HvDatSendFile("queue", "queue", &job, 0), HV_OK);
  EXPECT_EQ(Queued("000001.prn"), "a page");
}

TEST(FileDestination, ThatIsFullSaysSoByItsCodeAlone) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "bytes");
  const std::size_t handles = OpenHandleCount();
  testing::internal::CaptureStdout();
  for (const HvJobInfo& job : {Job(JOB_FLAG_PJL, 5, "name", 2), Job(0)}) {
    EXPECT_EQ(HvDatSendFile(source.c_str(), "/dev/full", &job, 0), HV_WRITE_FAILED);
    EXPECT_EQ(HvDatSendString("$abc", "/dev/full", &job, 1), HV_WRITE_FAILED);
    EXPECT_EQ(HvGenResource(STORAGE_FORMAT, "/dev/full", &job, 2), HV_WRITE_FAILED);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(OpenHandleCount(), handles);
}

// A pipe whose reader goes away raises no signal.
TEST(FileDestination, ThatNobodyReadsAnyMoreSaysSoByItsCodeAlone) {
  const TestFolder folder;
  const std::string source = folder.Add("source", std::string(1U << 20, 'x'));
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const auto readOne = [&] {
    const int end = open(pipe.c_str(), O_RDONLY | O_CLOEXEC);
    char first = 0;
    EXPECT_EQ(read(end, &first, 1), 1);
    close(end);
  };
  const HvJobInfo job = Job(0);
  std::thread first(readOne);
  EXPECT_EQ(HvDatSendFile(source.c_str(), pipe.c_str(), &job, 0), HV_WRITE_FAILED);
  first.join();
  std::thread second(readOne);
  EXPECT_EQ(HvFilCopy(source.c_str(), pipe.c_str()), HV_SYSTEM_FAILURE);
  second.join();
}

// A pipe has no way back to its start: it is sent once, whatever its size.
TEST(FileDestination, GetsWhatAPipeHoldsOnce) {
  const TestFolder folder;
  const std::string text(4096, 'x');
  for (const uint16_t copies : {uint16_t{1}, uint16_t{2}}) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    close(ends[1]);
    const HvJobInfo job = Job(0, 0, nullptr, copies);
    const std::string source = "/dev/fd/" + std::to_string(ends[0]);
    EXPECT_EQ(HvDatSendFile(source.c_str(), (folder / "out").c_str(), &job, 0),
              copies == 1 ? HV_OK : HV_READ_FAILED);
    EXPECT_EQ(ReadFile(folder / "out"), text);
    close(ends[0]);
  }
}

}  // namespace
