// The commands of PCL 5, HP-GL/2 aside, and what they mean. Published source: the PCL 5 Printer
// Language Technical Reference Manual.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hvtool {

struct PclCommand {
  std::string_view group;  // between ESC and the value: "&l", "(s", "%"
  char letter;             // that ends the value, in upper case
  const char* meaning;
  // Meanings of values, "0 portrait, 1 landscape"; else a unit behind "#", "#dots"; "" for a value
  // that is shown as it is, NULL for one that says nothing.
  const char* values;
  bool hasData = false;  // as many bytes as the value says follow
};

// NULL for an unknown command.
const PclCommand* FindPclCommand(std::string_view group, char letter);

// The meaning of a command with a value as it is written, "orientation: landscape".
std::string PclMeaning(const PclCommand& command, const std::string& value);

// The meaning of ESC and one character, NULL for an unknown one.
const char* PclEscapeMeaning(char c);

}  // namespace hvtool
