// Job-accounting alerts, and replies of both kinds that are empty or big.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "hvapi.h"
#include "support/reply_records.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

TEST(JobAccount, FillsBothBlocks) {
  std::string job;
  std::string device;
  const JobAccount record = ParseAlert(Reply(SampleAlert(&job, &device)));
  EXPECT_EQ(job.size(), 173U);
  EXPECT_EQ(device.size(), 74U);
  EXPECT_EQ(JobBlock(record), job);
  EXPECT_EQ(DeviceBlock(record), device);
}

TEST(JobAccount, CutsTextsAndConvertsShapes) {
  const JobAccount record = ParseAlert(Reply({Container(
      1,
      {Container(
          2, {Container(1, {Integer(7, "1234"), Text(11, ""), Text(1, "\x07"), Integer(2, "\xFE"),
                            Integer(99, "\x01"), Container(3, {Integer(3, "\x03")}), Other(4, 8),
                            Text(7, "twenty-five bytes of text"), Integer(11, "\x41\x42")}),
              Container(3, {Integer(4, "\x04")}), Integer(2, "\x02"),
              Container(2, {Container(1, {}), Integer(4, "\x80\x00"s), Text(2, "user")})})})}));
  EXPECT_EQ(record->deviceBlock, nullptr);
  HvJobAccountJob expected = {};
  expected.j1Item2 = 0xFFFFFFFE;
  std::strcpy(expected.j1Item7, "twenty-fi");
  std::strcpy(expected.j1Item11, "AB");
  std::strcpy(expected.j2Item2, "user");
  expected.j2Item4 = 0x8000;
  EXPECT_EQ(JobBlock(record), BytesOf(&expected));
}

TEST(JobAccount, VisitsEveryTopLevelItem) {
  const auto job = [](int item, const char* bytes) {
    return Container(2, {Container(1, {Integer(item, bytes)})});
  };
  const JobAccount record = ParseAlert(Reply(
      {Container(2, {job(1, "\x09")}), Container(1, {job(1, "\x01")}), Text(1, "x"), Other(5, 5),
       Container(1, {Container(3, {Container(2, {Integer(2, "\x22")})}), job(2, "\x02"),
                     job(3, "\x03")})}));
  HvJobAccountJob expectedJob = {};
  expectedJob.j1Item3 = 3;
  EXPECT_EQ(JobBlock(record), BytesOf(&expectedJob));
  HvJobAccountDevice expectedDevice = {};
  expectedDevice.d2Item2 = 0x22;
  EXPECT_EQ(DeviceBlock(record), BytesOf(&expectedDevice));
}

TEST(JobAccount, EndsAtItemsThatTakeNoBytes) {
  for (const char* layout :
       {"P{}C{}D{}", "P{ID:0,DT:0}C{NE:0}D{DA}", "P{SE:0}C{LD:0}D{LD:0,DA:1}"}) {
    const JobAccount record = ParseAlert(Reply(layout, std::string(500, '\0')));
    ASSERT_NE(record, nullptr) << layout;
    EXPECT_EQ(JobBlock(record) + DeviceBlock(record), "NULLNULL") << layout;
  }
}

TEST(Replies, TakeNull) {
  EXPECT_EQ(HvParseOptionInfo(nullptr), nullptr);
  EXPECT_EQ(HvParseJobAccountingAlert(nullptr), nullptr);
  HvFreeOptionInfo(nullptr);
  HvFreeJobAccount(nullptr);
}

TEST(Replies, ShorterThanTheirLeadingWordsAreEmpty) {
  for (const std::string& reply : {"\x00\x00"s, "\x00\x01P"s, "\x00\x02PP"s, "\x00\x03PPP"s}) {
    EXPECT_EQ(Describe(ParseOptions(reply)), "");
    EXPECT_EQ(JobBlock(ParseAlert(reply)), "NULL");
  }
}

// The biggest replies that there are, made to take long or to ask for much.
TEST(Replies, OfFullSizeAreRead) {
  constexpr std::size_t Most = 65000;
  std::vector<ReplyItem> entries(Most / 6, Entry({}));
  const OptionInfo info = ParseOptions(Reply({Container(1, {Entries(entries)})}));
  EXPECT_EQ(info->entryCount, entries.size());

  std::string fields = "ID:1,DT:1";
  while (fields.size() < Most / 2) fields += ",ID:0,DT:0,DA:0";
  const std::string layout = "P{" + fields + "}C{NE:1,LD:1}D{DA:0}";
  EXPECT_EQ(Describe(ParseOptions(Reply(layout, std::string(Most / 2, '\x01')))), "");
}

}  // namespace
