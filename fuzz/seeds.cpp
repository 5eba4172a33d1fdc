// Writes the files that each fuzz target starts from: seeds FOLDER makes FOLDER/<reader>/<name>.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/tagged_files.h"

namespace {

struct Seed {
  const char* reader;
  const char* name;
  std::string bytes;
};

hvtest::PclDescriptor Descriptor(unsigned format, unsigned size) {
  hvtest::PclDescriptor descriptor;
  descriptor.format = format;
  descriptor.size = size;
  return descriptor;
}

std::string Dlf(unsigned format, unsigned flags) {
  hvtest::DlfFont font;
  font.format = format;
  font.flags = flags;
  return font.Bytes();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: fuzz_seeds FOLDER\n", stderr);
    return 2;
  }
  const std::string head = hvtest::Type1Head("Times-Roman", "StandardEncoding");
  const std::string pfm = hvtest::PfmFile().Bytes();
  hvtest::FontMetrics metrics;
  metrics.face = "Times";
  metrics.fontName = "Times-Bold";
  metrics.widths.assign(224, 500);
  metrics.kerning = {{'A', 'V', -80}, {'V', 'A', 40}};
  const std::string header = hvtest::PclDescriptor().Bytes();
  const Seed seeds[] = {
      {"font_pcl", "bitmap", hvtest::PclFont({}, hvtest::SampleCharacters())},
      {"font_pcl", "scalable", hvtest::PclFont(Descriptor(10, 80), {})},
      {"font_pcl", "resolution", hvtest::PclFont(Descriptor(20, 68), {})},
      {"font_dlf", "format1", Dlf(1, 0)},
      {"font_dlf", "format10", Dlf(10, 1)},
      {"font_fmf", "name", hvtest::FmfFile("Courier 10")},
      {"font_pfa", "head", head},
      {"font_pfb", "segments", hvtest::PfbFile({{1, head}, {2, "binary"}, {1, "0000"}})},
      {"font_afm", "afm", hvtest::AfmFile("Times-Bold")},
      {"font_afm", "both", hvtest::AfmFile("Symbol") + "%%INF\nMSMenuName (Symbol)\nPi true\n"},
      {"font_pfm", "pfm", pfm},
      {"font_pcm", "cartridge", hvtest::PcmFile("Cartridge", {pfm, pfm})},
      {"convert_afm", "text", hvtest::AfmFile("Times-Bold") + "%%INF\nMSMenuName (Times)\n"},
      {"convert_afm", "pi", hvtest::AfmFile("Symbol") + "%%INF\nMSMenuName (Symbol)\nPi true\n"},
      {"convert_pfm", "kerned", hvtest::PostScriptPfm(metrics)},
      {"convert_pcl", "bitmap", hvtest::PclFont({}, hvtest::SampleCharacters())},
      {"convert_pcl", "extended", hvtest::PclFont(Descriptor(9, 72), hvtest::SampleCharacters())},
      {"convert_dlf", "format1", Dlf(1, 1)},
      {"convert_dlf", "format10", Dlf(10, 0)},
      {"convert_tfm", "intel", header + hvtest::TaggedFile("II", {hvtest::SampleTaggedFont()})},
      {"convert_tfm", "motorola", header + hvtest::TaggedFile("MM", {hvtest::SampleTaggedFont()})},
  };
  for (const Seed& seed : seeds) {
    const std::filesystem::path folder = std::filesystem::path(argv[1]) / seed.reader;
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / seed.name, std::ios::binary);
    if (!file.write(seed.bytes.data(), static_cast<std::streamsize>(seed.bytes.size())).flush()) {
      std::fprintf(stderr, "fuzz_seeds: cannot write %s\n", (folder / seed.name).c_str());
      return 1;
    }
  }
  return 0;
}
