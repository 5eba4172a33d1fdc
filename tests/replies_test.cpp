// Replies: layouts, options, job-accounting alerts; where a broken one ends.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/reply_records.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

TEST(OptionInfo, ReadsEveryLayout) {
  const ReplyLayout layouts[] = {
      {{{"DT", 2}, {"ID", 4}}, {{"LD", 4}, {"NE", 4}}, {{"LD", 2}, {"DA", 9}}},
      {{{"SE", 1}, {"ID", 2}, {"VN", 3}, {"DT", 1}, {"BF", 5}},
       {{"ID", 1}, {"NE", 1}, {"DT", 2}, {"LD", 2}, {"DD", 1}},
       {{"TD", 2}, {"LD", 4}, {"NE", 1}, {"DA", 1}, {"DL", 1}, {"TL", 7}}},
      // Keys that are not known, and fields without bytes.
      {{{"ID", 1}, {"ZZ", 3}, {"DT", 1}, {"SE", 0}},
       {{"X", 1}, {"NE", 2}, {"LD", 2}},
       {{"LD", 1}, {"DA", 0}, {"id", 2}}},
  };
  for (const ReplyLayout& layout : layouts) {
    EXPECT_EQ(Describe(ParseOptions(Reply(SampleOptions(), layout))), SampleText)
        << LayoutText(layout);
  }
}

TEST(OptionInfo, ReadsTheTextOfALayout) {
  const std::string body = ReplyBody({}, SampleOptions());
  const std::pair<const char*, const char*> cases[] = {
      {"P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}", SampleText},
      {"  ID: 1,DT:\t+1}}{NE:2,LD:02xy}D}LD:1;,DA}", SampleText},
      {"P{IDx1,DT=1,SE:0}C{NE.2,LD:2}D{LD:1,DA:0,}", SampleText},
      {"P{ID:1,DT:1,SE:-5}C{NE:2,LD:2,,,:,SE}D{LD:1,DA:0}", SampleText},
      // A section has at most one field more than it has colons: here no data type is read.
      {"P{ID=1,DT=1}C{NE:1,LD:0}D{LD:1,DA:0}", ""},
      // Keys are compared with their letter case, from the first character of an element on.
      {"P{id:1,dt:1}C{NE:2,LD:2}D{LD:1,DA:0}", ""},
      {"P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0", ""},
      {"P{ID:99999999999999999999,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}", ""},
  };
  for (const auto& [layout, expected] : cases) {
    EXPECT_EQ(Describe(ParseOptions(Reply(layout, body))), expected) << layout;
  }
}

// A reply with these lists, or whose first entry or first group has these fields.
std::string Lists(std::vector<ReplyItem> lists, const ReplyLayout& layout = {}) {
  return Reply({Container(1, std::move(lists))}, layout);
}
std::string EntryOf(std::vector<ReplyItem> fields) {
  return Lists({Entries({Entry(std::move(fields))})});
}
std::string GroupOf(std::vector<ReplyItem> fields) {
  return Lists({Groups({Container(2, std::move(fields))})});
}

using Cases = std::vector<std::pair<std::string, const char*>>;

void Check(const Cases& cases) {
  for (const auto& [reply, expected] : cases) EXPECT_EQ(Describe(ParseOptions(reply)), expected);
}

TEST(OptionInfo, ReadsValuesByWidthAndType) {
  Check({
      // One byte is signed, two are not; other widths than these and four are read over.
      {EntryOf({Integer(1, "\xFF"), Integer(5, "\x7F")}), "(4294967295 127 NULL)"},
      {EntryOf({Integer(1, "\xFF\xFF"), Integer(5, "\x80\x01")}), "(65535 32769 NULL)"},
      {EntryOf({Integer(1, "\xFF\xFF\xFF\xFE")}), "(4294967294 0 NULL)"},
      {EntryOf({Integer(1, "\1\2\3"), Integer(5, ""), Text(6, "x")}), "(0 0 \"x\")"},
      // Items of another type than is asked for, and of types with a prefix alone.
      {EntryOf({Text(1, "\7"), Container(5, {Integer(1, "\11")}), Integer(6, "ab")}),
       "(0 0 \"ab\")"},
      {EntryOf({Container(6, {Text(6, "no")}), Other(6, 9), Other(1, -1), Integer(5, "\5")}),
       "(0 5 NULL)"},
      // Unknown identifiers.
      {EntryOf({Integer(2, "\1"), Text(0, "zero"), Container(4, {Integer(1, "\10")}),
                Integer(-1, "\2"), Text(6, "end")}),
       "(0 0 \"end\")"},
      // The last one counts, but for what has no text.
      {EntryOf({Text(6, "first"), Integer(1, "\1"), Text(6, ""), Text(1, "z")}), "(0 0 \"\")"},
      {EntryOf({Text(6, "first"), Other(6, 3), Container(6, {})}), "(0 0 \"first\")"},
  });
}

