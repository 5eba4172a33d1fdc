// Files and directories by name, the same on every system.

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/stream.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
namespace platform = hv::platform;
using hvtest::ReadFile;
using hvtest::ScopedVariable;
using hvtest::TestFolder;
using platform::FileKind;

std::vector<std::string> ListedNames(const std::string& pattern) {
  std::vector<std::string> names;
  for (const auto& entry : platform::ListDirectory(pattern.c_str())) names.push_back(entry.name);
  return names;
}

TEST(KindOf, TellsFilesFromDirectories) {
  const TestFolder folder;
  const std::string file = folder.Add("File.txt", "");
  fs::create_directory(folder / "Dir");
  const std::string root = folder.Path().string();
  const struct {
    std::string path;
    FileKind kind;
  } cases[] = {
      {file, FileKind::File},
      {root + "\\FILE.TXT", FileKind::File},
      {root + "/dir", FileKind::Directory},
      {root + "\\DIR\\", FileKind::Directory},
      {root + "/dir/..\\file.txt", FileKind::File},
      {root + "/none", FileKind::None},
      {root + "/none/x", FileKind::None},
      {root + "/*.txt", FileKind::None},
      {root + "/File.tx?", FileKind::None},
      {root + "/" + std::string(5000, 'x'), FileKind::None},
      {"", FileKind::None},
  };
  for (const auto& c : cases) EXPECT_EQ(platform::KindOf(c.path.c_str()), c.kind) << c.path;
  EXPECT_EQ(platform::KindOf(nullptr), FileKind::None);
}

TEST(ListDirectory, SortsWhatMatchesWithoutRegardToCase) {
  const TestFolder folder;
  for (const char* name : {"b.TXT", "A.txt", "_under.txt", "page.html", "plain", "c.t", "aB.Txt"}) {
    folder.Add(name, name);
  }
  fs::create_directory(folder / "Dir.txt");
  fs::create_directory(folder / "empty");
  const std::string root = folder.Path().string();
  const struct {
    const char* pattern;
    std::vector<std::string> names;
  } cases[] = {
      {"/*",
       {"_under.txt", "A.txt", "aB.Txt", "b.TXT", "c.t", "Dir.txt", "empty", "page.html", "plain"}},
      {"\\*.*",
       {"_under.txt", "A.txt", "aB.Txt", "b.TXT", "c.t", "Dir.txt", "empty", "page.html", "plain"}},
      {"\\*.TXT", {"_under.txt", "A.txt", "aB.Txt", "b.TXT", "Dir.txt"}},
      {"/*.htm", {}},
      {"/*.t", {"c.t"}},
      {"/?.txt", {"A.txt", "b.TXT"}},
      {"/a*", {"A.txt", "aB.Txt"}},
      {"/*l*", {"page.html", "plain"}},
      {"/PLAIN", {"plain"}},
      {"/none", {}},
      {"/empty/*", {}},
      {"/none/*", {}},
      {"/plain/*", {}},
      {"/<", {}},
      {"/A\"txt", {}},
      {"/", {}},
      {"/.", {}},
      {"/empty/..", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(ListedNames(root + c.pattern), c.names) << c.pattern;
  EXPECT_EQ(ListedNames(""), std::vector<std::string>{});
}

TEST(ListDirectory, TellsSizesAndDirectories) {
  const TestFolder folder;
  folder.Add("a", "12345");
  fs::create_directory(folder / "b");
  for (const char* pattern : {"*", "a", "B"}) {
    for (const auto& entry : platform::ListDirectory((folder / pattern).c_str())) {
      const bool isDirectory = entry.name == "b";
      EXPECT_EQ(entry.isDirectory, isDirectory) << entry.name;
      EXPECT_EQ(entry.isPlainDirectory, isDirectory) << entry.name;
      EXPECT_EQ(entry.size, isDirectory ? 0U : 5U) << entry.name;
    }
  }
  EXPECT_EQ(ListedNames(folder / "*").size(), 2U);
}

TEST(CopyWholeFile, ReplacesAFileThatOthersHaveOpen) {
  for (const std::size_t oldSize : {3U, 200000U}) {
    const TestFolder folder;
    const std::string source = folder.Add("source", std::string(100000, 's'));
    const std::string target = folder.Add("target", std::string(oldSize, 'o'));
    fs::last_write_time(source, fs::last_write_time(source) - std::chrono::hours(24));
    const auto reader = platform::OpenStream(target.c_str(), "rb");
    const auto writer = platform::OpenStream(target.c_str(), "rb+");
    ASSERT_NE(writer, nullptr);
    EXPECT_EQ(platform::CopyWholeFile(source.c_str(), target.c_str()), platform::ErrorNone);
    EXPECT_EQ(ReadFile(target), ReadFile(source));
    EXPECT_EQ(fs::last_write_time(target), fs::last_write_time(source));
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"source", "target"}));
  }
}

TEST(CopyWholeFile, LeavesFilesThatAreReadOnly) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "new");
  const std::string target = folder.Add("target", "old");
  fs::permissions(source, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  EXPECT_EQ(platform::CopyWholeFile(source.c_str(), (folder / "copy").c_str()),
            platform::ErrorNone);
  EXPECT_EQ(ReadFile(folder / "copy"), "new");
  EXPECT_EQ(platform::CopyWholeFile(source.c_str(), target.c_str()), platform::ErrorNone);
  EXPECT_EQ(ReadFile(target), "new");
  for (const char* name : {"source", "copy", "target"}) {
    fs::permissions(folder / name, fs::perms::owner_write, fs::perm_options::add);
  }
}

