// The commands as a table, read back from the parser: what the manual page, the completion of the
// shells and the suggestions for mistyped words are made of.
#pragma once

#include <string>
#include <vector>

#include "command_line.h"

namespace hvtool {

struct OptionRow {
  std::vector<std::string> names;  // "-h", "--help"; the one name of an argument
  std::string value;               // the name of its value, empty for a flag
  std::string description;
  std::vector<std::string> choices;  // the words that it takes, where they are known
  bool isArgument = false;
  bool isRequired = false;
  bool takesSeveral = false;
};

struct CommandRow {
  std::string name;  // as it is typed, "hvapi queue add"
  std::string brief;
  std::string manual;
  std::string group;                  // heading under which its parent lists it
  std::vector<std::string> commands;  // the last words of those below it
  std::vector<OptionRow> options;
};

// The program and all of its commands, each before those below it.
std::vector<CommandRow> ListCommands(const CLI::App& program);

// The word of the list that was most likely meant, empty when none comes near.
std::string NearestWord(const std::string& word, const std::vector<std::string>& words);

}  // namespace hvtool
