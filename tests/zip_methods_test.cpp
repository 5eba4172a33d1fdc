// Every compression method of zip archives, on contents around the sizes of windows and buffers.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using hvtest::Packed;
using hvtest::Packing;

class Random {
 public:
  explicit Random(uint32_t seed) : state_(seed) {}
  uint32_t Next(uint32_t limit) {
    state_ = state_ * 1664525 + 1013904223;
    return (state_ >> 8) % limit;
  }

 private:
  uint32_t state_;
};

std::string Noise(std::size_t size, uint32_t seed) {
  Random random(seed);
  std::string noise;
  while (noise.size() < size) noise += static_cast<char>(random.Next(256));
  return noise;
}

// Words of a small vocabulary.
std::string Prose(std::size_t size, uint32_t seed) {
  Random random(seed);
  std::string prose;
  while (prose.size() < size) {
    std::string word = "w" + std::to_string(random.Next(300) * random.Next(300));
    prose += word + (random.Next(9) == 0 ? ".\r\n" : " ");
  }
  prose.resize(size);
  return prose;
}

// A block again and again, so that matches reach back exactly `distance`.
std::string Repeated(std::size_t distance, std::size_t times) {
  const std::string block = Noise(distance, 7);
  std::string text;
  while (times-- > 0) text += block;
  return text;
}

std::vector<std::string> Contents() {
  std::vector<std::string> contents = {"",
                                       "x",
                                       std::string(5000, 'a'),
                                       std::string(40, '\x90'),
                                       "a\x90" + Noise(700, 3) + std::string(300, '\x90'),
                                       Noise(40000, 1),
                                       Prose(70000, 2),
                                       Repeated(512, 4),
                                       Repeated(4096, 3),
                                       Repeated(8192, 3),
                                       Repeated(32768, 2) + "end"};
  // One buffer, the window, and the window with a buffer behind it.
  for (const std::size_t size : {2048, 32768, 34816}) {
    for (const std::size_t around : {size - 1, size, size + 1}) {
      contents.push_back(Prose(around, static_cast<uint32_t>(size)));
    }
  }
  return contents;
}

int reported = 0;

// Not called for a member whose checksum is wrong, which also ends the extraction.
uint32_t HVAPI_CALL CountReport(const char* /*name*/, uint32_t /*size*/, uint16_t /*percent*/) {
  ++reported;
  return 0;
}

TEST(ZipMethods, ExtractWhatWasPacked) {
  for (const std::string& content : Contents()) {
    std::vector<hvtest::ZipMember> members;
    hvtest::Tree expected;
    for (const Packing& packing : hvtest::Packings) {
      std::string data = packing.pack(content);
      members.push_back(
          Packed(packing.name, content, packing.method, std::move(data), packing.flags));
      expected[packing.name] = content;
    }
    reported = 0;
    const hvtest::ZipRun run =
        hvtest::Explode(hvtest::BuildZip(members).bytes, nullptr, CountReport);
    EXPECT_EQ(run.code, HV_OK) << content.size() << " bytes";
    EXPECT_EQ(reported, static_cast<int>(members.size())) << content.size() << " bytes";
    for (const auto& [name, bytes] : expected) {
      const auto extracted = run.tree.find(name);
      ASSERT_NE(extracted, run.tree.end()) << name;
      EXPECT_TRUE(extracted->second == bytes) << name << " of " << content.size() << " bytes";
    }
  }
}

// What lies before a member is zeroes, whatever the member before it left behind.
TEST(ZipMethods, ReachBackIntoZeroesAtTheStart) {
  const std::string noise = Noise(40000, 5);
  // Fixed code: the literal "x", a match of 3 bytes from 4 back, the end.
  const std::string deflated("\xAB\x00\x62\x00", 4);
  const std::string content("x\0\0\0", 4);
  const hvtest::ZipRun run = hvtest::Explode(
      hvtest::BuildZip({hvtest::Stored("first", noise), Packed("second", content, 8, deflated)})
          .bytes);
  EXPECT_EQ(run.code, HV_OK);
  EXPECT_EQ(run.tree, (hvtest::Tree{{"first", noise}, {"second", content}}));
}

// Data that are not of their method end the member with the archive's code for damage.
TEST(ZipMethods, RefuseDamagedData) {
  const struct {
    const char* what;
    uint16_t method;
    std::string data;
  } cases[] = {
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
      {"deflated: empty", 8, std::string()},
  };
  for (const auto& c : cases) {
    hvtest::ZipMember member = Packed("member", std::string(9, 'a'), c.method, c.data);
    const hvtest::ZipRun run = hvtest::Explode(hvtest::BuildZip({member}).bytes);
    EXPECT_EQ(run.code, HV_UNUSABLE_FILE) << c.what;
    EXPECT_EQ(run.tree.size(), 1U) << c.what;
  }
}

}  // namespace
