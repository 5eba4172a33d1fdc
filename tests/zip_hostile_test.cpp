// Archives that somebody has made to do harm, or that a transfer has damaged.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using hvtest::BuildZip;
using hvtest::Packed;
using hvtest::Packing;
using hvtest::Tree;
using hvtest::ZipArchive;
using hvtest::ZipMember;
using hvtest::ZipRun;

// Most that a member may yield beyond its declared size.
constexpr std::size_t OneBuffer = 2048;

std::string SomeText(std::size_t lines) {
  std::string text;
  for (std::size_t i = 0; i < lines; ++i) text += "line " + std::to_string(i * i % 23) + "\n";
  return text;
}

ZipArchive SmallArchive() {
  const std::string text = SomeText(12);
  return BuildZip({Packed("dir/deflated", text, 8, hvtest::DeflateDynamic(text)),
                   Packed("imploded", text, 6, hvtest::Implode(text, false, true), 4),
                   hvtest::Stored("stored", text)},
                  "a comment");
}

uint32_t Get32(const std::string& bytes, std::size_t at) {
  uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

// The most that the members of a damaged archive declare.
std::size_t MostDeclared(const ZipArchive& zip) {
  std::size_t most = 0;
  for (const std::size_t at : zip.locals)
    most = std::max<std::size_t>(most, Get32(zip.bytes, at + 22));
  for (const std::size_t at : zip.entries)
    most = std::max<std::size_t>(most, Get32(zip.bytes, at + 24));
  return most;
}

// Extracts damaged archives one after another, each into a new folder. Nothing may come to be
// beside that folder.
class Victim {
 public:
  Victim() : archive_(folder_ / "archive.zip"), out_(folder_.Path() / "out") {}

  void ExpectBounded(const ZipArchive& zip, const std::string& what) const {
    hvtest::WriteFile(archive_, zip.bytes);
    const std::size_t handles = hvtest::OpenHandleCount();
    uint32_t code = 0;
    std::filesystem::create_directory(out_);
    {
      const hvtest::ScopedCurrentFolder inside(out_);
      code = HvZipExplode(archive_.c_str(), nullptr, nullptr);
    }
    EXPECT_EQ(hvtest::OpenHandleCount(), handles) << what;
    const std::set<uint32_t> codes = {HV_OK, HV_NOT_FOUND, HV_ARCHIVE_ENDED, HV_UNUSABLE_FILE,
                                      HV_SHARING_VIOLATION};
    EXPECT_EQ(codes.count(code), 1U) << what << ": " << code;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(out_)) {
      if (!entry.is_regular_file()) continue;
      EXPECT_LE(entry.file_size(), MostDeclared(zip) + OneBuffer) << what << ": " << entry.path();
    }
    std::filesystem::remove_all(out_);
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"archive.zip"}) << what;
  }

 private:
  hvtest::TestFolder folder_;
  std::string archive_;
  std::filesystem::path out_;
};

TEST(ZipHostile, DamagedHeadersLeadNowhereElse) {
  const Victim victim;
  const ZipArchive whole = SmallArchive();
  std::vector<std::size_t> places;
  for (const std::size_t at : whole.locals) {
    for (std::size_t i = 0; i < 42; ++i) places.push_back(at + i);
  }
  for (std::size_t i = whole.entries[0]; i < whole.end + 22; ++i) places.push_back(i);
  for (std::size_t i = 0; i < places.size(); i += hvtest::SweepStep()) {
    const std::size_t place = places[i];
    const unsigned char was = static_cast<unsigned char>(whole.bytes[place]);
    for (const int now : {0xFF, was ^ 0x01}) {
      if (now == was) continue;
      ZipArchive zip = whole;
      zip.bytes[place] = static_cast<char>(now);
      victim.ExpectBounded(zip, "byte " + std::to_string(place) + " " + std::to_string(now));
    }
  }
}

TEST(ZipHostile, DamagedDataYieldNoMoreThanDeclared) {
  const Victim victim;
  const std::string text = SomeText(30);
  std::vector<ZipMember> members;
  std::size_t longest = 0;
  for (const Packing& packing : hvtest::Packings) {
    members.push_back(
        Packed(packing.name, text, packing.method, packing.pack(text), packing.flags));
    longest = std::max(longest, members.back().data.size());
  }
  const ZipArchive whole = BuildZip(members);
  for (std::size_t i = 0; i < longest; i += hvtest::SweepStep()) {
    ZipArchive zip = whole;
    for (std::size_t m = 0; m < members.size(); ++m) {
      const std::size_t data = zip.locals[m] + 30 + members[m].name.size();
      char& byte = zip.bytes[data + i % members[m].data.size()];
      byte = static_cast<char>(byte ^ (1 << i % 8));
    }
    victim.ExpectBounded(zip, "data byte " + std::to_string(i));
  }
}

TEST(ZipHostile, TruncatedArchivesGiveNothing) {
  const std::string whole = SmallArchive().bytes;
  const std::size_t end = SmallArchive().end;
  const hvtest::TestFolder folder;
  const std::string archive = folder.Add("archive.zip", whole);
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  for (std::size_t size = end + 22; size-- > 0;) {
    std::filesystem::resize_file(archive, size);
    EXPECT_EQ(HvZipExplode(archive.c_str(), nullptr, nullptr), HV_UNUSABLE_FILE) << size;
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"archive.zip"});
}

// A few bytes that stand for many: what is declared is what is written.
TEST(ZipHostile, BombsStopAtTheDeclaredSize) {
  const std::string many(41000, 'a');
  for (const Packing& packing : hvtest::Packings) {
    const ZipMember whole = Packed("bomb", many, packing.method, packing.pack(many), packing.flags);
    for (const uint32_t declared : {0U, 1U, 40000U}) {
      ZipMember member = whole;
      member.size = declared;
      const ZipRun run = hvtest::Explode(BuildZip({member}).bytes);
      ASSERT_EQ(run.tree.count("bomb"), 1U) << packing.name;
      EXPECT_TRUE(run.tree.at("bomb") == many.substr(0, declared)) << packing.name;
    }
  }
}

// After a partial clear the previous string may be among those taken out, and the entry behind it
// may get its number: a string without an end.
TEST(ZipHostile, ShrunkStringMayContainItself) {
  // Codes of 9 bits: a, b (257 is "ab"), 257 (258 is "ba"), clear (takes out both), c: the new
  // entry 257 has 257 as its parent; 257.
  const std::vector<uint32_t> codes = {'a', 'b', 257, 256, 2, 'c', 257};
  std::string data;
  std::size_t used = 0;
  for (const uint32_t code : codes) {
    for (unsigned i = 0; i < 9; ++i, ++used) {
      if (used % 8 == 0) data += '\0';
      if ((code >> i & 1) != 0) data.back() = static_cast<char>(data.back() | 1 << used % 8);
    }
  }
  const ZipRun run = hvtest::Explode(BuildZip({Packed("m", std::string(99, 'a'), 1, data)}).bytes);
  EXPECT_EQ(run.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(run.tree, (Tree{{"m", "ababc"}}));
}

}  // namespace
