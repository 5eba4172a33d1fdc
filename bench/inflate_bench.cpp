// Extraction of deflated archives beside the inflate loop that zlib publishes (zpipe.c) and beside
// libdeflate, which decodes whole buffers: each reads the same file, checks the CRC-32 and writes
// the same bytes. Extraction by the older methods beside that of stored members.

#include <benchmark/benchmark.h>
#include <libdeflate.h>
#include <zlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"

namespace {

namespace fs = std::filesystem;

// The current directory for the whole run, in memory where the system has such a place.
class WorkFolder {
 public:
  WorkFolder() {
    const fs::path memory = "/dev/shm";
    path_ = (fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "hvapi_inflate_bench";
    fs::remove_all(path_);
    fs::create_directories(path_);
    fs::current_path(path_);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    fs::current_path(path_.parent_path());
    fs::remove_all(path_);
  }

 private:
  fs::path path_;
};

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// The sources of this project, several times in another order, so that they fill a few megabytes.
std::string Text() {
  std::string text;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(BENCH_SOURCE_FOLDER)) {
    if (entry.path().extension() == ".cpp") text += ReadFile(entry.path());
  }
  for (int round = 0; round < 2; ++round) text += text.substr(text.size() / 3) + text;
  return text;
}

// The library, as code and debugging data.
std::string Program() {
  return ReadFile(BENCH_PROGRAM);
}

// Bytes of a small alphabet without any order: nothing but literals.
std::string Literals() {
  std::string bytes(8U << 20, '\0');
  uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>('a' + (state >> 24 & state >> 16 & 0x1F));
  }
  return bytes;
}

// Rows of dots of a page, most of them like the row above.
std::string Raster() {
  std::string rows;
  uint32_t state = 7;
  std::string row(300, '\0');
  while (rows.size() < (8U << 20)) {
    state = state * 1664525 + 1013904223;
    row[(state >> 16) % row.size()] = static_cast<char>(state >> 8);
    rows += row;
  }
  return rows;
}

// A content as an archive and as its bare deflated data.
struct Sample {
  const char* name;
  std::string content;
};

const std::vector<Sample>& Samples() {
  static const std::vector<Sample> samples = [] {
    std::vector<Sample> made = {
        {"text", Text()}, {"program", Program()}, {"literals", Literals()}, {"raster", Raster()}};
    for (const Sample& sample : made) {
      const std::string data =
          hvtest::Deflate(sample.content, Z_DEFAULT_COMPRESSION, Z_DEFAULT_STRATEGY);
      WriteFile(sample.name + std::string(".deflate"), data);
      WriteFile(sample.name + std::string(".zip"),
                hvtest::BuildZip({hvtest::Packed("member", sample.content, 8, data)}).bytes);
    }
    return made;
  }();
  return samples;
}

bool ExtractLibrary(const Sample& sample, uint32_t) {
  return HvZipExplode(sample.name, nullptr, nullptr) == HV_OK;
}

// As in zpipe.c, with its buffers of 16 KB or those of an extraction, and the checksum that an
// archive asks for.
template <std::size_t Chunk>
bool InflateZlib(const Sample& sample, uint32_t crc) {
  unsigned char in[Chunk];
  unsigned char out[Chunk];
  FILE* const source = std::fopen((sample.name + std::string(".deflate")).c_str(), "rb");
  FILE* const target = std::fopen("member", "wb");
  std::setvbuf(source, nullptr, _IOFBF, Chunk);
  std::setvbuf(target, nullptr, _IOFBF, Chunk);
  uLong got = crc32(0, nullptr, 0);
  z_stream stream = {};
  int status = inflateInit2(&stream, -MAX_WBITS);
  while (status != Z_STREAM_END) {
    stream.avail_in = static_cast<uInt>(std::fread(in, 1, Chunk, source));
    if (stream.avail_in == 0) break;
    stream.next_in = in;
    do {
      stream.avail_out = Chunk;
      stream.next_out = out;
      status = inflate(&stream, Z_NO_FLUSH);
      const std::size_t have = Chunk - stream.avail_out;
      got = crc32(got, out, static_cast<uInt>(have));
      std::fwrite(out, 1, have, target);
    } while (stream.avail_out == 0);
  }
  inflateEnd(&stream);
  std::fclose(source);
  std::fclose(target);
  return status == Z_STREAM_END && got == crc;
}

bool InflateLibdeflate(const Sample& sample, uint32_t crc) {
  FILE* const source = std::fopen((sample.name + std::string(".deflate")).c_str(), "rb");
  std::fseek(source, 0, SEEK_END);
  const std::size_t size = static_cast<std::size_t>(std::ftell(source));
  std::rewind(source);
  const std::unique_ptr<char[]> data(new char[size]);
  const std::unique_ptr<char[]> out(new char[sample.content.size()]);
  const bool read = std::fread(data.get(), 1, size, source) == size;
  std::fclose(source);
  libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
  const libdeflate_result result = libdeflate_deflate_decompress(
      decompressor, data.get(), size, out.get(), sample.content.size(), nullptr);
  libdeflate_free_decompressor(decompressor);
  const bool right = libdeflate_crc32(0, out.get(), sample.content.size()) == crc;
  FILE* const target = std::fopen("member", "wb");
  std::fwrite(out.get(), 1, sample.content.size(), target);
  std::fclose(target);
  return read && result == LIBDEFLATE_SUCCESS && right;
}

void Run(benchmark::State& state, const Sample& sample,
         bool (*extract)(const Sample& sample, uint32_t crc)) {
  const uint32_t crc = hvtest::SlowCrc32(sample.content);
  for (auto _ : state) {
    if (!extract(sample, crc)) return state.SkipWithError("the data are damaged");
  }
  if (ReadFile("member") != sample.content) return state.SkipWithError("the bytes are wrong");
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(sample.content.size()));
}

// The sources once, packed by the encoders of the tests.
void Extract(benchmark::State& state, const hvtest::Packing& packing, const std::string& content) {
  WriteFile("old.zip", hvtest::BuildZip({hvtest::Packed("member", content, packing.method,
                                                        packing.pack(content), packing.flags)})
                           .bytes);
  for (auto _ : state) {
    if (HvZipExplode("old", nullptr, nullptr) != HV_OK) {
      return state.SkipWithError("the data are damaged");
    }
  }
  if (ReadFile("member") != content) return state.SkipWithError("the bytes are wrong");
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(content.size()));
}

}  // namespace

int main(int argc, char** argv) {
  const WorkFolder folder;
  const struct {
    const char* name;
    bool (*extract)(const Sample& sample, uint32_t crc);
  } ways[] = {{"Library", ExtractLibrary},
              {"ZlibLoop", InflateZlib<16384>},
              {"ZlibLoop2K", InflateZlib<2048>},
              {"Libdeflate", InflateLibdeflate}};
  for (const Sample& sample : Samples()) {
    for (const auto& way : ways) {
      benchmark::RegisterBenchmark(
          (sample.name + std::string("/") + way.name).c_str(),
          [&sample, way](benchmark::State& state) { Run(state, sample, way.extract); })
          ->Unit(benchmark::kMillisecond);
    }
  }
  const std::string content = Samples().front().content.substr(0, 1U << 20);
  for (const hvtest::Packing& packing : hvtest::Packings) {
    if (packing.method == 8) continue;
    benchmark::RegisterBenchmark(
        (std::string("old/") + packing.name).c_str(),
        [&packing, &content](benchmark::State& state) { Extract(state, packing, content); })
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
