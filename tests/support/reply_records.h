// Records of replies for tests: parsed from blocks that end with the reply, described as text, and
// samples that fill every field.
#pragma once

#include <gtest/gtest.h>

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

// A row of the printed tables of the two blocks.
struct BlockField {
  std::size_t offset;
  std::size_t width;
  int group;
  int item;
  bool text;
};
inline constexpr BlockField JobFields[] = {
    {0, 4, 1, 1, false},    {4, 4, 1, 2, false},   {8, 4, 1, 3, false},   {12, 4, 1, 4, false},
    {16, 4, 1, 5, false},   {20, 4, 1, 6, false},  {24, 10, 1, 7, true},  {34, 4, 1, 8, false},
    {38, 4, 1, 9, false},   {42, 4, 1, 10, false}, {46, 16, 1, 11, true}, {62, 41, 2, 1, true},
    {103, 21, 2, 2, true},  {124, 21, 2, 3, true}, {145, 4, 2, 4, false}, {149, 4, 2, 5, false},
    {153, 4, 2, 6, false},  {157, 4, 2, 7, false}, {161, 4, 2, 8, false}, {165, 4, 2, 9, false},
    {169, 4, 2, 10, false},
};
inline constexpr BlockField DeviceFields[] = {
    {0, 4, 1, 1, false},  {4, 4, 2, 1, false},  {8, 4, 2, 2, false},  {12, 4, 2, 3, false},
    {16, 4, 2, 4, false}, {20, 4, 2, 5, false}, {24, 16, 2, 6, true}, {40, 4, 2, 7, false},
    {44, 10, 2, 8, true}, {54, 4, 3, 1, false}, {58, 4, 3, 2, false}, {62, 4, 3, 3, false},
    {66, 4, 3, 4, false}, {70, 4, 3, 5, false},
};

// Items for every field of a block, each different, and the block that they make.
template <std::size_t Count>
std::vector<ReplyItem> FullGroups(const BlockField (&fields)[Count], std::string* block) {
  std::vector<ReplyItem> groups;
  block->clear();
  for (const BlockField& field : fields) {
    if (groups.empty() || groups.back().identifier != field.group)
      groups.push_back(Container(field.group, {}));
    std::string bytes;
    if (field.text) {
      bytes = std::string(field.width, static_cast<char>('a' + field.item));
      *block += bytes.substr(1) + '\0';
    } else {
      const auto value = static_cast<uint32_t>(0x81000000 + field.group * 0x10000 + field.item);
      for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
      block->append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    groups.back().children.push_back(field.text ? Text(field.item, bytes)
                                                : Integer(field.item, bytes));
    EXPECT_EQ(block->size(), field.offset + field.width);
  }
  return groups;
}

inline std::string JobBlock(const JobAccount& record) {
  return record->jobBlock == nullptr ? "NULL"
                                     : std::string(reinterpret_cast<const char*>(record->jobBlock),
                                                   sizeof *record->jobBlock);
}
inline std::string DeviceBlock(const JobAccount& record) {
  return record->deviceBlock == nullptr
             ? "NULL"
             : std::string(reinterpret_cast<const char*>(record->deviceBlock),
                           sizeof *record->deviceBlock);
}

inline std::vector<ReplyItem> SampleAlert(std::string* job, std::string* device) {
  return {Container(1, {Container(1, {Text(1, "passed over"), Container(2, {})}),
                        Container(3, FullGroups(DeviceFields, device)), Text(2, "no job"),
                        Container(2, FullGroups(JobFields, job))})};
}

}  // namespace hvtest
