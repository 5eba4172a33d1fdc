// Extraction of zip archives: arguments, names, patterns, results, progress.

#include "support/zip_builder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/zip_run.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;
using namespace std::string_literals;

// The reports of a callback, "name size percent|".
std::string reports;

uint32_t HVAPI_CALL Report(const char* name, uint32_t size, uint16_t percent) {
  reports += name + (" " + std::to_string(size)) + " " + std::to_string(percent) + "|";
  return 1;
}

TEST(ZipArguments, AreChecked) {
  const TestFolder folder;
  const std::string archive = folder.Add("a.zip", BuildZip({Stored("m", "x")}).bytes);
  const std::string tooLong(261, 'p');
  const ScopedCurrentFolder inside(folder.Path());
  const std::tuple<const char*, const char*, uint32_t, uint32_t> cases[] = {
      {nullptr, nullptr, HV_BAD_ARGUMENT, HV_BAD_ARGUMENT},
      {tooLong.c_str(), nullptr, HV_BAD_ARGUMENT, HV_BAD_ARGUMENT},
      {archive.c_str(), tooLong.c_str(), HV_BAD_ARGUMENT, HV_BAD_ARGUMENT},
      {tooLong.c_str() + 1, nullptr, HV_NOT_SUPPORTED, HV_NOT_FOUND},
      {"", nullptr, HV_NOT_SUPPORTED, HV_NOT_FOUND},
      {"missing", "*", HV_NOT_SUPPORTED, HV_NOT_FOUND},
      {archive.c_str(), tooLong.c_str() + 1, HV_NOT_SUPPORTED, HV_OK},
  };
  for (const auto& [name, pattern, implode, explode] : cases) {
    EXPECT_EQ(HvZipImplode(name, pattern, nullptr), implode);
    EXPECT_EQ(HvZipExplode(name, pattern, nullptr), explode);
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
  const ScopedCurrentFolder inside(folder.Path());
  EXPECT_EQ(HvZipExplode("fonts", nullptr, nullptr), HV_OK);
  EXPECT_EQ(HvZipExplode("plain", "", nullptr), HV_OK);
  EXPECT_EQ(HvZipExplode("folder", nullptr, nullptr), HV_NOT_FOUND);
  EXPECT_TRUE(fs::exists("from fonts.zip"));
  EXPECT_TRUE(fs::exists("from plain"));
}

TEST(ZipNames, AreMappedIntoTheFolder) {
  const std::pair<std::string, const char*> cases[] = {
      {"a/b/c.txt", "a/ a/b/ a/b/c.txt=x"},
      {"\\\\server\\share", "server/ server/share=x"},
      {"c:/x", "c_/ c_/x=x"},
      {"a/../../x", "a/ a/x=x"},
      {"..name", "..name=x"},
      {".\x01./x", "x=x"},
      {" a b.txt", " a b.txt=x"},
      {"name;1/x", "name=x"},
      {"a<b/c>d[e;f]g", "adg=x"},
      {"a[b", "a[b=x"},
      {"a\x01\0\x1F\x7F\x62\x16"s, "ab=x"},
      {"\x16;\x16[a]", ";[a]=x"},
      {"folder\\sub\\", "folder/ folder/sub/"},
      {"./", ""},
  };
  for (const auto& [stored, tree] : cases) {
    EXPECT_EQ(Show(Explode(BuildZip({Stored(stored, "x")}).bytes)), "0 "s + tree) << stored;
  }
  for (const char* stored : {"", "..", "a/..", "<all of it>"}) {
    EXPECT_EQ(Show(Explode(BuildZip({Stored(stored, "x")}).bytes)),
              *stored == 'a' ? "31 a/" : "31 ");
  }
}

TEST(ZipNames, FilesAndDirectoriesMayBeInTheWay) {
  const TestFolder folder;
  const ScopedCurrentFolder inside(folder.Path());
  folder.Add("kept", "not touched");
  folder.Add("old", "longer than what replaces it");
  fs::create_directory("folder");
  // The archive would be its own member.
  const ZipArchive zip =
      BuildZip({Stored("old", "new"), Stored("kept/below", "x"), Stored("folder", "x"),
                Stored("self.zip", "x"), Stored("kept/", ""), Stored("last", "x")});
  folder.Add("self.zip", zip.bytes);
  EXPECT_EQ(HvZipExplode("self", nullptr, nullptr), HV_SHARING_VIOLATION);
  EXPECT_EQ(ReadFile("self.zip"), zip.bytes);
  fs::remove("self.zip");
  EXPECT_EQ(Show(ReadTree(".")), "folder/ kept=not touched last=x old=new");
}

TEST(ZipPatterns, PickMembersByTheirStoredNames) {
  // Which of the names a pattern matches.
  const char* const names[] = {"tim.pfb", "fonts/Tim.PFB", "a.b", "a", "[x]y.txt", "a+b", "Ab9.c"};
  const std::pair<const char*, const char*> cases[] = {
      {"", "0123456"},   {"*.PFB", "01"},
      {"*.*", "01246"},  {"?", "3"},
      {"a?b", "25"},     {"a\\+b", "5"},
      {"a\\*b", ""},     {"A\\.B", "2"},
      {"[a-c]*", "235"}, {"[A-Ca]*[!b-z0-9]?", "256"},
      {"[^a-z]*", "46"}, {"*[T-]im*", "1"},
      {"\\[*", "4"},     {"[\\[]x[\\]]*", "4"},
      {"[]*", ""},       {"[x", ""},
      {"*b*.*", "6"},    {"*\\", ""},
  };
  std::vector<ZipMember> members;
  for (const char* name : names) members.push_back(Stored(name, ""));
  const TestFolder folder;
  const std::string archive = folder.Add("a.zip", BuildZip(members).bytes);
  const ScopedCurrentFolder inside(folder.Path());
  for (const auto& [pattern, matches] : cases) {
    // The callback tells the stored names apart that one system would write into one file.
    reports.clear();
    HvZipExplode(archive.c_str(), pattern, Report);
    std::string expected;
    for (const char* i = matches; *i != '\0'; ++i) expected += names[*i - '0'] + " 0 0|"s;
    EXPECT_EQ(reports, expected) << pattern;
  }
}

TEST(ZipTimes, AreThoseOfTheArchive) {
  // Date, time, seconds since 1970; 0 for a time that does not exist.
  const std::tuple<uint16_t, uint16_t, long long> cases[] = {
      {0x2C6F, 0x6820, 1016197260},  // 2002-03-15 13:01:00
      {0x0021, 0x0000, 315532800},   // 1980-01-01 00:00:00
      {0x285D, 0xBF7D, 951868798},   // 2000-02-29 23:59:58
      {0x1EEE, 0xBF7D, 805766398},   // 1995-07-14, when clocks may be one hour ahead
      {0x2A5D, 0x0000, 0},           // 2001-02-29
      {0x0000, 0x0000, 0},           // no month, no day
      {0x21A1, 0x0000, 0},           // month 13
      {0x2C6F, 0xC000, 0},           // hour 24
      {0x2C6F, 0x0780, 0},           // minute 60
      {0x2C6F, 0x001E, 0},           // second 60
  };
  for (const auto& [date, time, seconds] : cases) {
    ZipMember member = Stored("m", "x");
    member.date = date;
    member.time = time;
    const TestFolder folder;
    const ScopedCurrentFolder inside(folder.Path());
    folder.Add("a.zip", BuildZip({member}).bytes);
    const auto before = fs::last_write_time("a.zip");
    ASSERT_EQ(HvZipExplode("a", nullptr, nullptr), HV_OK);
    const auto written = fs::last_write_time("m");
    if (seconds == 0) {
      EXPECT_GE(written, before) << std::hex << date << " " << time;
    } else {
      const auto since = fs::file_time_type::clock::to_sys(written).time_since_epoch();
      EXPECT_EQ(std::chrono::duration_cast<std::chrono::seconds>(since).count(), seconds);
    }
  }
}

// An archive with some of its words changed, by their places.
using Words = std::vector<std::pair<std::size_t, uint16_t>>;
ZipArchive With(ZipArchive zip, const Words& words) {
  for (const auto& [at, value] : words) zip.Set16(at, value);
  return zip;
}

TEST(ZipResults, TellWhatBecameOfTheMembers) {
  const ZipArchive zip = BuildZip({Stored("one", "1"), Stored("two", "22"), Stored("tri", "333")});
  const std::size_t local = zip.locals[1];
  const std::size_t entry = zip.entries[1];
  const std::size_t end = zip.end;
  const std::pair<Words, std::string> cases[] = {
      {{{entry + 6, 21}}, "0 one=1 tri=333"},             // needs version 2.1
      {{{entry + 6, 0x0214}}, "0 one=1 tri=333 two=22"},  // version 2.0 on another host
      {{{entry + 10, 7}}, "0 one=1 tri=333"},             // method 7
      {{{entry + 8, 1}}, "0 one=1 tri=333"},              // encrypted
      {{{local + 14, 1}}, "0 one=1 tri=333 two=22"},      // wrong CRC
      {{{local + 22, 1}}, "27 one=1 tri=333 two=2"},      // more data than declared
      {{{entry + 42, 1}}, "27 one=1 tri=333"},            // no local header where it should be
      {{{local + 26, 0xFFFF}}, "9 one=1 tri=333"},        // the archive ends in a name
      {{{entry, 0}}, "27 one=1"},                         // no entry where it should be
      {{{entry + 30, 0xFFFF}}, "9 one=1"},                // the archive ends in an entry
      {{{end + 10, 2}}, "0 one=1 two=22"},                // an entry less than there are
      {{{end + 10, 4}}, "27 one=1 tri=333 two=22"},       // one more
      {{{end + 4, 1}, {end + 6, 1}}, "0 one=1 tri=333 two=22"},  // disk 1, directory on disk 1
      {{{end + 4, 1}}, "2 "},                                    // directory on disk 0
      {{{end + 4, 2}, {end + 6, 2}}, "2 "},                      // disk 2
      {{{end + 12, 1}, {end + 16, 1}}, "27 "},                   // directory nowhere
      // The local header's sizes and CRC count, but with those behind the data the directory's.
      {{{entry + 16, 77}, {entry + 20, 77}, {entry + 24, 77}}, "0 one=1 tri=333 two=22"},
      {{{local + 6, 8}, {local + 14, 0}, {local + 16, 0}, {local + 18, 0}, {local + 22, 0}},
       "0 one=1 tri=333 two=22"},
      // The archive ends in the data.
      {{{local + 18, 9999}, {local + 22, 9999}},
       "9 one=1 tri=333 two=" + zip.bytes.substr(local + 33)},
  };
  for (const auto& [changes, shown] : cases) {
    EXPECT_EQ(Show(Explode(With(zip, changes).bytes)), shown);
  }

  std::string between = zip.bytes;
  between.insert(end, "something");
  const std::string comment = With(zip, {{end + 20, 22}}).bytes + "PK\5\6" + std::string(16, 0);
  for (const std::string& bytes : {std::string(5000, 'M') + zip.bytes,    // behind a program
                                   zip.bytes + std::string(100, '\x1A'),  // padded
                                   comment + "XX",  // an end record without entries in the comment
                                   between}) {
    EXPECT_EQ(Show(Explode(bytes)), "0 one=1 tri=333 two=22") << bytes;
  }
  EXPECT_EQ(Explode("%!PS-Adobe-3.0").code, HV_UNUSABLE_FILE);
  EXPECT_EQ(Explode("").code, HV_UNUSABLE_FILE);
  EXPECT_EQ(Explode(BuildZip({}).bytes).code, HV_OK);
}

TEST(ZipResults, GravestOneCounts) {
  ZipArchive zip = BuildZip(
      {Stored("a", "1"), Stored("b", "2"), Stored("..", ""), Stored("c", "3"), Stored("d", "4")});
  // A warning, a severe one, the one of the name; then an unexpected end.
  zip = With(zip, {{zip.locals[0] + 14, 1}, {zip.locals[1], 0}});
  EXPECT_EQ(Show(Explode(zip.bytes)), "31 a=1 c=3 d=4");
  EXPECT_EQ(Show(Explode(With(zip, {{zip.locals[3] + 26, 0xFFFF}}).bytes)), "9 a=1 d=4");
}

// ---- Progress

ZipRun ExplodeReported(const ZipArchive& zip, const char* pattern = nullptr) {
  reports.clear();
  return Explode(zip.bytes, pattern, Report);
}

ZipMember OfSize(const std::string& name, std::size_t size) {
  return Stored(name, std::string(size, 'x'));
}

TEST(ZipProgress, GivesEachMemberItsShareOfTheEntriesReadSoFar) {
  ExplodeReported(BuildZip({OfSize("a", 10), OfSize("b", 30), OfSize("d/", 0), OfSize("c", 60)}));
  EXPECT_EQ(reports, "a 10 10|b 30 30|d/ 0 0|c 60 60|");

  // Halves are rounded up; what the pattern passes over counts too, and so does what is skipped.
  const ZipArchive zip = BuildZip({OfSize("../a", 1), OfSize("b", 99), OfSize("c", 100)});
  ExplodeReported(With(zip, {{zip.entries[2] + 8, 1}}), "[!b]*");
  EXPECT_EQ(reports, "../a 1 1|");

  // The directory is read 64 entries at a time.
  std::vector<ZipMember> many(64, OfSize("m", 1));
  many.push_back(OfSize("last", 64));
  ExplodeReported(BuildZip(many));
  std::string expected;
  for (int i = 0; i < 64; ++i) expected += "m 1 2|";
  EXPECT_EQ(reports, expected + "last 64 50|");
}

TEST(ZipProgress, FirstFailureEndsTheRun) {
  const ZipArchive zip = BuildZip({Stored("one", "1"), Stored("two", "22"), Stored("tri", "333")});
  const std::size_t local = zip.locals[1];
  EXPECT_EQ(Show(ExplodeReported(With(zip, {{local + 14, 1}}))), "0 one=1 two=22");  // wrong CRC
  EXPECT_EQ(reports, "one 1 17|");
  EXPECT_EQ(Show(ExplodeReported(With(zip, {{local, 0}}))), "27 one=1");
  EXPECT_EQ(reports, "one 1 17|");
  // A skipped member is no failure.
  EXPECT_EQ(Show(ExplodeReported(With(zip, {{zip.entries[0] + 8, 1}}))), "0 tri=333 two=22");
  EXPECT_EQ(reports, "two 2 33|tri 3 50|");
}

}  // namespace
