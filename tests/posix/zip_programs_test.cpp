// Archives of other programs, and what only the files of a POSIX system can show.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "support/posix/file_size_limit.h"
#include "support/zip_builder.h"
#include "support/zip_run.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

bool Succeeds(const std::string& command) {
  return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

// Copies header files of the system, some of whose names differ in letter case only, and gives each
// a time of its own.
void CopyHeaders(const fs::path& to) {
  const auto begin = fs::file_time_type::clock::from_sys(
      std::chrono::sys_seconds(std::chrono::seconds(1234567890)));
  int count = 0;
  fs::copy("/usr/include/linux", to, fs::copy_options::recursive);
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(to)) {
    if (entry.is_regular_file()) {
      fs::last_write_time(entry, begin + std::chrono::seconds(2 * count++));
    }
  }
  ASSERT_GT(count, 500);
}

class ZipPrograms : public testing::TestWithParam<std::string> {};

TEST_P(ZipPrograms, TreesComeBackByteForByte) {
  if (!Succeeds("command -v " + GetParam())) GTEST_SKIP() << GetParam() << " is not installed";
  const std::string arguments = GetParam() == "python3" ? " -m zipfile -c "
                                : GetParam() == "7z"    ? " a -tzip "
                                                        : " --format zip -cf ";
  const TestFolder folder;
  const fs::path source = folder.Path() / "source";
  const fs::path out = folder.Path() / "out";
  fs::create_directories(source / "tree");
  fs::create_directory(out);
  CopyHeaders(source / "tree");
  {
    const ScopedCurrentFolder inside(source);
    ASSERT_TRUE(Succeeds("TZ=UTC " + GetParam() + arguments + "../archive.zip tree"));
  }
  const ScopedCurrentFolder inside(out);
  ASSERT_EQ(HvZipExplode("../archive", nullptr, nullptr), HV_OK);
  const Tree expected = ReadTree(source);
  EXPECT_TRUE(ReadTree(out) == expected);
  for (const auto& [name, bytes] : expected) {
    if (name.back() == '/') continue;
    EXPECT_EQ(fs::last_write_time(out / name), fs::last_write_time(source / name)) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Programs, ZipPrograms, testing::Values("python3", "7z", "bsdtar"),
                         [](const auto& tested) { return tested.param; });

TEST(ZipFiles, LinksAreNotFollowed) {
  const TestFolder folder;
  folder.Add("outside", "not touched");
  fs::create_directory(folder.Path() / "elsewhere");
  fs::create_directory(folder.Path() / "out");
  const std::string archive =
      folder.Add("a.zip", BuildZip({Stored("folder/file", "x"), Stored("folder/sub/", ""),
                                    Stored("file", "new"), Stored("dangling", "new")})
                              .bytes);
  const ScopedCurrentFolder inside(folder.Path() / "out");
  fs::create_directory_symlink("../elsewhere", "folder");
  fs::create_symlink("../outside", "file");
  fs::create_symlink("../nowhere", "dangling");
  EXPECT_EQ(HvZipExplode(archive.c_str(), nullptr, nullptr), HV_SHARING_VIOLATION);
  EXPECT_EQ(ReadFile("../outside"), "not touched");
  EXPECT_TRUE(fs::is_empty("../elsewhere"));
  EXPECT_FALSE(fs::exists("../nowhere"));
  // A link in the place of a file is replaced as a file would be.
  for (const char* const name : {"file", "dangling"}) {
    EXPECT_FALSE(fs::is_symlink(name));
    EXPECT_EQ(ReadFile(name), "new");
  }
}

TEST(ZipFiles, TakeNamesAsTheyAreSpelled) {
  const std::string zip =
      BuildZip({Stored("\x16\x01\x16\x16\x16:\xE4 .", "1"), Stored("A\x16:/...", "2")}).bytes;
  EXPECT_EQ(Show(Explode(zip)), "0 \x01\x16:\xE4 .=1 A:/ A:/...=2");
}

TEST(ZipFiles, APipeInTheWayIsNotWaitedFor) {
  const TestFolder folder;
  const ScopedCurrentFolder inside(folder.Path());
  folder.Add("a.zip", BuildZip({Stored("pipe", "x")}).bytes);
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  EXPECT_EQ(HvZipExplode("a", nullptr, nullptr), HV_SHARING_VIOLATION);
}

TEST(ZipFiles, AFullDiskEndsTheRun) {
  const TestFolder folder;
  const ScopedCurrentFolder inside(folder.Path());
  const std::string large(100000, 'x');
  folder.Add("a.zip",
             BuildZip({Stored("first", "1"), Stored("large", large), Stored("last", "2")}).bytes);
  uint32_t code = 0;
  {
    const FileSizeLimit full(50000);
    code = HvZipExplode("a", nullptr, nullptr);
  }
  EXPECT_EQ(code, HV_DISK_FULL);
  EXPECT_EQ(ReadFile("first"), "1");
  EXPECT_EQ(ReadFile("large"), large.substr(0, 50000));
  EXPECT_FALSE(fs::exists("last"));
}

TEST(ZipFiles, AnArchiveWithoutASizeCannotBeOpened) {
  EXPECT_EQ(HvZipExplode("/proc/self/mem", nullptr, nullptr), HV_CANNOT_OPEN);
}

}  // namespace
