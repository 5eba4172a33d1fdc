// Option information from replies: layouts, values, lists, and where a broken one ends.

#include <gtest/gtest.h>

#include <cstring>

#include "hvapi.h"
#include "support/reply_records.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

TEST(OptionInfo, ReadsEveryLayout) {
  const ReplyLayout layouts[] = {
      {},
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
  const struct {
    const char* layout;
    const char* expected;
  } cases[] = {
      {"P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}", SampleText},
      {"  ID: 1,DT:\t+1}}{NE:2,LD:02xy}D}LD:1;,DA}", SampleText},
      {"P{IDx1,DT=1,SE:0}C{NE.2,LD:2}D{LD:1,DA:0,}", SampleText},
      {"P{ID:1,DT:1,SE:-5}C{NE:2,LD:2,,,:,SE}D{LD:1,DA:0}", SampleText},
      // A section has at most one field more than it has colons: here no data type is read.
      {"P{ID=1,DT=1}C{NE:1,LD:0}D{LD:1,DA:0}", ""},
      // Keys are compared with their letter case, from the first character of an element on.
      {"P{id:1,dt:1}C{NE:2,LD:2}D{LD:1,DA:0}", ""},
      {"P{}C{}D{}", ""},
      {"P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0", ""},
      {"P{ID:1,DT:1}C{NE:2,LD:2}", ""},
      {"P{ID:1,DT:1", ""},
      {"P{ID:99999999999999999999,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}", ""},
      {"", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Describe(ParseOptions(Reply(c.layout, body))), c.expected) << c.layout;
  }
}

// A reply whose first entry, or first group, has these fields.
std::string EntryReply(std::vector<ReplyItem> fields) {
  return Reply({Container(1, {Entries({Entry(std::move(fields))})})});
}
std::string GroupReply(std::vector<ReplyItem> fields) {
  return Reply({Container(1, {Groups({Container(2, std::move(fields))})})});
}

TEST(OptionInfo, ReadsValuesByWidthAndType) {
  const struct {
    const char* what;
    std::vector<ReplyItem> fields;
    const char* expected;
  } cases[] = {
      {"1 byte is signed", {Integer(1, "\xFF"), Integer(5, "\x7F")}, "(4294967295 127 NULL)"},
      {"2 bytes are not", {Integer(1, "\xFF\xFF"), Integer(5, "\x80\x01")}, "(65535 32769 NULL)"},
      {"4 bytes", {Integer(1, "\xFF\xFF\xFF\xFE")}, "(4294967294 0 NULL)"},
      {"other widths", {Integer(1, "\x01\x02\x03"), Integer(5, ""), Text(6, "x")}, "(0 0 \"x\")"},
      {"8 bytes", {Integer(1, "12345678"), Integer(5, "\x05")}, "(0 5 NULL)"},
      {"text as integer", {Text(1, "\x07"), Integer(5, "\x05")}, "(0 5 NULL)"},
      {"container as integer",
       {Container(1, {Integer(1, "\x09")}), Integer(5, "\x05")},
       "(0 5 NULL)"},
      {"integer as text", {Integer(6, "ab")}, "(0 0 \"ab\")"},
      {"container as text", {Container(6, {Text(6, "no")}), Integer(1, "\x01")}, "(1 0 NULL)"},
      {"no more than a prefix",
       {Other(1, 3), Other(6, 9), Other(2, -1), Integer(5, "\x05")},
       "(0 5 NULL)"},
      {"unknown identifiers",
       {Integer(2, "\x01"), Text(0, "zero"), Container(4, {Integer(1, "\x08")}),
        Integer(-1, "\x02"), Text(6, "end")},
       "(0 0 \"end\")"},
      {"repeated",
       {Text(6, "first"), Integer(1, "\x01"), Text(6, ""), Text(1, "z"), Integer(5, "\x05")},
       "(0 5 \"\")"},
      {"repeated by what has no text",
       {Text(6, "first"), Other(6, 3), Container(6, {})},
       "(0 0 \"first\")"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Describe(ParseOptions(EntryReply(c.fields))), c.expected) << c.what;
  }
}

TEST(OptionInfo, ReadsGroups) {
  const struct {
    const char* what;
    std::vector<ReplyItem> fields;
    const char* expected;
  } cases[] = {
      {"integers as texts", {Integer(1, "ab"), Integer(2, "")}, " \"ab\"/NULL[]"},
      {"repeated texts",
       {Text(1, "one"), Text(2, "two"), Text(1, ""), Text(2, "three")},
       " NULL/\"three\"[]"},
      {"repeated values", {Values({"\x01", "\x02"}), Values({"\x03"})}, " NULL/NULL[3]"},
      {"values that end as none", {Values({"\x01", "\x02"}), Values({})}, " NULL/NULL[]"},
      {"no container of values",
       {Values({"\x01"}), Integer(3, "\x02"), Text(3, "\x03"), Other(3, 4), Text(1, "n")},
       " \"n\"/NULL[1]"},
      {"values of other shapes",
       {Container(3,
                  {Integer(1, "\x01"), Text(1, "x"), Other(1, 3), Container(1, {Container(1, {})}),
                   Container(0, {Integer(2, "\x02"), Integer(1, "\x05"), Text(9, "y")})}),
        Text(1, "n")},
       " \"n\"/NULL[0 0 0 0 5]"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Describe(ParseOptions(GroupReply(c.fields))), c.expected) << c.what;
  }
}

TEST(OptionInfo, ReadsLists) {
  const ReplyItem one = Entry({Integer(1, "\x01")});
  const ReplyItem two = Entry({Integer(1, "\x02")});
  const ReplyItem group = Container(2, {Text(1, "g")});
  const struct {
    const char* what;
    std::vector<ReplyItem> items;
    const char* expected;
  } cases[] = {
      {"nothing", {}, ""},
      {"another first item", {Container(2, {Entries({one})})}, ""},
      {"the first item only", {Text(4, "x"), Container(1, {Entries({one})})}, ""},
      {"not even the second of its kind",
       {Container(1, {Entries({one})}), Container(1, {Entries({two})})},
       "(1 0 NULL)"},
      {"no container", {Integer(1, "\x01"), Container(1, {Entries({one})})}, ""},
      {"lists in any order, among others",
       {Container(1, {Text(2, "x"), Groups({group}), Container(2, {one, two}), Other(7, 7),
                      Entries({two, one})})},
       "(2 0 NULL)(1 0 NULL) \"g\"/NULL[]"},
      {"lists that are no containers",
       {Container(1, {Integer(1, "\x01"), Text(3, "abc"), Other(1, 5), Entries({one})})},
       "(1 0 NULL)"},
      {"repeated lists",
       {Container(1, {Entries({one, two}), Groups({group, group}), Entries({two}), Groups({})})},
       "(2 0 NULL)"},
      {"entries that are no containers",
       {Container(1, {Entries({Integer(1, "\x07"), one, Text(1, "x"), Other(1, 3)})})},
       "(0 0 NULL)(1 0 NULL)(0 0 NULL)(0 0 NULL)"},
      {"containers that are walked go by their count",
       {WithLength(
           Container(1, {WithLength(Entries({WithLength(one, 0)}), 0xFFFF), Groups({group})}), 1)},
       "(1 0 NULL) \"g\"/NULL[]"},
      {"what a count leaves out is read as what follows",
       {Container(1, {WithCount(Entries({one, Container(3, {group})}), 1)})},
       "(1 0 NULL)"},
      {"containers that are passed over go by their length",
       {Container(1, {WithCount(Container(2, {one, two}), 0xFFFF), Entries({one})})},
       "(1 0 NULL)"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Describe(ParseOptions(Reply(c.items))), c.expected) << c.what;
}

TEST(OptionInfo, StopsAtWhatLeadsOutOfTheReply) {
  const ReplyLayout bytes = {
      {{"ID", 1}, {"DT", 1}}, {{"NE", 1}, {"LD", 1}}, {{"LD", 1}, {"DA", 0}}};
  const ReplyLayout words = {
      {{"ID", 1}, {"DT", 1}}, {{"NE", 4}, {"LD", 4}}, {{"LD", 4}, {"DA", 0}}};
  const ReplyItem one = Entry({Integer(1, "\x01")});
  const ReplyItem last = Integer(5, "\x05");
  const struct {
    const char* what;
    ReplyLayout layout;
    std::vector<ReplyItem> items;
    const char* expected;
  } cases[] = {
      {"text too long",
       bytes,
       {Entries({Entry({Integer(1, "\x01"), WithLength(Text(6, "abc"), 100), last})})},
       "(1 0 NULL)"},
      {"text of negative length",
       bytes,
       {Entries({Entry({Integer(1, "\x01"), WithLength(Text(6, "abc"), -1), last})})},
       "(1 0 NULL)"},
      {"integer too long",
       words,
       {Entries({Entry({WithLength(Integer(1, "\x01"), 0x7FFFFFFF), last}), one})},
       "(0 0 NULL)"},
      {"length of 4 GiB",
       words,
       {Entries({Entry({WithLength(Text(6, "abc"), 0xFFFFFFFF), last})})},
       "(0 0 NULL)"},
      {"container of negative length",
       bytes,
       {Entries({one}), WithLength(Container(4, {}), -3), Groups({})},
       "(1 0 NULL)"},
      {"container of negative count",
       bytes,
       {Entries({one}), WithCount(Groups({}), -1), Entries({})},
       "(1 0 NULL)"},
      {"more children than there are",
       bytes,
       {WithCount(Entries({one, one}), 127)},
       "(1 0 NULL)(1 0 NULL)"},
      {"far more", words, {WithCount(Entries({one}), 0x7FFFFFFF)}, "(1 0 NULL)"},
      {"more values than there are",
       words,
       {Groups({Container(2, {WithCount(Values({"\x01", "\x02"}), 0x3FFFFFFF)})})},
       " NULL/NULL[1 2]"},
      {"as many as would wrap an array's size", words, {WithCount(Groups({}), 0x10000001)}, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Describe(ParseOptions(Reply({Container(1, c.items)}, c.layout))), c.expected)
        << c.what;
  }
}

}  // namespace
