// Replies parsed while memory runs out, and what hostile ones ask for.

#include <gtest/gtest.h>

#include <limits>

#include "faults/failing_memory.h"
#include "support/reply_records.h"

namespace {

using namespace hvtest;

constexpr std::size_t Never = std::numeric_limits<std::size_t>::max();

// The record of `parse` when allocation after allocation fails is well-formed, or none; the leak
// check of the sanitizer sees what is lost.
template <typename Parse>
void ParseWithEveryFailure(Parse parse) {
  for (const bool fromThenOn : {false, true}) {
    bool failed = true;
    std::size_t failing = 0;
    for (; failed; ++failing) failed = parse(failing, fromThenOn);
    EXPECT_GT(failing, 4U);
  }
}

TEST(RepliesWithoutMemory, GiveAPartOfTheOptions) {
  const ReplyBlock block(Reply(SampleOptions()));
  ParseWithEveryFailure([&](std::size_t failing, bool fromThenOn) {
    OptionInfo info(nullptr, HvFreeOptionInfo);
    bool failed = false;
    {
      const FailingMemory memory(failing, fromThenOn);
      info.reset(HvParseOptionInfo(block.Address()));
      failed = memory.Failed();
    }
    EXPECT_EQ(Describe(info) == SampleText, !failed) << failing;
    return failed;
  });
}

TEST(RepliesWithoutMemory, LeaveOutAccountingBlocks) {
  std::string job;
  std::string device;
  const ReplyBlock block(Reply(SampleAlert(&job, &device)));
  ParseWithEveryFailure([&](std::size_t failing, bool fromThenOn) {
    JobAccount record(nullptr, HvFreeJobAccount);
    bool failed = false;
    {
      const FailingMemory memory(failing, fromThenOn);
      record.reset(HvParseJobAccountingAlert(block.Address()));
      failed = memory.Failed();
    }
    if (record == nullptr) {
      EXPECT_TRUE(failed);
      return failed;
    }
    const bool jobThere = record->jobBlock != nullptr;
    const bool deviceThere = record->deviceBlock != nullptr;
    EXPECT_EQ(jobThere && deviceThere, !failed) << failing;
    if (jobThere) {
      EXPECT_EQ(JobBlock(record), job);
    }
    if (deviceThere) {
      EXPECT_EQ(DeviceBlock(record), device);
    }
    return failed;
  });
}

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
