// hvapi doctor on machines that lack this or that, and what a terminal changes.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/fake_nbx.h"
#include "support/hvapi_program.h"
#include "support/posix/cups_server.h"
#include "support/posix/socket_peer.h"
#include "support/test_folder.h"
#include "support/zip_builder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

class Doctor : public testing::Test {
 protected:
  // The line of an item, its blanks as one.
  static std::string LineOf(const std::string& item, const std::string& table) {
    const std::size_t at = table.find("\n" + item + " ");
    if (at == std::string::npos) return "no line of " + item + " in " + table;
    std::string line;
    for (const char c : table.substr(at + 1, table.find('\n', at + 1) - at - 1)) {
      if (c != ' ' || line.back() != ' ') line += c;
    }
    return line;
  }

  TestFolder folder_;
  // No scheduler answers at this port.
  Listener listener_;
  ScopedVariable server_{"CUPS_SERVER", "127.0.0.1:1"};
  ScopedVariable spool_{"HVAPI_SPOOL", folder_ / "spool"};
  ScopedVariable library_{"HVAPI_NBXCHAN", ""};
};

TEST_F(Doctor, TellsWhatIsMissing) {
  const ProgramRun run = Hvapi("doctor");
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(LineOf("library", run.output), "library ok 8.3, " TEST_BINARY_FOLDER "/libHvApiW32.so");
  EXPECT_EQ(LineOf("spool folder", run.output),
            "spool folder missing " + folder_ / "spool" + ": \"hvapi queue add NAME\" makes it");
  EXPECT_EQ(LineOf("communication library", run.output),
            "communication library missing NBXCHAN.DLL: not installed; needed for --nbx");
  EXPECT_EQ(LineOf("queues", run.output),
            "queues missing none; needed unless a printer is named by its address");
  EXPECT_NE(run.output.find("\nCUPS "), std::string::npos);
  EXPECT_EQ(run.output.find("fault"), std::string::npos);
  EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(Doctor, ShowsQueuesAndServices) {
  fs::create_directories(folder_ / "spool/lp1");
  const std::string library = TEST_BINARY_FOLDER "/tests/fake_nbx/NBXCHAN.DLL";
  const ScopedVariable named("HVAPI_NBXCHAN", library);
  const ProgramRun run = Hvapi("doctor");
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(LineOf("spool folder", run.output), "spool folder ok " + folder_ / "spool");
  EXPECT_EQ(LineOf("communication library", run.output), "communication library ok " + library);
  EXPECT_EQ(LineOf("queues", run.output), "queues ok lp1");

  const std::string json = Hvapi("doctor --json").output;
  EXPECT_EQ(json.find("{\n  \"version\": \"8.3\",\n"), 0U) << json;
  for (const char* const part :
       {"{\n      \"item\": \"spool folder\",\n      \"state\": \"ok\",\n", "\"name\": \"lp1\""}) {
    EXPECT_NE(json.find(part), std::string::npos) << json;
  }
}

TEST_F(Doctor, FindsTheSchedulerOfCups) {
  if (!CupsServer::IsInstalled()) GTEST_SKIP() << "the scheduler of CUPS is not installed";
  const CupsServer server(CupsServer::RawQueue("office", listener_.Destination()));
  ASSERT_TRUE(server.IsRunning());
  const ScopedVariable address("CUPS_SERVER", server.Address());
  const ProgramRun run = Hvapi("doctor");
  EXPECT_EQ(LineOf("CUPS", run.output).find("CUPS ok /"), 0U) << run.output;
  EXPECT_EQ(LineOf("queues", run.output), "queues ok office");
}

TEST_F(Doctor, TellsWhatIsSetUpAndCannotBeUsed) {
  const std::string file = folder_.Add("spool", "no directory");
  ProgramRun run = Hvapi("doctor");
  EXPECT_EQ(run.status, 36);
  EXPECT_EQ(LineOf("spool folder", run.output),
            "spool folder fault " + file + " is no directory that can be read");
  EXPECT_EQ(run.errors, Sentence("spool folder cannot be used", 36));

  fs::remove(file);
  for (const auto& [library, problem] :
       {std::pair{folder_ / "none", ": cannot be loaded; needed for --nbx"},
        {std::string(TEST_BINARY_FOLDER "/tests/fake_nbx_incomplete/NBXCHAN.DLL"),
         ": has no function NbxGetPrtInfo; needed for --nbx"}}) {
    const ScopedVariable named("HVAPI_NBXCHAN", library);
    run = Hvapi("doctor");
    EXPECT_EQ(run.status, 36);
    EXPECT_EQ(LineOf("communication library", run.output),
              "communication library fault " + library + problem);
  }
}

TEST(Progress, IsShownToATerminalUnlessItIsToBeQuiet) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  folder.Add("one.zip", BuildZip({Stored("page", "content")}).bytes);
  // A terminal of its own, of which it copies what is shown.
  const auto atTerminal = [](const std::string& options) {
    const std::string command = TEST_BINARY_FOLDER "/hvapi unzip one.zip --to out" + options;
    return RunProgram("script", {"-qec", command, "/dev/null"});
  };
  const ProgramRun shown = atTerminal("");
  if (shown.status != 0) GTEST_SKIP() << "there is no terminal to be had";
  EXPECT_NE(shown.output.find("100 %  page"), std::string::npos) << shown.output;
  EXPECT_EQ(atTerminal(" --quiet").output, "");
  EXPECT_EQ(ReadFile("out/page"), "content");
}

}  // namespace
