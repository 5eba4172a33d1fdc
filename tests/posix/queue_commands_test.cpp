// hvapi at queues of the spool folder.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/hvapi_program.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

class QueueCommands : public testing::Test {
 protected:
  const TestFolder folder_;
  const ScopedCurrentFolder here_{folder_.Path()};
  const ScopedVariable spool_{"HVAPI_SPOOL", folder_ / "spool"};
};

TEST_F(QueueCommands, MakeListAndPrintToAQueue) {
  folder_.Add("job.pcl", "PAGE");
  EXPECT_EQ(Hvapi("queue add lp1").output, folder_ / "spool/lp1" + "\n");
  EXPECT_EQ(Hvapi("send job.pcl --to lp1 --name Weekly").status, 0);
  EXPECT_EQ(ReadFile("spool/lp1/000001.prn"), "PAGE");
  EXPECT_NE(ReadFile("spool/lp1/000001.job").find("name=Weekly\n"), std::string::npos);
  // A queue that is there keeps its documents.
  EXPECT_EQ(Hvapi("queue add lp1").status, 0);
  fs::create_directory("spool/another");
  folder_.Add("spool/no queue", "a file");

  // Queues of the machine that runs this follow.
  const std::string table = Hvapi("queue list").output;
  const std::size_t second = table.find("\nlp1 ");
  ASSERT_NE(second, std::string::npos) << table;
  EXPECT_LT(table.find("\nanother "), second) << table;
  EXPECT_EQ(table.find("no queue"), std::string::npos) << table;
  const std::string list = Hvapi("queue list --json").output;
  EXPECT_NE(list.find("  {\n    \"name\": \"lp1\",\n    \"kind\": \"spool directory\",\n"
                      "    \"documents\": 1,\n    \"folder\": \"" +
                      folder_ / "spool/lp1" + "\"\n  }"),
            std::string::npos)
      << list;
}

TEST_F(QueueCommands, TellWhatCannotBeAQueueOrTakesNothing) {
  for (const std::string name : {"", ".", "..", "a/b", "a\\b", "c:", "tab\t", "/lp1"}) {
    EXPECT_EQ(Hvapi("queue add '" + name + "'").errors,
              Sentence("\"" + name +
                           "\" is no name for a queue: it must not be \".\" or \"..\" nor "
                           "hold \"/\", \"\\\" or \":\"",
                       1));
  }
  EXPECT_TRUE(folder_.Names().empty());
  EXPECT_EQ(Hvapi("string $x --to /dev/full").errors,
            Sentence("cannot write the destination \"/dev/full\"", 7));
  folder_.Add("spool", "a file");
  const ProgramRun run = Hvapi("queue add taken");
  EXPECT_EQ(run.status, 27);
  EXPECT_EQ(
      run.errors,
      Sentence("cannot make the queue \"" + folder_ / "spool/taken" + "\": Not a directory", 27));
  EXPECT_EQ(ReadFile("spool"), "a file");
}

TEST_F(QueueCommands, LookForTheSpoolFolderWhereTheLibraryDoes) {
  const ScopedVariable spool("HVAPI_SPOOL", "");
  const ScopedVariable home("HOME", folder_ / "home");
  for (const bool hasState : {true, false}) {
    const ScopedVariable state("XDG_STATE_HOME", hasState ? folder_ / "state" : "");
    const fs::path queue =
        folder_ / (hasState ? "state/hvapi/spool/lp" : "home/.local/state/hvapi/spool/lp");
    EXPECT_EQ(Hvapi("queue add lp").output, queue.string() + "\n");
    EXPECT_EQ(Hvapi("string $x --to lp").status, 0);
    EXPECT_EQ(ReadFile(queue / "000001.prn"), "x");
  }
}

}  // namespace
