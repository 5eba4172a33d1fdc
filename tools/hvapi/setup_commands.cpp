// hvapi setup show, list

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "families.h"
#include "open_ini.h"
#include "program.h"

namespace hvtool {
namespace {

constexpr int AnyType = -1;

struct SetupDeleter {
  void operator()(HvQsfHandle* handle) const { HvQsfClose(handle); }
};
using Setup = std::unique_ptr<HvQsfHandle, SetupDeleter>;

// Opens a file of whatever type, or of one type alone.
uint32_t Open(const std::string& file, int type, Setup* setup) {
  const uint32_t first = type == AnyType ? 0 : static_cast<uint32_t>(type);
  const uint32_t last = type == AnyType ? UINT8_MAX : first;
  uint32_t code = HV_UNKNOWN_MODEL;
  for (uint32_t candidate = first; candidate <= last && code == HV_UNKNOWN_MODEL; ++candidate) {
    HvQsfHandle* handle = nullptr;
    code = HvQsfOpen(file.c_str(), candidate, &handle);
    setup->reset(handle);
  }
  return code;
}

uint32_t HeaderNumber(const HvQsfHandle& setup, std::size_t offset, std::size_t width) {
  uint32_t value = 0;
  for (std::size_t i = width; i-- > 0;) value = value << 8 | setup.header[offset + i];
  return value;
}

bool IsVersion(const HvQsfHandle& setup, unsigned major, unsigned minor) {
  return setup.header[5] == major && setup.header[6] == minor;
}

// Where a block begins and ends. The library gives the size with the data in version 1.1 alone.
struct Range {
  uint32_t begin;
  uint32_t end;
};

Range RangeOf(const HvQsfHandle& setup, uint32_t block) {
  const uint32_t offset1 = HeaderNumber(setup, 44, 4);
  const uint32_t offset2 = HeaderNumber(setup, 50, 4);
  const uint32_t offset5 = HeaderNumber(setup, 56, 4);
  if (block == 1) return {offset1, offset2 == 0 ? setup.fileSize : offset2};
  if (block == 2) return {offset2, IsVersion(setup, 1, 0) ? setup.fileSize : offset5};
  return {offset5, setup.fileSize};
}

struct Block {
  uint32_t number;
  uint16_t entries;
  uint32_t offset;
  std::vector<uint8_t> bytes;
};

uint32_t ReadBlock(HvQsfHandle* setup, uint32_t number, Block* block) {
  constexpr std::size_t PrefixSize = 6;  // in version 1.1
  uint8_t* data = nullptr;
  uint16_t count = 0;
  const uint32_t code = HvQsfGetVariables(setup, number, &data, &count);
  const Range range = RangeOf(*setup, number);
  *block = {number, count, range.begin, {}};
  if (data != nullptr) {
    const uint8_t* const first = data + (IsVersion(*setup, 1, 1) ? PrefixSize : 0);
    block->bytes.assign(first, first + (range.end - range.begin));
  }
  HvMemFree(data);
  return code;
}

std::string Hex(const std::vector<uint8_t>& bytes, std::size_t from, std::size_t count,
                const char* separator) {
  std::string text;
  for (std::size_t i = from; i < from + count && i < bytes.size(); ++i) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", bytes[i]);
    text += (i == from ? "" : separator) + std::string(digits);
  }
  return text;
}

void PrintBlock(const Block& block) {
  constexpr std::size_t RowSize = 16;
  PrintLine("\nBlock " + std::to_string(block.number));
  for (std::size_t at = 0; at < block.bytes.size(); at += RowSize) {
    char offset[16];
    std::snprintf(offset, sizeof offset, "%06zX", block.offset + at);
    PrintLine(std::string(offset) + "  " + Hex(block.bytes, at, RowSize, " "));
  }
}

void PrintSetup(const HvQsfHandle& setup, const std::vector<Block>& blocks) {
  PrintLine("type " + std::to_string(setup.header[4]) + ", version " +
            std::to_string(setup.header[5]) + "." + std::to_string(setup.header[6]) + ", " +
            std::to_string(setup.fileSize) + " bytes\n");
  Table table{"BLOCK", "ENTRIES", "OFFSET", "BYTES"};
  for (const Block& block : blocks) {
    table.Add({std::to_string(block.number), std::to_string(block.entries),
               std::to_string(block.offset), std::to_string(block.bytes.size())});
  }
  table.Print();
  for (const Block& block : blocks) {
    if (!block.bytes.empty()) PrintBlock(block);
  }
}

Json AsJson(const std::string& file, const HvQsfHandle& setup, const std::vector<Block>& blocks) {
  Json list = Json::array();
  for (const Block& block : blocks) {
    list.push_back({{"block", block.number},
                    {"entries", block.entries},
                    {"offset", block.offset},
                    {"data", Hex(block.bytes, 0, block.bytes.size(), "")}});
  }
  return {{"file", file},
          {"type", setup.header[4]},
          {"version", std::to_string(setup.header[5]) + "." + std::to_string(setup.header[6])},
          {"size", setup.fileSize},
          {"blocks", list}};
}

struct ShowOptions {
  std::string file;
  int type = AnyType;
  bool json = false;
};

int Show(const ShowOptions& options) {
  if (options.type < AnyType || options.type > UINT8_MAX) {
    return Fail(HV_BAD_ARGUMENT, "types are numbers from 0 to 255");
  }
  Setup setup;
  const uint32_t opened = Open(options.file, options.type, &setup);
  if (opened == HV_WRONG_LANGUAGE) {
    return Fail(HV_WRONG_LANGUAGE, Quoted(options.file) + " is no quick setup file");
  }
  if (opened != HV_OK) return Outcome(opened, "cannot open " + Quoted(options.file));
  std::vector<Block> blocks;
  int status = HV_OK;
  for (const uint32_t number : {1U, 2U, 5U}) {
    Block block;
    const uint32_t code = ReadBlock(setup.get(), number, &block);
    if (code == HV_OK && block.entries != 0) blocks.push_back(std::move(block));
    if (code == HV_OK) continue;
    status = Fail(static_cast<int>(code),
                  "block " + std::to_string(number) + " does not lie in " + Quoted(options.file));
  }
  if (options.json) {
    PrintJson(AsJson(options.file, *setup, blocks));
  } else {
    PrintSetup(*setup, blocks);
  }
  return status;
}

struct ListOptions {
  std::string file;
  uint8_t setup = 0;
  int kind = 0;
  bool json = false;
};

constexpr Choice ListKinds[] = {{"required", QSF_LIST_REQUIRED},
                                {"optional", QSF_LIST_OPTIONAL},
                                {"exclude", QSF_LIST_EXCLUDE},
                                {"order", QSF_LIST_ORDER}};

int List(const ListOptions& options) {
  const OpenIni ini(options.file, INI_OPEN_READ);
  if (ini.Handle() == nullptr) return ini.ReportFailure();
  const std::string kind = ListKinds[options.kind - QSF_LIST_REQUIRED].word;
  uint8_t* values = nullptr;
  uint16_t count = 0;
  const uint32_t code = HvQsfIniGetSection(ini.Handle(), static_cast<uint32_t>(options.kind),
                                           options.setup, &values, &count);
  if (code != HV_OK) {
    return Outcome(code, "no list of " + kind + " variables for setup " +
                             std::to_string(options.setup) + " in " + Quoted(options.file));
  }
  const std::vector<uint8_t> bytes(values, values + std::size_t{2} * count);
  HvMemFree(values);
  Json variables = Json::array();
  for (std::size_t i = 0; i < bytes.size(); i += 2) variables.push_back(Hex(bytes, i, 2, ""));
  if (options.json) {
    PrintJson({{"file", options.file},
               {"setup", options.setup},
               {"kind", kind},
               {"variables", variables}});
  } else {
    for (const Json& variable : variables) PrintLine(variable.get<std::string>());
  }
  return HV_OK;
}

void AddShow(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "show", "show the blocks of a quick setup file",
                 "Prints the type and version of FILE and the bytes of its blocks of printer "
                 "variables in hexadecimal, each line with its offset in the file. The checksum of "
                 "the file must be right.");
  const auto options = std::make_shared<ShowOptions>();
  AddArgument(command, "FILE", &options->file, "The quick setup file");
  AddOption(command, "--type", &options->type, "N", "Take files of this type only, 0 to 255");
  AddJsonOption(command, &options->json);
  OnRun(command, [options] { return Show(*options); });
}

