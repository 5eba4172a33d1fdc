// File utilities through their exports.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;
using namespace std::string_literals;

// A name with a drive letter, whatever the system's own names begin with.
std::string WithDrive(const std::string& name) {
  return fs::path(name).has_root_name() ? name : "c:" + name;
}

// A name in `folder` that is `length` characters long as a whole, of components that fit a volume.
std::string LongName(const TestFolder& folder, std::size_t length) {
  std::string name = folder.Path().string();
  while (length - name.size() > 120) {
    name += "/" + std::string(99, 'd');
    fs::create_directory(name);
  }
  return name + "/" + std::string(length - name.size() - 1, 'f');
}

class Files : public testing::Test {
 protected:
  const TestFolder folder_;
};
using FilCopy = Files;
using FilBackup = Files;
using FilModify = Files;
using FilChecksum = Files;
using FilMakePath = Files;

TEST_F(Files, AreFoundByNamesAndPatterns) {
  folder_.Add("B.pcl", std::string(20, 'b'));
  folder_.Add("a.PCL", std::string(10, 'a'));
  folder_.Add("c", std::string(30, 'c'));
  fs::create_directory(folder_ / "0.pcl");
  // size: of the first match that is a file
  const std::tuple<std::string, uint32_t, uint32_t> cases[] = {
      {folder_ / "b.pcl", 1, 20},     {folder_.Path().string() + "\\0.PCL\\../A.pcl", 1, 10},
      {folder_ / "*.pcl", 0, 10},     {folder_ / "?.pcl", 0, 10},
      {folder_ / "*.*", 0, 10},       {folder_ / "c*", 0, 30},
      {folder_ / "x*", 0, 0},         {folder_ / "none", 0, 0},
      {folder_ / "0.pcl", 1, 0},      {folder_.Path().string(), 1, 0},
      {LongName(folder_, 261), 0, 0}, {"", 0, 0},
      {folder_ / "0.PCL\\", 1, 0},    {folder_ / "none/x", 0, 0},
  };
  for (const auto& [name, exists, size] : cases) {
    EXPECT_EQ(HvFilExists(name.c_str()), exists) << name;
    EXPECT_EQ(HvFilQuerySize(name.c_str()), size) << name;
  }
  EXPECT_EQ(HvFilExists(nullptr), 0U);
  EXPECT_EQ(HvFilQuerySize(nullptr), 0U);
}

uint32_t Copy(const std::string& source, const std::string& target) {
  return HvFilCopy(source.c_str(), target.c_str());
}

TEST_F(FilCopy, CopiesAndReplaces) {
  const std::string bytes("one\r\n\x1A\0two", 10);
  const std::string source = folder_.Add("Source", bytes);
  const std::string target = folder_ / "target";
  EXPECT_EQ(Copy(source, target), HV_OK);
  EXPECT_EQ(ReadFile(target), bytes);
  folder_.Add("target", std::string(100000, 'x'));
  EXPECT_EQ(Copy(source, target), HV_OK);
  EXPECT_EQ(ReadFile(target), bytes);
  // Copied onto itself a file keeps its content.
  Copy(source, source);
  Copy(source, folder_ / "SOURCE");
  EXPECT_EQ(ReadFile(source), bytes);
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"Source", "target"}));
  EXPECT_EQ(Copy(source, LongName(folder_, 260)), HV_OK);
}

TEST_F(FilCopy, GivesTheCodeOfTheFailureAndKeepsTheTarget) {
  const std::string source = folder_.Add("source", "new");
  const std::string target = folder_.Add("target", "old");
  const std::string directory = folder_ / "directory";
  fs::create_directory(directory);
  const std::string tooLong(261, 'x');
  const std::tuple<std::string, std::string, uint32_t> cases[] = {
      {folder_ / "none", target, HV_NOT_FOUND},   {folder_ / "none/x", target, HV_NOT_FOUND},
      {source, folder_ / "none/x", HV_NOT_FOUND}, {tooLong, target, HV_BAD_ARGUMENT},
      {source, tooLong, HV_BAD_ARGUMENT},         {directory, target, HV_ACCESS_DENIED},
      {source, directory, HV_ACCESS_DENIED},
  };
  for (const auto& [from, to, code] : cases) {
    EXPECT_EQ(Copy(from, to), code) << from << " " << to;
    EXPECT_EQ(ReadFile(target), "old") << from << " " << to;
  }
  EXPECT_EQ(Copy("", target), HV_NOT_FOUND);
  EXPECT_EQ(Copy(source, ""), HV_NOT_FOUND);
  EXPECT_EQ(HvFilCopy(nullptr, target.c_str()), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilCopy(source.c_str(), nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"directory", "source", "target"}));
}

