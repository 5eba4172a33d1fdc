// An open INI file that closes itself, and what is in it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hvapi.h"

namespace hvtest {

struct IniCloser {
  void operator()(HvIniHandle* handle) const { EXPECT_EQ(HvIniClose(handle), 1U); }
};
using OpenIni = std::unique_ptr<HvIniHandle, IniCloser>;

inline std::vector<std::string> LinesOf(const HvIniHandle& handle) {
  std::vector<std::string> lines;
  for (const HvIniLine* line = handle.lines->next; line != nullptr; line = line->next) {
    lines.emplace_back(line->text);
  }
  return lines;
}

}  // namespace hvtest
