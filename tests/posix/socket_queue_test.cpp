// Queues that are a printer's network port, against printers that behave in their own ways.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/posix/socket_peer.h"
#include "support/spooler_report.h"
#include "support/test_folder.h"

namespace {

using hvtest::Job;
using hvtest::Listener;
using hvtest::OpenHandleCount;
using hvtest::Received;
using hvtest::ScopedVariable;
using hvtest::SocketPeer;
using hvtest::TestFolder;
using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

// More than the buffers of a connection on one machine hold.
constexpr std::size_t MuchMore = 24U << 20;

class SocketQueues : public testing::Test {
 protected:
  std::string AddSource(std::size_t size) {
    std::string bytes(size, '\0');
    uint32_t state = 1;
    for (char& byte : bytes) {
      state = state * 1664525U + 1013904223U;
      byte = static_cast<char>(state >> 24);
    }
    source_ = folder_.Add("source", bytes);
    return bytes;
  }
  void AddSourceOf(char byte) { source_ = folder_.Add("source", std::string(MuchMore, byte)); }

  // Sends the source as it is.
  uint32_t Print(const std::string& destination) {
    const HvJobInfo job = Job(0);
    return HvDatSendFile(source_.c_str(), destination.c_str(), &job, 0);
  }

  // The same, for a source of x that is to fail while it is sent: checks the code and the report.
  void ExpectRefusal(const std::string& destination, int lastError) {
    testing::internal::CaptureStdout();
    const uint32_t result = Print(destination);
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_EQ(result, HV_PRINTER_REFUSED);
    EXPECT_TRUE(hvtest::IsSpoolerReport(output, std::string(2048, 'x'), lastError));
  }

