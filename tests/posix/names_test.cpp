// Names as Windows programs give them, found on this system's disks.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

class Names : public testing::Test {
 protected:
  const TestFolder folder_;
  const std::string root_ = folder_.Path().string();
  const std::string source_ = folder_.Add("source", "bytes");
};

TEST_F(Names, AreFoundInAnyLetterCase) {
  fs::create_directories(folder_ / "Fonts/PCL");
  folder_.Add("Fonts/PCL/Arial.SFP", "arial");
  folder_.Add("both.txt", "lower");
  folder_.Add("BOTH.TXT", "upper bytes");
  EXPECT_EQ(HvFilQuerySize((root_ + "\\fonts\\pcl\\ARIAL.sfp").c_str()), 5U);
  EXPECT_EQ(HvFilQuerySize((root_ + "\\fonts/pcl\\*.SFP").c_str()), 5U);
  // A name that exists as spelled is that file; of several others the first by byte order.
  EXPECT_EQ(HvFilQuerySize((root_ + "/both.txt").c_str()), 5U);
  EXPECT_EQ(HvFilQuerySize((root_ + "/Both.Txt").c_str()), 11U);
  // What is made keeps the spelling that is given.
  EXPECT_EQ(HvFilCopy(source_.c_str(), (root_ + "\\FONTS\\New.Txt").c_str()), HV_OK);
  EXPECT_EQ(ReadFile(folder_ / "Fonts/New.Txt"), "bytes");
}

TEST_F(Names, OfDrivesAndNetworkPathsLieInTheFolderOfDrives) {
  const ScopedVariable drives("HVAPI_DRIVES", root_);
  fs::create_directories(folder_ / "c/dir");
  fs::create_directories(folder_ / "unc/Server/Share");
  folder_.Add("c/dir/file", "on c");
  folder_.Add("unc/Server/Share/file", "far away");
  EXPECT_EQ(HvFilQuerySize("C:\\DIR\\FILE"), 4U);
  EXPECT_EQ(HvFilQuerySize("c:dir/file"), 4U);
  EXPECT_EQ(HvFilQuerySize("\\\\server\\share\\file"), 8U);
  EXPECT_EQ(HvFilExists("d:\\dir"), 0U);
  char created[260];
  EXPECT_EQ(HvFilMakePath("\\\\SERVER\\share\\a\\b", created), HV_OK);
  EXPECT_STREQ(created, "\\a\\b");
  EXPECT_TRUE(fs::is_directory(folder_ / "unc/Server/Share/a/b"));
  EXPECT_EQ(HvFilMakePath("d:\\x", created), HV_CONNECTION_FAILED);
  // A name that is too long for the volume has a code of its own.
  EXPECT_EQ(HvFilCopy(source_.c_str(), ("c:\\" + std::string(256, 'n')).c_str()), HV_UNUSABLE_FILE);
}

TEST_F(Names, OfDrivesAreTheRootWithoutAFolderOfDrives) {
  const ScopedVariable drives("HVAPI_DRIVES", "");
  EXPECT_EQ(HvFilQuerySize(("x:" + source_).c_str()), 5U);
}

TEST_F(Names, OfLinksAndDevicesAreKept) {
  const std::string target = folder_.Add("target", "old");
  fs::permissions(target, fs::perms(0640));
  fs::create_symlink("target", folder_ / "link");
  EXPECT_EQ(HvFilCopy(source_.c_str(), (folder_ / "link").c_str()), HV_OK);
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(ReadFile(target), "bytes");
  EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));

  EXPECT_EQ(HvFilCopy(source_.c_str(), "/dev/null"), HV_OK);
  EXPECT_EQ(HvFilCopy(source_.c_str(), "/dev/full"), HV_DISK_FULL);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Names, OfFilesAreListedWhole) {
  folder_.Add("10:30.cfg", "#! At half past ten");
  folder_.Add("none\\10:30.cfg", "#! Nobody can name this");
  // Who opens it waits for a writer.
  ASSERT_EQ(mkfifo((folder_ / "pipe.cfg").c_str(), 0600), 0);
  uint16_t count = 0;
  HvConfigFileEntry* const list = HvDatQueryFiles(root_.c_str(), DAT_KIND_CFG, &count);
  ASSERT_EQ(count, 1U);
  EXPECT_EQ(list->path, root_ + "\\10:30.cfg");
  EXPECT_STREQ(list->description, " At half past ten");
  HvDatQueryFilesFree(list);
}

}  // namespace
