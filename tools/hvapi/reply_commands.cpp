// hvapi reply options, hvapi reply accounting

#include <cstddef>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <span>
#include <vector>

#include "families.h"
#include "program.h"
#include "source_file.h"

namespace hvtool {
namespace {

constexpr const char* FileManual =
    "FILE holds the bytes of a reply as the printer sent them: two bytes of length, high byte "
    "first, then as many bytes as that says; bytes behind those are not looked at. A reply that is "
    "damaged inside is shown as far as it can be read.\n"
    "\n"
    "Items are shown by the numbers that the reply gives them; what they mean depends on the "
    "printer.";

struct Options {
  std::string file;
  bool json = false;
};

struct Reply {
  int status;
  std::vector<uint8_t> bytes;
};

// A whole reply, or a status that has been reported.
Reply ReadReply(const std::string& path) {
  constexpr std::size_t LengthWord = 2;
  Reply reply = {HV_OK, std::vector<uint8_t>(LengthWord + 0xFFFF)};
  std::ifstream file;
  const bool isInput = path == StandardInput;
  if (isInput) {
    ReadInputAsBytes();
  } else {
    file.open(path, std::ios::binary);
    if (!file.is_open()) return {Outcome(HV_CANNOT_OPEN, "cannot read " + Quoted(path)), {}};
  }
  std::istream& stream = isInput ? std::cin : file;
  stream.read(reinterpret_cast<char*>(reply.bytes.data()),
              static_cast<std::streamsize>(reply.bytes.size()));
  const auto count = static_cast<std::size_t>(stream.gcount());
  const std::size_t length = std::size_t{reply.bytes[0]} * 256 + reply.bytes[1];
  const std::size_t needed = count < LengthWord ? LengthWord : LengthWord + length;
  if (stream.bad()) return {Outcome(HV_READ_FAILED, "cannot read " + Quoted(path)), {}};
  if (count < needed) {
    return {Fail(HV_UNUSABLE_FILE, Quoted(path) + " holds " + std::to_string(count) +
                                       " bytes of a reply of " + std::to_string(needed)),
            {}};
  }
  return reply;
}

Json TextOrNull(const char* text) {
  return text == nullptr ? Json() : Json(text);
}

std::string Cell(const Json& value) {
  return value.is_null() ? "-" : ValueText(value);
}

// ---- Option information

Json OptionsAsJson(const HvOptionInfo& info) {
  Json result = {{"entries", Json::array()}, {"groups", Json::array()}};
  for (const HvOptionEntry& entry : std::span(info.entries, info.entryCount)) {
    result["entries"].push_back({{"value1", uint32_t{entry.value1}},
                                 {"value5", uint32_t{entry.value5}},
                                 {"text", TextOrNull(entry.text)}});
  }
  for (const HvOptionGroup& group : std::span(info.groups, info.groupCount)) {
    result["groups"].push_back(
        {{"name", TextOrNull(group.name)},
         {"description", TextOrNull(group.description)},
         {"values", std::vector<uint32_t>(group.values, group.values + group.valueCount)}});
  }
  return result;
}

void PrintOptions(const Json& options) {
  Table entries{"ENTRY", "VALUE1", "VALUE5", "TEXT"};
  for (const auto& [index, entry] : options["entries"].items()) {
    entries.Add({index, Cell(entry["value1"]), Cell(entry["value5"]), Cell(entry["text"])});
  }
  entries.Print();
  PrintLine("");
  Table groups{"GROUP", "NAME", "VALUES", "DESCRIPTION"};
  for (const auto& [index, group] : options["groups"].items()) {
    std::string values;
    for (const Json& value : group["values"]) values += (values.empty() ? "" : " ") + value.dump();
    groups.Add(
        {index, Cell(group["name"]), values.empty() ? "-" : values, Cell(group["description"])});
  }
  groups.Print();
}

int ShowOptions(const Options& options) {
  const Reply reply = ReadReply(options.file);
  if (reply.status != HV_OK) return reply.status;
  const std::unique_ptr<HvOptionInfo, decltype(&HvFreeOptionInfo)> info(
      HvParseOptionInfo(reply.bytes.data()), HvFreeOptionInfo);
  if (info == nullptr) return Outcome(HV_NO_MEMORY, "cannot parse " + Quoted(options.file));
  const Json result = OptionsAsJson(*info);
  if (options.json) {
    PrintJson(result);
  } else {
    PrintOptions(result);
  }
  return HV_OK;
}

// ---- Job accounting

struct BlockField {
  int group;
  int item;
  std::size_t offset;
  bool text;
};

constexpr BlockField JobFields[] = {
    {1, 1, offsetof(HvJobAccountJob, j1Item1), false},
    {1, 2, offsetof(HvJobAccountJob, j1Item2), false},
    {1, 3, offsetof(HvJobAccountJob, j1Item3), false},
    {1, 4, offsetof(HvJobAccountJob, j1Item4), false},
    {1, 5, offsetof(HvJobAccountJob, j1Item5), false},
    {1, 6, offsetof(HvJobAccountJob, j1Item6), false},
    {1, 7, offsetof(HvJobAccountJob, j1Item7), true},
    {1, 8, offsetof(HvJobAccountJob, j1Item8), false},
    {1, 9, offsetof(HvJobAccountJob, j1Item9), false},
    {1, 10, offsetof(HvJobAccountJob, j1Item10), false},
    {1, 11, offsetof(HvJobAccountJob, j1Item11), true},
    {2, 1, offsetof(HvJobAccountJob, j2Item1), true},
    {2, 2, offsetof(HvJobAccountJob, j2Item2), true},
    {2, 3, offsetof(HvJobAccountJob, j2Item3), true},
    {2, 4, offsetof(HvJobAccountJob, j2Item4), false},
    {2, 5, offsetof(HvJobAccountJob, j2Item5), false},
    {2, 6, offsetof(HvJobAccountJob, j2Item6), false},
    {2, 7, offsetof(HvJobAccountJob, j2Item7), false},
    {2, 8, offsetof(HvJobAccountJob, j2Item8), false},
    {2, 9, offsetof(HvJobAccountJob, j2Item9), false},
    {2, 10, offsetof(HvJobAccountJob, j2Item10), false},
};

constexpr BlockField DeviceFields[] = {
    {1, 1, offsetof(HvJobAccountDevice, d1Item1), false},
    {2, 1, offsetof(HvJobAccountDevice, d2Item1), false},
    {2, 2, offsetof(HvJobAccountDevice, d2Item2), false},
    {2, 3, offsetof(HvJobAccountDevice, d2Item3), false},
    {2, 4, offsetof(HvJobAccountDevice, d2Item4), false},
    {2, 5, offsetof(HvJobAccountDevice, d2Item5), false},
    {2, 6, offsetof(HvJobAccountDevice, d2Item6), true},
    {2, 7, offsetof(HvJobAccountDevice, d2Item7), false},
    {2, 8, offsetof(HvJobAccountDevice, d2Item8), true},
    {3, 1, offsetof(HvJobAccountDevice, d3Item1), false},
    {3, 2, offsetof(HvJobAccountDevice, d3Item2), false},
    {3, 3, offsetof(HvJobAccountDevice, d3Item3), false},
    {3, 4, offsetof(HvJobAccountDevice, d3Item4), false},
    {3, 5, offsetof(HvJobAccountDevice, d3Item5), false},
};

// The groups of a block, each with its items; null for no block.
Json BlockAsJson(const void* block, std::span<const BlockField> fields) {
  if (block == nullptr) return nullptr;
  Json result = Json::object();
  for (const BlockField& field : fields) {
    const char* at = static_cast<const char*>(block) + field.offset;
    Json& value =
        result["group" + std::to_string(field.group)]["item" + std::to_string(field.item)];
    if (field.text) {
      value = at;
    } else {
      uint32_t number = 0;
      std::memcpy(&number, at, sizeof number);
      value = number;
    }
  }
  return result;
}

void PrintAccount(const Json& account) {
  Table table{"BLOCK", "GROUP", "ITEM", "VALUE"};
  for (const auto& [block, groups] : account.items()) {
    for (const auto& [group, items] : groups.items()) {
      for (const auto& [item, value] : items.items()) table.Add({block, group, item, Cell(value)});
    }
  }
  table.Print();
}

int ShowAccount(const Options& options) {
  const Reply reply = ReadReply(options.file);
  if (reply.status != HV_OK) return reply.status;
  const std::unique_ptr<HvJobAccount, decltype(&HvFreeJobAccount)> record(
      HvParseJobAccountingAlert(reply.bytes.data()), HvFreeJobAccount);
  if (record == nullptr) return Outcome(HV_NO_MEMORY, "cannot parse " + Quoted(options.file));
  const Json result = {{"job", BlockAsJson(record->jobBlock, JobFields)},
                       {"device", BlockAsJson(record->deviceBlock, DeviceFields)}};
  if (options.json) {
    PrintJson(result);
  } else {
    PrintAccount(result);
  }
  return HV_OK;
}

void AddShow(CLI::App* group, const std::string& name, const std::string& brief,
             int (*show)(const Options&)) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(group, name, brief, FileManual);
  AddSourceArgument(command, "FILE", &options->file, "The file that holds the reply");
  AddJsonOption(command, &options->json);
  OnRun(command, [options, show] { return show(*options); });
}

}  // namespace

void AddReplyCommands(CLI::App* program) {
  CLI::App* group =
      AddCommandGroup(program, "reply", "show what a printer has replied",
                      "Reads the replies and alerts that a printer has sent, kept in a file.");
  AddShow(group, "options", "show the option information of a reply", ShowOptions);
  AddShow(group, "accounting", "show a job-accounting alert", ShowAccount);
}

}  // namespace hvtool
