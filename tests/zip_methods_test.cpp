// Every compression method of zip archives, on contents around the sizes of windows and buffers.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using hvtest::Packed;
using hvtest::Packing;

std::string Noise(std::size_t size, uint32_t seed) {
  std::mt19937 random(seed);
  std::string noise;
  while (noise.size() < size) noise += static_cast<char>(random());
  return noise;
}

// Words of a small vocabulary.
std::string Prose(std::size_t size, uint32_t seed) {
  std::mt19937 random(seed);
  std::string prose;
  while (prose.size() < size) {
    prose += "w" + std::to_string((random() % 300) * (random() % 300));
    prose += random() % 9 == 0 ? ".\r\n" : " ";
  }
  return prose.substr(0, size);
}

// A block again and again, so that matches reach back exactly `distance`.
std::string Repeated(std::size_t distance, std::size_t times) {
  std::string text;
  while (times-- > 0) text += Noise(distance, 7);
  return text;
}

std::vector<std::string> Contents() {
  // Matches of every short distance among other bytes.
  std::string periods;
  for (uint32_t distance = 1; distance < 20; ++distance) {
    periods += Noise(30, distance) + Repeated(distance, 80 / distance);
  }
  std::vector<std::string> contents = {"",
                                       "x",
                                       std::string(5000, 'a'),
                                       std::string(40, '\x90'),
                                       "a\x90" + Noise(700, 3) + std::string(300, '\x90'),
                                       Noise(40000, 1),
                                       Prose(70000, 2),
                                       periods,
                                       Repeated(512, 4),
                                       Repeated(4096, 3),
                                       Repeated(8192, 3)};
  // One buffer, the window, and the window with a buffer behind it.
  for (const std::size_t size : {2048, 32768, 34816}) {
    for (const std::size_t around : {size - 1, size, size + 1}) {
      contents.push_back(Prose(around, static_cast<uint32_t>(size)));
    }
  }
  return contents;
}

std::size_t reported = 0;

// Not called for a member whose checksum is wrong, which also ends the extraction.
uint32_t HVAPI_CALL CountReport(const char* /*name*/, uint32_t /*size*/, uint16_t /*percent*/) {
  ++reported;
  return 0;
}

TEST(ZipMethods, ExtractWhatWasPacked) {
  for (const std::string& content : Contents()) {
    std::vector<hvtest::ZipMember> members;
    for (const Packing& packing : hvtest::Packings) {
      members.push_back(
          Packed(packing.name, content, packing.method, packing.pack(content), packing.flags));
    }
    reported = 0;
    const hvtest::ZipRun run =
        hvtest::Explode(hvtest::BuildZip(members).bytes, nullptr, CountReport);
    EXPECT_EQ(run.code, HV_OK) << content.size() << " bytes";
    EXPECT_EQ(reported, std::size(hvtest::Packings)) << content.size() << " bytes";
    for (const Packing& packing : hvtest::Packings) {
      const auto extracted = run.tree.find(packing.name);
      ASSERT_NE(extracted, run.tree.end()) << packing.name;
      EXPECT_TRUE(extracted->second == content) << packing.name << " of " << content.size();
    }
  }
}

// Matches may reach 32768 bytes back, and before the start of a member, where there are zeroes
// whatever the member before it left behind.
TEST(ZipMethods, ReachBackAsFarAsDeflateCan) {
  const std::string noise = Noise(32768, 5);
  // A stored block of the noise. Fixed code: a match of 258 bytes from 32768 back, the end.
  hvtest::BitWriter writer;
  for (const uint32_t value : {0U, 0x8000U, 0x7FFFU}) writer.Put(value, value == 0 ? 8 : 16);
  for (const char c : noise) writer.Put(static_cast<unsigned char>(c), 8);
  writer.Put(1 | 1 << 1, 3);
  writer.PutCode(0xC5, 8);
  writer.PutCode(29, 5);
  writer.Put(8191, 13);
  writer.PutCode(0, 7);
  // Fixed code: the literal "x", a match of 3 bytes from 4 back, the end.
  const std::string zeroes("\xAB\x00\x62\x00", 4);
  const hvtest::Tree expected = {{"first", noise + noise.substr(0, 258)},
                                 {"second", {"x\0\0\0", 4}}};
  const hvtest::ZipRun run =
      hvtest::Explode(hvtest::BuildZip({Packed("first", expected.at("first"), 8, writer.Bytes()),
                                        Packed("second", expected.at("second"), 8, zeroes)})
                          .bytes);
  EXPECT_EQ(run.code, HV_OK);
  EXPECT_TRUE(run.tree == expected);
}

