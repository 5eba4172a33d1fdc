// hvapi at queues of the spool folder.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::ProgramRun;
using hvtest::ReadFile;
using hvtest::RunProgram;
using hvtest::ScopedVariable;
using hvtest::TestFolder;

ProgramRun Hvapi(const std::vector<std::string>& words) {
  return RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

TEST(QueueCommands, MakeListAndPrintToAQueue) {
  const TestFolder folder;
  const ScopedVariable spool("HVAPI_SPOOL", folder / "spool");
  const std::string job = folder.Add("job.pcl", "PAGE");
  EXPECT_EQ(Hvapi({"queue", "add", "lp1"}).output, folder / "spool/lp1" + "\n");
  EXPECT_EQ(Hvapi({"send", job, "--to", "lp1", "--name", "Weekly"}).status, 0);
  EXPECT_EQ(ReadFile(folder / "spool/lp1/000001.prn"), "PAGE");
  EXPECT_NE(ReadFile(folder / "spool/lp1/000001.job").find("name=Weekly\n"), std::string::npos);
  // A queue that is there keeps its documents.
  EXPECT_EQ(Hvapi({"queue", "add", "lp1"}).status, 0);
  fs::create_directory(folder / "spool/another");
  folder.Add("spool/no queue", "a file");

  // Queues of the machine that runs this follow.
  const std::string table = Hvapi({"queue", "list"}).output;
  const std::size_t second = table.find("\nlp1 ");
  ASSERT_NE(second, std::string::npos) << table;
  EXPECT_LT(table.find("\nanother "), second) << table;
  EXPECT_EQ(table.find("no queue"), std::string::npos) << table;
  const std::string list = Hvapi({"queue", "list", "--json"}).output;
  EXPECT_NE(list.find("  {\n    \"name\": \"lp1\",\n    \"kind\": \"spool directory\",\n"
                      "    \"documents\": 1,\n    \"folder\": \"" +
                      folder / "spool/lp1" + "\"\n  }"),
            std::string::npos)
      << list;
}

TEST(QueueCommands, RefuseNamesThatAreNoQueues) {
  const TestFolder folder;
  const ScopedVariable spool("HVAPI_SPOOL", folder / "spool");
  for (const std::string name : {"", ".", "..", "a/b", "a\\b", "c:", "tab\t", "/lp1"}) {
    const ProgramRun run = Hvapi({"queue", "add", name});
    EXPECT_EQ(run.status, 1) << name;
    EXPECT_EQ(run.errors, "hvapi: \"" + name +
                              "\" is no name for a queue: it must not be \".\" or \"..\" nor hold "
                              "\"/\", \"\\\" or \":\" (code 1)\n");
  }
  EXPECT_TRUE(folder.Names().empty());
}

TEST(QueueCommands, LookForTheSpoolFolderWhereTheLibraryDoes) {
  const TestFolder folder;
  const ScopedVariable spool("HVAPI_SPOOL", "");
  const ScopedVariable home("HOME", folder / "home");
  for (const bool hasState : {true, false}) {
    const ScopedVariable state("XDG_STATE_HOME", hasState ? folder / "state" : "");
    const fs::path queue =
        folder / (hasState ? "state/hvapi/spool/lp" : "home/.local/state/hvapi/spool/lp");
    EXPECT_EQ(Hvapi({"queue", "add", "lp"}).output, queue.string() + "\n");
    EXPECT_EQ(Hvapi({"string", "$x", "--to", "lp"}).status, 0);
    EXPECT_EQ(ReadFile(queue / "000001.prn"), "x");
  }
}

TEST(QueueCommands, SayWhyAQueueCannotBeMade) {
  const TestFolder folder;
  const ScopedVariable spool("HVAPI_SPOOL", folder.Path().string());
  folder.Add("taken", "a file");
  const ProgramRun run = Hvapi({"queue", "add", "taken"});
  EXPECT_EQ(run.status, 27);
  EXPECT_EQ(run.errors, "hvapi: cannot make the queue \"" + folder / "taken" +
                            "\": Not a directory (code 27)\n");
  EXPECT_EQ(ReadFile(folder / "taken"), "a file");
}

TEST(QueueCommands, ReportADestinationThatIsFull) {
  const ProgramRun run = Hvapi({"string", "$x", "--to", "/dev/full"});
  EXPECT_EQ(run.status, 7);
  EXPECT_EQ(run.errors, "hvapi: cannot write the destination \"/dev/full\" (code 7)\n");
}

}  // namespace
