// Queues of CUPS, at a scheduler of the test's own whose queues lead to ports of this machine.

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <utility>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/posix/cups_server.h"
#include "support/posix/socket_peer.h"
#include "support/spooler_report.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

// The client library of CUPS remembers for each thread which server it talks to.
uint32_t InFreshThread(const std::function<uint32_t()>& work) {
  uint32_t result = 0;
  std::thread([&] { result = work(); }).join();
  return result;
}

void TakeSignal(int /*signal*/) {}

class CupsQueues : public testing::Test {
 protected:
  void SetUp() override {
    if (!CupsServer::IsInstalled()) GTEST_SKIP() << "the scheduler of CUPS is not installed";
  }

  TestFolder folder_;
  ScopedVariable spool_{"HVAPI_SPOOL", folder_ / "spool"};
};

TEST_F(CupsQueues, SpoolQueuesAndSocketsGetTheSameBytes) {
  const std::string payload = Bytes("\x1B\x45\x00\r\n\xFF%-12345X") + std::string(5000, '\xA5');
  const std::string expected =
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Weekly report\"\n@PJL ENTER LANGUAGE = PCL\n"
      "@PJL SET COPIES = 3\n" +
      payload + "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n@PJL RESET\n\x1B%-12345X";
  const std::string source = folder_.Add("source", payload);
  fs::create_directories(folder_ / "spool/directory");
  const HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "Weekly report", 3);
  SocketPeer socketPrinter(TakeAll);
  SocketPeer cupsPrinter(TakeAll);
  const CupsServer server(CupsServer::RawQueue("raw.queue-1", cupsPrinter.Destination()));
  ASSERT_TRUE(server.IsRunning());
  const ScopedVariable address("CUPS_SERVER", server.Address());
  const std::size_t handles = OpenHandleCount();
  const auto before = std::signal(SIGPIPE, TakeSignal);

  for (const std::string& destination :
       {std::string("directory"), socketPrinter.Destination(), std::string("raw.queue-1")}) {
    EXPECT_EQ(
        InFreshThread([&] { return HvDatSendFile(source.c_str(), destination.c_str(), &job, 0); }),
        HV_OK)
        << destination;
  }
  EXPECT_EQ(ReadFile(folder_ / "spool/directory/000001.prn"), expected);
  EXPECT_EQ(socketPrinter.Finish().bytes, expected);
  EXPECT_EQ(cupsPrinter.Finish().bytes, expected) << server.Log();

  EXPECT_EQ(std::signal(SIGPIPE, before), TakeSignal);
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST_F(CupsQueues, NameTheJobAsTheProtocolAllows) {
  const std::string longName(300, 'n');
  const std::pair<const char*, std::string> cases[] = {
      {nullptr, "Pallado Job"},
      {"B\xC3\xBCro \xE2\x82\xAC \xF0\x9F\x96\xA8", "B\xC3\xBCro \xE2\x82\xAC \xF0\x9F\x96\xA8"},
      {"B\xFCro\t1\x7F", "B\xC3\xBCro 1 "},
      {"cut \xE2\x82", "cut \xC3\xA2\xC2\x82"},
      {longName.c_str(), std::string(255, 'n')},
  };
  const Listener printer;
  const CupsServer server(CupsServer::RawQueue("raw", printer.Destination()));
  ASSERT_TRUE(server.IsRunning());
  const ScopedVariable address("CUPS_SERVER", server.Address());
  int number = 0;
  for (const auto& [name, title] : cases) {
    const HvJobInfo job = Job(0, 0, name);
    EXPECT_EQ(InFreshThread([&] { return HvDatSendString("$abc", "raw", &job, 0); }), HV_OK);
    const std::string attribute =
        Bytes("\x00\x08job-name\x00") + static_cast<char>(title.size()) + title;
    EXPECT_TRUE(server.WaitForJobRecord(++number, attribute)) << title << "\n" << server.Log();
  }
}

// What is no queue that takes jobs is the name of a file: one that is missing or takes no jobs, the
// path of one, a name that cannot be.
TEST_F(CupsQueues, ThatCannotBePrintedToAreFiles) {
  const Listener printer;
  const CupsServer server(CupsServer::RawQueue("raw", printer.Destination()) +
                          CupsServer::RawQueue("closed", printer.Destination(), false));
  ASSERT_TRUE(server.IsRunning());
  const ScopedVariable address("CUPS_SERVER", server.Address());
  const ScopedCurrentFolder here(folder_.Path());
  const std::size_t handles = OpenHandleCount();
  const HvJobInfo job = Job(0);
  for (const char* destination : {"missing", "closed", "./raw", "raw?x"}) {
    EXPECT_EQ(InFreshThread([&] { return HvDatSendString("$abc", destination, &job, 0); }), HV_OK);
    EXPECT_EQ(ReadFile(destination), "abc") << destination;
  }
  EXPECT_EQ(OpenHandleCount(), handles);
  EXPECT_EQ(server.JobCount(), 0U);
}

// The scheduler breaks the connection in the middle of the document.
TEST_F(CupsQueues, PrintNothingOfADocumentThatFails) {
  SocketPeer printer(TakeAll);
  const CupsServer server(CupsServer::RawQueue("raw", printer.Destination()),
                          "LimitRequestBody 100000\n");
  ASSERT_TRUE(server.IsRunning());
  const ScopedVariable address("CUPS_SERVER", server.Address());
  const std::string large = folder_.Add("large", std::string(24U << 20, 'x'));
  const HvJobInfo job = Job(0);
  const std::size_t handles = OpenHandleCount();
  const auto before = std::signal(SIGPIPE, SIG_DFL);

  testing::internal::CaptureStdout();
  const uint32_t result =
      InFreshThread([&] { return HvDatSendFile(large.c_str(), "raw", &job, 0); });
  const std::string output = testing::internal::GetCapturedStdout();
  EXPECT_EQ(result, HV_PRINTER_REFUSED);
  EXPECT_TRUE(IsSpoolerReport(output, std::string(2048, 'x'), 109));
  EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL);
  EXPECT_EQ(OpenHandleCount(), handles);

  const std::string cancelled = Bytes("\x00\x09job-state\x00\x04\x00\x00\x00\x07");
  EXPECT_TRUE(server.WaitForJobRecord(1, cancelled)) << server.Log();
  // The next job is the first that the printer sees.
  EXPECT_EQ(InFreshThread([&] { return HvDatSendString("$after", "raw", &job, 0); }), HV_OK);
  EXPECT_EQ(printer.Finish().bytes, "after") << server.Log();
}

}  // namespace
