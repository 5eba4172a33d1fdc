#include "faults/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "faults/failing_memory.h"
#include "support/test_folder.h"
#include "support/zip_run.h"

namespace hvtest {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t Never = std::numeric_limits<std::size_t>::max();
constexpr std::size_t MostFailures = 20000;  // of one scenario: more is a loop without end

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

// The folder of a scenario, current for as long as the object is, and with the place for temporary
// files and the queues in it.
class Stage {
 public:
  explicit Stage(const Files& files) : before_(files) {
    before_["tmp/"] = "";
    Reset({});
  }

  // Makes the folder what it was before the first run.
  void Reset(const Files& now) {
    if (now == before_) return;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) fs::remove_all(entry.path());
    for (const auto& [name, bytes] : before_) {
      const fs::path path = folder_.Path() / name;
      if (name.back() == '/') {
        fs::create_directories(folder_.Path() / name.substr(0, name.size() - 1));
      } else {
        fs::create_directories(path.parent_path());
        WriteFile(path, bytes);
      }
    }
    before_ = Now();
  }

  // What the folder holds; the times of tickets are the same.
  Files Now() const {
    Files files = ReadTree(folder_.Path());
    for (auto& [name, bytes] : files) {
      const std::size_t at = bytes.find("\ntime=");
      if (name.find(".job") == std::string::npos || at == std::string::npos) continue;
      bytes.replace(at, bytes.find('\n', at + 1) - at, "\ntime=");
    }
    return files;
  }

  const Files& Before() const { return before_; }
  const std::string& Folder() const { return name_; }

 private:
  TestFolder folder_;
  std::string name_ = folder_.Path().string();
  ScopedCurrentFolder current_{folder_.Path()};
  ScopedVariable temporary_{"TMP", folder_ / "tmp"};
  ScopedVariable spool_{"HVAPI_SPOOL", folder_ / "spool"};
  ScopedVariable noOtherQueues_{"CUPS_SERVER", folder_ / "no server"};
  Files before_;
};

// What a run gave, in memory of its own.
struct Outcome {
  Attempt attempt;
  bool succeeded = false;
  std::array<char, 64> unexpected = {};
  std::array<char, 4096> course = {};
  long blocks = 0;  // that are not released
  long handles = 0;
};

Outcome RunOnce(const Scenario& scenario, const Stage& stage, Seam seam, const Injector& inject,
                std::size_t failing, bool fromThenOn) {
  Outcome outcome;
  const std::function<void()> use = [&] {
    Run run(stage.Folder(), seam);
    scenario.use(run);
    outcome.succeeded = run.Succeeded();
    std::snprintf(outcome.unexpected.data(), outcome.unexpected.size(), "%s", run.Unexpected());
    std::snprintf(outcome.course.data(), outcome.course.size(), "%s", run.Course());
  };
  const auto handles = static_cast<long>(OpenHandleCount());
  const long blocks = LiveBlocks();
  outcome.attempt = inject(failing, fromThenOn, use);
  outcome.blocks = LiveBlocks() - blocks;
  outcome.handles = static_cast<long>(OpenHandleCount()) - handles;
  return outcome;
}

bool HasEntry(const Files& files, const std::string& name, const std::string& bytes) {
  const auto found = files.find(name);
  return found != files.end() && found->second == bytes;
}

// What is wrong with the files after a failure; empty when nothing is.
std::string FilesFault(const Scenario& scenario, const Files& before, const Files& clean,
                       const Files& now, bool residue) {
  bool queueAsBefore = true;
  bool queueComplete = true;
  for (const auto& [name, bytes] : now) {
    const bool old = HasEntry(before, name, bytes);
    const bool complete = HasEntry(clean, name, bytes);
    const bool maybePart =
        std::find(scenario.partial.begin(), scenario.partial.end(), name) != scenario.partial.end();
    if (StartsWith(name, "spool/") && name.back() != '/' && !maybePart) {
      queueAsBefore = queueAsBefore && old;
      queueComplete = queueComplete && complete;
    }
    const bool residual = residue && before.count(name) == 0;
    if (!old && !complete && !maybePart && !residual) {
      return name + " holds " + std::to_string(bytes.size()) + " other bytes";
    }
  }
  if (!queueAsBefore && !queueComplete && !residue) return "half a document is in the queue";
  for (const auto& [name, bytes] : before) {
    if (clean.count(name) != 0 && now.count(name) == 0) return name + " is gone";
  }
  return {};
}