  TestFolder folder_;
  std::string source_;
};

TEST_F(SocketQueues, AreFoundByTheirAddress) {
  const std::size_t handles = OpenHandleCount();
  const HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "Setup");
  const auto print = [&](SocketPeer* peer, const std::string& destination) {
    EXPECT_EQ(HvGenResource(STORAGE_FORMAT, destination.c_str(), &job, STORAGE_DEVICE_DISK1),
              HV_OK);
    EXPECT_EQ(peer->Finish().bytes,
              "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Setup\"\n@PJL ENTER LANGUAGE = PCL\n"
              "\x1B%-12345X@PJL QFORMAT DEVICE = disk1\n"
              "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X");
    EXPECT_FALSE(peer->Finish().reset);
  };
  {
    SocketPeer numbers(hvtest::TakeAll);
    print(&numbers, numbers.Destination());
    // The other addresses of the name do not answer.
    SocketPeer name(hvtest::TakeAll);
    print(&name, "socket://localhost:" + std::to_string(name.Port().Port()));
    // Port 9100 of an address that nobody else has.
    const std::string own = "127.77." + std::to_string(getpid() >> 8 & 0xFF) + "." +
                            std::to_string(1 + (getpid() & 0x7F));
    SocketPeer standard(hvtest::TakeAll, own, 9100);
    ASSERT_TRUE(standard.Port().IsOpen());
    print(&standard, "socket://" + own);
  }
  if (Listener("::1").IsOpen()) {
    SocketPeer version6(hvtest::TakeAll, "::1");
    print(&version6, version6.Destination());
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST_F(SocketQueues, RefuseOtherAddresses) {
  const char* const addresses[] = {
      "socket://",
      "socket://:9100",
      "socket://localhost:",
      "socket://localhost:0",
      "socket://localhost:65536",
      "socket://localhost:99999999999",
      "socket://localhost:+9100",
      "socket://localhost:9100/",
      "socket://localhost:91 00",
      "socket://local host",
      "socket://a/b",
      "socket://::1",
      "socket://[::1",
      "socket://[]",
      "socket://[::1]9100",
      "socket://[localhost]",
      "socket://[127.0.0.1]",
      "socket://[::1]:",
      "socket://[::1]:x",
      "socket://u@localhost",
      "socket:/",
      "socket://\xE4",
  };
  const TestFolder work;
  const std::size_t handles = OpenHandleCount();
  const HvJobInfo job = Job(0);
  for (const char* address : addresses) {
    EXPECT_EQ(HvDatSendString("$abc", address, &job, 0), HV_CANNOT_OPEN) << address;
  }
  // Nobody listens at a port that is taken.
  const Listener closed;
  shutdown(closed.Socket(), SHUT_RDWR);
  EXPECT_EQ(HvDatSendString("$abc", closed.Destination().c_str(), &job, 0), HV_CANNOT_OPEN);
  EXPECT_EQ(OpenHandleCount(), handles + 1);
}

TEST_F(SocketQueues, CarryEveryByteHoweverThePrinterTakesThem) {
  const struct {
    const char* label;
    SocketPeer::Script script;
  } cases[] = {
      {"at once", hvtest::TakeAll},
      {"late",
       [](int connection, Received* received) {
         std::this_thread::sleep_for(milliseconds(1500));
         *received = hvtest::ReceiveAll(connection);
       }},
      {"after having its say",
       [](int connection, Received* received) {
         const std::string talk(MuchMore, 't');
         std::size_t said = 0;
         while (said < talk.size()) {
           const ssize_t sent = send(connection, &talk[said], talk.size() - said, MSG_NOSIGNAL);
           if (sent <= 0) return;
           said += static_cast<std::size_t>(sent);
         }
         *received = hvtest::ReceiveAll(connection);
       }},
      {"with nothing to say",
       [](int connection, Received* received) {
         shutdown(connection, SHUT_WR);
         *received = hvtest::ReceiveAll(connection);
       }},
  };
  const std::string bytes = AddSource(MuchMore);
  const std::size_t handles = OpenHandleCount();
  const ScopedVariable timeout("HVAPI_TIMEOUT", "1");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    SocketPeer peer(c.script);
    EXPECT_EQ(Print(peer.Destination()), HV_OK);
    EXPECT_TRUE(peer.Finish().bytes == bytes) << peer.Finish().bytes.size();
    EXPECT_FALSE(peer.Finish().reset);
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST_F(SocketQueues, ReportAPrinterThatGoesAway) {
  const SocketPeer::Script scripts[] = {
      [](int connection, Received* /*received*/) {
        char buffer[1000];
        recv(connection, buffer, sizeof buffer, 0);
      },
      [](int connection, Received* /*received*/) {
        char first = 0;
        recv(connection, &first, 1, 0);
        hvtest::ResetAtClose(connection);
      },
  };
  AddSourceOf('x');
  const std::size_t handles = OpenHandleCount();
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  for (const SocketPeer::Script& script : scripts) {
    SocketPeer peer(script);
    ExpectRefusal(peer.Destination(), 109);
  }
  std::signal(SIGPIPE, before);
  EXPECT_EQ(OpenHandleCount(), handles);
}

// A job that breaks off ends with a reset: what came of it is not taken for the whole.
TEST_F(SocketQueues, ResetTheConnectionOfAProgramThatDies) {
  AddSource(MuchMore);
  const Listener printer;
  const pid_t child = fork();
  if (child == 0) _exit(static_cast<int>(Print(printer.Destination())));
  const int connection = hvtest::AcceptFrom(printer);
  ASSERT_GE(connection, 0);
  char first = 0;
  EXPECT_EQ(recv(connection, &first, 1, 0), 1);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(hvtest::ReceiveAll(connection).reset);
  close(connection);
}

class SocketDeadlines : public SocketQueues {
 protected:
  // Checks how long something takes: that many seconds, and not many more.
  template <typename Work>
  static void ExpectToTake(seconds time, Work work) {
    const auto start = Clock::now();
    work();
    const auto taken = Clock::now() - start;
    EXPECT_GE(taken, time);
    EXPECT_LT(taken, time + seconds(5));
  }

  ScopedVariable timeout_{"HVAPI_TIMEOUT", "1"};
};

TEST_F(SocketDeadlines, OfConnecting) {
  AddSource(1);
  // A printer with so many connections waiting that it hears no more.
  const Listener busy;
  listen(busy.Socket(), 0);
  sockaddr_storage name = {};
  socklen_t size = sizeof name;
  getsockname(busy.Socket(), reinterpret_cast<sockaddr*>(&name), &size);
  int waiting[3];
  for (int& connection : waiting) {
    connection = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    connect(connection, reinterpret_cast<sockaddr*>(&name), size);
  }
  const std::size_t handles = OpenHandleCount();
  ExpectToTake(seconds(1), [&] { EXPECT_EQ(Print(busy.Destination()), HV_CANNOT_OPEN); });
  EXPECT_EQ(OpenHandleCount(), handles);
  for (const int connection : waiting) close(connection);
}

// The document has gone out whole; a printer that does not close is left with it in time, whatever
// it goes on to say.
TEST_F(SocketDeadlines, OfEndingADocument) {
  const std::string bytes = AddSource(5000);
  const std::size_t handles = OpenHandleCount();
  for (const milliseconds pause : {milliseconds(3000), milliseconds(100), milliseconds(0)}) {
    SCOPED_TRACE(pause.count());
    SocketPeer peer([pause](int connection, Received* received) {
      *received = hvtest::ReceiveAll(connection);
      const auto end = Clock::now() + milliseconds(2500);
      while (Clock::now() < end) {
        std::this_thread::sleep_for(pause);
        if (send(connection, "more", 4, MSG_NOSIGNAL | MSG_DONTWAIT) < 0 && errno != EAGAIN) break;
      }
    });
    ExpectToTake(seconds(1), [&] { EXPECT_EQ(Print(peer.Destination()), HV_OK); });
    EXPECT_EQ(peer.Finish().bytes, bytes);
    EXPECT_FALSE(peer.Finish().reset);
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST_F(SocketDeadlines, OfAPrinterThatTakesNothing) {
  AddSourceOf('x');
  const std::size_t handles = OpenHandleCount();
  const Listener printer;
  ExpectToTake(seconds(10), [&] { ExpectRefusal(printer.Destination(), 1460); });
  const int connection = hvtest::AcceptFrom(printer);
  EXPECT_TRUE(hvtest::ReceiveAll(connection).reset);
  close(connection);
  EXPECT_EQ(OpenHandleCount(), handles + 1);
}

}  // namespace
