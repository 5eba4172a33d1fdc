// The same work done by GLib's key files.

#include <benchmark/benchmark.h>
#include <glib.h>

#include <memory>

#include "ini_samples.h"

namespace {

struct KeyFileDeleter {
  void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileDeleter>;

KeyFile LoadKeyFile(const char* path) {
  KeyFile file(g_key_file_new());
  g_key_file_load_from_file(file.get(), path, G_KEY_FILE_NONE, nullptr);
  return file;
}

void OpenLongFileGlib(benchmark::State& state) {
  const char* const path = hvbench::LongFile().Path();
  for (auto _ : state) benchmark::DoNotOptimize(LoadKeyFile(path));
}
BENCHMARK(OpenLongFileGlib)->Unit(benchmark::kMillisecond);

void FindInLargeSectionGlib(benchmark::State& state) {
  const KeyFile file = LoadKeyFile(hvbench::LargeSection().Path());
  hvbench::KeyRow keys;
  for (auto _ : state) {
    gchar* const value = g_key_file_get_value(file.get(), "Section0", keys.Next().c_str(), nullptr);
    if (value == nullptr) state.SkipWithError("a key is missing");
    g_free(value);
  }
}
BENCHMARK(FindInLargeSectionGlib);

}  // namespace
