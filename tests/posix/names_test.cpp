// Names as Windows programs give them, found on this system's disks.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::ReadFile;
using hvtest::ScopedVariable;
using hvtest::TestFolder;

TEST(Names, AreFoundInAnyLetterCase) {
  const TestFolder folder;
  fs::create_directories(folder / "Fonts/PCL");
  folder.Add("Fonts/PCL/Arial.SFP", "arial");
  folder.Add("both.txt", "lower");
  folder.Add("BOTH.TXT", "upper bytes");
  const std::string root = folder.Path().string();
  EXPECT_EQ(HvFilQuerySize((root + "\\fonts\\pcl\\ARIAL.sfp").c_str()), 5U);
  EXPECT_EQ(HvFilQuerySize((root + "\\fonts/pcl\\*.SFP").c_str()), 5U);
  // A name that exists as spelled is that file; of several others the first by byte order.
  EXPECT_EQ(HvFilQuerySize((root + "/both.txt").c_str()), 5U);
  EXPECT_EQ(HvFilQuerySize((root + "/Both.Txt").c_str()), 11U);
}

TEST(Names, KeepTheSpellingOfWhatIsMade) {
  const TestFolder folder;
  fs::create_directory(folder / "Made");
  const std::string source = folder.Add("source", "bytes");
  const std::string target = folder.Path().string() + "\\MADE\\New.Txt";
  EXPECT_EQ(HvFilCopy(source.c_str(), target.c_str()), HV_OK);
  EXPECT_EQ(ReadFile(folder / "Made/New.Txt"), "bytes");
}

TEST(Names, OfDrivesAndNetworkPathsLieInTheFolderOfDrives) {
  const TestFolder folder;
  const ScopedVariable drives("HVAPI_DRIVES", folder.Path().string());
  fs::create_directories(folder / "c/dir");
  fs::create_directories(folder / "unc/Server/Share");
  folder.Add("c/dir/file", "on c");
  folder.Add("unc/Server/Share/file", "far away");
  EXPECT_EQ(HvFilQuerySize("C:\\DIR\\FILE"), 4U);
  EXPECT_EQ(HvFilQuerySize("c:dir/file"), 4U);
  EXPECT_EQ(HvFilQuerySize("\\\\server\\share\\file"), 8U);
  EXPECT_EQ(HvFilExists("d:\\dir"), 0U);
  char created[260];
  EXPECT_EQ(HvFilMakePath("\\\\SERVER\\share\\a\\b", created), HV_OK);
  EXPECT_STREQ(created, "\\a\\b");
  EXPECT_TRUE(fs::is_directory(folder / "unc/Server/Share/a/b"));
  EXPECT_EQ(HvFilMakePath("d:\\x", created), HV_CONNECTION_FAILED);
}

TEST(Names, OfDrivesAreTheRootWithoutAFolderOfDrives) {
  const TestFolder folder;
  const ScopedVariable drives("HVAPI_DRIVES", "");
  folder.Add("f", "12");
  EXPECT_EQ(HvFilQuerySize(("x:" + (folder / "f")).c_str()), 2U);
}

TEST(Names, TooLongForTheVolumeGiveTheirCode) {
  const TestFolder folder;
  const ScopedVariable drives("HVAPI_DRIVES", folder.Path().string());
  fs::create_directory(folder / "c");
  const std::string source = folder.Add("source", "");
  EXPECT_EQ(HvFilCopy(source.c_str(), ("c:\\" + std::string(256, 'n')).c_str()), HV_UNUSABLE_FILE);
}

TEST(FilCopy, KeepsLinksAndRightsOfTheTarget) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "new");
  const std::string target = folder.Add("target", "old");
  ASSERT_EQ(chmod(target.c_str(), 0640), 0);
  fs::create_symlink("target", folder / "link");
  EXPECT_EQ(HvFilCopy(source.c_str(), (folder / "link").c_str()), HV_OK);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ReadFile(target), "new");
  struct stat status;
  ASSERT_EQ(stat(target.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(FilCopy, WritesToADeviceInPlace) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "bytes");
  EXPECT_EQ(HvFilCopy(source.c_str(), "/dev/null"), HV_OK);
  EXPECT_EQ(HvFilCopy(source.c_str(), "/dev/full"), HV_DISK_FULL);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

}  // namespace