TEST_F(FilBackup, TakesTheFirstFreeNumber) {
  const std::pair<const char*, const char*> cases[] = {
      {"name.txt", "name.003"},  // beside name.001 and name.002
      {"plain", "plain.001"},
      {"two.dots.ini", "two.dots.001"},
      {".profile", ".001"},
  };
  folder_.Add("name.001", "1");
  folder_.Add("name.002", "2");
  for (const auto& [name, expected] : cases) {
    const std::string source = folder_.Add(name, name);
    char backup[260] = "";
    EXPECT_EQ(HvFilBackup(source.c_str(), backup), HV_OK) << name;
    EXPECT_EQ(backup, folder_ / expected);
    EXPECT_EQ(ReadFile(folder_ / expected), name);
  }
}

TEST_F(FilBackup, StopsAt998) {
  const std::string source = folder_.Add("f.ini", "");
  char name[16];
  for (int n = 1; n <= 997; ++n) {
    std::snprintf(name, sizeof name, "f.%03d", n);
    folder_.Add(name, "");
  }
  char backup[260] = "";
  EXPECT_EQ(HvFilBackup(source.c_str(), backup), HV_OK);
  EXPECT_EQ(backup, folder_ / "f.998");
  EXPECT_EQ(HvFilBackup(source.c_str(), backup), HV_LIMIT_REACHED);
  EXPECT_EQ(backup, folder_ / "f.998");
  EXPECT_EQ(HvFilExists((folder_ / "f.999").c_str()), 0U);
}

TEST_F(FilBackup, RefusesWhatItCannotBackUp) {
  char backup[260] = "";
  const std::string fits = LongName(folder_, 255);
  const std::string doesNot = LongName(folder_, 256);
  WriteFile(fits, "f");
  WriteFile(doesNot, "d");
  EXPECT_EQ(HvFilBackup((folder_ / "none").c_str(), backup), HV_UNUSABLE_FILE);
  EXPECT_EQ(HvFilBackup("", backup), HV_UNUSABLE_FILE);
  EXPECT_EQ(HvFilBackup(nullptr, backup), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilBackup(fits.c_str(), nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilBackup(folder_.Path().string().c_str(), backup), HV_ACCESS_DENIED);
  EXPECT_EQ(HvFilBackup(fits.c_str(), backup), HV_OK);
  EXPECT_EQ(backup, fits + ".001");
  EXPECT_EQ(HvFilBackup(doesNot.c_str(), backup), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilExists((doesNot + ".001").c_str()), 0U);
}

// What a line callback saw, and what it makes of each line: a printf format.
struct Editor {
  const char* makes;
  std::vector<std::string> seen = {};
};

uint32_t HVAPI_CALL Edit(char* line, uintptr_t argument) {
  Editor* editor = reinterpret_cast<Editor*>(argument);
  editor->seen.emplace_back(line);
  std::snprintf(line, 2048, editor->makes, editor->seen.back().c_str());
  return 99;  // looked at by nobody
}

TEST_F(FilModify, RewritesLineByLine) {
  const std::string piece(2047, 'l');
  const std::tuple<const char*, std::string, std::vector<std::string>, std::string> cases[] = {
      // A lone CR is kept, 0x1A ends the text.
      {"%s", "a\nb\rc\r\nd\x1A\ne", {"a\n", "b\rc\n", "d"}, "a\r\nb\rc\r\nd"},
      {"%s", "", {}, ""},
      {"%.0s", "a\nb\n", {"a\n", "b\n"}, ""},  // drops all lines
      {"> %s", "a\nb", {"a\n", "b"}, "> a\r\n> b"},
      {"%s", piece + piece + "ll\n", {piece, piece, "ll\n"}, piece + piece + "ll\r\n"},
  };
  for (const auto& [makes, before, seen, after] : cases) {
    const TestFolder temporary;
    const ScopedVariable tmp("TMP", temporary.Path().string());
    const std::string path = folder_.Add("text", before);
    Editor editor = {makes};
    const std::size_t handles = OpenHandleCount();
    EXPECT_EQ(HvFilModify(path.c_str(), reinterpret_cast<uintptr_t>(&editor), Edit), HV_OK);
    EXPECT_EQ(OpenHandleCount(), handles) << before;
    EXPECT_EQ(editor.seen, seen) << before;
    EXPECT_EQ(ReadFile(path), after) << before;
    EXPECT_EQ(temporary.Names(), std::vector<std::string>{}) << before;
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"text"}) << before;
  }
}

