// Every compression method of zip archives, on contents around the sizes of windows and buffers, and
// on data that somebody has made to do harm.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

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
  const std::string marks = std::string(40, '\x90') + Noise(700, 3);
  std::vector<std::string> contents = {"", "x", std::string(5000, 'a'), marks, periods};
  contents.push_back(Noise(40000, 1));
  contents.push_back(Prose(70000, 2));
  for (const std::size_t distance : {512, 4096, 8192}) contents.push_back(Repeated(distance, 3));
  // One buffer, the window, and the window with a buffer behind it.
  for (const std::size_t size : {2048, 32768, 34816}) {
    for (const std::size_t around : {size - 1, size, size + 1}) {
      contents.push_back(Prose(around, static_cast<uint32_t>(size)));
    }
  }
  return contents;
}

// Extracts a member of which `data` is the packed form.
ZipRun ExplodeOne(std::string_view content, uint16_t method, std::string data) {
  return Explode(BuildZip({Packed("m", content, method, std::move(data))}).bytes);
}

std::size_t reported = 0;

// Not called for a member whose checksum is wrong, which also ends the extraction.
uint32_t HVAPI_CALL CountReport(const char* /*name*/, uint32_t /*size*/, uint16_t /*percent*/) {
  ++reported;
  return 0;
}

TEST(ZipMethods, ExtractWhatWasPacked) {
  for (const std::string& content : Contents()) {
    std::vector<ZipMember> members;
    for (const Packing& packing : Packings) {
      members.push_back(
          Packed(packing.name, content, packing.method, packing.pack(content), packing.flags));
    }
    reported = 0;
    const ZipRun run = Explode(BuildZip(members).bytes, nullptr, CountReport);
    EXPECT_EQ(run.code, HV_OK) << content.size() << " bytes";
    EXPECT_EQ(reported, std::size(Packings)) << content.size() << " bytes";
    for (const Packing& packing : Packings) {
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
  BitWriter writer;
  for (const uint32_t value : {0U, 0x8000U, 0x7FFFU}) writer.Put(value, value == 0 ? 8 : 16);
  for (const char c : noise) writer.Put(static_cast<unsigned char>(c), 8);
  writer.Put(1 | 1 << 1, 3);
  writer.PutCode(0xC5, 8);
  writer.PutCode(29, 5);
  writer.Put(8191, 13);
  writer.PutCode(0, 7);
  // Fixed code: the literal "x", a match of 3 bytes from 4 back, the end.
  const std::string zeroes("\xAB\x00\x62\x00", 4);
  const Tree expected = {{"first", noise + noise.substr(0, 258)}, {"second", {"x\0\0\0", 4}}};
  const ZipRun run = Explode(BuildZip({Packed("first", expected.at("first"), 8, writer.Bytes()),
                                       Packed("second", expected.at("second"), 8, zeroes)})
                                 .bytes);
  EXPECT_EQ(run.code, HV_OK);
  EXPECT_TRUE(run.tree == expected);
}

// The head of a deflated block with codes of its own: 258 literals and lengths, one distance. The
// code lengths have codes of the lengths given, in the order of their numbers in the block.
BitWriter BlockWithCodes(const std::string& lengths) {
  BitWriter writer;
  writer.Put(1 | 2 << 1, 3);
  writer.Put(258 - 257, 5);
  writer.Put(1 - 1, 5);
  writer.Put(static_cast<uint32_t>(lengths.size()) - 4, 4);
  for (const char length : lengths) writer.Put(static_cast<uint32_t>(length - '0'), 3);
  return writer;
}

TEST(ZipMethods, TakeADistanceThatIsAloneInItsCode) {
  BitWriter writer = BlockWithCodes("001000000000000202");
  // "x" in one bit, the end and the length 3 in two, the distance in one; none for others.
  for (const uint32_t zeroes : {120U, 135U}) {
    writer.PutCode(0, 1);
    writer.Put(zeroes - 11, 7);
    if (zeroes == 120) writer.PutCode(2, 2);
  }
  for (const uint32_t code : {3U, 3U, 2U}) writer.PutCode(code, 2);
  // "x", 3 bytes from 1 back, the end.
  for (const uint32_t bit : {0U, 1U, 1U, 0U, 1U, 0U}) writer.Put(bit, 1);
  const ZipRun run = ExplodeOne("xxxx", 8, writer.Bytes());
  EXPECT_EQ(run.code, HV_OK);
  EXPECT_EQ(run.tree, (Tree{{"m", "xxxx"}}));
}

// Data that are not of their method end the member with the archive's code for damage.
TEST(ZipMethods, RefuseDamagedData) {
  BitWriter repeatFirst = BlockWithCodes("100000000000000001");
  repeatFirst.Put(1, 1);
  BitWriter repeatsTooFar = BlockWithCodes("001000000000000001");
  for (int i = 0; i < 2; ++i) repeatsTooFar.Put(0xFF, 8);
  const std::tuple<const char*, uint16_t, std::string> cases[] = {
      {"shrunk: ends early", 1, "\x61"},
      {"shrunk: a code that is not given out", 1, "\x61\x04\x02"},
      {"shrunk: an unknown command", 1, "\0\x07\0"s},
      {"reduced: no follower sets", 2, std::string(20, '\0')},
      {"imploded: a tree of too many codes", 6, "\x03\xF3\xF3\xF3\xF3\xF3"},
      {"imploded: a tree that is no prefix code", 6, "\x03\xF0\xF0\xF0\xF0"},
      {"deflated: block type 3", 8, "\x07"},
      {"deflated: lengths of a stored block that differ", 8, "\x01\x01\0\0\0"s},
      {"deflated: ends in a stored block", 8, "\x01\x04\0\xFB\xFF..."s},
      {"deflated: ends in a fixed block", 8, "\xAB"},
      {"deflated: no code lengths", 8, "\x05\0\0\0\0\0\0"s},
      {"deflated: ends before the code lengths", 8, BlockWithCodes("001000000000000001").Bytes()},
      {"deflated: nothing to repeat", 8, repeatFirst.Bytes()},
      {"deflated: repeats too far", 8, repeatsTooFar.Bytes()},
  };
  for (const auto& [what, method, data] : cases) {
    const ZipRun run = ExplodeOne("not this", method, data);
    EXPECT_EQ(run.code, HV_UNUSABLE_FILE) << what;
    EXPECT_EQ(run.tree.size(), 1U) << what;
  }
}

// A few bytes that stand for many: what is declared is what is written.
TEST(ZipHostile, BombsStopAtTheDeclaredSize) {
  const std::string many(41000, 'a');
  for (const Packing& packing : Packings) {
    ZipMember member = Packed("bomb", many, packing.method, packing.pack(many), packing.flags);
    for (const uint32_t declared : {0U, 1U, 40000U}) {
      member.size = declared;
      const ZipRun run = Explode(BuildZip({member}).bytes);
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
  BitWriter writer;
  for (const int code : {int{'a'}, int{'b'}, 257, 256, 2, int{'c'}, 257}) {
    writer.Put(static_cast<uint32_t>(code), 9);
  }
  const ZipRun run = ExplodeOne("longer than what comes of it", 1, writer.Bytes());
  EXPECT_EQ(run.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(run.tree, (Tree{{"m", "ababc"}}));
}

}  // namespace
