// Files and directories by name, the same on every system.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/stream.h"
#include "platform/temporary_file.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
namespace platform = hv::platform;
using namespace hvtest;

using Names = std::vector<std::string>;

// A folder with the files "source" and "target".
class Files : public testing::Test {
 protected:
  const TestFolder folder_;
  const std::string source_ = folder_.Add("source", "new");
  const std::string target_ = folder_.Add("target", "old");
};

// Names, directories with a "/", with the sizes of files that are not empty.
std::string List(const std::string& pattern) {
  std::string text;
  for (const auto& entry : platform::ListDirectory(pattern.c_str())) {
    EXPECT_EQ(entry.isDirectory, entry.isPlainDirectory) << entry.name;
    text += (text.empty() ? "" : " ") + entry.name + (entry.isDirectory ? "/" : "");
    if (entry.size != 0) text += "=" + std::to_string(entry.size);
  }
  return text;
}

TEST(ListDirectory, SortsWhatMatchesWithoutRegardToCase) {
  const TestFolder folder;
  for (const char* name : {"b.TXT", "A.txt", "_under.txt", "page.html", "c.t", "aB.Txt"}) {
    folder.Add(name, "");
  }
  folder.Add("plain", "12345");
  fs::create_directory(folder / "Dir.txt");
  fs::create_directory(folder / "empty");
  const std::string all = "_under.txt A.txt aB.Txt b.TXT c.t Dir.txt/ empty/ page.html plain=5";
  const std::pair<const char*, std::string> cases[] = {
      {"/*", all},
      {"\\*.*", all},
      {"\\*.TXT", "_under.txt A.txt aB.Txt b.TXT Dir.txt/"},
      {"/*.htm", ""},
      {"/*.t", "c.t"},
      {"/?.txt", "A.txt b.TXT"},
      {"/*l*", "page.html plain=5"},
      {"/PLAIN", "plain=5"},
      {"/EMPTY", "empty/"},
      {"/none", ""},
      {"/empty/*", ""},
      {"/plain/*", ""},
      {"/A\"txt", ""},
      {"/", ""},
      {"/empty/..", ""},
  };
  for (const auto& [pattern, names] : cases) {
    EXPECT_EQ(List(folder.Path().string() + pattern), names) << pattern;
  }
}

TEST_F(Files, AreCopiedOverOnesThatOthersHaveOpen) {
  folder_.Add("source", std::string(100000, 's'));
  for (const std::size_t oldSize : {3U, 200000U}) {
    folder_.Add("target", std::string(oldSize, 'o'));
    fs::last_write_time(source_, fs::last_write_time(source_) - std::chrono::hours(24));
    const auto reader = platform::OpenStream(target_.c_str(), "rb");
    const auto writer = platform::OpenStream(target_.c_str(), "rb+");
    ASSERT_NE(writer, nullptr);
    EXPECT_EQ(platform::CopyWholeFile(source_.c_str(), target_.c_str()), platform::ErrorNone);
    EXPECT_EQ(ReadFile(target_), ReadFile(source_));
    EXPECT_EQ(fs::last_write_time(target_), fs::last_write_time(source_));
    EXPECT_EQ(folder_.Names(), (Names{"source", "target"}));
  }
}

TEST_F(Files, ThatAreReadOnlyAreCopied) {
  fs::permissions(source_, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  for (const std::string& target : {folder_ / "copy", target_}) {
    EXPECT_EQ(platform::CopyWholeFile(source_.c_str(), target.c_str()), platform::ErrorNone);
    EXPECT_EQ(ReadFile(target), "new");
  }
  for (const char* name : {"source", "copy", "target"}) {
    fs::permissions(folder_ / name, fs::perms::owner_write, fs::perm_options::add);
  }
}

TEST_F(Files, BesideOthersTakeTheirPlaceOrStay) {
  for (const std::string& name : {target_, folder_ / "New.ini"}) {
    const std::string beside = platform::CreateFileBeside(name.c_str());
    EXPECT_EQ(fs::path(beside).parent_path(), folder_.Path());
    EXPECT_EQ(ReadFile(beside), "");
    WriteFile(beside, "beside");
    EXPECT_EQ(platform::ReplaceWith(beside.c_str(), name.c_str()), platform::ErrorNone);
    EXPECT_EQ(ReadFile(name), "beside");
  }
  fs::create_directory(folder_ / "directory");
  for (const std::string& name : {folder_ / "directory", folder_ / "none/f"}) {
    EXPECT_NE(platform::ReplaceWith(source_.c_str(), name.c_str()), platform::ErrorNone);
    EXPECT_EQ(platform::CreateFileBeside(name.c_str()), "");
  }
  EXPECT_NE(platform::ReplaceWith((folder_ / "none").c_str(), source_.c_str()),
            platform::ErrorNone);
  EXPECT_EQ(platform::MakeDirectory(target_.c_str()), platform::ErrorAlreadyExists);
  EXPECT_EQ(ReadFile(source_), "new");
  EXPECT_EQ(folder_.Names(), (Names{"New.ini", "directory", "source", "target"}));
}

TEST_F(Files, ThatAreTemporaryLieWhereTmpSaysOrInTheRoot) {
  const TestFolder folder;
  for (const std::string& value :
       {folder.Path().string(), std::string(), folder / "none", source_}) {
    const ScopedVariable tmp("TMP", value);
    const platform::TemporaryFile first(platform::CreateTemporaryFile("tmpfil"));
    const platform::TemporaryFile second(platform::CreateTemporaryFile("tmpfil"));
    if (!first.Exists()) GTEST_SKIP() << "this user may not write in the root directory";
    EXPECT_NE(first.Name(), second.Name());
    const fs::path name = fs::absolute(first.Name());
    EXPECT_EQ(name.parent_path(), value == folder.Path() ? folder.Path() : name.root_path());
    EXPECT_EQ(name.filename().string().substr(0, 6), "tmpfil");
    EXPECT_EQ(ReadFile(name), "");
  }
  EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
