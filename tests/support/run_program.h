// Starting a program as a person would, and what it says.
#pragma once

#include <string>
#include <vector>

namespace hvtest {

struct ProgramRun {
  int status = -1;     // exit status; -1 when the program could not be started or was killed
  std::string output;  // standard output, lines ended by LF on every system
  std::string errors;  // standard error
};

// Runs a program (looked for in PATH when its name has no directory) with nothing to read, and
// waits for its end.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments);

// A path as JSON writes it.
inline std::string JsonText(const std::string& path) {
  std::string text = "\"";
  for (const char c : path) {
    if (c == '\\') text += c;
    text += c;
  }
  return text + '"';
}

}  // namespace hvtest