TEST(OptionInfo, ReadsGroups) {
  Check({
      {GroupOf({Integer(1, "ab"), Integer(2, "")}), " \"ab\"/NULL[]"},
      {GroupOf({Text(1, "one"), Text(2, "two"), Text(1, ""), Text(2, "three")}),
       " NULL/\"three\"[]"},
      {GroupOf({Values({"\1", "\2"}), Values({})}), " NULL/NULL[]"},
      // Values that are no container, and values of other shapes.
      {GroupOf({Values({"\1"}), Integer(3, "\2"), Text(3, "\3"), Other(3, 4), Text(1, "n")}),
       " \"n\"/NULL[1]"},
      {GroupOf({Container(3, {Integer(1, "\1"), Text(1, "x"), Other(1, 3),
                              Container(1, {Container(1, {})}),
                              Container(0, {Integer(2, "\2"), Integer(1, "\5"), Text(9, "y")})}),
                Text(1, "n")}),
       " \"n\"/NULL[0 0 0 0 5]"},
  });
}

TEST(OptionInfo, ReadsLists) {
  const ReplyItem one = Entry({Integer(1, "\1")});
  const ReplyItem two = Entry({Integer(1, "\2")});
  const ReplyItem group = Container(2, {Text(1, "g")});
  Check({
      // Only the first item of all is looked at, and only when it is a container 1.
      {Reply({}), ""},
      {Reply({Container(2, {Entries({one})}), Container(1, {Entries({one})})}), ""},
      {Reply({Integer(1, "\1"), Container(1, {Entries({one})})}), ""},
      {Reply({Container(1, {Entries({one})}), Container(1, {Entries({two})})}), "(1 0 NULL)"},
      // Lists in any order, among others, some of them no containers; the last one counts.
      {Lists({Text(2, "x"), Groups({group}), Container(2, {one, two}), Other(7, 7),
              Entries({two, one})}),
       "(2 0 NULL)(1 0 NULL) \"g\"/NULL[]"},
      {Lists({Entries({one, two}), Groups({group, group}), Entries({two}), Groups({})}),
       "(2 0 NULL)"},
      // Entries that are no containers.
      {Lists({Entries({Integer(1, "\7"), one, Text(1, "x"), Other(1, 3)})}),
       "(0 0 NULL)(1 0 NULL)(0 0 NULL)(0 0 NULL)"},
      // Containers that are walked go by their count, others by their length.
      {Reply({WithLength(
           Container(1, {WithLength(Entries({WithLength(one, 0)}), 0xFFFF), Groups({group})}), 1)}),
       "(1 0 NULL) \"g\"/NULL[]"},
      {Lists({WithCount(Entries({one, Container(3, {group})}), 1)}), "(1 0 NULL)"},
      {Lists({WithCount(Container(2, {one, two}), 0xFFFF), Entries({one})}), "(1 0 NULL)"},
  });
}

TEST(OptionInfo, StopsAtWhatLeadsOutOfTheReply) {
  const ReplyLayout bytes = {
      {{"ID", 1}, {"DT", 1}}, {{"NE", 1}, {"LD", 1}}, {{"LD", 1}, {"DA", 0}}};
  const ReplyLayout words = {
      {{"ID", 1}, {"DT", 1}}, {{"NE", 4}, {"LD", 4}}, {{"LD", 4}, {"DA", 0}}};
  const ReplyItem one = Entry({Integer(1, "\1")});
  const ReplyItem last = Integer(5, "\5");
  const ReplyItem text = Text(6, "abc");
  Check({
      // Texts and integers that are too long, or of negative length.
      {Lists({Entries({Entry({Integer(1, "\1"), WithLength(text, -1), last})})}, bytes),
       "(1 0 NULL)"},
      {Lists({Entries({Entry({WithLength(Integer(1, "\1"), 0x7FFFFFFF), last}), one})}, words),
       "(0 0 NULL)"},
      // Containers of negative length or count, and of more children than there are.
      {Lists({Entries({one}), WithLength(Container(4, {}), -3), Groups({})}, bytes), "(1 0 NULL)"},
      {Lists({Entries({one}), WithCount(Groups({}), -1), Entries({})}, bytes), "(1 0 NULL)"},
      {Lists({WithCount(Entries({one}), 0x7FFFFFFF)}, words), "(1 0 NULL)"},
      {Lists({Groups({Container(2, {WithCount(Values({"\1", "\2"}), 0x3FFFFFFF)})})}, words),
       " NULL/NULL[1 2]"},
      {Lists({WithCount(Groups({}), 0x10000001)}, words), ""},  // would wrap an array's size
      {Reply(LayoutText({}), ReplyBody({}, {Container(1, {WithCount(Entries({one}), 2)})}) + "x"),
       "(1 0 NULL)"},  // half a prefix is no child
  });
}

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
