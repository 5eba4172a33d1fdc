// The listing of configuration files with their descriptions.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

// In a folder of its own.
class ConfigListing : public testing::Test {
 protected:
  // Paths and descriptions, sorted: "path=description ".
  static std::string List(const std::string& directory, uint32_t fileKind) {
    uint16_t count = 99;
    HvConfigFileEntry* const list = HvDatQueryFiles(directory.c_str(), fileKind, &count);
    std::vector<std::string> entries;
    for (const HvConfigFileEntry* entry = list; entry != nullptr; entry = entry->next) {
      entries.push_back(entry->path + ("=" + std::string(entry->description)) + " ");
    }
    EXPECT_EQ(entries.size(), count);
    HvDatQueryFilesFree(list);
    std::sort(entries.begin(), entries.end());
    std::string text;
    for (const std::string& entry : entries) text += entry;
    return text;
  }

  const hvtest::TestFolder folder_;
  const hvtest::ScopedCurrentFolder inside_{folder_.Path()};
};

TEST_F(ConfigListing, TakesDescriptionsFromFirstLines) {
  const std::string full(47, 'd');
  const std::pair<std::string, std::string> cases[] = {
      {"#!Laser setup\r\nMode=1\r\n", "Laser setup"},
      {"; ## #! by hand #!\nMode=1\n", " by hand #!"},
      {"#!" + full + "\n", full},
      {"#!" + full + "e\n", full},
      {"#!\n#!second line\n", ""},
      {"", ""},
      // Of a long line the beginning is looked at.
      {std::string(250, 'x') + "#!description", "descrip"},
      {std::string(257, 'x') + "#!description", ""},
  };
  for (const auto& [text, description] : cases) {
    folder_.Add("A.CFG", text);
    EXPECT_EQ(List(".", 1), description.empty() ? "" : ".\\A.CFG=" + description + " ") << text;
  }
}

TEST_F(ConfigListing, ListsTheFilesOfAKind) {
  for (const char* name : {"A.CFG", "b.cfg", "C.PSS", "D.TXT", "E", ".CFG", ".hidden.CFG"}) {
    folder_.Add(name, std::string("#!file ") + name + "\n");
  }
  folder_.Add("NONE.CFG", "Mode=1\n");
  std::filesystem::create_directory("DIR.CFG");
  const std::string cfg = ".\\A.CFG=file A.CFG .\\b.cfg=file b.cfg ";
  const std::string all =
      ".\\A.CFG=file A.CFG .\\C.PSS=file C.PSS .\\D.TXT=file D.TXT .\\E=file E .\\b.cfg=file "
      "b.cfg ";
  EXPECT_EQ(List(".", 1), cfg);
  EXPECT_EQ(List("", 1), cfg);
  EXPECT_EQ(List(".\\", 1), cfg);  // no second separator
  EXPECT_EQ(List(".", 2), ".\\C.PSS=file C.PSS ");
  for (const uint32_t kind : {0U, 3U, 0x10001U}) EXPECT_EQ(List(".", kind), all) << kind;
  for (const char* name : {"DIR.CFG", "missing", "A.CFG"}) EXPECT_EQ(List(name, 0), "") << name;
}

TEST_F(ConfigListing, LeavesOutPathsThatDoNotFit) {
  folder_.Add("A.CFG", "#!fits\n");
  folder_.Add("AB.CFG", "#!does not\n");
  // Other names of the directory.
  const auto lengthened = [](std::size_t length) {
    std::string name(length % 2 == 0 ? ".\\" : ".");
    while (name.size() < length) name += "\\.";
    return name;
  };
  EXPECT_EQ(List(lengthened(253), 1), lengthened(253) + "\\A.CFG=fits ");
  EXPECT_EQ(List(lengthened(260), 0), "");
  uint16_t count = 99;
  EXPECT_EQ(HvDatQueryFiles(lengthened(261).c_str(), 1, &count), nullptr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(HvDatQueryFiles(nullptr, 1, &count), nullptr);
  EXPECT_EQ(HvDatQueryFiles(".", 1, nullptr), nullptr);
  HvDatQueryFilesFree(nullptr);
}

}  // namespace
