// Every export used while memory runs out, and the count of the exports that are.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "faults/scenario.h"
#include "faults/sweep.h"
#include "support/public_header.h"

namespace {

using namespace hvtest;

constexpr std::size_t AllExports = 67;

class MemoryFaults : public testing::TestWithParam<int> {};

TEST_P(MemoryFaults, LeaveNothingBehind) {
  const Family& family = Families[GetParam()];
  Sweep(family.name, family.scenarios(), Seam::Memory, WithoutMemory);
}

INSTANTIATE_TEST_SUITE_P(Of, MemoryFaults, testing::Range(0, static_cast<int>(std::size(Families))),
                         [](const auto& test) { return std::string(Families[test.param].name); });

TEST(FaultScenarios, UseEveryExport) {
  const std::set<std::string> declared = DeclaredFunctions(TEST_SOURCE_FOLDER);
  EXPECT_EQ(declared.size(), AllExports);

  std::set<std::string> used;
  for (const Family& family : Families) {
    for (const Scenario& scenario : family.scenarios()) {
      std::istringstream names(scenario.exports);
      for (std::string name; names >> name;) used.insert(name);
    }
  }
  EXPECT_EQ(used, declared);
  std::printf("[  faults  ] %zu of %zu exports are used\n", used.size(), declared.size());
}

}  // namespace
