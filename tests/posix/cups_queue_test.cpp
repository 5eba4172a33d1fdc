// Queues of CUPS, at a scheduler of the test's own whose queues lead to ports of this machine.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/posix/child.h"
#include "support/posix/cups_server.h"
#include "support/posix/socket_peer.h"
#include "support/spooler_report.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::Bytes;
using hvtest::ChildResult;
using hvtest::CupsServer;
using hvtest::IsSpoolerReport;
using hvtest::Job;
using hvtest::Listener;
using hvtest::OpenHandleCount;
using hvtest::ReadFile;
using hvtest::ScopedVariable;
using hvtest::SocketPeer;
using hvtest::TestFolder;

// The client library of CUPS remembers for each thread which server it talks to.
uint32_t InFreshThread(const std::function<uint32_t()>& work) {
  uint32_t result = 0;
  std::thread([&] { result = work(); }).join();
  return result;
}

void TakeSignal(int /*signal*/) {}

// Reads a request with its message of attributes and answers it with one attribute, given in the
// form of the protocol behind the tag of its group. The code of the operation that was asked for.
int AnswerRequest(int connection, const std::string& attribute) {
  constexpr std::size_t VersionSize = 2;
  const std::string lengthField = "Content-Length: ";
  std::string request;
  std::size_t message = std::string::npos;
  std::size_t length = 0;
  while (message == std::string::npos || request.size() < message + length) {
    char buffer[4096];
    const ssize_t got = recv(connection, buffer, sizeof buffer, 0);
    if (got <= 0) return -1;
    request.append(buffer, static_cast<std::size_t>(got));
    const std::size_t headEnd = request.find("\r\n\r\n");
    if (headEnd == std::string::npos) continue;
    message = headEnd + 4;
    length = std::stoul(request.substr(request.find(lengthField) + lengthField.size()));
  }
  const std::string reply = Bytes("\x01\x01\x00\x00\x00\x00\x00\x01") + attribute + "\x03";
  const std::string answer = "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\n" + lengthField +
                             std::to_string(reply.size()) + "\r\n\r\n" + reply;
  send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
  return static_cast<unsigned char>(request[message + VersionSize + 1]);
}

class CupsQueues : public testing::Test {
 protected:
  void SetUp() override {
    if (!CupsServer::IsInstalled()) GTEST_SKIP() << "the scheduler of CUPS is not installed";
  }

  TestFolder folder_;
  ScopedVariable spool_{"HVAPI_SPOOL", folder_ / "spool"};
};

TEST_F(CupsQueues, SpoolQueuesAndSocketsGetTheSameBytes) {
  const std::string payload = Bytes(
                                  "\x1B"
                                  "E\x00\r\n\xFF%-12345X") +
                              std::string(5000, '\xA5');
  const std::string expected =
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Weekly report\"\n@PJL ENTER LANGUAGE = PCL\n"
      "@PJL SET COPIES = 3\n" +
      payload + "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n@PJL RESET\n\x1B%-12345X";
  const std::string source = folder_.Add("source", payload);
  fs::create_directories(folder_ / "spool/directory");
  const HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "Weekly report", 3);
  SocketPeer socketPrinter(hvtest::TakeAll);
  SocketPeer cupsPrinter(hvtest::TakeAll);
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
  const struct {
    const char* name;
    std::string title;
  } cases[] = {
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
  for (const auto& c : cases) {
    const HvJobInfo job = Job(0, 0, c.name);
    EXPECT_EQ(InFreshThread([&] { return HvDatSendString("$abc", "raw", &job, 0); }), HV_OK);
    const std::string attribute =
        Bytes("\x00\x08job-name\x00") + static_cast<char>(c.title.size()) + c.title;
    EXPECT_TRUE(server.WaitForJobRecord(++number, attribute)) << c.title << "\n" << server.Log();
  }
}

// What is no queue that takes jobs is the name of a file.
TEST_F(CupsQueues, ThatCannotBePrintedToAreFiles) {
  const Listener printer;
  const CupsServer server(CupsServer::RawQueue("raw", printer.Destination()) +
                          CupsServer::RawQueue("closed", printer.Destination(), false));
  ASSERT_TRUE(server.IsRunning());
  const Listener silent;
  const Listener gone;
  shutdown(gone.Socket(), SHUT_RDWR);
  const auto addressOf = [](const Listener& listener) {
    return "127.0.0.1:" + std::to_string(listener.Port());
  };
  const struct {
    const char* label;
    std::string server;
    const char* destination;
  } cases[] = {
      {"no such queue", server.Address(), "missing"},
      {"a queue that takes no jobs", server.Address(), "closed"},
      {"the path of a queue", server.Address(), "./raw"},
      {"a name that cannot be", server.Address(), "raw?x"},
      {"no server", addressOf(gone), "raw"},
      {"a server that says nothing", addressOf(silent), "raw"},
      {"a server that is a file", "/dev/null", "raw"},
  };
  const ScopedVariable timeout("HVAPI_TIMEOUT", "1");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    const TestFolder work;
    const ScopedVariable address("CUPS_SERVER", c.server);
    const auto start = std::chrono::steady_clock::now();
    const ChildResult result = hvtest::RunInChild([&]() -> std::string {
      if (chdir(work.Path().c_str()) != 0) return "no folder";
      const std::size_t handles = OpenHandleCount();
      const HvJobInfo job = Job(0);
      const uint32_t code = HvDatSendString("$abc", c.destination, &job, 0);
      return std::to_string(code) + (OpenHandleCount() == handles ? " closed" : " open");
    });
    EXPECT_EQ(result.answer, "0 closed");
    EXPECT_EQ(ReadFile(work / c.destination), "abc");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  }
  EXPECT_EQ(server.JobCount(), 0U);
}

