// The options of commands on macros: what is to be made of a source.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command_line.h"
#include "hvapi.h"

namespace hvtool {

struct MacroOptions {
  std::string source;
  std::string name;
  bool filter = false;
  std::optional<std::string> drop;  // words, parted by commas
  std::vector<uint32_t> mask;       // empty, or one
  std::vector<uint16_t> call;       // empty, or one
  bool demo = false;
  bool overlay = false;
  int target = STORAGE_DEVICE_RAM;

  // Fills the record of these options. False after reporting one that cannot be used.
  bool Fill(HvMacroInfo* info) const;
};

// SOURCE, --filter, --drop | --mask: what every command on a source takes.
void AddSourceOptions(CLI::App* command, MacroOptions* macro);
// --name, --call: what goes into a new macro.
void AddMacroOptions(CLI::App* command, MacroOptions* macro);

}  // namespace hvtool
