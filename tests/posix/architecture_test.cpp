// The plan of the sources: which room may know which, no circles, no system below the rooms, and no
// source that fell out of the build.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// Whom each room may know, besides itself. An arrow that is not here is a change of the plan.
const std::map<std::string, Names> Arrows = {
    {"support", {}},
    {"platform", {"support"}},
    {"api", {"platform", "support"}},
    {"channel", {"api", "platform", "support"}},
    {"config", {"api", "platform", "support"}},
    {"pclxl", {"api", "platform", "support"}},
    {"replies", {"api", "platform", "support"}},
    {"zip", {"api", "platform", "support"}},
    {"web", {"api", "platform", "support", "config"}},
    {"macros", {"api", "platform", "support", "channel", "pclxl"}},
    {"fonts", {"api", "platform", "support", "channel", "fontconv", "macros"}},
    {"fontconv", {"api", "platform", "support", "fonts"}},
};

struct Source {
  std::string name;  // from the folder of all sources, "fonts/font_file.h"
  std::vector<std::string> includes;
  std::vector<std::string> systemIncludes;
  bool hasConditions = false;
};

std::vector<Source> ReadSources(const fs::path& root) {
  std::vector<Source> sources;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    Source source;
    source.name = fs::relative(entry.path(), root).generic_string();
    std::istringstream lines(hvtest::ReadFile(entry.path().string()));
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("#if", 0) == 0) source.hasConditions = true;
      if (line.rfind("#include ", 0) != 0) continue;
      std::string included = line.substr(10, line.find_last_of("\">") - 10);
      // The chief header names its families as they lie beside it, wherever it is installed.
      if (included.rfind("hvapi/", 0) == 0) included.insert(0, "api/");
      (line[9] == '"' ? source.includes : source.systemIncludes).push_back(included);
    }
    sources.push_back(source);
  }
  return sources;
}

const std::vector<Source>& Sources() {
  static const std::vector<Source> sources = ReadSources(TEST_SOURCE_FOLDER "/src");
  return sources;
}

std::string RoomOf(const std::string& name) {
  return name.substr(0, name.find('/'));
}

TEST(Architecture, RoomsKnowOnlyThoseBelowThem) {
  ASSERT_GT(Sources().size(), 100U);
  for (const Source& source : Sources()) {
    const std::string room = RoomOf(source.name);
    ASSERT_EQ(Arrows.count(room), 1U) << source.name;
    for (const std::string& included : source.includes) {
      const std::string other = RoomOf(included);
      EXPECT_TRUE(other == room || Arrows.at(room).count(other) == 1)
          << source.name << " includes " << included;
    }
  }
}

TEST(Architecture, FilesIncludeEachOtherInNoCircle) {
  std::map<std::string, const Source*> byName;
  for (const Source& source : Sources()) byName[source.name] = &source;
  enum class Visit { None, Open, Done };
  std::map<std::string, Visit> visits;
  const std::function<void(const Source&)> walk = [&](const Source& source) {
    visits[source.name] = Visit::Open;
    for (const std::string& included : source.includes) {
      ASSERT_NE(visits[included], Visit::Open) << source.name << " includes " << included;
      const auto found = byName.find(included);
      if (found != byName.end() && visits[included] == Visit::None) walk(*found->second);
    }
    visits[source.name] = Visit::Done;
  };
  for (const Source& source : Sources()) {
    if (visits[source.name] == Visit::None) walk(source);
  }
}

TEST(Architecture, TheSystemIsKnownToThePlatformOnly) {
  const Names ofTheLanguage = {"stddef.h", "stdint.h"};
  for (const Source& source : Sources()) {
    if (RoomOf(source.name) == "platform") continue;
    EXPECT_TRUE(!source.hasConditions || source.name == "api/hvapi.h") << source.name;
    for (const std::string& included : source.systemIncludes) {
      EXPECT_TRUE(included.find('.') == std::string::npos || ofTheLanguage.count(included) == 1)
          << source.name << " includes " << included;
    }
  }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

// Of C functions the rooms call those that compute, the allocator of the caller's memory, the locks
// of the process-wide tables, and what prints the report of a failed spooler write.
TEST(Architecture, RoomsCallNoSystem) {
  std::istringstream functions(
      "memcpy memmove memset memcmp memchr memrchr strlen strchr strcmp bcmp snprintf calloc free "
      "pthread_mutex_lock pthread_mutex_unlock stdout printf fflush");
  const Names allowed{std::istream_iterator<std::string>(functions), {}};
  const std::vector<std::string> ofTheCompiler = {
      "_Z", "__cxa_", "__gxx_", "_Unwind_", "_GLOBAL_OFFSET_TABLE_", "__stack_chk_"};
  std::vector<std::string> words = {"-u", "-A"};
  for (const fs::directory_entry& entry :
       fs::recursive_directory_iterator(TEST_BINARY_FOLDER "/CMakeFiles/hvapi_rooms.dir/src")) {
    if (entry.path().extension() == ".o") words.push_back(entry.path().string());
  }
  ASSERT_GT(words.size(), 50U);
  std::istringstream lines(hvtest::RunProgram("nm", words).output);
  std::size_t symbols = 0;
  for (std::string line; std::getline(lines, line);) {
    ++symbols;
    const std::string symbol = line.substr(line.find_last_of(' ') + 1);
    bool isAllowed = allowed.count(symbol) == 1;
    for (const std::string& prefix : ofTheCompiler) {
      isAllowed = isAllowed || symbol.rfind(prefix, 0) == 0;
    }
    EXPECT_TRUE(isAllowed) << line;
  }
  EXPECT_GT(symbols, 500U);
}

#endif

TEST(Architecture, NoSourceFellOutOfTheBuild) {
  const std::string commands = hvtest::ReadFile(TEST_BINARY_FOLDER "/compile_commands.json");
  std::vector<const char*> folders = {"src", "tests", "tools", "fuzz"};
  // Not every preset has benchmarks.
  if (commands.find("/bench/") != std::string::npos) folders.push_back("bench");
  for (const char* const folder : folders) {
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(fs::path(TEST_SOURCE_FOLDER) / folder)) {
      const std::string name = entry.path().generic_string();
      if (entry.path().extension() != ".cpp") continue;
      // Those of the other system belong to its build, and one of two to a build without a library.
      // So do those that others compile.
      bool elsewhere = false;
      for (const char* part : {"/windows/", "/without_", "/consumer/"}) {
        elsewhere = elsewhere || name.find(part) != std::string::npos;
      }
      EXPECT_TRUE(elsewhere || commands.find("\"" + name + "\"") != std::string::npos) << name;
    }
  }
}

}  // namespace
