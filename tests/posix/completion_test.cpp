// What hvapi prints for the shells and for man, taken by those programs.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>

#include "support/hvapi_program.h"
#include "support/public_header.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

const std::string Pages = TEST_BINARY_FOLDER "/pages";

bool IsInstalled(const std::string& program) {
  return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

TEST(Completion, OffersTheWordsOfThePlace) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  folder.Add("brief.sfp", "");
  folder.Add("hvapi.bash", Hvapi("completion bash").output);
  const struct {
    std::string words;
    std::string offered;
  } cases[] = {
      {"hvapi sen", "send\n"},
      {"hvapi queue ''", "list\nadd\n"},
      {"hvapi send x --la", "--language\n"},
      {"hvapi send --copies 3 x --language p", "ppds\npostscript\npcl\npclxl\n"},
      {"hvapi url home", "homepage\n"},
      {"hvapi font info bri", "brief.sfp\n"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = RunProgram(
        "bash", {"-c", "source ./hvapi.bash && COMP_WORDS=(" + c.words +
                           ") && COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) && _hvapi && printf "
                           "'%s\\n' \"${COMPREPLY[@]}\""});
    EXPECT_EQ(run.output, c.offered) << c.words;
    EXPECT_EQ(run.errors, "") << c.words;
  }
}

TEST(Completion, IsAScriptOfItsShell) {
  const TestFolder folder;
  for (const std::string shell : {"zsh", "fish"}) {
    if (!IsInstalled(shell)) continue;
    const std::string script = folder.Add(shell, Hvapi("completion " + shell).output);
    const ProgramRun run = RunProgram(shell, {"-n", script});
    EXPECT_EQ(run.status, 0) << shell << run.errors;
  }
  if (!IsInstalled("fish")) GTEST_SKIP() << "fish is not installed";
  const std::string ask = "source '" + folder / "fish" + "'; complete -C 'hvapi url home'";
  EXPECT_EQ(RunProgram("fish", {"-c", ask}).output, "homepage\n");
}

TEST(Manual, IsAPageWithoutFaults) {
  const ProgramRun page = Hvapi("manual");
  EXPECT_EQ(page.output.rfind(".TH HVAPI 1 ", 0), 0U);
  EXPECT_NE(page.output.find("\n.SS \"hvapi storage format "), std::string::npos);
  EXPECT_EQ(page.output, ReadFile(Pages + "/hvapi.1"));
  if (!IsInstalled("groff")) GTEST_SKIP() << "groff is not installed";
  for (const std::string name : {"/hvapi.1", "/hvapi.3"}) {
    const ProgramRun run = RunProgram("groff", {"-man", "-ww", "-z", Pages + name});
    EXPECT_EQ(run.status, 0) << name;
    EXPECT_EQ(run.errors, "") << name;
  }
}

TEST(Manual, HasAWordOnEachFunction) {
  std::istringstream lines(ReadFile(Pages + "/hvapi.3"));
  std::set<std::string> described;
  for (std::string line, word; std::getline(lines, line);) {
    if (line.rfind(".B Hv", 0) != 0) continue;
    std::getline(lines, word);
    EXPECT_TRUE(std::isupper(word.front()) != 0 && word.back() == '.') << line << "\n" << word;
    described.insert(line.substr(3));
  }
  EXPECT_EQ(described, DeclaredFunctions(TEST_SOURCE_FOLDER));
}

}  // namespace