TEST(NameSameFile, SeesThroughSpellings) {
  const TestFolder folder;
  const std::string file = folder.Add("Name", "");
  folder.Add("other", "");
  const std::string root = folder.Path().string();
  EXPECT_TRUE(platform::NameSameFile(file.c_str(), (root + "\\NAME").c_str()));
  EXPECT_TRUE(platform::NameSameFile(file.c_str(), (root + "/./name").c_str()));
  EXPECT_FALSE(platform::NameSameFile(file.c_str(), (root + "/other").c_str()));
  EXPECT_FALSE(platform::NameSameFile((root + "/none").c_str(), (root + "/none").c_str()));
}

TEST(RemoveFile, TakesFilesAlone) {
  const TestFolder folder;
  const std::string file = folder.Add("f", "");
  fs::create_directory(folder / "d");
  EXPECT_EQ(platform::RemoveFile(file.c_str()), platform::ErrorNone);
  EXPECT_EQ(platform::RemoveFile(file.c_str()), platform::ErrorFileNotFound);
  EXPECT_EQ(platform::RemoveFile((folder / "d").c_str()), platform::ErrorAccessDenied);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"d"});
}

TEST(MakeDirectory, SaysWhatIsThere) {
  const TestFolder folder;
  folder.Add("f", "");
  EXPECT_EQ(platform::MakeDirectory((folder / "d").c_str()), platform::ErrorNone);
  EXPECT_TRUE(fs::is_directory(folder / "d"));
  EXPECT_EQ(platform::MakeDirectory((folder / "D").c_str()), platform::ErrorAlreadyExists);
  EXPECT_EQ(platform::MakeDirectory((folder / "f").c_str()), platform::ErrorAlreadyExists);
  EXPECT_NE(platform::MakeDirectory((folder / "none/d").c_str()), platform::ErrorNone);
}

TEST(ReplaceWith, PutsTheFileBesideInItsPlace) {
  const TestFolder folder;
  const std::string target = folder.Add("Target.ini", "old");
  for (const std::string& name : {target, folder / "New.ini"}) {
    const std::string beside = platform::CreateFileBeside(name.c_str());
    EXPECT_EQ(fs::path(beside).parent_path(), folder.Path());
    EXPECT_EQ(ReadFile(beside), "");
    hvtest::WriteFile(beside, "new");
    EXPECT_EQ(platform::ReplaceWith(beside.c_str(), name.c_str()), platform::ErrorNone);
    EXPECT_EQ(ReadFile(name), "new");
  }
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"New.ini", "Target.ini"}));
}

TEST(ReplaceWith, LeavesBothOnFailure) {
  const TestFolder folder;
  const std::string from = folder.Add("from", "bytes");
  fs::create_directory(folder / "directory");
  EXPECT_NE(platform::ReplaceWith(from.c_str(), (folder / "directory").c_str()),
            platform::ErrorNone);
  EXPECT_NE(platform::ReplaceWith(from.c_str(), (folder / "none/f").c_str()), platform::ErrorNone);
  EXPECT_NE(platform::ReplaceWith((folder / "none").c_str(), from.c_str()), platform::ErrorNone);
  EXPECT_EQ(ReadFile(from), "bytes");
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"directory", "from"}));
  EXPECT_EQ(platform::CreateFileBeside((folder / "directory").c_str()), "");
  EXPECT_EQ(platform::CreateFileBeside((folder / "none/f").c_str()), "");
}

TEST(CreateTemporaryFile, LiesWhereTmpSays) {
  const TestFolder folder;
  const ScopedVariable tmp("TMP", folder.Path().string());
  const std::string first = platform::CreateTemporaryFile("tmpfil");
  const std::string second = platform::CreateTemporaryFile("tmpfil");
  EXPECT_NE(first, second);
  for (const std::string& name : {first, second}) {
    EXPECT_EQ(fs::path(name).parent_path(), folder.Path());
    EXPECT_EQ(fs::path(name).filename().string().substr(0, 6), "tmpfil");
    EXPECT_EQ(ReadFile(name), "");
  }
}

TEST(CreateTemporaryFile, LiesInTheRootWhereTmpSaysNothingUsable) {
  const TestFolder folder;
  for (const std::string& value : {std::string(), folder / "none", folder.Add("file", "")}) {
    const ScopedVariable tmp("TMP", value);
    const std::string name = platform::CreateTemporaryFile("tmpfil");
    if (name.empty()) GTEST_SKIP() << "this user may not write in the root directory";
    EXPECT_EQ(fs::absolute(name).parent_path(), fs::absolute(name).root_path()) << value;
    EXPECT_TRUE(fs::exists(name));
    EXPECT_EQ(platform::RemoveFile(name.c_str()), platform::ErrorNone);
  }
}

TEST(SetFileTime, TakesUniversalTime) {
  const TestFolder folder;
  const std::string file = folder.Add("f", "");
  std::tm time = {};
  time.tm_year = 95;
  time.tm_mon = 6;  // July, where clocks may be one hour ahead
  time.tm_mday = 14;
  time.tm_hour = 23;
  time.tm_min = 59;
  time.tm_sec = 58;
  EXPECT_TRUE(platform::SetFileTime(file.c_str(), time));
  const auto changed = std::chrono::file_clock::to_sys(fs::last_write_time(file));
  EXPECT_EQ(std::chrono::duration_cast<std::chrono::seconds>(changed.time_since_epoch()).count(),
            805766398);
  EXPECT_FALSE(platform::SetFileTime((folder / "none").c_str(), time));
}

}  // namespace
