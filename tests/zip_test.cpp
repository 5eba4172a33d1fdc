// Extraction of zip archives: arguments, names, patterns, results, progress.

#include "support/zip_builder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "support/zip_run.h"

namespace {

namespace fs = std::filesystem;
using hvtest::BuildZip;
using hvtest::Explode;
using hvtest::Stored;
using hvtest::TestFolder;
using hvtest::Tree;
using hvtest::ZipArchive;
using hvtest::ZipMember;
using hvtest::ZipRun;

std::vector<ZipMember> OneTwoThree() {
  return {Stored("one", "1"), Stored("two", "22"), Stored("three", "333")};
}

TEST(ZipArguments, AreChecked) {
  const TestFolder folder;
  const std::string archive = folder.Add("a.zip", BuildZip({Stored("m", "x")}).bytes);
  const std::string tooLong(261, 'p');
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  const struct {
    const char* archive;
    const char* pattern;
    uint32_t implode;
    uint32_t explode;
  } cases[] = {
      {nullptr, nullptr, HV_BAD_ARGUMENT, HV_BAD_ARGUMENT},
      {tooLong.c_str(), nullptr, HV_BAD_ARGUMENT, HV_BAD_ARGUMENT},
      {archive.c_str(), tooLong.c_str(), HV_BAD_ARGUMENT, HV_BAD_ARGUMENT},
      {tooLong.c_str() + 1, nullptr, HV_NOT_SUPPORTED, HV_NOT_FOUND},
      {"", nullptr, HV_NOT_SUPPORTED, HV_NOT_FOUND},
      {"missing", "*", HV_NOT_SUPPORTED, HV_NOT_FOUND},
      {archive.c_str(), tooLong.c_str() + 1, HV_NOT_SUPPORTED, HV_OK},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(HvZipImplode(c.archive, c.pattern, nullptr), c.implode);
    EXPECT_EQ(HvZipExplode(c.archive, c.pattern, nullptr), c.explode);
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.zip"});
}

TEST(ZipArguments, ArchiveIsFoundWithoutItsExtension) {
  const TestFolder folder;
  fs::create_directory(folder.Path() / "fonts");
  fs::create_directory(folder.Path() / "folder.zip");
  folder.Add("fonts.zip", BuildZip({Stored("from fonts.zip", "")}).bytes);
  folder.Add("plain", BuildZip({Stored("from plain", "")}).bytes);
  folder.Add("plain.zip", "not this one");
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  EXPECT_EQ(HvZipExplode("fonts", nullptr, nullptr), HV_OK);
  EXPECT_EQ(HvZipExplode("plain", "", nullptr), HV_OK);
  EXPECT_EQ(HvZipExplode("folder", nullptr, nullptr), HV_NOT_FOUND);
  EXPECT_TRUE(fs::exists("from fonts.zip"));
  EXPECT_TRUE(fs::exists("from plain"));
}

TEST(ZipNames, AreMappedIntoTheFolder) {
  const struct {
    std::string stored;
    Tree tree;
    uint32_t code = HV_OK;
  } cases[] = {
      {"a/b/c.txt", {{"a/", ""}, {"a/b/", ""}, {"a/b/c.txt", "x"}}},
      {"a\\b.txt", {{"a/", ""}, {"a/b.txt", "x"}}},
      {"/rooted", {{"rooted", "x"}}},
      {"\\\\server\\share", {{"server/", ""}, {"server/share", "x"}}},
      {"c:/x", {{"c_/", ""}, {"c_/x", "x"}}},
      {"c:x", {{"c_x", "x"}}},
      {"./x", {{"x", "x"}}},
      {"../x", {{"x", "x"}}},
      {"a/../../x", {{"a/", ""}, {"a/x", "x"}}},
      {"..name", {{"..name", "x"}}},
      {".\x01./x", {{"x", "x"}}},
      {"<y>../x", {{"x", "x"}}},
      {".[y]./x", {{"x", "x"}}},
      {"..\x16/x", {{"x", "x"}}},
      {"..\x16\\x", {{"x", "x"}}},
      {" a b.txt", {{" a b.txt", "x"}}},
      {"name;1", {{"name", "x"}}},
      {"name;1/x", {{"name", "x"}}},
      {"a<b/c>d[e;f]g", {{"adg", "x"}}},
      {"a[b", {{"a[b", "x"}}},
      {"a]b", {{"a]b", "x"}}},
      {std::string("a\x01\x00\x1F\x7F"
                   "b\x16",
                   7),
       {{"ab", "x"}}},
      {"\x16;\x16[a]", {{";[a]", "x"}}},
      {"folder/", {{"folder/", ""}}},
      {"folder\\sub\\", {{"folder/", ""}, {"folder/sub/", ""}}},
      {"./", {}},
      {"../../", {}},
      {"", {}, HV_SHARING_VIOLATION},
      {"..", {}, HV_SHARING_VIOLATION},
      {"a/..", {{"a/", ""}}, HV_SHARING_VIOLATION},
      {"<all of it>", {}, HV_SHARING_VIOLATION},
  };
  for (const auto& c : cases) {
    const ZipRun run = Explode(BuildZip({Stored(c.stored, "x")}).bytes);
    EXPECT_EQ(run.code, c.code) << c.stored;
    EXPECT_EQ(run.tree, c.tree) << c.stored;
  }
}

TEST(ZipNames, FilesAndDirectoriesMayBeInTheWay) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("kept", "not touched");
  folder.Add("old", "longer than what replaces it");
  fs::create_directory("folder");
  // The archive would be its own member.
  const ZipArchive zip =
      BuildZip({Stored("old", "new"), Stored("kept/below", "x"), Stored("folder", "x"),
                Stored("self.zip", "x"), Stored("kept/", ""), Stored("last", "x")});
  folder.Add("self.zip", zip.bytes);
  EXPECT_EQ(HvZipExplode("self", nullptr, nullptr), HV_SHARING_VIOLATION);
  EXPECT_EQ(hvtest::ReadTree("."), (Tree{{"kept", "not touched"},
                                         {"old", "new"},
                                         {"folder/", ""},
                                         {"self.zip", zip.bytes},
                                         {"last", "x"}}));
}

// The names that a callback was told.
std::vector<std::string> extracted;

uint32_t HVAPI_CALL KeepName(const char* name, uint32_t /*size*/, uint16_t /*percent*/) {
  extracted.emplace_back(name);
  return 0;
}

TEST(ZipPatterns, PickMembersByTheirStoredNames) {
  const std::vector<std::string> names = {"tim.pfb",  "fonts/Tim.PFB", "a.b",  "a",
                                          "[x]y.txt", "a+b",           "Ab9.c"};
  const struct {
    const char* pattern;
    std::vector<std::size_t> matches;
  } cases[] = {
      {"", {0, 1, 2, 3, 4, 5, 6}},
      {"*", {0, 1, 2, 3, 4, 5, 6}},
      {"*.PFB", {0, 1}},
      {"*.*", {0, 1, 2, 4, 6}},
      {"tim.pfb", {0}},
      {"*tim.pfb", {0, 1}},
      {"?", {3}},
      {"a?b", {2, 5}},
      {"a\\+b", {5}},
      {"a\\*b", {}},
      {"A\\.B", {2}},
      {"[a-c]*", {2, 3, 5}},
      {"[A-Ca]*[!b-z0-9]?", {2, 5, 6}},
      {"[^a-z]*", {4, 6}},
      {"*[T-]im*", {1}},
      {"\\[*", {4}},
      {"[\\[]x[\\]]*", {4}},
      {"[]*", {}},
      {"[x", {}},
      {"[x\\]y*", {4}},
      {"[x]y*", {}},
      {"*\\", {}},
      {"*a*", {2, 3, 5, 6}},
      {"*b*.*", {6}},
      {"none", {}},
  };
  std::vector<ZipMember> members;
  for (std::size_t i = 0; i < names.size(); ++i) {
    members.push_back(Stored(names[i], "x"));
  }
  const TestFolder folder;
  const std::string archive = folder.Add("a.zip", BuildZip(members).bytes);
  for (const auto& c : cases) {
    extracted.clear();
    const TestFolder out;
    const hvtest::ScopedCurrentFolder inside(out.Path());
    // The callback tells the stored names apart that one system would write into one file.
    HvZipExplode(archive.c_str(), c.pattern, KeepName);
    std::vector<std::string> expected;
    for (const std::size_t i : c.matches) expected.push_back(names[i]);
    EXPECT_EQ(extracted, expected) << c.pattern;
  }
}

TEST(ZipTimes, AreThoseOfTheArchive) {
  struct Case {
    uint16_t date;
    uint16_t time;
    long long seconds;  // since 1970; 0 for a time that does not exist
  };
  const Case cases[] = {
      {0x2C6F, 0x6820, 1016197260},  // 2002-03-15 13:01:00
      {0x0021, 0x0000, 315532800},   // 1980-01-01 00:00:00
      {0x285D, 0xBF7D, 951868798},   // 2000-02-29 23:59:58
      {0x2A5D, 0x0000, 0},           // 2001-02-29
      {0x0000, 0x0000, 0},           // no month, no day
      {0x21A1, 0x0000, 0},           // month 13
      {0x2C6F, 0xC000, 0},           // hour 24
      {0x2C6F, 0x0780, 0},           // minute 60
      {0x2C6F, 0x001E, 0},           // second 60
  };
  for (const Case& c : cases) {
    ZipMember member = Stored("m", "x");
    member.date = c.date;
    member.time = c.time;
    const TestFolder folder;
    const hvtest::ScopedCurrentFolder inside(folder.Path());
    folder.Add("a.zip", BuildZip({member}).bytes);
    const auto before = fs::last_write_time("a.zip");
    ASSERT_EQ(HvZipExplode("a", nullptr, nullptr), HV_OK);
    const auto written = fs::last_write_time("m");
    if (c.seconds == 0) {
      EXPECT_GE(written, before) << std::hex << c.date << " " << c.time;
    } else {
      const auto since = fs::file_time_type::clock::to_sys(written).time_since_epoch();
      EXPECT_EQ(std::chrono::duration_cast<std::chrono::seconds>(since).count(), c.seconds);
    }
  }
}

TEST(ZipResults, TellWhatBecameOfTheMembers) {
  const Tree all = {{"one", "1"}, {"two", "22"}, {"three", "333"}};
  const Tree withoutTwo = {{"one", "1"}, {"three", "333"}};
  const Tree emptyTwo = {{"one", "1"}, {"two", ""}, {"three", "333"}};
  using Change = std::function<void(ZipArchive&)>;
  const struct {
    const char* what;
    Change change;
    uint32_t code;
    Tree tree;
  } cases[] = {
      {"as built", [](ZipArchive&) {}, HV_OK, all},
      {"needs version 2.1", [](ZipArchive& z) { z.Set16(z.entries[1] + 6, 21); }, HV_OK,
       withoutTwo},
      {"needs version 2.0 on another host",
       [](ZipArchive& z) { z.Set16(z.entries[1] + 6, 0x0214); }, HV_OK, all},
      {"method 7", [](ZipArchive& z) { z.Set16(z.entries[1] + 10, 7); }, HV_OK, withoutTwo},
      {"method 9", [](ZipArchive& z) { z.Set16(z.entries[1] + 10, 9); }, HV_OK, withoutTwo},
      {"encrypted", [](ZipArchive& z) { z.Set16(z.entries[1] + 8, 1); }, HV_OK, withoutTwo},
      {"wrong CRC", [](ZipArchive& z) { z.Set32(z.locals[1] + 14, 1); }, HV_OK, all},
      {"CRC and sizes behind the data, in the directory",
       [](ZipArchive& z) {
         z.Set16(z.locals[1] + 6, 8);
         for (const std::size_t field : {14U, 18U, 22U}) z.Set32(z.locals[1] + field, 0);
       },
       HV_OK, all},
      {"sizes of the local header count",
       [](ZipArchive& z) {
         for (const std::size_t field : {16U, 20U, 24U}) z.Set32(z.entries[1] + field, 77);
       },
       HV_OK, all},
      {"more data than declared", [](ZipArchive& z) { z.Set32(z.locals[1] + 22, 1); },
       HV_UNUSABLE_FILE, Tree{{"one", "1"}, {"two", "2"}, {"three", "333"}}},
      {"no local header where it should be", [](ZipArchive& z) { z.Set32(z.entries[1] + 42, 1); },
       HV_UNUSABLE_FILE, withoutTwo},
      {"a local header behind the end",
       [](ZipArchive& z) { z.Set32(z.entries[1] + 42, 0xFFFFFFFF); }, HV_UNUSABLE_FILE, withoutTwo},
      {"archive ends in a name", [](ZipArchive& z) { z.Set16(z.locals[1] + 26, 0xFFFF); },
       HV_ARCHIVE_ENDED, withoutTwo},
      {"archive ends in an extra field", [](ZipArchive& z) { z.Set16(z.locals[1] + 28, 0xFFFF); },
       HV_ARCHIVE_ENDED, withoutTwo},
      {"no entry where it should be", [](ZipArchive& z) { z.Set32(z.entries[1], 0); },
       HV_UNUSABLE_FILE, Tree{{"one", "1"}}},
      {"archive ends in an entry", [](ZipArchive& z) { z.Set16(z.entries[2] + 30, 0xFFFF); },
       HV_ARCHIVE_ENDED, Tree{{"one", "1"}, {"two", "22"}}},
      {"an entry less than there are", [](ZipArchive& z) { z.Set16(z.end + 10, 2); }, HV_OK,
       Tree{{"one", "1"}, {"two", "22"}}},
      {"an entry more than there are", [](ZipArchive& z) { z.Set16(z.end + 10, 4); },
       HV_UNUSABLE_FILE, all},
      {"disk 1, directory on disk 1",
       [](ZipArchive& z) {
         z.Set16(z.end + 4, 1);
         z.Set16(z.end + 6, 1);
       },
       HV_OK, all},
      {"disk 1, directory on disk 0", [](ZipArchive& z) { z.Set16(z.end + 4, 1); }, HV_NOT_FOUND,
       Tree{}},
      {"disk 2, directory on disk 2",
       [](ZipArchive& z) {
         z.Set16(z.end + 4, 2);
         z.Set16(z.end + 6, 2);
       },
       HV_NOT_FOUND, Tree{}},
      {"no end record", [](ZipArchive& z) { z.Set32(z.end, 0); }, HV_UNUSABLE_FILE, Tree{}},
      {"directory found by neither size nor offset",
       [](ZipArchive& z) {
         z.Set32(z.end + 12, 1);
         z.Set32(z.end + 16, 1);
       },
       HV_UNUSABLE_FILE, Tree{}},
      {"no archive at all", [](ZipArchive& z) { z.bytes = "%!PS-Adobe-3.0"; }, HV_UNUSABLE_FILE,
       Tree{}},
      {"empty file", [](ZipArchive& z) { z.bytes.clear(); }, HV_UNUSABLE_FILE, Tree{}},
      {"a program before it", [](ZipArchive& z) { z.bytes.insert(0, std::string(5000, 'M')); },
       HV_OK, all},
      {"padding behind it", [](ZipArchive& z) { z.bytes += std::string(100, '\x1A'); }, HV_OK, all},
      {"an end record without entries in the comment",
       [](ZipArchive& z) {
         z.Set16(z.end + 20, 22);
         z.bytes += std::string("PK\5\6", 4) + std::string(16, '\0') + "XX";
       },
       HV_OK, all},
      {"something between directory and end record",
       [](ZipArchive& z) { z.bytes.insert(z.end, "something"); }, HV_OK, all},
  };
  for (const auto& c : cases) {
    ZipArchive zip = BuildZip(OneTwoThree());
    c.change(zip);
    const ZipRun run = Explode(zip.bytes);
    EXPECT_EQ(run.code, c.code) << c.what;
    EXPECT_EQ(run.tree, c.tree) << c.what;
  }
  EXPECT_EQ(Explode(BuildZip({}).bytes).code, HV_OK);
}

TEST(ZipResults, MemberThatEndsWithTheArchiveKeepsWhatThereWas) {
  ZipArchive zip = BuildZip({Stored("m", "data")});
  zip.Set32(zip.locals[0] + 18, 9999);
  zip.Set32(zip.locals[0] + 22, 9999);
  const ZipRun run = Explode(zip.bytes);
  EXPECT_EQ(run.code, HV_ARCHIVE_ENDED);
  EXPECT_EQ(run.tree, (Tree{{"m", zip.bytes.substr(zip.locals[0] + 31)}}));
}

TEST(ZipResults, GravestOneCounts) {
  ZipArchive zip = BuildZip(
      {Stored("a", "1"), Stored("b", "2"), Stored("..", ""), Stored("c", "3"), Stored("d", "4")});
  zip.Set32(zip.locals[0] + 14, 1);  // warning
  zip.Set32(zip.locals[1], 0);       // severe
  EXPECT_EQ(Explode(zip.bytes).code, HV_SHARING_VIOLATION);
  zip.Set16(zip.locals[3] + 26, 0xFFFF);  // unexpected end
  const ZipRun run = Explode(zip.bytes);
  EXPECT_EQ(run.code, HV_ARCHIVE_ENDED);
  EXPECT_EQ(run.tree, (Tree{{"a", "1"}, {"d", "4"}}));
}

// ---- Progress

struct Call {
  std::string name;
  uint32_t size;
  uint16_t percent;
  bool operator==(const Call&) const = default;
};

std::vector<Call>& Calls() {
  static std::vector<Call> calls;
  return calls;
}

uint32_t HVAPI_CALL Record(const char* name, uint32_t size, uint16_t percent) {
  Calls().push_back({name, size, percent});
  return 1;
}

ZipRun ExplodeRecorded(const ZipArchive& zip, const char* pattern = nullptr) {
  Calls().clear();
  return Explode(zip.bytes, pattern, Record);
}

ZipMember OfSize(const std::string& name, std::size_t size) {
  return Stored(name, std::string(size, 'x'));
}

TEST(ZipProgress, GivesEachMemberItsShareOfTheEntriesReadSoFar) {
  ExplodeRecorded(BuildZip({OfSize("a", 10), OfSize("b", 30), OfSize("d/", 0), OfSize("c", 60)}));
  EXPECT_EQ(Calls(),
            (std::vector<Call>{{"a", 10, 10}, {"b", 30, 30}, {"d/", 0, 0}, {"c", 60, 60}}));

  // Halves are rounded up; what the pattern passes over counts too, and so does what is skipped.
  ZipArchive zip = BuildZip({OfSize("../a", 1), OfSize("b", 99), OfSize("c", 100)});
  zip.Set16(zip.entries[2] + 8, 1);
  ExplodeRecorded(zip, "[!b]*");
  EXPECT_EQ(Calls(), (std::vector<Call>{{"../a", 1, 1}}));

  ExplodeRecorded(BuildZip({OfSize("empty", 0)}));
  EXPECT_EQ(Calls(), (std::vector<Call>{{"empty", 0, 0}}));

  // The directory is read 64 entries at a time.
  std::vector<ZipMember> many;
  for (int i = 0; i < 65; ++i) many.push_back(OfSize("m" + std::to_string(i), 1));
  many.back() = OfSize("m64", 64);
  ExplodeRecorded(BuildZip(many));
  ASSERT_EQ(Calls().size(), 65U);
  EXPECT_EQ(Calls()[0].percent, 2);
  EXPECT_EQ(Calls()[63].percent, 2);
  EXPECT_EQ(Calls()[64].percent, 50);
}

TEST(ZipProgress, FirstFailureEndsTheRun) {
  const struct {
    const char* what;
    std::size_t local;  // which field of the second local header
    uint16_t value;
    uint32_t code;
  } cases[] = {
      {"wrong CRC", 14, 1, HV_OK},
      {"signature", 0, 0, HV_UNUSABLE_FILE},
      {"name", 26, 0xFFFF, HV_ARCHIVE_ENDED},
  };
  for (const auto& c : cases) {
    ZipArchive zip = BuildZip(OneTwoThree());
    zip.Set16(zip.locals[1] + c.local, c.value);
    const ZipRun run = ExplodeRecorded(zip);
    EXPECT_EQ(run.code, c.code) << c.what;
    EXPECT_EQ(Calls(), (std::vector<Call>{{"one", 1, 17}})) << c.what;
    EXPECT_EQ(run.tree.count("three"), 0U) << c.what;
  }
  // A skipped member is no failure.
  ZipArchive zip = BuildZip(OneTwoThree());
  zip.Set16(zip.entries[0] + 8, 1);
  const ZipRun run = ExplodeRecorded(zip);
  EXPECT_EQ(run.code, HV_OK);
  EXPECT_EQ(run.tree, (Tree{{"two", "22"}, {"three", "333"}}));
  EXPECT_EQ(Calls(), (std::vector<Call>{{"two", 2, 33}, {"three", 3, 50}}));
}

}  // namespace
