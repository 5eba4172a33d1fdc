// Printers, servers and disks that behave badly: what becomes of a job, and how long it takes. Each
// row of the table is a process of its own, which prints what it saw.

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
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
using namespace hvtest;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// More than the buffers of a connection on one machine hold.
constexpr std::size_t MuchMore = 24U << 20;
// What a job consists of that is to fail, so that the report of any of its chunks is known. No text
// of a protocol holds it.
constexpr char FailingByte = '\xA5';
constexpr std::size_t ChunkSize = 2048;

// What a busy machine may take beyond a deadline, in seconds.
constexpr int Slack = 15;

// The code of a job whose write failed, and the error that is reported with it.
constexpr uint32_t Refused = HV_PRINTER_REFUSED;
constexpr int BrokenPipe = 109;
constexpr int DiskFull = 112;
constexpr int TimedOut = 1460;

// One job and those that it meets. HVAPI_TIMEOUT is a second.
struct Stage {
  TestFolder folder;
  ScopedCurrentFolder here{folder.Path()};
  ScopedVariable spool{"HVAPI_SPOOL", folder / "spool"};
  ScopedVariable timeout{"HVAPI_TIMEOUT", "1"};
  ScopedVariable server{"CUPS_SERVER", folder / "no server"};
  Listener listener;
  std::string payload;
  std::string destination = listener.Destination();
  // Makes the system what the job is to meet; false where that cannot be had.
  std::function<bool()> prepare = [] { return true; };

  // What the printer does, in a thread of its own, and what it got.
  std::function<void()> printer;
  std::atomic<bool> jobEnded = false;
  std::string received;
  std::optional<bool> reset;    // whether the connection ended by one; unset when nobody looked
  std::vector<int> operations;  // that a server was asked for, and was to be
  std::vector<int> expectedOperations;
  std::string document;  // the file or folder in which the job ends instead
  std::function<bool()> isAsGoodAsBefore = [] { return true; };

  void WaitForEndOfJob() const {
    while (!jobEnded) std::this_thread::sleep_for(milliseconds(10));
  }
  // Takes as much as that, at least.
  void TakeSome(int connection, std::size_t count, milliseconds pause = milliseconds(0)) {
    std::string buffer(65536, '\0');
    while (received.size() < count) {
      const ssize_t got = recv(connection, buffer.data(), buffer.size(), 0);
      if (got <= 0) return;
      received.append(buffer, 0, static_cast<std::size_t>(got));
      std::this_thread::sleep_for(pause);
    }
  }
  void TakeAll(int connection) {
    const Received rest = ReceiveAll(connection);
    received += rest.bytes;
    reset = rest.reset;
  }
};

using Behaviour = std::function<void(Stage&, int connection)>;
using Setup = std::function<void(Stage&)>;

// A printer in the network, which looks at its connection after a while.
Setup Printer(Behaviour behave, milliseconds late = milliseconds(0)) {
  return [behave = std::move(behave), late](Stage& stage) {
    stage.printer = [&stage, behave, late] {
      std::this_thread::sleep_for(late);
      const int connection = AcceptFrom(stage.listener);
      behave(stage, connection);
      close(connection);
    };
  };
}

void TakeAll(Stage& stage, int connection) {
  stage.TakeAll(connection);
}

void TakeSlowly(Stage& stage, int connection) {
  stage.TakeSome(connection, MuchMore, milliseconds(5));
  stage.TakeAll(connection);
}

void CloseEarly(Stage& stage, int connection) {
  stage.TakeSome(connection, 1000);
}

void ResetEarly(Stage& stage, int connection) {
  stage.TakeSome(connection, 1000);
  ResetAtClose(connection);
}

void ResetBehindTheJob(Stage& stage, int connection) {
  stage.TakeAll(connection);
  ResetAtClose(connection);
}

void HalfClose(Stage& stage, int connection) {
  shutdown(connection, SHUT_WR);
  stage.TakeAll(connection);
}

