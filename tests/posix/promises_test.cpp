// docs/promises.md names tests that exist.

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

// The tests of a program, "Suite.Name".
std::vector<std::string> TestsOf(const std::string& program) {
  const hvtest::ProgramRun run = hvtest::RunProgram(program, {"--gtest_list_tests"});
  EXPECT_EQ(run.status, 0) << program;
  std::istringstream lines(run.output);
  std::vector<std::string> tests;
  std::string suite;
  for (std::string line; std::getline(lines, line);) {
    const std::string name = line.substr(0, line.find("  #"));
    if (name.starts_with("  ")) {
      tests.push_back(suite + name.substr(2));
    } else {
      suite = name;
    }
  }
  return tests;
}

bool PicksAny(const std::string& pattern, const std::vector<std::string>& tests) {
  return std::any_of(tests.begin(), tests.end(), [&](const std::string& test) {
    return fnmatch(pattern.c_str(), test.c_str(), 0) == 0;
  });
}

TEST(Promises, AreProvedByTestsThatExist) {
  const std::string page = hvtest::ReadFile(TEST_SOURCE_FOLDER "/docs/promises.md");
  const std::regex command("build/release/(hvapi\\w*) --gtest_filter='([^']*)'");
  std::map<std::string, std::vector<std::string>> programs;
  std::size_t commands = 0;
  for (std::sregex_iterator found(page.begin(), page.end(), command), end; found != end; ++found) {
    ++commands;
    const std::string program = TEST_BINARY_FOLDER "/" + (*found)[1].str();
    // A build of some targets has not all of the programs.
    if (!std::filesystem::exists(program)) continue;
    if (programs.count(program) == 0) programs[program] = TestsOf(program);
    std::istringstream names((*found)[2].str());
    for (std::string name; std::getline(names, name, ':');) {
      EXPECT_TRUE(PicksAny(name, programs[program])) << program << " " << name;
    }
  }
  EXPECT_GT(commands, 10U);
}

TEST(Promises, AreProvedByScriptsThatExist) {
  const std::string page = hvtest::ReadFile(TEST_SOURCE_FOLDER "/docs/promises.md");
  const std::regex script("`(scripts/[a-z-]+)");
  std::size_t scripts = 0;
  for (std::sregex_iterator found(page.begin(), page.end(), script), end; found != end; ++found) {
    ++scripts;
    EXPECT_TRUE(std::filesystem::exists(TEST_SOURCE_FOLDER "/" + (*found)[1].str()))
        << found->str();
  }
  EXPECT_GT(scripts, 3U);
}

}  // namespace
