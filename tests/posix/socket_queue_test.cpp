// Queues that are a printer's network port: their addresses, and the job of a program that dies.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "hvapi.h"
#include "support/hvapi_program.h"
#include "support/jobs.h"
#include "support/posix/socket_peer.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

TEST(SocketQueues, AreFoundByTheirAddress) {
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
    SocketPeer numbers(TakeAll);
    print(&numbers, numbers.Destination());
    // The other addresses of the name do not answer.
    SocketPeer name(TakeAll);
    print(&name, "socket://localhost:" + std::to_string(name.Port().Port()));
    // Port 9100 of an address that nobody else has.
    const std::string own = "127.77." + std::to_string(getpid() >> 8 & 0xFF) + "." +
                            std::to_string(1 + (getpid() & 0x7F));
    SocketPeer standard(TakeAll, own, 9100);
    ASSERT_TRUE(standard.Port().IsOpen());
    print(&standard, "socket://" + own);
  }
  if (Listener("::1").IsOpen()) {
    SocketPeer version6(TakeAll, "::1");
    print(&version6, version6.Destination());
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST(SocketQueues, RefuseOtherAddresses) {
  const std::size_t handles = OpenHandleCount();
  const HvJobInfo job = Job(0);
  for (const std::string& address : Words(
           "'' :9100 a/b 'local host' \xE4 localhost: localhost:0 localhost:65536 localhost:+9100 "
           "localhost:99999999999 ::1 [::1 [] [127.0.0.1] [::1]9100 [::1]: [::1]:x")) {
    const std::string destination = "socket://" + address;
    EXPECT_EQ(HvDatSendString("$abc", destination.c_str(), &job, 0), HV_CANNOT_OPEN) << address;
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

// A job that breaks off ends with a reset: what came of it is not taken for the whole.
TEST(SocketQueues, ResetTheConnectionOfAProgramThatDies) {
  // More than the buffers of a connection on one machine hold.
  const TestFolder folder;
  const std::string source = folder.Add("source", std::string(24U << 20, 'x'));
  const HvJobInfo job = Job(0);
  const Listener printer;
  const pid_t child = fork();
  if (child == 0) {
    _exit(static_cast<int>(HvDatSendFile(source.c_str(), printer.Destination().c_str(), &job, 0)));
  }
  const int connection = AcceptFrom(printer);
  ASSERT_GE(connection, 0);
  char first = 0;
  EXPECT_EQ(recv(connection, &first, 1, 0), 1);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(ReceiveAll(connection).reset);
  close(connection);
}

}  // namespace
