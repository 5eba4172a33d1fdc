// The listing of configuration files with their descriptions.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

using hvtest::TestFolder;

// Path and description, sorted.
using Listing = std::vector<std::pair<std::string, std::string>>;

Listing List(const std::string& directory, uint32_t fileKind) {
  uint16_t count = 99;
  HvConfigFileEntry* const list = HvDatQueryFiles(directory.c_str(), fileKind, &count);
  Listing listing;
  for (const HvConfigFileEntry* entry = list; entry != nullptr; entry = entry->next) {
    listing.emplace_back(entry->path, entry->description);
    const std::size_t used = std::strlen(entry->path);
    for (std::size_t i = used; i < sizeof entry->path; ++i) EXPECT_EQ(entry->path[i], '\0');
  }
  EXPECT_EQ(listing.size(), count);
  HvDatQueryFilesFree(list);
  std::sort(listing.begin(), listing.end());
  return listing;
}

// The description that a file with this text gets; empty when it is not listed.
std::string DescriptionOf(const std::string& text) {
  const TestFolder folder;
  folder.Add("A.CFG", text);
  const Listing listing = List(folder.Path().string(), DAT_KIND_CFG);
  return listing.empty() ? "" : listing.front().second;
}

TEST(ConfigListing, TakesDescriptionsFromFirstLines) {
  const std::string full(47, 'd');
  const struct {
    std::string text;
    std::string expected;
  } cases[] = {
      {"#!Laser setup\n", "Laser setup"},
      {"#!Laser setup", "Laser setup"},
      {"#!Laser setup\r\nMode=1\r\n", "Laser setup"},
      {"; ## #! by hand #!\nMode=1\n", " by hand #!"},
      {"#!" + full + "\n", full},
      {"#!" + full + "e\n", full},
      {"#!cut\x1A here\n", "cut"},
      {"#!\n#!second line\n", ""},
      {"\n#!second line\n", ""},
      {"# !Laser setup\n", ""},
      {"#!", ""},
      {"#!\x1A", ""},
      {"", ""},
      // Of a long line the beginning is looked at.
      {std::string(250, 'x') + "#!description", "descrip"},
      {std::string(257, 'x') + "#!description", ""},
      {std::string(5000, 'x') + "#!description", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(DescriptionOf(c.text), c.expected) << c.text;
}

TEST(ConfigListing, ListsTheFilesOfAKind) {
  const TestFolder folder;
  for (const char* name : {"A.CFG", "b.cfg", "C.PSS", "D.TXT", "E", ".CFG", ".hidden.CFG"}) {
    folder.Add(name, std::string("#!file ") + name + "\n");
  }
  folder.Add("NONE.CFG", "Mode=1\n");
  std::filesystem::create_directory(folder.Path() / "DIR.CFG");
  const std::string directory = folder.Path().string();
  const std::string base = directory + "\\";
  const Listing cfg = {{base + "A.CFG", "file A.CFG"}, {base + "b.cfg", "file b.cfg"}};
  const Listing pss = {{base + "C.PSS", "file C.PSS"}};
  const Listing all = {
      cfg[0], pss[0], {base + "D.TXT", "file D.TXT"}, {base + "E", "file E"}, cfg[1]};
  EXPECT_EQ(List(directory, 1), cfg);
  EXPECT_EQ(List(base, 1), cfg);  // no second separator
  EXPECT_EQ(List(directory, 2), pss);
  for (const uint32_t kind : {0U, 3U, 0x10001U}) EXPECT_EQ(List(directory, kind), all) << kind;
  EXPECT_EQ(List(directory + "\\DIR.CFG", 0), Listing());
  EXPECT_EQ(List(directory + "\\missing", 0), Listing());
  EXPECT_EQ(List(directory + "\\A.CFG", 0), Listing());
}

TEST(ConfigListing, ListsTheCurrentDirectory) {
  const TestFolder folder;
  folder.Add("A.CFG", "#!here\n");
  const hvtest::ScopedCurrentFolder current(folder.Path());
  EXPECT_EQ(List("", 1), (Listing{{".\\A.CFG", "here"}}));
}

// Another name of a directory, with `length` characters.
std::string Lengthened(std::string directory, std::size_t length) {
  if ((length - directory.size()) % 2 != 0) directory += '\\';
  while (directory.size() < length) directory += "\\.";
  return directory;
}

TEST(ConfigListing, LeavesOutPathsThatDoNotFit) {
  const TestFolder folder;
  folder.Add("A.CFG", "#!fits\n");
  folder.Add("AB.CFG", "#!does not\n");
  const std::string directory = Lengthened(folder.Path().string(), 253);
  const std::string path = directory + "\\A.CFG";
  ASSERT_EQ(path.size(), 259U);
  EXPECT_EQ(List(directory, 1), (Listing{{path, "fits"}}));
  EXPECT_EQ(List(Lengthened(folder.Path().string(), 260), 0), Listing());
}

TEST(ConfigListing, ChecksItsArguments) {
  const TestFolder folder;
  folder.Add("A.CFG", "#!here\n");
  uint16_t count = 99;
  EXPECT_EQ(HvDatQueryFiles(nullptr, 1, &count), nullptr);
  EXPECT_EQ(HvDatQueryFiles(folder.Path().string().c_str(), 1, nullptr), nullptr);
  const std::string tooLong = Lengthened(folder.Path().string(), 261);
  EXPECT_EQ(HvDatQueryFiles(tooLong.c_str(), 1, &count), nullptr);
  EXPECT_EQ(count, 0);
  HvDatQueryFilesFree(nullptr);
}

}  // namespace