// The head of a deflated block with codes of its own: 258 literals and lengths, one distance. The
// code lengths have codes of the lengths given, in the order of their numbers in the block.
hvtest::BitWriter BlockWithCodes(const std::string& lengths) {
  hvtest::BitWriter writer;
  writer.Put(1 | 2 << 1, 3);
  writer.Put(258 - 257, 5);
  writer.Put(1 - 1, 5);
  writer.Put(static_cast<uint32_t>(lengths.size()) - 4, 4);
  for (const char length : lengths) writer.Put(static_cast<uint32_t>(length - '0'), 3);
  return writer;
}

TEST(ZipMethods, TakeADistanceThatIsAloneInItsCode) {
  hvtest::BitWriter writer = BlockWithCodes("001000000000000202");
  // "x" in one bit, the end and the length 3 in two, the distance in one; none for others.
  for (const uint32_t zeroes : {120U, 135U}) {
    writer.PutCode(0, 1);
    writer.Put(zeroes - 11, 7);
    if (zeroes == 120) writer.PutCode(2, 2);
  }
  for (const uint32_t code : {3U, 3U, 2U}) writer.PutCode(code, 2);
  // "x", 3 bytes from 1 back, the end.
  for (const uint32_t bit : {0U, 1U, 1U, 0U, 1U, 0U}) writer.Put(bit, 1);
  const hvtest::ZipRun run =
      hvtest::Explode(hvtest::BuildZip({Packed("m", "xxxx", 8, writer.Bytes())}).bytes);
  EXPECT_EQ(run.code, HV_OK);
  EXPECT_EQ(run.tree, (hvtest::Tree{{"m", "xxxx"}}));
}

// Data that are not of their method end the member with the archive's code for damage.
TEST(ZipMethods, RefuseDamagedData) {
  hvtest::BitWriter repeatFirst = BlockWithCodes("100000000000000001");
  repeatFirst.Put(1, 1);
  hvtest::BitWriter repeatsTooFar = BlockWithCodes("001000000000000001");
  for (int i = 0; i < 2; ++i) repeatsTooFar.Put(0xFF, 8);
  const std::tuple<const char*, uint16_t, std::string> cases[] = {
      {"shrunk: ends early", 1, std::string("\x61", 1)},
      {"shrunk: a code that is not given out", 1, std::string("\x61\x04\x02", 3)},
      {"shrunk: an unknown command", 1, std::string("\x00\x07\x00", 3)},
      {"reduced: no follower sets", 2, std::string(20, '\0')},
      {"imploded: a tree of too many codes", 6, std::string("\x03\xF3\xF3\xF3\xF3\xF3", 6)},
      {"imploded: a tree that is no prefix code", 6, std::string("\x03\xF0\xF0\xF0\xF0", 5)},
      {"deflated: block type 3", 8, std::string("\x07", 1)},
      {"deflated: lengths of a stored block that differ", 8,
       std::string("\x01\x01\x00\x00\x00", 5)},
      {"deflated: ends in a stored block", 8,
       std::string("\x01\x04\x00\xFB\xFF"
                   "ab",
                   7)},
      {"deflated: ends in a fixed block", 8, std::string("\xAB", 1)},
      {"deflated: no code lengths", 8, std::string("\x05\x00\x00\x00\x00\x00\x00", 7)},
      {"deflated: ends before the code lengths", 8, BlockWithCodes("001000000000000001").Bytes()},
      {"deflated: nothing to repeat", 8, repeatFirst.Bytes()},
      {"deflated: repeats too far", 8, repeatsTooFar.Bytes()},
      {"deflated: empty", 8, std::string()},
  };
  for (const auto& [what, method, data] : cases) {
    hvtest::ZipMember member = Packed("member", std::string(9, 'a'), method, data);
    const hvtest::ZipRun run = hvtest::Explode(hvtest::BuildZip({member}).bytes);
    EXPECT_EQ(run.code, HV_UNUSABLE_FILE) << what;
    EXPECT_EQ(run.tree.size(), 1U) << what;
  }
}

}  // namespace
