// Records of replies for tests: parsed from blocks that end with the reply, described as text, and
// samples that fill every field.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/reply_builder.h"

namespace hvtest {

using OptionInfo = std::unique_ptr<HvOptionInfo, decltype(&HvFreeOptionInfo)>;
using JobAccount = std::unique_ptr<HvJobAccount, decltype(&HvFreeJobAccount)>;

inline OptionInfo ParseOptions(const std::string& reply) {
  const ReplyBlock block(reply);
  return {HvParseOptionInfo(block.Address()), HvFreeOptionInfo};
}

inline JobAccount ParseAlert(const std::string& reply) {
  const ReplyBlock block(reply);
  return {HvParseJobAccountingAlert(block.Address()), HvFreeJobAccount};
}

inline std::string Quoted(const char* text) {
  return text == nullptr ? "NULL" : '"' + std::string(text) + '"';
}

// Reads all of a record: "(1 5 "six") name/description[values]", entries first.
inline std::string Describe(const OptionInfo& info) {
  if (info == nullptr) return "NULL";
  std::string text;
  EXPECT_EQ(info->entryCount == 0, info->entries == nullptr);
  EXPECT_EQ(info->groupCount == 0, info->groups == nullptr);
  for (uint32_t i = 0; i < info->entryCount; ++i) {
    const HvOptionEntry& entry = info->entries[i];
    text += "(" + std::to_string(entry.value1) + " " + std::to_string(entry.value5) + " " +
            Quoted(entry.text) + ")";
  }
  for (uint32_t i = 0; i < info->groupCount; ++i) {
    const HvOptionGroup& group = info->groups[i];
    EXPECT_EQ(group.valueCount == 0, group.values == nullptr);
    text += " " + Quoted(group.name) + "/" + Quoted(group.description) + "[";
    for (uint32_t k = 0; k < group.valueCount; ++k) {
      text += (k == 0 ? "" : " ") + std::to_string(group.values[k]);
    }
    text += "]";
  }
  return text;
}

inline ReplyItem Entries(std::vector<ReplyItem> entries) {
  return Container(1, std::move(entries));
}
inline ReplyItem Groups(std::vector<ReplyItem> groups) {
  return Container(3, std::move(groups));
}
inline ReplyItem Entry(std::vector<ReplyItem> fields) {
  return Container(9, std::move(fields));
}
inline ReplyItem Values(const std::vector<std::string>& values) {
  std::vector<ReplyItem> children;
  for (const std::string& value : values) children.push_back(Container(7, {Integer(1, value)}));
  return Container(3, children);
}

// The last byte of the last item shows in the record.
inline std::vector<ReplyItem> SampleOptions() {
  const std::string word("\x01\x00", 2);
  const std::string longWord("\x00\x01\x00\x02", 4);
  return {Container(1, {Entries({Entry({Integer(1, "\x07"), Integer(5, word), Text(6, "A4")}),
                                 Entry({Text(6, ""), Integer(5, "\xFF")})}),
                        Groups({Container(2, {Text(1, ""), Text(2, "")}),
                                Container(2, {Text(1, "tray"), Text(2, "Paper source"),
                                              Values({"\x01", longWord, "\x80"})})})})};
}
inline constexpr const char* SampleText =
    "(7 256 \"A4\")(0 4294967295 \"\")"
    " NULL/NULL[] \"tray\"/\"Paper source\"[1 65538 4294967168]";

// Items for every field of a block, each different, and the block that they make. Fields are given
// group by group by their widths; negative ones are those of texts.
inline std::vector<ReplyItem> FullGroups(const std::vector<std::vector<int>>& widths,
                                         std::string* block) {
  std::vector<ReplyItem> groups;
  block->clear();
  for (const std::vector<int>& fields : widths) {
    const auto group = static_cast<uint32_t>(groups.size() + 1);
    groups.push_back(Container(group, {}));
    for (uint32_t item = 1; item <= fields.size(); ++item) {
      const int width = fields[item - 1];
      const uint32_t value = 0x81000000 + group * 0x10000 + item;
      std::string bytes(static_cast<std::size_t>(std::abs(width)), static_cast<char>('a' + item));
      if (width < 0) {
        *block += bytes.substr(1) + '\0';
        groups.back().children.push_back(Text(item, bytes));
        continue;
      }
      for (int i = 0; i < 4; ++i) bytes[i] = static_cast<char>(value >> (24 - 8 * i));
      block->append(reinterpret_cast<const char*>(&value), sizeof value);
      groups.back().children.push_back(Integer(item, bytes));
    }
  }
  return groups;
}

template <typename Block>
std::string BytesOf(const Block* block) {
  if (block == nullptr) return "NULL";
  return {reinterpret_cast<const char*>(block), sizeof *block};
}
inline std::string JobBlock(const JobAccount& record) {
  return BytesOf(record->jobBlock);
}
inline std::string DeviceBlock(const JobAccount& record) {
  return BytesOf(record->deviceBlock);
}

inline std::vector<ReplyItem> SampleAlert(std::string* job, std::string* device) {
  const std::vector<std::vector<int>> jobFields = {{4, 4, 4, 4, 4, 4, -10, 4, 4, 4, -16},
                                                   {-41, -21, -21, 4, 4, 4, 4, 4, 4, 4}};
  const std::vector<std::vector<int>> deviceFields = {
      {4}, {4, 4, 4, 4, 4, -16, 4, -10}, {4, 4, 4, 4, 4}};
  return {Container(1, {Container(1, {Text(1, "passed over"), Container(2, {})}),
                        Container(3, FullGroups(deviceFields, device)), Text(2, "no job"),
                        Container(2, FullGroups(jobFields, job))})};
}

}  // namespace hvtest
