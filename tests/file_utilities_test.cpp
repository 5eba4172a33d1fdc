// File utilities through their exports.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::ReadFile;
using hvtest::ScopedVariable;
using hvtest::TestFolder;

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

TEST(FilExists, TellsFilesAndDirectories) {
  const TestFolder folder;
  folder.Add("a.txt", "");
  const std::string tooLong = LongName(folder, 261);
  EXPECT_EQ(HvFilExists((folder / "a.txt").c_str()), 1U);
  EXPECT_EQ(HvFilExists(folder.Path().string().c_str()), 1U);
  EXPECT_EQ(HvFilExists((folder.Path().string() + "\\A.TXT").c_str()), 1U);
  EXPECT_EQ(HvFilExists((folder / "b.txt").c_str()), 0U);
  EXPECT_EQ(HvFilExists((folder / "*.txt").c_str()), 0U);
  EXPECT_EQ(HvFilExists(""), 0U);
  EXPECT_EQ(HvFilExists(nullptr), 0U);
  EXPECT_EQ(HvFilExists(tooLong.c_str()), 0U);
}

TEST(FilQuerySize, TakesTheFirstMatchThatIsAFile) {
  const TestFolder folder;
  folder.Add("B.pcl", std::string(20, 'b'));
  folder.Add("a.PCL", std::string(10, 'a'));
  folder.Add("c", std::string(30, 'c'));
  fs::create_directory(folder / "0.pcl");
  EXPECT_EQ(HvFilQuerySize((folder / "*.pcl").c_str()), 10U);
  EXPECT_EQ(HvFilQuerySize((folder / "b.pcl").c_str()), 20U);
  EXPECT_EQ(HvFilQuerySize((folder / "?.pcl").c_str()), 10U);
  EXPECT_EQ(HvFilQuerySize((folder / "*.*").c_str()), 10U);
  EXPECT_EQ(HvFilQuerySize((folder / "c*").c_str()), 30U);
  EXPECT_EQ(HvFilQuerySize((folder / "x*").c_str()), 0U);
  EXPECT_EQ(HvFilQuerySize(folder.Path().string().c_str()), 0U);
  EXPECT_EQ(HvFilQuerySize(""), 0U);
  EXPECT_EQ(HvFilQuerySize(nullptr), 0U);
}

TEST(FilCopy, CopiesAndReplaces) {
  const TestFolder folder;
  const std::string bytes("one\r\n\x1A\0two", 10);
  const std::string source = folder.Add("source", bytes);
  const std::string target = folder / "target";
  EXPECT_EQ(HvFilCopy(source.c_str(), target.c_str()), HV_OK);
  EXPECT_EQ(ReadFile(target), bytes);
  folder.Add("target", std::string(100000, 'x'));
  EXPECT_EQ(HvFilCopy(source.c_str(), target.c_str()), HV_OK);
  EXPECT_EQ(ReadFile(target), bytes);
  EXPECT_EQ(fs::last_write_time(target), fs::last_write_time(source));
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"source", "target"}));
}

TEST(FilCopy, KeepsTheContentOfAFileCopiedOntoItself) {
  const TestFolder folder;
  const std::string source = folder.Add("Name", "content");
  HvFilCopy(source.c_str(), source.c_str());
  HvFilCopy(source.c_str(), (folder / "NAME").c_str());
  EXPECT_EQ(ReadFile(source), "content");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"Name"});
}

TEST(FilCopy, GivesTheCodeOfTheFailureAndKeepsTheTarget) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "new");
  const std::string target = folder.Add("target", "old");
  const std::string directory = folder / "directory";
  fs::create_directory(directory);
  const std::string tooLong(261, 'x');
  const struct {
    const char* what;
    std::string source;
    std::string target;
    uint32_t code;
  } cases[] = {
      {"missing source", folder / "none", target, HV_NOT_FOUND},
      {"missing directory of the source", folder / "none/x", target, HV_NOT_FOUND},
      {"missing directory of the target", source, folder / "none/x", HV_NOT_FOUND},
      {"long source", tooLong, target, HV_BAD_ARGUMENT},
      {"long target", source, tooLong, HV_BAD_ARGUMENT},
      {"directory as source", directory, target, HV_ACCESS_DENIED},
      {"directory as target", source, directory, HV_ACCESS_DENIED},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(HvFilCopy(c.source.c_str(), c.target.c_str()), c.code) << c.what;
    EXPECT_EQ(ReadFile(target), "old") << c.what;
  }
  EXPECT_EQ(HvFilCopy(nullptr, target.c_str()), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilCopy(source.c_str(), nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"directory", "source", "target"}));
}

