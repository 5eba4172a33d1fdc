// What becomes of an INI file whose disk is full, or which may be written but not replaced.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/posix/file_size_limit.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

// A file in a folder that takes no new ones, for a user who is bound by that.
class LockedFolder {
 public:
  explicit LockedFolder(const std::string& bytes) : path(folder_.Add("locked.ini", bytes)) {
    fs::permissions(path, fs::perms(0666));
    fs::permissions(folder_.Path(), fs::perms(0555));
    if (geteuid() == 0) {
      EXPECT_EQ(seteuid(NobodysId), 0);
    }
  }
  LockedFolder(const LockedFolder&) = delete;
  LockedFolder& operator=(const LockedFolder&) = delete;
  ~LockedFolder() {
    if (getuid() == 0) {
      EXPECT_EQ(seteuid(0), 0);
    }
    fs::permissions(folder_.Path(), fs::perms(0777));
  }

 private:
  static constexpr uid_t NobodysId = 65534;
  TestFolder folder_;

 public:
  const std::string path;
};

const std::string OldBytes = "; old\n[s]\nk=v\n";

HvIniHandle* OpenAndGrow(const std::string& path, std::size_t by) {
  HvIniHandle* const ini = HvIniOpen2(path.c_str(), INI_OPEN_UPDATE);
  if (ini == nullptr) return nullptr;
  EXPECT_EQ(HvIniWrite(ini, "s", "grown", std::string(by, 'g').c_str()), 1U);
  return ini;
}

TEST(IniDisk, FullLeavesTheOldFile) {
  const TestFolder folder;
  const std::string path = folder.Add("full.ini", OldBytes);
  for (const std::size_t room : {0U, 16U, 200U}) {
    HvIniHandle* const ini = OpenAndGrow(path, 1000);
    ASSERT_NE(ini, nullptr);
    const FileSizeLimit full(room);
    EXPECT_EQ(HvIniClose(ini), 0U);
    EXPECT_EQ(ReadFile(path), OldBytes);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"full.ini"});
  }
}

TEST(IniDisk, WritesInPlaceWhereNothingCanBeReplaced) {
  const LockedFolder locked(OldBytes);
  HvIniHandle* const large = OpenAndGrow(locked.path, 1000);
  HvIniHandle* const small = OpenAndGrow(locked.path, 3);
  ASSERT_TRUE(large != nullptr && small != nullptr);
  {
    const FileSizeLimit full(200);
    EXPECT_EQ(HvIniClose(large), 0U);
  }
  EXPECT_EQ(ReadFile(locked.path), OldBytes);  // put back
  EXPECT_EQ(HvIniClose(small), 1U);
  EXPECT_EQ(ReadFile(locked.path), "; old\r\n[s]\r\nk=v\r\ngrown=ggg\r\n");
}

TEST(IniDisk, KeepsAReplacedFilesLinkAndRights) {
  const TestFolder folder;
  const std::string path = folder.Add("real.ini", OldBytes);
  fs::permissions(path, fs::perms(0640));
  fs::create_symlink("real.ini", folder / "link.ini");
  EXPECT_EQ(HvIniClose(OpenAndGrow(folder / "link.ini", 1)), 1U);
  EXPECT_TRUE(fs::is_symlink(folder / "link.ini"));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
  EXPECT_EQ(ReadFile(path), "; old\r\n[s]\r\nk=v\r\ngrown=g\r\n");
}

TEST(IniDisk, TakesTheLongestPath) {
  const TestFolder folder;
  std::string path = folder.Add("x.ini", OldBytes);
  path.insert(path.rfind('/'), HV_MAX_PATH - path.size(), '/');
  HvIniHandle* const ini = HvIniOpen(path.c_str());
  ASSERT_NE(ini, nullptr);
  EXPECT_EQ(ini->path, path);
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(HvIniOpen(path.insert(path.rfind('/'), "/").c_str()), nullptr);
}

}  // namespace
