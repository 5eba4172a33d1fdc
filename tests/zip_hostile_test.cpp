// Archives that somebody has made to do harm.

#include <gtest/gtest.h>

#include <string>

#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using hvtest::BuildZip;
using hvtest::Packed;
using hvtest::Packing;
using hvtest::Tree;
using hvtest::ZipMember;
using hvtest::ZipRun;

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
  hvtest::BitWriter writer;
  for (const int code : {int{'a'}, int{'b'}, 257, 256, 2, int{'c'}, 257}) {
    writer.Put(static_cast<uint32_t>(code), 9);
  }
  const ZipRun run =
      hvtest::Explode(BuildZip({Packed("m", std::string(99, 'a'), 1, writer.Bytes())}).bytes);
  EXPECT_EQ(run.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(run.tree, (Tree{{"m", "ababc"}}));
}

}  // namespace
