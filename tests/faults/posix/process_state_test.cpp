// What belongs to the program that calls the library: its locale, its current folder, its file
// creation mask, its signal dispositions and its descriptors are as they were after a call.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <clocale>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "faults/scenario.h"
#include "hvapi.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

mode_t FileMask() {
  const mode_t mask = umask(0);
  umask(mask);
  return mask;
}

struct Snapshot {
  std::string locale = std::setlocale(LC_ALL, nullptr);
  std::string folder = fs::current_path().string();
  mode_t mask = FileMask();
  std::size_t descriptors = OpenHandleCount();
  std::vector<void (*)(int)> handlers;
  std::vector<bool> blocked;

  Snapshot() {
    sigset_t maskOfThread;
    pthread_sigmask(SIG_SETMASK, nullptr, &maskOfThread);
    for (int signal = 1; signal < SIGRTMIN; ++signal) {
      struct sigaction action = {};
      sigaction(signal, nullptr, &action);
      handlers.push_back(action.sa_handler);
      blocked.push_back(sigismember(&maskOfThread, signal) == 1);
    }
  }

  bool operator==(const Snapshot&) const = default;
};

TEST(ProcessState, IsAsItWasAfterEachUse) {
  const ScopedVariable noQueues("HVAPI_SPOOL", "/none");
  const ScopedVariable norOthers("CUPS_SERVER", "/none");
  std::vector<Scenario> scenarios = {
      {"a printer that is not there, by its name", "HvDatSendString", {}, [](hvtest::Run&) {
         const HvJobInfo job = Job(0);
         HvDatSendString("$x", "socket://localhost:1", &job, 0);
       }}};
  for (const Family& family : Families) {
    for (Scenario& scenario : family.scenarios()) scenarios.push_back(std::move(scenario));
  }
  for (const Scenario& scenario : scenarios) {
    SCOPED_TRACE(scenario.name);
    const TestFolder folder;
    const ScopedCurrentFolder here(folder.Path());
    for (const auto& [name, bytes] : scenario.files) {
      fs::create_directories(fs::path(folder / name).parent_path());
      if (name.back() != '/') folder.Add(name, bytes);
    }
    const std::string path = folder.Path().string();
    hvtest::Run run(path, Seam::Memory);
    const Snapshot before;
    scenario.use(run);
    EXPECT_TRUE(Snapshot() == before);
    EXPECT_TRUE(run.Succeeded()) << run.Course();
  }
}

}  // namespace