void StayOpen(Stage& stage, int connection) {
  stage.TakeAll(connection);
  stage.WaitForEndOfJob();
}

void StopReading(Stage& stage, int connection) {
  stage.TakeSome(connection, 100000);
  stage.WaitForEndOfJob();
  stage.TakeAll(connection);
}

// Goes on talking for longer than the job may take to end.
void TalkOn(Stage& stage, int connection) {
  stage.TakeAll(connection);
  while (!stage.jobEnded) send(connection, "more", 4, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void TalkMuchFirst(Stage& stage, int connection) {
  const std::string talk(MuchMore, 't');
  send(connection, talk.data(), talk.size(), MSG_NOSIGNAL);
  stage.TakeAll(connection);
}

void NobodyListens(Stage& stage) {
  shutdown(stage.listener.Socket(), SHUT_RDWR);
}

// So many connections wait that the printer hears no more.
void HearNoConnection(Stage& stage) {
  listen(stage.listener.Socket(), 0);
  sockaddr_in name = {};
  socklen_t size = sizeof name;
  getsockname(stage.listener.Socket(), reinterpret_cast<sockaddr*>(&name), &size);
  std::vector<int> waiting(3);
  for (int& connection : waiting) {
    connection = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    connect(connection, reinterpret_cast<sockaddr*>(&name), size);
  }
  stage.isAsGoodAsBefore = [waiting] {
    for (const int connection : waiting) close(connection);
    return true;
  };
}

bool OwnMounts() {
  return unshare(CLONE_NEWNS) == 0 &&
         mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// The only name server hears and says nothing. It is waited for behind the job, too.
void SilentNameServer(Stage& stage) {
  constexpr uint16_t NamePort = 53;
  sockaddr_in name = {};
  name.sin_family = AF_INET;
  name.sin_port = htons(NamePort);
  name.sin_addr.s_addr = htonl(0x7F4D3535);
  const int server = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  const std::string servers =
      stage.folder.Add("servers", "nameserver 127.77.53.53\noptions timeout:2 attempts:1\n");
  const std::string order = stage.folder.Add("order", "hosts: files dns\n");
  stage.prepare = [server, name, servers, order] {
    return bind(server, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0 &&
           OwnMounts() &&
           mount(servers.c_str(), "/etc/resolv.conf", nullptr, MS_BIND, nullptr) == 0 &&
           mount(order.c_str(), "/etc/nsswitch.conf", nullptr, MS_BIND, nullptr) == 0;
  };
  stage.destination = "socket://printer.invalid.";
  stage.isAsGoodAsBefore = [server] {
    std::this_thread::sleep_for(milliseconds(2000));
    return close(server) == 0;
  };
}

// A queue whose disk holds no more than 64 KB.
void FullDisk(Stage& stage) {
  stage.document = stage.folder / "spool/queue";
  fs::create_directories(stage.document);
  stage.destination = "queue";
  stage.prepare = [&stage] {
    return OwnMounts() && mount("none", stage.document.c_str(), "tmpfs", 0, "size=64k") == 0;
  };
  stage.isAsGoodAsBefore = [&stage] {
    const HvJobInfo job = Job(0);
    const bool fits = HvDatSendString("$fits", "queue", &job, 0) == HV_OK &&
                      ReadFile(stage.document + "/000001.prn") == "fits";
    umount2(stage.document.c_str(), MNT_DETACH);
    return fits;
  };
}

// Reads a request with its message of attributes and answers it, with a status and one attribute in
// the form of the protocol behind the tag of its group.
void Answer(Stage& stage, const std::string& status, const std::string& attribute) {
  constexpr std::size_t VersionSize = 2;
  const std::string lengthField = "Content-Length: ";
  const int connection = AcceptFrom(stage.listener);
  std::string request;
  std::size_t message = std::string::npos;
  std::size_t length = 0;
  while (message == std::string::npos || request.size() < message + length) {
    char buffer[4096];
    const ssize_t got = recv(connection, buffer, sizeof buffer, 0);
    if (got <= 0) break;
    request.append(buffer, static_cast<std::size_t>(got));
    const std::size_t headEnd = request.find("\r\n\r\n");
    if (headEnd == std::string::npos) continue;
    message = headEnd + 4;
    length = std::stoul(request.substr(request.find(lengthField) + lengthField.size()));
  }
  const std::string reply =
      Bytes("\x01\x01") + status + Bytes("\x00\x00\x00\x01") + attribute + "\x03";
  const std::string answer = "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\n" + lengthField +
                             std::to_string(reply.size()) + "\r\n\r\n" + reply;
  send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
  if (request.size() > message) {
    stage.operations.push_back(static_cast<unsigned char>(request[message + VersionSize + 1]));
  }
  close(connection);
}

// The printer's attributes, Create-Job and, at last, Cancel-Job.
using Operations = std::vector<int>;
const Operations Begun = {0x0B, 0x05};
const Operations Cancelled = {0x0B, 0x05, 0x08};

const std::string Success("\0\0", 2);
const std::string TakesJobs = Bytes("\x04\x22\x00\x19printer-is-accepting-jobs\x00\x01\x01");
const std::string JobNumber = Bytes("\x02\x21\x00\x06job-id\x00\x04\x00\x00\x12\x34");

// A server of CUPS that is asked for operations; a job that it does not begin ends in a file of the
// queue's name.
Setup Server(std::function<void(Stage&)> serve, Operations operations = {}) {
  return [serve = std::move(serve), operations = std::move(operations)](Stage& stage) {
    stage.expectedOperations = operations;
    stage.prepare = CupsServer::IsInstalled;
    SetVariable("CUPS_SERVER", "127.0.0.1:" + std::to_string(stage.listener.Port()));
    stage.destination = "raw";
    stage.document = stage.folder / "raw";
    if (serve != nullptr) stage.printer = [&stage, serve] { serve(stage); };
  };
}

// One that begins the job and treats its document as told.
Setup Documents(Behaviour takeDocument, Operations operations) {
  const auto serve = [takeDocument = std::move(takeDocument)](Stage& stage) {
    Answer(stage, Success, TakesJobs);
    Answer(stage, Success, JobNumber);
    const int document = AcceptFrom(stage.listener);
    takeDocument(stage, document);
    while (!stage.jobEnded) {
      if (WaitForInput(stage.listener.Socket(), milliseconds(10))) {
        Answer(stage, Success, "");
      }
    }
    close(document);
    // Of what came, the bytes of the job.
    std::erase_if(stage.received, [](char byte) { return byte != FailingByte; });
  };
  return Server(serve, std::move(operations));
}

void AnswerGarbage(Stage& stage) {
  const int connection = AcceptFrom(stage.listener);
  send(connection, "\x1B*garbage\r\n\r\n\xFF", 13, MSG_NOSIGNAL);
  close(connection);
}

void RefuseTheJob(Stage& stage) {
  Answer(stage, Success, TakesJobs);
  Answer(stage, Bytes("\x05\x07"), "");  // busy
}

// Against a full window nothing would be sent that could be refused, so that what waits is taken.
void BreakOff(Stage& stage, int document) {
  stage.TakeSome(document, 100000);
  shutdown(document, SHUT_RDWR);
  stage.TakeSome(document, MuchMore);
}

void TakeWhole(Stage& stage, int document) {
  while (!stage.received.ends_with("\r\n0\r\n\r\n")) {
    const std::size_t before = stage.received.size();
    stage.TakeSome(document, before + 1);
    if (stage.received.size() == before) return;
  }
}

void TakeAPart(Stage& stage, int document) {
  stage.TakeSome(document, 100000);
}

void GoAway(Stage& stage, int document) {
  stage.TakeSome(document, 100000);
  NobodyListens(stage);
  BreakOff(stage, document);
}

void RefuseWhole(Stage& stage, int document) {
  TakeWhole(stage, document);
  const std::string refusal = "HTTP/1.1 413 Too Large\r\nContent-Length: 0\r\n\r\n";
  send(document, refusal.data(), refusal.size(), MSG_NOSIGNAL);
}

void BeGone(Stage& stage) {
  Server(nullptr)(stage);
  NobodyListens(stage);
}

enum class Taken { All, Part, Nothing };

struct Case {
  const char* name;
  Setup setup;
  uint32_t code;
  int lastError;  // of the two lines on standard output, 0 for no such lines
  Taken taken;    // of the bytes of the job
  int deadline;   // that it runs into, in seconds; 0 for none
};

void PrintTo(const Case& c, std::ostream* out) {
  *out << c.name;
}

const Case Cases[] = {
    {"PrinterTakesAllAtOnce", Printer(TakeAll), HV_OK, 0, Taken::All, 0},
    {"PrinterAcceptsLate", Printer(TakeAll, milliseconds(1500)), HV_OK, 0, Taken::All, 0},
    {"PrinterReadsSlowly", Printer(TakeSlowly), HV_OK, 0, Taken::All, 0},
    {"PrinterTalksMuchFirst", Printer(TalkMuchFirst), HV_OK, 0, Taken::All, 0},
    {"PrinterHalfCloses", Printer(HalfClose), HV_OK, 0, Taken::All, 0},
    {"PrinterStaysOpen", Printer(StayOpen), HV_OK, 0, Taken::All, 1},
    {"PrinterTalksOn", Printer(TalkOn), HV_OK, 0, Taken::All, 1},
    {"PrinterResetsBehindTheJob", Printer(ResetBehindTheJob), HV_OK, 0, Taken::All, 0},
    {"PrinterClosesEarly", Printer(CloseEarly), Refused, BrokenPipe, Taken::Part, 0},
    {"PrinterResetsInMidJob", Printer(ResetEarly), Refused, BrokenPipe, Taken::Part, 0},
    {"PrinterStopsReading", Printer(StopReading), Refused, TimedOut, Taken::Part, 10},
    {"PrinterHearsNoConnection", HearNoConnection, HV_CANNOT_OPEN, 0, Taken::Nothing, 1},
    {"PrinterIsSwitchedOff", NobodyListens, HV_CANNOT_OPEN, 0, Taken::Nothing, 0},
    {"NameServerIsSilent", SilentNameServer, HV_CANNOT_OPEN, 0, Taken::Nothing, 1},

    {"DiskIsFull", FullDisk, Refused, DiskFull, Taken::Nothing, 0},

    {"ServerIsGone", BeGone, HV_OK, 0, Taken::All, 0},
    {"ServerSaysNothing", Server(nullptr), HV_OK, 0, Taken::All, 1},
    {"ServerAnswersGarbage", Server(AnswerGarbage), HV_OK, 0, Taken::All, 0},
    {"ServerRefusesTheJob", Server(RefuseTheJob, Begun), HV_OK, 0, Taken::All, 0},
    {"ServerBreaksOff", Documents(BreakOff, Cancelled), Refused, BrokenPipe, Taken::Part, 0},
    {"ServerGoesAway", Documents(GoAway, Begun), Refused, BrokenPipe, Taken::Part, 0},
    {"ServerStopsReading", Documents(TakeAPart, Cancelled), Refused, TimedOut, Taken::Part, 10},
    {"ServerNeverConfirms", Documents(TakeWhole, Begun), HV_OK, 0, Taken::All, 1},
    {"ServerRefusesTheWhole", Documents(RefuseWhole, Cancelled), HV_OK, 0, Taken::All, 0},
};

// What the report shows of any chunk of a job that is to fail: the text up to a NUL, if there is one.
std::string ShownText(const Case& c) {
  return std::string(c.lastError == DiskFull ? 5 : ChunkSize, FailingByte);
}

// The bytes of a job, which differ from each other unless it is to fail.
std::string Payload(const Case& c, const Stage& stage) {
  std::string bytes;
  if (c.lastError != 0 || !stage.document.empty()) {
    std::string chunk = ShownText(c);
    chunk.resize(ChunkSize);
    while (bytes.size() < MuchMore) bytes += chunk;
    return bytes;
  }
  bytes.resize(MuchMore);
  uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

std::size_t SizeOf(const std::string& document) {
  if (fs::is_regular_file(document)) return fs::file_size(document);
  std::size_t size = 0;
  for (const auto& entry : fs::directory_iterator(document)) size += fs::file_size(entry.path());
  return size;
}

// "code bytes milliseconds" of the job, and all that is wrong beyond that.
std::string Play(const Case& c) {
  std::signal(SIGPIPE, SIG_DFL);
  const std::size_t handles = OpenHandleCount();
  auto stage = std::make_unique<Stage>();
  c.setup(*stage);
  stage->payload = Payload(c, *stage);
  const std::string source = stage->folder.Add("source", stage->payload);
  if (!stage->prepare()) return "";
  std::thread printer;
  if (stage->printer != nullptr) printer = std::thread(stage->printer);
  const HvJobInfo job = Job(0);
  const auto start = Clock::now();
  const uint32_t code = HvDatSendFile(source.c_str(), stage->destination.c_str(), &job, 0);
  const auto taken = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
  stage->jobEnded = true;
  if (printer.joinable()) printer.join();

  std::size_t bytes = stage->received.size();
  std::string wrong;
  if (fs::exists(stage->document)) {
    bytes = SizeOf(stage->document);
  } else if (c.taken == Taken::All && stage->received != stage->payload) {
    wrong += " other bytes";
  }
  if (stage->reset.value_or(c.taken == Taken::Part) != (c.taken == Taken::Part)) {
    wrong += *stage->reset ? " reset" : " not reset";
  }
  if (stage->operations != stage->expectedOperations) {
    wrong += " operations";
    for (const int operation : stage->operations) wrong += " " + std::to_string(operation);
  }
  if (!stage->isAsGoodAsBefore()) wrong += " no further job";
  stage.reset();
  if (OpenHandleCount() != handles) wrong += " open handles";
  return std::to_string(code) + " " + std::to_string(bytes) + " " + std::to_string(taken.count()) +
         wrong;
}

class HostilePrinter : public testing::TestWithParam<Case> {
 protected:
  static void SetUpTestSuite() {
    std::printf("[  hostile ] %-26s %4s %9s %6s\n", "CASE", "CODE", "BYTES", "MS");
  }
};

TEST_P(HostilePrinter, GetsAllOrTheJobFailsInTime) {
  const Case& c = GetParam();
  const ChildResult result = RunInChild([&] { return Play(c); });
  ASSERT_TRUE(result.finished);
  if (result.answer.empty()) GTEST_SKIP() << "this cannot be had here";
  unsigned code = 0;
  std::size_t bytes = 0;
  long time = 0;
  int end = 0;
  ASSERT_EQ(std::sscanf(result.answer.c_str(), "%u %zu %ld%n", &code, &bytes, &time, &end), 3);
  std::printf("[  hostile ] %-26s %4u %9zu %6ld\n", c.name, code, bytes, time);
  EXPECT_EQ(result.answer.substr(static_cast<std::size_t>(end)), "");
  EXPECT_EQ(code, c.code);
  EXPECT_EQ(bytes == MuchMore, c.taken == Taken::All);
  EXPECT_EQ(bytes == 0, c.taken == Taken::Nothing);
  EXPECT_GE(time, c.deadline * 1000);
  EXPECT_LE(time, (c.deadline + Slack) * 1000);
  if (c.lastError == 0) {
    EXPECT_EQ(result.output, "");
  } else {
    EXPECT_TRUE(IsSpoolerReport(result.output, ShownText(c), c.lastError));
  }
}

INSTANTIATE_TEST_SUITE_P(Each, HostilePrinter, testing::ValuesIn(Cases),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