void AddList(CLI::App* parent) {
  CLI::App* command = AddCommand(
      parent, "list", "list the printer variables of a setup",
      "Prints the numbers of the printer variables, in hexadecimal and in their order, that INI "
      "lists for the setup NUMBER. The lists exclude and order have one for all setups that have "
      "none of their own.\n"
      "\n"
      "    hvapi setup list setups.ini 5 required");
  const auto options = std::make_shared<ListOptions>();
  AddArgument(command, "INI", &options->file, "The file of setup lists");
  AddArgument(command, "NUMBER", &options->setup, "The number of the setup, 0 to 255");
  Require(AddChoice(command, "KIND", &options->kind, "",
                    {std::begin(ListKinds), std::end(ListKinds)}, "Which list"));
  AddJsonOption(command, &options->json);
  OnRun(command, [options] { return List(*options); });
}

}  // namespace

void AddSetupCommands(CLI::App* program) {
  CLI::App* setup =
      AddCommandGroup(program, "setup", "read quick setup files and lists",
                      "Quick setup offers a few printer settings in place of a whole panel: a "
                      "binary file holds blocks of printer variables, an INI file lists the "
                      "variables that each setup requires, allows and excludes.");
  AddShow(setup);
  AddList(setup);
}

}  // namespace hvtool
