// hvapi as a person types it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/run_program.h"

namespace hvtest {

// The words of a line, which blanks part; '' and 'a b' are one word each.
inline std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words;
  bool quoted = false;
  bool inWord = false;
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      inWord = false;
      continue;
    }
    if (!inWord) words.emplace_back();
    inWord = true;
    if (c == '\'') {
      quoted = !quoted;
    } else {
      words.back() += c;
    }
  }
  return words;
}

inline ProgramRun Hvapi(std::string_view line) {
  return RunProgram(TEST_BINARY_FOLDER "/hvapi", Words(line));
}

// What the program says of a failure.
inline std::string Sentence(const std::string& what, int code) {
  return "hvapi: " + what + " (code " + std::to_string(code) + ")\n";
}

}  // namespace hvtest
