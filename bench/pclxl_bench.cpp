// A one-page PCL XL job converted into a stream, beside copying the job twice, which is what a
// conversion through a work file cannot do without: rows of an image, or operators without data.
//
// Each iteration runs one after the other, so that both meet the machine in the same state. The
// time shown is that of the conversion. Counters: to_copies, the time of the conversion over that
// of the two copies (its median over the repetitions is the figure to look at), and peak_MB, the
// memory that the whole program had at most; it stays the same for jobs of any size.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "paired.h"
#include "pclxl/stream_conversion.h"

namespace {

namespace fs = std::filesystem;
using hv::PclXlWorkFiles;

std::string Literal(const char* text, std::size_t size) {
  return std::string(text, size);
}

// An image of so many rows of 1000 bytes in blocks, or as many bytes of lines.
void WriteJob(int64_t megabytes, bool image) {
  std::ofstream file(PclXlWorkFiles::Input, std::ios::binary);
  file << ") HP-PCL XL;1;1;\n" << Literal("\xC0\x00\xF8\x86\x41\xC0\x02\xF8\x25\x43", 10);
  std::string block;
  if (image) {
    block = Literal("\xC1\x00\x00\xF8\x6D\xC1\x0A\x00\xF8\x63\xB1\xFA\x10\x27\x00\x00", 16);
    block.append(10000, '\x55');
  } else {
    while (block.size() < 10000) block += Literal("\xD3\x0A\x00\x14\x00\xF8\x4C\x6B", 8);
  }
  const int64_t blocks = megabytes * 1000000 / static_cast<int64_t>(block.size());
  for (int64_t i = 0; i < blocks; ++i) file << block;
  file << Literal("\xC1\x01\x00\xF8\x31\x44\x42", 7);
  if (!file.flush()) std::abort();
}

// The file read and written twice, by the buffers that streams have here too.
void CopyTwice() {
  const auto copy = [](const char* from, const char* to) {
    std::ifstream in(from, std::ios::binary);
    std::ofstream out(to, std::ios::binary);
    std::string buffer(16384, '\0');
    while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())), in.gcount() > 0) {
      out.write(buffer.data(), in.gcount());
    }
    if (!out.flush()) std::abort();
  };
  copy(PclXlWorkFiles::Input, "copy1");
  copy("copy1", "copy2");
}

void Convert(benchmark::State& state) {
  std::string name = (fs::temp_directory_path() / "pclxl_benchXXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  const fs::path before = fs::current_path();
  fs::current_path(name);
  WriteJob(state.range(0), state.range(1) != 0);

  double toCopies = 0;
  for ([[maybe_unused]] auto _ : state) {
    for (const char* file : {"copy1", "copy2"}) fs::remove(file);
    const double copies = hvbench::SecondsOf(CopyTwice);
    for (const char* file : {PclXlWorkFiles::Page, PclXlWorkFiles::Output}) fs::remove(file);
    const double conversion = hvbench::SecondsOf([] {
      const PclXlWorkFiles files;
      if (hv::PclXlConvertStream(files, "Page", 0) != 0) std::abort();
    });
    state.SetIterationTime(conversion);
    toCopies += conversion / copies;
  }
  state.counters["to_copies"] = benchmark::Counter(toCopies, benchmark::Counter::kAvgIterations);
  state.counters["peak_MB"] = hvbench::OwnPeakMegabytes();

  fs::current_path(before);
  fs::remove_all(name);
}

BENCHMARK(Convert)
    ->ArgNames({"MB", "image"})
    ->ArgsProduct({{5, 50, 200}, {1, 0}})
    ->Repetitions(5)
    ->Apply(hvbench::Paired);

}  // namespace

BENCHMARK_MAIN();
