// The font search over 2,000 and 20,000 font files, 100 to a directory, beside a bare loop that
// opens each file, reads 512 bytes and closes it; and a directory of nothing but files of other
// kinds.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_files.h"

namespace {

namespace fs = std::filesystem;

constexpr int FilesOfDirectory = 100;

// Fonts of different names, removed at the end.
class FontTree {
 public:
  FontTree(const std::string& name, int directories, const char* extension)
      : path_(fs::temp_directory_path() / name) {
    fs::remove_all(path_);
    for (int d = 0; d < directories; ++d) {
      const fs::path directory = path_ / ("dir" + std::to_string(d));
      fs::create_directories(directory);
      for (int f = 0; f < FilesOfDirectory; ++f) {
        hvtest::PclDescriptor descriptor;
        descriptor.name = hvtest::Field(std::to_string(d * FilesOfDirectory + f), 16, ' ');
        const fs::path file = directory / ("font" + std::to_string(f) + extension);
        std::ofstream(file, std::ios::binary)
            << hvtest::PclFont(descriptor, hvtest::SampleCharacters()) << std::string(2000, '\0');
      }
    }
  }
  FontTree(const FontTree&) = delete;
  FontTree& operator=(const FontTree&) = delete;
  ~FontTree() { fs::remove_all(path_); }

  std::string Path() const { return path_.string(); }

 private:
  fs::path path_;
};

const FontTree& TreeOf(int64_t files) {
  static const FontTree Small("hvapi_find_small", 20, ".sfp");
  static const FontTree Large("hvapi_find_large", 200, ".sfp");
  return files == 2000 ? Small : Large;
}

void Search(benchmark::State& state, const FontTree& tree, std::size_t expected) {
  for (auto _ : state) {
    uint16_t count = 0;
    HvFonFindFree(HvFonFind(tree.Path().c_str(), &count, FONT_KIND_PCL, FONT_CLASSES_ALL, 0, 1));
    if (count != expected) return state.SkipWithError("not every font was found");
  }
}

void FindFonts(benchmark::State& state) {
  Search(state, TreeOf(state.range(0)), static_cast<std::size_t>(state.range(0)));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(FindFonts)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

void BareLoop(benchmark::State& state) {
  std::vector<std::string> paths;
  for (const auto& entry : fs::recursive_directory_iterator(TreeOf(state.range(0)).Path())) {
    if (entry.is_regular_file()) paths.push_back(entry.path().string());
  }
  char bytes[512];
  for (auto _ : state) {
    for (const std::string& path : paths) {
      const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
      benchmark::DoNotOptimize(read(file, bytes, sizeof bytes));
      close(file);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BareLoop)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

// Files that are no PCL fonts by their names are not opened.
void FindAmongOthers(benchmark::State& state) {
  static const FontTree Others("hvapi_find_others", 20, ".pfb");
  Search(state, Others, 0);
}
BENCHMARK(FindAmongOthers)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
