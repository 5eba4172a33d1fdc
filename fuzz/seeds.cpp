// Writes the files that each fuzz target starts from: seeds FOLDER makes FOLDER/<reader>/<name>.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/font_files.h"
#include "support/pclxl_jobs.h"

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
  const std::string uel = "\x1B%-12345X";
  const std::string pfm = hvtest::PfmFile().Bytes();
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
      {"pclxl", "page", hvtest::PclXlSampleJob()},
      {"show", "pclxl", uel + "@PJL ENTER LANGUAGE = PCLXL\n" + hvtest::PclXlSampleJob()},
      {"show", "font", hvtest::PclFont({}, hvtest::SampleCharacters())},
      {"show", "pcl",
       uel + "@PJL\n\x1B"
             "E\x1B&l0o2A\x1B*b3m2Wab\x1B%0BIN;\x1B%0A\f"},
      {"macro_filter", "pcl",
       "\x3F\x03" + uel + "@PJL X\n\033E\x1B&l1o2a3X\x1B*b2Wab\x1B%0BIN\x1B%0A\x0C" + uel},
      {"macro_filter", "postscript", "  " + uel + "@PJL X\n%!PS-Adobe-3.0\nshowpage\n\x04" + uel},
      {"macro_analysis", "pcl", "\x1B&f12y0Xtext\x1B&f1X"},
      {"macro_analysis", "procedure", "serverdict begin 0 exitserver /Logo {\n"},
      {"macro_analysis", "file", "/writefile (%disk1%Logo) (w) file def\n"},
      {"macro_analysis", "overlay", "%!PS-Adobe-3.0\n%%Quintar Overlay: Logo\n"},
      {"macro_analysis", "ppds", "\x1B[l"},
      {"macro_analysis", "pclxl", hvtest::PclXlSampleJob()},
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
