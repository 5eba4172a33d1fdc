// A PCL raster job filtered on its way into a macro, beside sending it as it is to the same file:
// rows of an image with a command before each, or text.
//
// Each iteration runs one after the other, so that both meet the machine in the same state. The
// time shown is that of the filter. Counters: speed, the speed of the filter over that of sending
// (its median over the repetitions is the figure to look at), and peak_MB, the memory that the
// whole program had at most; it stays the same for jobs of any size.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "hvapi.h"
#include "paired.h"

namespace {

namespace fs = std::filesystem;

// Rows of `rowSize` bytes, as compressed rows are, in pages of 6000; with no size lines of text.
void WriteJob(const std::string& path, int64_t megabytes, int64_t rowSize) {
  constexpr int RowsOfPage = 6000;
  const std::string uel = "\x1B%-12345X";
  std::string page =
      uel + "@PJL ENTER LANGUAGE = PCL\r\n\033E\x1B&l26a0o1H\x1B*t600R\x1B*r0A\x1B*b2M";
  uint32_t state = 1;
  for (int row = 0; row < RowsOfPage; ++row) {
    if (rowSize == 0) {
      page += "\x1B*p300x" + std::to_string(row) + "YA line of text, of no great length.";
      continue;
    }
    page += "\x1B*b" + std::to_string(rowSize) + "W";
    for (int64_t i = 0; i < rowSize; ++i) {
      state = state * 1664525U + 1013904223U;
      page += static_cast<char>(state >> 24);
    }
  }
  page += "\x1B*rB\x0C\033E" + uel;
  std::ofstream file(path, std::ios::binary);
  for (int64_t written = 0; written < megabytes * 1000000;
       written += static_cast<int64_t>(page.size())) {
    file << page;
  }
  if (!file.flush()) std::abort();
}

double SecondsToCreate(const std::string& source, const std::string& target, uint32_t flags) {
  HvJobInfo job = {};
  job.emulation = JOB_EMULATION_PCL;
  HvMacroInfo info = {};
  info.flags = flags;
  fs::remove(target);
  return hvbench::SecondsOf([&] {
    if (HvMacCreate(source.c_str(), target.c_str(), &job, &info) != HV_OK) std::abort();
  });
}

void Filter(benchmark::State& state) {
  std::string folder = (fs::temp_directory_path() / "filter_benchXXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) std::abort();
  const std::string source = folder + "/source";
  const std::string target = folder + "/target";
  WriteJob(source, state.range(0), state.range(1));

  double speed = 0;
  for ([[maybe_unused]] auto _ : state) {
    const double raw = SecondsToCreate(source, target, 0);
    const double filtered = SecondsToCreate(source, target, MACRO_FLAG_FILTER);
    state.SetIterationTime(filtered);
    speed += raw / filtered;
  }
  state.counters["speed"] = benchmark::Counter(speed, benchmark::Counter::kAvgIterations);
  state.counters["peak_MB"] = hvbench::OwnPeakMegabytes();
  fs::remove_all(folder);
}

BENCHMARK(Filter)
    ->ArgNames({"MB", "row"})
    ->ArgsProduct({{5, 200}, {600, 100, 0}})
    ->Repetitions(5)
    ->Apply(hvbench::Paired);

}  // namespace

BENCHMARK_MAIN();
