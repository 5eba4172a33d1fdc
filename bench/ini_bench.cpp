// INI files: opening a long one beside reading its lines alone, and finding a key of a large
// section beside a walk over its lines; both beside GLib's key files where the system has that
// library.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "hvapi.h"
#include "ini_samples.h"

namespace {

using hvbench::KeyName;
using hvbench::KeyRow;
using hvbench::LargeSection;
using hvbench::LargeSectionKeys;
using hvbench::LongFile;

std::vector<std::string> ReadAllLines(const char* path) {
  std::ifstream file(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

void ReadLinesAlone(benchmark::State& state) {
  const char* const path = LongFile().Path();
  for (auto _ : state) benchmark::DoNotOptimize(ReadAllLines(path));
}
BENCHMARK(ReadLinesAlone)->Unit(benchmark::kMillisecond);

void OpenLongFile(benchmark::State& state) {
  const char* const path = LongFile().Path();
  for (auto _ : state) HvIniClose(HvIniOpen(path));
}
BENCHMARK(OpenLongFile)->Unit(benchmark::kMillisecond);

void OpenAndAskOnce(benchmark::State& state) {
  const char* const path = LongFile().Path();
  for (auto _ : state) {
    HvIniHandle* const ini = HvIniOpen(path);
    benchmark::DoNotOptimize(HvIniRead(ini, "Section1999", KeyName(99999).c_str()));
    HvIniClose(ini);
  }
}
BENCHMARK(OpenAndAskOnce)->Unit(benchmark::kMillisecond);

void FindInLargeSection(benchmark::State& state) {
  HvIniHandle* const ini = HvIniOpen(LargeSection().Path());
  std::array<char, 100> value;
  uint32_t count = 0;
  KeyRow keys;
  for (auto _ : state) {
    if (HvIniRead2(ini, "section0", keys.Next().c_str(), nullptr, value.data(), value.size(),
                   &count) != HV_OK) {
      state.SkipWithError("a key is missing");
    }
  }
  HvIniClose(ini);
}
BENCHMARK(FindInLargeSection);

void FindByWalking(benchmark::State& state) {
  const std::vector<std::string> lines = ReadAllLines(LargeSection().Path());
  KeyRow keys;
  for (auto _ : state) {
    const std::string key = keys.Next();
    for (const std::string_view line : lines) {
      if (line.substr(0, line.find('=')) == key) {
        benchmark::DoNotOptimize(line.data());
        break;
      }
    }
  }
}
BENCHMARK(FindByWalking);

// As an application fills a section: each key is looked up and then added.
void WriteLargeSection(benchmark::State& state) {
  const std::string path = hvbench::TemporaryPath("hvapi_bench_written.ini");
  for (auto _ : state) {
    HvIniHandle* const ini = HvIniOpen2(path.c_str(), INI_OPEN_REPLACE);
    for (int i = 0; i < LargeSectionKeys; ++i) {
      HvIniWrite(ini, "Section", KeyName(i).c_str(), "value");
    }
    HvIniClose(ini);
  }
  std::filesystem::remove(path);
}
BENCHMARK(WriteLargeSection)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
