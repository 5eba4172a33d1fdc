// Sending a file to a file destination, beside dd with blocks of the same size as a printer channel
// writes.
//
// Each iteration runs one after the other, so that both meet the machine in the same state. The
// time shown is that of hvapi. Counters: to_dd, the time of hvapi over that of dd (its median over
// the repetitions is the figure to look at), and peak_MB, the most memory that hvapi had.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "paired.h"

namespace {

namespace fs = std::filesystem;

// A folder with a file to send, removed at the end.
class Workspace {
 public:
  explicit Workspace(int64_t megabytes) {
    std::string name = (fs::temp_directory_path() / "send_benchXXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    folder_ = name;
    std::string block(1000000, '\0');
    uint32_t state = 1;
    for (char& c : block) {
      state = state * 1664525U + 1013904223U;
      c = static_cast<char>(state >> 24);
    }
    std::ofstream file(Source(), std::ios::binary);
    for (int64_t i = 0; i < megabytes; ++i) {
      file.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
    if (!file.flush()) std::abort();
  }
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  ~Workspace() { fs::remove_all(folder_); }

  std::string Source() const { return (folder_ / "source").string(); }
  std::string Target() const { return (folder_ / "target").string(); }

 private:
  fs::path folder_;
};

struct Cost {
  double seconds;
  double megabytes;
};

// Runs a command that writes the target, which is not there before.
Cost Run(const Workspace& workspace, std::vector<std::string> words) {
  fs::remove(workspace.Target());
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  rusage usage = {};
  const double seconds = hvbench::SecondsOf([&] {
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || status != 0 ||
        fs::file_size(workspace.Target()) != fs::file_size(workspace.Source())) {
      std::abort();
    }
  });
  return {seconds, hvbench::PeakMegabytes(usage)};
}

void SendFile(benchmark::State& state) {
  const Workspace workspace(state.range(0));
  double toDd = 0;
  double peak = 0;
  for ([[maybe_unused]] auto _ : state) {
    const Cost dd = Run(workspace, {"dd", "if=" + workspace.Source(), "of=" + workspace.Target(),
                                    "bs=2048", "status=none"});
    const Cost hvapi =
        Run(workspace, {HVAPI_PROGRAM, "send", workspace.Source(), "--to", workspace.Target()});
    state.SetIterationTime(hvapi.seconds);
    toDd += hvapi.seconds / dd.seconds;
    peak = std::max(peak, hvapi.megabytes);
  }
  state.counters["to_dd"] = benchmark::Counter(toDd, benchmark::Counter::kAvgIterations);
  state.counters["peak_MB"] = peak;
}

BENCHMARK(SendFile)->ArgName("MB")->Arg(5)->Arg(50)->Arg(500)->Repetitions(9)->Apply(
    hvbench::Paired);

}  // namespace

BENCHMARK_MAIN();