TEST(FilCopy, TakesNamesOfExactly260Characters) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "bytes");
  const std::string target = LongName(folder, 260);
  EXPECT_EQ(HvFilCopy(source.c_str(), target.c_str()), HV_OK);
  EXPECT_EQ(HvFilExists(target.c_str()), 1U);
}

TEST(FilBackup, TakesTheFirstFreeNumber) {
  const TestFolder folder;
  const struct {
    const char* name;
    const char* backup;
  } cases[] = {
      {"name.txt", "name.003"},  // beside name.001 and name.002
      {"plain", "plain.001"},
      {"two.dots.ini", "two.dots.001"},
      {".profile", ".001"},
  };
  folder.Add("name.001", "1");
  folder.Add("name.002", "2");
  for (const auto& c : cases) {
    const std::string source = folder.Add(c.name, c.name);
    char backup[260] = "";
    EXPECT_EQ(HvFilBackup(source.c_str(), backup), HV_OK) << c.name;
    EXPECT_EQ(backup, folder / c.backup);
    EXPECT_EQ(ReadFile(folder / c.backup), c.name);
  }
}

TEST(FilBackup, StopsAt998) {
  const TestFolder folder;
  const std::string source = folder.Add("f.ini", "");
  char name[16];
  for (int n = 1; n <= 997; ++n) {
    std::snprintf(name, sizeof name, "f.%03d", n);
    folder.Add(name, "");
  }
  char backup[260] = "";
  EXPECT_EQ(HvFilBackup(source.c_str(), backup), HV_OK);
  EXPECT_EQ(backup, folder / "f.998");
  EXPECT_EQ(HvFilBackup(source.c_str(), backup), HV_LIMIT_REACHED);
  EXPECT_EQ(backup, folder / "f.998");
  EXPECT_EQ(HvFilExists((folder / "f.999").c_str()), 0U);
}

