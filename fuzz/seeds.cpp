// Writes the files that each fuzz target starts from: seeds FOLDER makes FOLDER/<reader>/<name>.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/pclxl_jobs.h"
#include "support/quick_setup_builder.h"
#include "support/reply_builder.h"
#include "support/tagged_files.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"

namespace {

struct Seed {
  const char* reader;
  std::string name;
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

// Replies with options and with an accounting alert, behind their length word.
void AddReplySeeds(std::vector<Seed>& seeds) {
  using hvtest::Container;
  using hvtest::Integer;
  using hvtest::Text;
  const auto entry = Container(9, {Integer(1, "\x07"), Integer(5, "\x01\x02"), Text(6, "A4")});
  const auto values = Container(3, {Container(7, {Integer(1, "\x01\x02\x03\x04")})});
  const auto group = Container(2, {Text(1, "tray"), Text(2, "Paper source"), values});
  const auto options = Container(1, {Container(1, {entry, entry}), Container(3, {group, group})});
  const auto job = Container(2, {Container(1, {Integer(1, "\x01"), Text(7, "user")}),
                                 Container(2, {Text(1, "job"), Integer(10, "\x02")})});
  const auto device = Container(3, {Container(1, {Integer(1, "\x01")}),
                                    Container(2, {Text(6, "printer"), Integer(7, "\x02")})});
  seeds.push_back({"replies", "options", hvtest::Reply({options}).substr(2)});
  seeds.push_back({"replies", "alert", hvtest::Reply({Container(1, {device, job})}).substr(2)});
}

// A file of each kind of configuration.
void AddConfigurationSeeds(std::vector<Seed>& seeds) {
  const std::string rest = "\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1,2.5e1,0.5,\"D\"\n";
  hvtest::QuickSetupFile setup;
  setup.block1 = {"first block", 4, {}};
  setup.block2 = {"second", 2, {}};
  setup.block5 = {"the fifth one", 7, {}};
  seeds.push_back({"quick_setup", "1.1", setup.Bytes()});
  setup.minor = 0;
  seeds.push_back({"quick_setup", "1.0", setup.Bytes()});
  seeds.push_back({"ini", "sections", "; c\r\n[s]\r\nk = v\r\n\r\n[t]\r\nk=1\r\nk=2\r\nstray\r\n"});
  seeds.push_back({"records", "commands", "# records\n\"A1" + rest + "\"AB" + rest + "\"B" + rest});
  seeds.push_back({"panel", "all",
                   "[Format]\nStyle=2\n[Combos]\n01a2=10;20;30\n01a2-2=1\n[Edit Lengths]\n0001=40\n"
                   "[Spin Limits]\n01a2=1;9;2\n[Dialogs]\n1=Paper\n[Paper]\nNumCtrls=2\n"
                   "Defaults=0010;5;0011;7\nNumOMVAR=2\nOMVAR=1A2B 0003\n"});
  seeds.push_back({"setup_list", "lists",
                   "[005REQUIRED]\nNUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=3\n"
                   "[DEFAULTORDER]\nNUMVARS=1\nNUMENTRIES=1\nOMVARS1=FFFF\n"});
  seeds.push_back({"listing", "described", "x #! Two-sided and stapled\nrest\n"});
}

// What zip_decoder_fuzz takes a method by.
char DecoderChoice(const hvtest::Packing& packing) {
  if (packing.method == 8) return 10;
  return static_cast<char>(packing.method < 6 ? packing.method : 6 + (packing.flags >> 1 & 3));
}

// One archive and one member of each method, and one archive of all.
void AddZipSeeds(std::vector<Seed>& seeds) {
  const std::string text = hvtest::MixedContent();
  std::vector<hvtest::ZipMember> all = {hvtest::Stored("folder/", ""),
                                        hvtest::Stored("../a\\b:c", "x")};
  for (const hvtest::Packing& packing : hvtest::Packings) {
    const std::string data = packing.pack(text);
    all.push_back(hvtest::Packed(packing.name, text, packing.method, data, packing.flags));
    seeds.push_back({"zip", packing.name, hvtest::BuildZip({all.back()}).bytes});
    const std::string head = {DecoderChoice(packing), static_cast<char>((text.size() + 7) / 8), 0};
    seeds.push_back({"zip_decoder", packing.name, head + data});
  }
  seeds.push_back({"zip", "all", hvtest::BuildZip(all, "a comment").bytes});
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
  hvtest::FontMetrics metrics;
  metrics.face = "Times";
  metrics.fontName = "Times-Bold";
  metrics.widths.assign(224, 500);
  metrics.kerning = {{'A', 'V', -80}, {'V', 'A', 40}};
  const std::string header = hvtest::PclDescriptor().Bytes();
  std::vector<Seed> seeds = {
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
      {"font_index", "both",
       "[Cartridge]\n{ a.pcm Name\n/class = O\n[PCL fonts]\n{O}\nFONT = Name\n/font file = a.sfp\n"
       "/symset = 8U\n/tfm = a.tfm\n/resource = font 1234\n"},
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
  AddConfigurationSeeds(seeds);
  AddZipSeeds(seeds);
  AddReplySeeds(seeds);
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
