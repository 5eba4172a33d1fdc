// The memory that hostile replies ask for.

#include <gtest/gtest.h>

#include <limits>

#include "faults/failing_memory.h"
#include "support/reply_records.h"

namespace {

using namespace hvtest;

constexpr std::size_t Never = std::numeric_limits<std::size_t>::max();

// Groups that each claim as many values as a count can say.
TEST(Replies, TakeMemoryInProportionToTheirSize) {
  const ReplyLayout layout = {
      {{"ID", 1}, {"DT", 1}}, {{"NE", 4}, {"LD", 1}}, {{"LD", 1}, {"DA", 0}}};
  for (const int64_t count : {0xFFFFLL, 0x7FFFFFFFLL, 0xFFFFFFFFLL}) {
    const std::vector<ReplyItem> groups(5000, Container(2, {WithCount(Container(3, {}), count)}));
    const std::vector<ReplyItem> lists(
        40, WithCount(Groups({groups.begin(), groups.begin() + 100}), count));
    for (const std::vector<ReplyItem>& items : {std::vector{Groups(groups)}, lists}) {
      const ReplyBlock block(Reply({Container(1, items)}, layout));
      const FailingMemory memory(Never, false);
      HvFreeOptionInfo(HvParseOptionInfo(block.Address()));
      EXPECT_LT(memory.Allocated(), 64 * block.Size()) << count;
    }
  }
}

}  // namespace
