// Conversions of fonts, each beside a bare read of its source.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "hvapi.h"

namespace {

namespace fs = std::filesystem;

// A folder of files for this program, removed at its end.
class Folder {
 public:
  Folder() : path_(fs::temp_directory_path() / "hvapi-convert-bench") {
    fs::create_directories(path_);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { fs::remove_all(path_); }

  std::string Add(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return (path_ / name).string();
  }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  fs::path path_;
};

const Folder& Files() {
  static const Folder folder;
  return folder;
}

// As large an AFM as is read: the letters and all the pairs of them that fit.
std::string LargeAfm() {
  std::string characters;
  std::string pairs;
  int count = 0;
  for (char c = 'A'; c <= 'z'; ++c) {
    if (c > 'Z' && c < 'a') continue;
    const std::string name(1, c);
    characters += "C " + std::to_string(c) + " ; WX 600 ; N " + name + " ; B 0 -10 590 700 ;\n";
    for (char d = 'A'; d <= 'S' && count < 1024; ++d, ++count) {
      pairs += "KPX " + name + " " + std::string(1, d) + " -" + std::to_string(count % 90) + "\n";
    }
  }
  return "StartFontMetrics 2.0\nFontName Bench\nIsFixedPitch false\nStartCharMetrics 52\n" +
         characters + "EndCharMetrics\nStartKernData\nStartKernPairs " + std::to_string(count) +
         "\n" + pairs + "EndKernPairs\nEndKernData\nEndFontMetrics\n";
}

// 192 characters of 30 x 40 dots.
std::string SoftFont() {
  std::string head(64, '\0');
  head.replace(0, 4, std::string("\0\x40\0\x01", 4));
  head.replace(14, 6, std::string("\x01\x15\0\x64\0\xC8", 6));
  std::string font = "\x1B)s64W" + head;
  std::string data = std::string("\x04\0\x0E\x01\0\0\0\0\0\x28\0\x1E\0\x28\0\x78", 16);
  data += std::string(4 * 40, '\x55');
  for (int code = 33; code < 225; ++code) {
    font += "\x1B*c" + std::to_string(code) + "E\x1B(s" + std::to_string(data.size()) + "W" + data;
  }
  return font;
}

void ReadAlone(benchmark::State& state, const std::string& path) {
  std::vector<char> buffer(1 << 20);
  std::size_t size = 0;
  for (auto _ : state) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    size = std::fread(buffer.data(), 1, buffer.size(), file);
    std::fclose(file);
    benchmark::DoNotOptimize(buffer.data());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(size));
}

void Convert(benchmark::State& state, const std::string& source, int32_t type) {
  const std::string output = Files() / "out.x";
  for (auto _ : state) {
    if (HvFonConvert(source.c_str(), output.c_str(), nullptr, 0, type) != HV_OK) {
      state.SkipWithError("not converted");
      break;
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(fs::file_size(source)));
}

std::string AfmSource() {
  Files().Add("bench.inf", "MSMenuName (Bench)\nSerif true\n");
  return Files().Add("bench.afm", LargeAfm());
}

void ReadAfm(benchmark::State& state) {
  ReadAlone(state, AfmSource());
}
void AfmToPfm(benchmark::State& state) {
  Convert(state, AfmSource(), FONT_CONVERT_AFM_TO_PFM);
}

std::string PfmSource() {
  const std::string pfm = Files() / "bench.pfm";
  HvFonConvert(AfmSource().c_str(), pfm.c_str(), nullptr, 0, FONT_CONVERT_AFM_TO_PFM);
  return pfm;
}

void ReadPfm(benchmark::State& state) {
  ReadAlone(state, PfmSource());
}
void PfmToAfm(benchmark::State& state) {
  Convert(state, PfmSource(), FONT_CONVERT_PFM_TO_AFM);
}

std::string PclSource() {
  return Files().Add("bench.sfp", SoftFont());
}

void ReadPcl(benchmark::State& state) {
  ReadAlone(state, PclSource());
}
void PclToPfm(benchmark::State& state) {
  Convert(state, PclSource(), FONT_CONVERT_PCL_TO_PFM);
}

BENCHMARK(ReadAfm);
BENCHMARK(AfmToPfm);
BENCHMARK(ReadPfm);
BENCHMARK(PfmToAfm);
BENCHMARK(ReadPcl);
BENCHMARK(PclToPfm);

}  // namespace

BENCHMARK_MAIN();