TEST(FilBackup, RefusesWhatItCannotBackUp) {
  const TestFolder folder;
  char backup[260] = "";
  const std::string fits = LongName(folder, 255);
  const std::string doesNot = LongName(folder, 256);
  hvtest::WriteFile(fits, "f");
  hvtest::WriteFile(doesNot, "d");
  EXPECT_EQ(HvFilBackup((folder / "none").c_str(), backup), HV_UNUSABLE_FILE);
  EXPECT_EQ(HvFilBackup("", backup), HV_UNUSABLE_FILE);
  EXPECT_EQ(HvFilBackup(nullptr, backup), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilBackup(fits.c_str(), nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilBackup(folder.Path().string().c_str(), backup), HV_ACCESS_DENIED);
  EXPECT_EQ(HvFilBackup(fits.c_str(), backup), HV_OK);
  EXPECT_EQ(backup, fits + ".001");
  EXPECT_EQ(HvFilBackup(doesNot.c_str(), backup), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilExists((doesNot + ".001").c_str()), 0U);
}

// What a line callback saw, and what it makes of each line.
struct Editor {
  std::vector<std::string> seen;
  enum { Keep, Drop, Upper, Prefix } action = Keep;
};

uint32_t HVAPI_CALL Edit(char* line, uintptr_t argument) {
  Editor* editor = reinterpret_cast<Editor*>(argument);
  const std::string text = line;
  editor->seen.push_back(text);
  switch (editor->action) {
    case Editor::Keep:
      break;
    case Editor::Drop:
      line[0] = '\0';
      break;
    case Editor::Upper:
      line[0] = 'X';
      break;
    case Editor::Prefix:
      std::snprintf(line, 2048, "> %s", text.c_str());
      break;
  }
  return 99;  // looked at by nobody
}

TEST(FilModify, RewritesLineByLine) {
  const std::string longLine(5000, 'l');
  const struct {
    const char* what;
    decltype(Editor::action) action;
    std::string before;
    std::vector<std::string> seen;
    std::string after;
  } cases[] = {
      {"line ends become CR LF", Editor::Keep, "a\nb\r\nc", {"a\n", "b\n", "c"}, "a\r\nb\r\nc"},
      {"a lone CR is kept", Editor::Keep, "a\rb\r\r\nc", {"a\rb\r\n", "c"}, "a\rb\r\r\nc"},
      {"0x1A ends the text",
       Editor::Keep,
       "a\n\x1A"
       "b\n",
       {"a\n"},
       "a\r\n"},
      {"all lines dropped", Editor::Drop, "a\nb\n", {"a\n", "b\n"}, ""},
      {"empty file", Editor::Keep, "", {}, ""},
      {"changed in place", Editor::Upper, "abc\n\nd", {"abc\n", "\n", "d"}, "Xbc\r\nXX"},
      {"grown in place", Editor::Prefix, "a\nb", {"a\n", "b"}, "> a\r\n> b"},
      {"a long line comes in pieces",
       Editor::Keep,
       longLine + "\n",
       {std::string(2047, 'l'), std::string(2047, 'l'), std::string(906, 'l') + "\n"},
       longLine + "\r\n"},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    const TestFolder temporary;
    const ScopedVariable tmp("TMP", temporary.Path().string());
    const std::string path = folder.Add("text", c.before);
    Editor editor;
    editor.action = c.action;
    const std::size_t handles = hvtest::OpenHandleCount();
    EXPECT_EQ(HvFilModify(path.c_str(), reinterpret_cast<uintptr_t>(&editor), Edit), HV_OK)
        << c.what;
    EXPECT_EQ(hvtest::OpenHandleCount(), handles) << c.what;
    EXPECT_EQ(editor.seen, c.seen) << c.what;
    EXPECT_EQ(ReadFile(path), c.after) << c.what;
    EXPECT_EQ(temporary.Names(), std::vector<std::string>{}) << c.what;
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"text"}) << c.what;
  }
}