void CheckOutcome(const Scenario& scenario, const Outcome& outcome, const Outcome& clean) {
  EXPECT_STREQ(outcome.unexpected.data(), "");
  EXPECT_EQ(outcome.blocks, 0) << "blocks are not released";
  EXPECT_EQ(outcome.handles, clean.handles) << "handles stay open";
  if (outcome.succeeded && !scenario.maySkip) {
    EXPECT_STREQ(outcome.course.data(), clean.course.data());
  }
}

int FaultCount() {
  return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

// The number of failures.
std::size_t SweepOne(const Scenario& scenario, Seam seam, const Injector& inject) {
  SCOPED_TRACE(scenario.name);
  Stage stage(scenario.files);
  // The first run also makes what the system keeps from then on.
  RunOnce(scenario, stage, seam, inject, Never, false);
  stage.Reset(stage.Now());
  const Outcome clean = RunOnce(scenario, stage, seam, inject, Never, false);
  const Files after = stage.Now();
  EXPECT_TRUE(clean.succeeded) << clean.course.data();
  EXPECT_EQ(clean.blocks, 0);
  EXPECT_EQ(clean.handles, 0);

  const int faults = FaultCount();
  std::size_t failures = 0;
  stage.Reset(after);
  for (const bool fromThenOn : {false, true}) {
    for (std::size_t failing = 0; failing < MostFailures; failing += SweepStep()) {
      SCOPED_TRACE("call " + std::to_string(failing) + (fromThenOn ? " and all after" : ""));
      const Outcome outcome = RunOnce(scenario, stage, seam, inject, failing, fromThenOn);
      if (!outcome.attempt.failed) {
        stage.Reset(stage.Now());
        break;
      }
      ++failures;
      CheckOutcome(scenario, outcome, clean);
      const Files now = stage.Now();
      EXPECT_EQ(FilesFault(scenario, stage.Before(), after, now, outcome.attempt.residue), "")
          << outcome.course.data();
      if (outcome.succeeded && !scenario.maySkip && !outcome.attempt.residue) {
        EXPECT_TRUE(now == after) << "success, but not all is done";
      }

      stage.Reset(now);
      const Outcome again = RunOnce(scenario, stage, seam, inject, Never, false);
      EXPECT_STREQ(again.course.data(), clean.course.data()) << "the next use";
      const Files next = stage.Now();
      EXPECT_TRUE(next == after) << "the next use gives other files";
      stage.Reset(next);
      // More of the same tells nothing new.
      if (FaultCount() > faults + 4) return failures;
    }
    EXPECT_LT(failures, MostFailures);
  }
  return failures;
}

}  // namespace

Attempt WithoutMemory(std::size_t failing, bool fromThenOn, const std::function<void()>& use) {
  const FailingMemory memory(failing, fromThenOn);
  use();
  return {memory.Failed(), false};
}

void Sweep(const char* name, const std::vector<Scenario>& scenarios, Seam seam,
           const Injector& inject) {
  std::size_t failures = 0;
  for (const Scenario& scenario : scenarios) failures += SweepOne(scenario, seam, inject);
  std::printf("[  faults  ] %s, %s: %zu scenarios, %zu injected failures\n", name,
              seam == Seam::Memory ? "memory" : "system", scenarios.size(), failures);
}

}  // namespace hvtest
