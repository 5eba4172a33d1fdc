// Every export used while system calls fail, and jobs at a spool queue under both kinds of failure.

#include <gtest/gtest.h>

#include <string>

#include "faults/posix/failing_system.h"
#include "faults/scenario.h"
#include "faults/sending_failures.h"
#include "faults/sweep.h"

namespace {

using namespace hvtest;

Attempt WithFailingSystem(std::size_t failing, bool fromThenOn, const std::function<void()>& use) {
  const FailingSystem system(failing, fromThenOn);
  use();
  return {system.Failed(), system.KeptFile()};
}

class SystemFaults : public testing::TestWithParam<int> {};

TEST_P(SystemFaults, LeaveNothingBehind) {
  const Family& family = Families[GetParam()];
  Sweep(family.name, family.scenarios(), Seam::System, WithFailingSystem);
}

INSTANTIATE_TEST_SUITE_P(Of, SystemFaults, testing::Range(0, static_cast<int>(std::size(Families))),
                         [](const auto& test) { return std::string(Families[test.param].name); });

// The files of the next document.
const std::vector<std::string> Document = {"spool/queue/000008.prn", "spool/queue/000008.job"};

// A queue that holds a document already.
std::vector<Scenario> QueueScenarios() {
  const Files queue = {{"spool/queue/000007.prn", "before"},
                       {"spool/queue/000007.job", "name=before\nbytes=6\n"}};
  std::vector<Scenario> scenarios = SendingScenarios("queue", queue);
  for (auto* more : {FontSendingScenarios, MacroSendingScenarios}) {
    for (Scenario& scenario : more("queue", queue)) scenarios.push_back(scenario);
  }
  return scenarios;
}

TEST(SpoolQueueFaults, OfMemoryLeaveNoPartOfADocument) {
  std::vector<Scenario> scenarios = QueueScenarios();
  for (Scenario& scenario : scenarios) {
    scenario.partial.clear();
    // A conversion that failed ends its job, which is then empty.
    if (std::string(scenario.name) == "page.xl") scenario.partial = Document;
  }
  Sweep("Queue", scenarios, Seam::Memory, WithoutMemory);
}

TEST(SpoolQueueFaults, OfTheSystemKeepTheDocumentsThatAreThere) {
  std::vector<Scenario> scenarios = QueueScenarios();
  for (Scenario& scenario : scenarios) {
    // A source that cannot be read on ends its job, a queue that takes no document is taken for the
    // name of a file, and how a document ended is not asked.
    scenario.partial = Document;
    scenario.partial.emplace_back("queue");
    scenario.maySkip = true;
  }
  Sweep("Queue", scenarios, Seam::System, WithFailingSystem);
}

}  // namespace