TEST(FilModify, RefusesBadArgumentsAndMissingFiles) {
  const TestFolder folder;
  const TestFolder temporary;
  const ScopedVariable tmp("TMP", temporary.Path().string());
  Editor editor;
  const uintptr_t argument = reinterpret_cast<uintptr_t>(&editor);
  EXPECT_EQ(HvFilModify(nullptr, argument, Edit), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilModify(std::string(261, 'x').c_str(), argument, Edit), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilModify((folder / "none").c_str(), argument, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilModify((folder / "none").c_str(), argument, Edit), HV_CANNOT_OPEN);
  EXPECT_EQ(HvFilModify(folder.Path().string().c_str(), argument, Edit), HV_CANNOT_OPEN);
  EXPECT_TRUE(editor.seen.empty());
  EXPECT_TRUE(temporary.Names().empty());
}

TEST(FilChecksum, AddsTheWordsOfAFile) {
  const struct {
    std::string bytes;
    uint32_t skipWord;
    uint16_t sum;
  } cases[] = {
      {std::string("\x01\x00\x02\x00", 4), 0, 0xFFFD},
      {std::string("\x01\x00\x02\x00", 4), 2, 0xFFFF},
      {std::string("\x01\x00\x02\x00", 4), 1, 0xFFFE},
      {std::string("\x01\x00\x02\x00", 4), 3, 0xFFFD},
      {std::string("\x01\x00\x02\x00", 4), 0x10002, 0xFFFF},  // 16 bits of it are read
      {std::string("\x01\x02\x03", 3), 0, 0xFBFC},
      {std::string("\x01\x02\x03", 3), 2, 0xFDFF},
      {std::string("\x05", 1), 0, 0xFFFB},
      {std::string(), 0, 0},
      {std::string("\x00\x80\x00\x80", 4), 0, 0},
      // An odd byte behind what is read at once.
      {std::string(32766, '\0') + std::string("\x00\x12\x34", 3), 0, 0xDBCC},
      // The number of a word has 16 bits: words 1 and 65537 are skipped alike.
      {std::string("\x01\x00", 2) + std::string(131070, '\0') + std::string("\x02\x00\x04\x00", 4),
       1, 0xFFFC},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    const std::string path = folder.Add("f", c.bytes);
    uint16_t sum = 0xAAAA;
    EXPECT_EQ(HvFilChecksum(path.c_str(), 0, c.skipWord, &sum), HV_OK);
    EXPECT_EQ(sum, c.sum) << c.bytes.size() << " bytes, skipping " << c.skipWord;
  }
}

TEST(FilChecksum, LeavesTheSumAloneWhenNothingCanBeRead) {
  const TestFolder folder;
  uint16_t sum = 0xAAAA;
  EXPECT_EQ(HvFilChecksum(nullptr, 0, 0, &sum), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum("", 0, 0, &sum), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum(std::string(261, 'x').c_str(), 0, 0, &sum), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvFilChecksum((folder / "none").c_str(), 0, 0, &sum), HV_CANNOT_OPEN);
  EXPECT_EQ(HvFilChecksum(folder.Path().string().c_str(), 0, 0, &sum), HV_CANNOT_OPEN);
  EXPECT_EQ(sum, 0xAAAA);
  EXPECT_EQ(HvFilChecksum((folder / "none").c_str(), 0, 0, nullptr), HV_BAD_ARGUMENT);
}

TEST(FilChecksum, GivesAReadErrorOfAHandleThatIsNone) {
  uint16_t sum = 0xAAAA;
  EXPECT_EQ(HvFilChecksum(nullptr, 9999, 0, &sum), HV_READ_FAILED);
  EXPECT_EQ(sum, 0);
}

TEST(FilMakePath, MakesWhatIsMissing) {
  const TestFolder folder;
  fs::create_directory(folder / "a");
  const struct {
    const char* path;
    const char* created;
  } cases[] = {
      {"/a/b", "\\b"},   {"/a/b", ""},         {"/a/b/c\\d/e", "\\c\\d\\e"},
      {"/x.y", "\\x.y"}, {"//p//q", "\\p\\q"},
  };
  for (const auto& c : cases) {
    char created[260] = "untouched";
    const std::string path = WithDrive(folder.Path().string()) + c.path;
    EXPECT_EQ(HvFilMakePath(path.c_str(), created), HV_OK) << path;
    EXPECT_STREQ(created, c.created) << path;
    EXPECT_TRUE(fs::is_directory(folder.Path().string() + "/a")) << path;
  }
  EXPECT_TRUE(fs::is_directory(folder / "a/b/c/d/e"));
  EXPECT_TRUE(fs::is_directory(folder / "p/q"));
  EXPECT_EQ(HvFilMakePath(WithDrive(folder / "last").c_str(), nullptr), HV_OK);
  EXPECT_TRUE(fs::is_directory(folder / "last"));
}

TEST(FilMakePath, RefusesPathsThatCannotBe) {
  const TestFolder folder;
  folder.Add("file", "");
  const std::string root = WithDrive(folder.Path().string());
  const std::size_t before = folder.Names().size();
  const std::string cases[] = {
      "",
      root + "/a/b/",
      root + "/.txt",
      "a\\b",
      "\\a\\b",
      "//server/share",
      "\\\\server",
      root + "/file",
      root + "/file/x",
      root + "/" + std::string(260 - root.size() - 1, 'n'),
      root + "/" + std::string(300, 'n'),
  };
  for (const std::string& path : cases) {
    char created[260] = "untouched";
    EXPECT_EQ(HvFilMakePath(path.c_str(), created), HV_CONNECTION_FAILED) << path;
    EXPECT_STREQ(created, "") << path;
  }
  char created[260] = "untouched";
  EXPECT_EQ(HvFilMakePath(nullptr, created), HV_CONNECTION_FAILED);
  EXPECT_STREQ(created, "");
  EXPECT_EQ(folder.Names().size(), before);
}

}  // namespace
