// What hvapi does with "-", beside the same done with a file.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// Runs hvapi in a folder, which has "stdin" as a file of that name or as what is read.
ProgramRun RunIn(const TestFolder& folder, const std::string& command, const std::string& input) {
  return RunProgram("sh", {"-c", "cd '" + folder.Path().string() +
                                     "' && cat stdin | " TEST_BINARY_FOLDER "/hvapi " +
                                     command.substr(0, command.find('@')) + input +
                                     command.substr(command.find('@') + 1)});
}

TEST(StandardInput, IsTakenAsAFileIs) {
  const std::string page = ReadFile(TEST_SOURCE_FOLDER "/examples/page.pcl");
  const struct {
    const char* command;  // with @ for the file
    std::string bytes;
    const char* made;  // a file, or "" when the output is all
  } cases[] = {
      {"send @ --to out --pjl --copies 2", page, "out"},
      {"send @ --to out --copies 3", page, "out"},
      {"send @ --to out", "", "out"},
      {"macro create @ --to out --id 5 --filter", page, "out"},
      {"macro download @ --to out --pjl --store --target flash1 --filter", page, "out"},
      {"demo download @ --to out --method esc --target flash1", page, "out"},
      {"unzip @ --to out", ReadFile(TEST_SOURCE_FOLDER "/examples/fonts/oldfonts.zip"),
       "out/PRINTER/SAMPLE.SFP"},
      {"file checksum @", page, ""},
      {"reply options @", std::string("\0\2PP", 4), ""},
      {"reply accounting @ --json", std::string("\0\2PP", 4), ""},
      {"show @", page, ""},
  };
  for (const auto& c : cases) {
    const TestFolder byName;
    const TestFolder asInput;
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.Path().string());
    byName.Add("stdin", c.bytes);
    asInput.Add("stdin", c.bytes);
    const ProgramRun expected = RunIn(byName, c.command, "stdin");
    const ProgramRun run = RunIn(asInput, c.command, "-");
    EXPECT_EQ(expected.status, 0) << c.command << expected.errors;
    EXPECT_EQ(run.status, 0) << c.command << run.errors;
    EXPECT_EQ(run.output, expected.output) << c.command;
    EXPECT_EQ(asInput.Names(), byName.Names()) << c.command;
    if (*c.made != '\0') {
      EXPECT_EQ(ReadFile(asInput / c.made), ReadFile(byName / c.made)) << c.command;
    }
    EXPECT_TRUE(temporary.Names().empty()) << c.command;
  }
}

TEST(StandardInput, IsNamedWhereItIsAtFault) {
  const TestFolder folder;
  folder.Add("stdin", "no macro");
  const ProgramRun run = RunIn(folder, "macro validate @", "-");
  EXPECT_EQ(run.status, 29);
  EXPECT_EQ(run.errors.rfind("hvapi: cannot take standard input for a macro: ", 0), 0U)
      << run.errors;
  const std::string nowhere = "cd '" + folder.Path().string() +
                              "' && TMPDIR=missing " TEST_BINARY_FOLDER
                              "/hvapi send - --to out <stdin";
  EXPECT_EQ(RunProgram("sh", {"-c", nowhere}).errors,
            "hvapi: cannot make a temporary file for standard input (code 3)\n");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"stdin"});
}

}  // namespace
