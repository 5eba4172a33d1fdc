// Runs a reader over inputs without a fuzzer: fuzz_replay READER FOLDER... An input at which a
// target would find something ends the program.

#include "replay.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

std::size_t Replay(const hvfuzz::Reader& reader, const std::filesystem::path& folder) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::fprintf(stderr, "%s\n", entry.path().c_str());
    std::ifstream file(entry.path(), std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                  std::istreambuf_iterator<char>()};
    reader.run(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    ++count;
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  for (const hvfuzz::Reader& reader : hvfuzz::Readers()) {
    if (argc < 3 || std::strcmp(reader.name, argv[1]) != 0) continue;
    std::size_t count = 0;
    for (int i = 2; i < argc; ++i) count += Replay(reader, argv[i]);
    std::printf("%s: %zu inputs\n", reader.name, count);
    return count > 0 ? 0 : 1;
  }
  std::fputs("usage: fuzz_replay READER FOLDER...\n", stderr);
  return 2;
}
