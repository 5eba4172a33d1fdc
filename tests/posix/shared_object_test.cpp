// The library as a file: what it exports and what it needs.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "support/public_header.h"
#include "support/run_program.h"

namespace {

using namespace hvtest;
using Names = std::set<std::string>;

const std::string Library = TEST_BINARY_FOLDER "/libHvApiW32.so";

// The last word of each line.
Names LastWords(const std::string& text) {
  Names names;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    names.insert(line.substr(line.find_last_of(' ') + 1));
  }
  return names;
}

TEST(SharedObject, ExportsWhatTheHeaderDeclaresAndNothingElse) {
  const Names declared = DeclaredFunctions(TEST_SOURCE_FOLDER);
  ASSERT_EQ(declared.size(), 67U);
  EXPECT_EQ(LastWords(RunProgram("nm", {"-D", "--defined-only", Library}).output), declared);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

TEST(SharedObject, NeedsTheLanguageRuntimeOnly) {
  const Names runtime = {"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1", "libc.so.6"};
  std::istringstream lines(RunProgram("objdump", {"-p", Library}).output);
  std::size_t needed = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.find(" NEEDED ") == std::string::npos) continue;
    ++needed;
    EXPECT_EQ(runtime.count(line.substr(line.find_last_of(' ') + 1)), 1U) << line;
  }
  EXPECT_GE(needed, 1U);
}

TEST(SharedObject, RunsNothingWhenItIsLoaded) {
  const std::string symbols = RunProgram("nm", {Library}).output;
  EXPECT_NE(symbols.find("HvDatSendFile"), std::string::npos);
  std::istringstream lines(symbols);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(line.find("_GLOBAL__sub_I"), std::string::npos) << line;
  }
}

#endif

}  // namespace
