// The exports of every family used in several threads at once: each gives what it gives alone.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "faults/scenario.h"
#include "faults/sending_failures.h"
#include "support/posix/socket_peer.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

// As many as there are slots for record files.
constexpr std::size_t ThreadCount = 4;
constexpr std::size_t Rounds = 4;

// What a scenario gives in a folder of its own: the course of its results, in which the folder has
// no name.
std::string Play(const Scenario& scenario) {
  const TestFolder folder;
  for (const auto& [name, bytes] : scenario.files) {
    fs::create_directories(fs::path(folder / name).parent_path());
    if (name.back() != '/') folder.Add(name, bytes);
  }
  const std::string path = folder.Path().string();
  Run run(path, Seam::Memory);
  scenario.use(run);
  std::string course = run.Course();
  for (std::size_t at = 0; (at = course.find(path)) != std::string::npos;) {
    course.erase(at, path.size());
  }
  return run.Succeeded() ? course : "failed: " + course;
}

// A printer in the network that takes job after job.
class Printer {
 public:
  ~Printer() {
    shutdown(port_.Socket(), SHUT_RDWR);
    taking_.join();
  }
  // By name, so that it is looked up.
  std::string Destination() const { return "socket://localhost:" + std::to_string(port_.Port()); }

 private:
  Listener port_;
  std::thread taking_{[this] {
    for (int job = 0; (job = accept(port_.Socket(), nullptr, nullptr)) >= 0; close(job)) {
      ReceiveAll(job);
    }
  }};
};

// All families, and jobs to one spool queue and one printer.
std::vector<Scenario> AllScenarios(const char* printer) {
  std::vector<Scenario> all;
  const auto add = [&](std::vector<Scenario> some) {
    std::move(some.begin(), some.end(), std::back_inserter(all));
  };
  for (const Family& family : Families) add(family.scenarios());
  for (auto* const sending : {SendingScenarios, MacroSendingScenarios, FontSendingScenarios}) {
    add(sending("queue", {}));
    add(sending(printer, {}));
  }
  return all;
}

TEST(Threads, DoNotDisturbEachOther) {
  const TestFolder folder;
  fs::create_directories(folder / "spool/queue");
  const ScopedCurrentFolder here(folder.Path());
  const ScopedVariable temporary("TMP", folder.Path().string());
  const ScopedVariable spool("HVAPI_SPOOL", folder / "spool");
  const ScopedVariable noOtherQueues("CUPS_SERVER", folder / "no server");
  const Printer printer;
  const std::string address = printer.Destination();
  const std::vector<Scenario> scenarios = AllScenarios(address.c_str());
  std::vector<std::string> alone;
  for (const Scenario& scenario : scenarios) {
    alone.push_back(Play(scenario));
    EXPECT_EQ(alone.back().find("failed"), std::string::npos) << scenario.name << alone.back();
  }

  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < ThreadCount; ++number) {
    threads.emplace_back([&, number] {
      // One round side by side with the others, the rest at a distance from them.
      for (std::size_t round = 0; round < Rounds; ++round) {
        const std::size_t first = round * number * scenarios.size() / ThreadCount;
        for (std::size_t i = 0; i < scenarios.size(); ++i) {
          const std::size_t k = (first + i) % scenarios.size();
          EXPECT_EQ(Play(scenarios[k]), alone[k]) << scenarios[k].name;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::printf("[  threads ] %zu scenarios, %zu threads\n", scenarios.size(), ThreadCount);
}

}  // namespace