TEST_F(FilModify, RefusesBadArgumentsAndMissingFiles) {
  const ScopedVariable tmp("TMP", folder_.Path().string());
  Editor editor = {"%s"};
  const uintptr_t argument = reinterpret_cast<uintptr_t>(&editor);
  EXPECT_EQ(HvFilModify(nullptr, argument, Edit), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilModify(std::string(261, 'x').c_str(), argument, Edit), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilModify((folder_ / "none").c_str(), argument, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilModify((folder_ / "none").c_str(), argument, Edit), HV_CANNOT_OPEN);
  EXPECT_EQ(HvFilModify(folder_.Path().string().c_str(), argument, Edit), HV_CANNOT_OPEN);
  EXPECT_TRUE(editor.seen.empty());
  EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(FilChecksum, AddsTheWordsOfAFile) {
  const std::tuple<std::string, uint32_t, uint16_t> cases[] = {
      {"\1\0\2\0"s, 0, 0xFFFD},
      {"\1\0\2\0"s, 1, 0xFFFE},
      {"\1\0\2\0"s, 2, 0xFFFF},
      {"\1\0\2\0"s, 0x10002, 0xFFFF},  // 16 bits of it are read
      {"\1\2\3", 0, 0xFBFC},
      {"\5", 0, 0xFFFB},
      {"", 0, 0},
      // An odd byte behind what is read at once.
      {std::string(32766, '\0') + "\0\x12\x34"s, 0, 0xDBCC},
      // The number of a word has 16 bits: words 1 and 65537 are skipped alike.
      {"\1\0"s + std::string(131070, '\0') + "\2\0\4\0"s, 1, 0xFFFC},
  };
  for (const auto& [bytes, skipWord, expected] : cases) {
    uint16_t sum = 0xAAAA;
    EXPECT_EQ(HvFilChecksum(folder_.Add("f", bytes).c_str(), 0, skipWord, &sum), HV_OK);
    EXPECT_EQ(sum, expected) << bytes.size() << " bytes, skipping " << skipWord;
  }
}

TEST_F(FilChecksum, LeavesTheSumAloneWhenNothingCanBeRead) {
  uint16_t sum = 0xAAAA;
  EXPECT_EQ(HvFilChecksum(nullptr, 0, 0, &sum), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum("", 0, 0, &sum), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum(std::string(261, 'x').c_str(), 0, 0, &sum), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum((folder_ / "none").c_str(), 0, 0, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum((folder_ / "none").c_str(), 0, 0, &sum), HV_CANNOT_OPEN);
  EXPECT_EQ(HvFilChecksum(folder_.Path().string().c_str(), 0, 0, &sum), HV_CANNOT_OPEN);
  EXPECT_EQ(sum, 0xAAAA);
  // A handle that is none gives a read error.
  EXPECT_EQ(HvFilChecksum(nullptr, 9999, 0, &sum), HV_READ_FAILED);
  EXPECT_EQ(sum, 0);
}

TEST_F(FilMakePath, MakesWhatIsMissing) {
  fs::create_directory(folder_ / "a");
  const std::pair<const char*, const char*> cases[] = {
      {"/a/b", "\\b"},   {"/a/b", ""},         {"/a/b/c\\d/e", "\\c\\d\\e"},
      {"/x.y", "\\x.y"}, {"//p//q", "\\p\\q"},
  };
  const std::string root = WithDrive(folder_.Path().string());
  for (const auto& [path, expected] : cases) {
    char created[260] = "untouched";
    EXPECT_EQ(HvFilMakePath((root + path).c_str(), created), HV_OK) << path;
    EXPECT_STREQ(created, expected) << path;
  }
  EXPECT_EQ(HvFilMakePath((root + "/last").c_str(), nullptr), HV_OK);
  for (const char* made : {"a/b/c/d/e", "x.y", "p/q", "last"}) {
    EXPECT_TRUE(fs::is_directory(folder_ / made)) << made;
  }
}

TEST_F(FilMakePath, RefusesPathsThatCannotBe) {
  folder_.Add("file", "");
  const std::string root = WithDrive(folder_.Path().string());
  const std::size_t before = folder_.Names().size();
  const auto expectNothing = [](const std::string& path) {
    char created[260] = "untouched";
    EXPECT_EQ(HvFilMakePath(path.c_str(), created), HV_CONNECTION_FAILED) << path;
    EXPECT_STREQ(created, "") << path;
  };
  for (const char* path : {"", "a\\b", "\\a\\b", "//server/share", "\\\\server"})
    expectNothing(path);
  for (const char* path : {"/a/b/", "/.txt", "/file", "/file/x"}) expectNothing(root + path);
  expectNothing(root + "/" + std::string(260 - root.size() - 1, 'n'));
  expectNothing(root + "/" + std::string(300, 'n'));
  char created[260] = "untouched";
  EXPECT_EQ(HvFilMakePath(nullptr, created), HV_CONNECTION_FAILED);
  EXPECT_STREQ(created, "");
  EXPECT_EQ(folder_.Names().size(), before);
}

}  // namespace
