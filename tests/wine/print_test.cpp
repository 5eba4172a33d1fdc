// The print path of Windows: hvapi.exe and HvApiW32.dll print through Wine's spooler to a queue of
// CUPS that leads to a port of this machine.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <future>
#include <string>

#include "support/jobs.h"
#include "support/posix/cups_server.h"
#include "support/posix/socket_peer.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// Runs hvapi.exe in the build folder for Windows; its exit status.
int RunHvapi(const std::string& arguments) {
  const std::string command = std::string("cd '") + WINDOWS_FOLDER + "' && '" + TEST_SOURCE_FOLDER +
                              "/scripts/in-wine' wine '" + WINDOWS_FOLDER + "/hvapi.exe' " +
                              arguments;
  return std::system(command.c_str());
}

// What the first connection sends. It may come late: Wine has to start, and its spooler to spool.
std::string ReceiveDocument(const Listener& listener) {
  constexpr int Patience = 6;  // times that of one wait
  for (int i = 0; i < Patience; ++i) {
    const int connection = AcceptFrom(listener);
    if (connection < 0) continue;
    const std::string bytes = ReceiveAll(connection).bytes;
    close(connection);
    return bytes;
  }
  return {};
}

TEST(WindowsSpooler, PrintsTheBytesAndTheName) {
  ASSERT_TRUE(CupsServer::IsInstalled());
  // Files that both systems see lie below the tree.
  const ScopedVariable temporary("TMPDIR", WINDOWS_FOLDER);
  const TestFolder folder;
  const std::string payload =
      Bytes("\x1B\x45\x00\r\n\x1A\xFF%-12345X") + std::string(3000000, '\xA5');
  const std::string source = folder.Add("source", payload);
  const Listener printer;
  auto document = std::async(std::launch::async, [&] { return ReceiveDocument(printer); });
  const CupsServer server(CupsServer::RawQueue("raw", printer.Destination()));
  ASSERT_TRUE(server.IsRunning());
  const ScopedVariable address("CUPS_SERVER", server.Address());
  EXPECT_EQ(RunHvapi("send '" + source +
                     "' --to raw --pjl --language pcl --copies 3 --name 'Weekly report'"),
            0);
  const std::string printed = document.get();
  const std::string expected =
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Weekly report\"\n@PJL ENTER LANGUAGE = PCL\n"
      "@PJL SET COPIES = 3\n" +
      payload + "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n@PJL RESET\n\x1B%-12345X";
  EXPECT_TRUE(printed == expected)
      << printed.size() << " bytes printed, " << expected.size() << " expected\n"
      << server.Log();
  EXPECT_TRUE(server.WaitForJobRecord(1, Bytes("\x00\x08job-name\x00\x0DWeekly report")));
}

}  // namespace
