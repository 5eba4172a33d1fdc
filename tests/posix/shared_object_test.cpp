// The library as a file: what it exports and what it needs.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using hvtest::ReadFile;
using hvtest::RunProgram;
using Names = std::set<std::string>;

const std::string Library = TEST_BINARY_FOLDER "/libHvApiW32.so";

// The functions that the header declares: the name between HVAPI_CALL and the bracket.
Names DeclaredNames() {
  const std::string header = ReadFile(TEST_SOURCE_FOLDER "/src/api/hvapi.h");
  const std::string mark = "HVAPI_CALL Hv";
  Names names;
  for (std::size_t at = header.find(mark); at != std::string::npos; at = header.find(mark, at)) {
    at += mark.size() - 2;
    names.insert(header.substr(at, header.find('(', at) - at));
  }
  return names;
}

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
  const Names declared = DeclaredNames();
  ASSERT_GE(declared.size(), 17U);
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