// A server that takes job 4660 and treats its document as told. Which operations it was asked for
// before the document and, within two seconds, behind it.
class ScriptedServer {
 public:
  explicit ScriptedServer(const std::function<void(int connection)>& takeDocument)
      : serving_([this, takeDocument] { Serve(takeDocument); }) {}
  ~ScriptedServer() { Finish(); }

  std::string Address() const { return "127.0.0.1:" + std::to_string(listener_.Port()); }
  const std::vector<int>& Finish() {
    if (serving_.joinable()) serving_.join();
    return operations_;
  }

 private:
  void Serve(const std::function<void(int connection)>& takeDocument) {
    Answer(Bytes("\x04\x22\x00\x19printer-is-accepting-jobs\x00\x01\x01"));
    Answer(Bytes("\x02\x21\x00\x06job-id\x00\x04\x00\x00\x12\x34"));
    const int document = hvtest::AcceptFrom(listener_);
    takeDocument(document);
    if (hvtest::WaitForInput(listener_.Socket(), std::chrono::seconds(2))) Answer("");
    close(document);
  }

  void Answer(const std::string& attribute) {
    const int connection = hvtest::AcceptFrom(listener_);
    operations_.push_back(AnswerRequest(connection, attribute));
    close(connection);
  }

  Listener listener_;
  std::vector<int> operations_;
  std::thread serving_;
};

// The server stops in the middle of the document so that the next write would raise a signal.
TEST_F(CupsQueues, RaiseNoSignalAndCancelTheJob) {
  const std::string large = folder_.Add("large", std::string(24U << 20, 'x'));
  ScriptedServer server([](int connection) {
    // Where a request breaks off in its head the client library connects anew and asks again.
    std::string request;
    char part[4096];
    while (request.find("xxxx") == std::string::npos) {
      const ssize_t got = recv(connection, part, sizeof part, 0);
      if (got <= 0) break;
      request.append(part, static_cast<std::size_t>(got));
    }
    // What waits is taken, too: against a full window nothing is sent that could be refused.
    shutdown(connection, SHUT_RDWR);
    while (recv(connection, part, sizeof part, 0) > 0) continue;
  });
  const ScopedVariable address("CUPS_SERVER", server.Address());
  const HvJobInfo job = Job(0);
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  testing::internal::CaptureStdout();
  const uint32_t result =
      InFreshThread([&] { return HvDatSendFile(large.c_str(), "raw", &job, 0); });
  const std::string output = testing::internal::GetCapturedStdout();
  EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL);
  EXPECT_EQ(result, HV_PRINTER_REFUSED);
  EXPECT_TRUE(IsSpoolerReport(output, std::string(2048, 'x'), 109));
  EXPECT_EQ(server.Finish(), (std::vector<int>{0x0B, 0x05, 0x08}));
}

// A whole document whose receipt the server does not confirm is not taken back.
TEST_F(CupsQueues, WaitForTheServerNoLongerThanToldAndLeaveItTheDocument) {
  const struct {
    const char* label;
    bool refuses;
    std::vector<int> operations;
  } cases[] = {
      {"silent", false, {0x0B, 0x05}},
      {"refusing", true, {0x0B, 0x05, 0x08}},
  };
  const ScopedVariable timeout("HVAPI_TIMEOUT", "1");
  const HvJobInfo job = Job(0);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    std::string request;
    ScriptedServer server([&](int connection) {
      char byte = 0;
      while (request.find("\r\n0\r\n") == std::string::npos && recv(connection, &byte, 1, 0) == 1) {
        request += byte;
      }
      const std::string refusal = "HTTP/1.1 413 Too Large\r\nContent-Length: 0\r\n\r\n";
      if (c.refuses) send(connection, refusal.data(), refusal.size(), MSG_NOSIGNAL);
    });
    const ScopedVariable address("CUPS_SERVER", server.Address());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(InFreshThread([&] { return HvDatSendString("$whole", "raw", &job, 0); }), HV_OK);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(6));
    EXPECT_EQ(server.Finish(), c.operations);
    EXPECT_NE(request.find("whole\r\n0\r\n"), std::string::npos) << request;
  }
}

// The scheduler breaks the connection in the middle of the document.
TEST_F(CupsQueues, PrintNothingOfADocumentThatFails) {
  SocketPeer printer(hvtest::TakeAll);
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
