// Damaged fonts, metrics and font indexes: described, sent, converted and listed, or refused.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "fontconv/pcl_font_stream.h"
#include "fonts/pfm_header.h"
#include "fonts/soft_font_descriptor.h"
#include "hvapi.h"
#include "support/damage.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/jobs.h"
#include "support/metrics_files.h"
#include "support/tagged_files.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;
using enum hvtest::Order;

const std::string Times = AfmFile("Times");
const std::string Type1 = Type1Head("Times", "StandardEncoding");
const std::string Inf = "MSMenuName (Times)\nSerif true\nPi false\nVPStyle (T)\n";

// A soft font with two characters and the numbers of its descriptor and its first character.
struct SoftFont {
  SoftFont(unsigned format, unsigned size) {
    bytes = PclFont({.size = size, .format = format}, SampleCharacters());
    const std::size_t character = bytes.find('W', bytes.find("\x1B(s")) + 1;
    numbers =
        NumbersOf(hv::SoftFontDescriptorTable, 6) + NumbersOf(hv::PclCharacterTable, character);
    if (format == 20) numbers = numbers + Numbers(HighFirst, 6 + 64, {2, 2});
  }
  std::string bytes;
  NumberFields numbers;
};

const std::string Dlf1 = DlfFont().Bytes();
const NumberFields Dlf1Numbers =
    Numbers(LowFirst, 2, {2}) + Numbers(HighFirst, 6, {1, 1, 2, 1, 1, 4, 16, 4, 1, 3, 24});
const std::string Dlf10 = DlfFont{.format = 10}.Bytes();
const NumberFields Dlf10Numbers =
    Numbers(LowFirst, 2, {2}) + Numbers(HighFirst, 6, {1, 1, 2, 6, 4, 24});

const std::string Pfm = PfmFile{.italic = 1, .weight = 700}.Bytes();
const NumberFields HeadNumbers = NumbersOf(hv::PfmHeaderTable, 0);

const FontMetrics Metrics = {.face = "Times",
                             .fontName = "Times-Bold",
                             .first = 60,
                             .last = 90,
                             .widths = std::vector<int>(31, 500),
                             .kerning = {{'A', 'B', -80}}};
const NumberFields PfmNumbers =
    HeadNumbers + NumbersOf(hv::PfmExtensionTable, 117) + NumbersOf(hv::PfmMetricsTable, 147);

// Its numbers are of two sizes; where they stand is told in the file.
NumberFields TaggedNumbers(const std::string& file) {
  const Order order = file[0] == 'M' ? HighFirst : LowFirst;
  return NumbersAnywhere(order, 0, file.size(), 2) + NumbersAnywhere(order, 0, file.size(), 4);
}

template <std::size_t Size>
bool Ends(const char (&field)[Size]) {
  return std::memchr(field, 0, Size) != nullptr;
}

// Whatever the file is, every text of the record ends.
bool IsDescribed(const char* file) {
  auto [code, info] = DescribeFont(file, FONT_COMPANIONS_METRICS);
  ExpectOneOf(code, {HV_OK, HV_UNUSABLE_FILE, HV_NOT_SUPPORTED});
  EXPECT_EQ(+info.fileSize, fs::file_size(file));
  EXPECT_TRUE(Ends(info.name) && Ends(info.description) && Ends(info.symbolSet) &&
              Ends(info.companionPath1) && Ends(info.companionPath2));
  EXPECT_TRUE(code == HV_UNUSABLE_FILE || *info.name != '\0');
  EXPECT_TRUE(info.cartridge == nullptr || std::strlen(info.cartridge->title) < 80);
  for (const std::string& face : TakeFaces(&info)) EXPECT_LE(face.size(), 90U);
  return code != HV_UNUSABLE_FILE;
}

// What was begun is completed and no longer than the file allows; a refused file reaches no
// printer. The languages take turns.
void ExpectWholeJob(const char* file) {
  static std::size_t turn = 0;
  const int32_t emulations[] = {JOB_EMULATION_PPDS, JOB_EMULATION_POSTSCRIPT, JOB_EMULATION_PCL,
                                JOB_EMULATION_PCLXL};
  const HvJobInfo job = Job(JOB_FLAG_PJL, emulations[turn++ % std::size(emulations)]);
  const uint32_t code = HvFonDownload(file, "out", &job, STORAGE_DEVICE_RAM);
  const std::string sent = fs::exists("out") ? ReadFile("out") : "";
  if (sent.empty()) {
    EXPECT_EQ(code, HV_UNUSABLE_FILE);
  } else {
    ExpectOneOf(code, {HV_OK, HV_CANNOT_OPEN, HV_UNUSABLE_FILE});
    EXPECT_EQ(sent.substr(sent.size() - PjlEnd.size()), PjlEnd);
    EXPECT_LE(sent.size(), 2 * fs::file_size(file) + 300);
  }
  fs::remove("out");
}

TEST(FontDamage, IsDescribedAndSentOrRefused) {
  struct Sample {
    const char* name;
    const char* file;
    std::string bytes;
    NumberFields numbers;
    const char* described = nullptr;  // another file that is read with this one
  };
  const SoftFont pcl0(0, 64), pcl10(10, 80), pcl20(20, 68);
  const std::string pfb = PfbFile({{1, Type1}, {2, std::string(40, '\1')}, {1, "0000"}});
  const Sample samples[] = {
      {"PCL bitmap", "a.sfp", pcl0.bytes, pcl0.numbers},
      {"PCL bound", "a.sfs", pcl10.bytes, pcl10.numbers},
      {"PCL resolution", "a.sfp", pcl20.bytes, pcl20.numbers},
      {"DLF", "a.dlf", Dlf1, Dlf1Numbers},
      {"DLF reference", "a.dlf", Dlf10, Dlf10Numbers},
      {"FMF", "a.fmf", FmfFile("Courier"), {}},
      {"PFA", "a.pfa", Type1, {}},
      {"PFB", "a.pfb", pfb,
       Numbers(LowFirst, 2, {4}) + Numbers(LowFirst, Type1.size() + 8, {4, 40, 2, 4})},
      {"AFM", "a.afm", Times, {}},
      {"INF", "a.inf", Inf, {}, "a.afm"},
      {"PFM", "a.pfm", Pfm, PfmNumbers},
      {"PSM", "a.psm", LaserPrinterPsm(Metrics), HeadNumbers},
      {"PCM", "a.pcm", PcmFile("Cartridge", {Pfm, PfmFile().Bytes()}),
       Numbers(LowFirst, 0, {4, 4, 4, 4}) + NumbersOf(hv::PfmHeaderTable, 96) +
           NumbersOf(hv::PfmHeaderTable, 396)},
  };
  for (const Sample& sample : samples) {
    const char* const file = sample.described == nullptr ? sample.file : sample.described;
    const auto read = [file](const std::string& /*damaged*/) {
      ExpectWholeJob(file);
      return IsDescribed(file);
    };
    MeetDamage(sample.name, sample.bytes, sample.numbers, read, "\n(/", sample.file,
               {{"a.afm", Times}, {"a.pfb", Times}});
  }
}

bool IsWholeMetricsFile(const std::string& output) {
  if (output.compare(0, 16, "StartFontMetrics") == 0) {
    return output.size() > 16 && output.substr(output.size() - 16) == "EndFontMetrics\r\n";
  }
  const auto size = static_cast<uint32_t>(output.size());
  return output.size() > 117 && output.substr(2, 4) == Le32(size);
}

// A file is made whole or not at all.
bool IsConverted(const char* source, int32_t type) {
  HvFontInfo info = {};
  HvFonQueryInfo(source, &info, FONT_COMPANIONS_NONE, 1);
  std::strcpy(info.companionPath1, "a.tfm");
  const int32_t code = HvFonConvert(source, "out.x", &info, FONT_COMPANIONS_METRICS, type);
  ExpectOneOf(code, {HV_OK, HV_UNUSABLE_FILE});
  bool made = false;
  for (const char* const name : {"out.x", "out.PFM", "out.PSM"}) {
    if (!fs::exists(name)) continue;
    EXPECT_TRUE(IsWholeMetricsFile(ReadFile(name))) << name;
    made = fs::remove(name);
  }
  EXPECT_EQ(made, code == HV_OK);
  return made;
}

TEST(FontDamage, IsConvertedWholeOrRefused) {
  const SoftFont pcl0(0, 64), pcl9(9, 72);
  const std::string low = TaggedFile("II", {SampleTaggedFont()});
  const std::string high = TaggedFile("MM", {SampleTaggedFont()});
  const struct {
    const char* name;
    const char* file;    // that is damaged
    const char* source;  // that is converted
    int32_t type;
    std::string bytes;
    NumberFields numbers;
  } samples[] = {
      {"AFM to PFM", "a.afm", "a.afm", FONT_CONVERT_AFM_TO_PFM, Times, {}},
      {"INF to PFM", "a.inf", "a.afm", FONT_CONVERT_AFM_TO_PFM, Inf, {}},
      {"AFM to PFM and PSM", "a.afm", "a.afm", FONT_CONVERT_AFM_TO_PFM_PSM, Times, {}},
      {"PFM to AFM", "a.pfm", "a.pfm", FONT_CONVERT_PFM_TO_AFM, PostScriptPfm(Metrics), PfmNumbers},
      {"DLF to PBM", "a.dlf", "a.dlf", FONT_CONVERT_DLF_TO_PBM, Dlf1, Dlf1Numbers},
      {"DLF reference to PBM", "a.dlf", "a.dlf", FONT_CONVERT_DLF_TO_PBM, Dlf10, Dlf10Numbers},
      {"PCL to PFM", "a.sfp", "a.sfp", FONT_CONVERT_PCL_TO_PFM, pcl9.bytes, pcl9.numbers},
      {"PCL to PFM, described", "a.sfp", "a.sfp", FONT_CONVERT_PCL_TO_PFM_DESCRIBED, pcl0.bytes,
       pcl0.numbers},
      {"TFM to PFM, low byte first", "a.tfm", "a.sfs", FONT_CONVERT_TFM_TO_PFM, low,
       TaggedNumbers(low)},
      {"TFM to PFM, high byte first", "a.tfm", "a.sfs", FONT_CONVERT_TFM_TO_PFM, high,
       TaggedNumbers(high)},
      {"TFM to PFM by header", "a.sfs", "a.sfs", FONT_CONVERT_TFM_TO_PFM_BY_HEADER, pcl0.bytes,
       pcl0.numbers},
  };
  for (const auto& sample : samples) {
    const auto read = [&](const std::string& /*damaged*/) {
      return IsConverted(sample.source, sample.type);
    };
    MeetDamage(sample.name, sample.bytes, sample.numbers, read, "", sample.file,
               {{"a.afm", Times}, {"a.inf", Inf}, {"a.tfm", high}, {"a.sfs", pcl0.bytes}});
  }
}

// The list holds files that are there, and each has its record.
TEST(FontDamage, OfAnIndexListsWhatIsThere) {
  const std::string index =
      "; fonts\n[Cartridge]\n{ fonts/one.bit First\n/class = Outline\n[PCL fonts]\n{O}\n"
      "FONT = Second\n/font file = fonts/two.bnd\n/symset = 8U\n/tfm = fonts/two.tfm\n"
      "/resource = WORD 12345\nFONT = Third\n/font file = none.bnd\n/weight = Bold\n/slant = It\n";
  const auto read = [](const std::string& /*damaged*/) {
    uint16_t count = 0;
    HvFoundResource* const list = HvFonFind(".", &count, FONT_KIND_PCL, FONT_CLASSES_ALL, 0, 0);
    const uint16_t whole = count;
    for (const HvFoundResource* found = list; found != nullptr; found = found->next, --count) {
      const auto* const info = static_cast<const HvFontInfo*>(found->details);
      EXPECT_EQ(+found->size, +info->fileSize);
      EXPECT_TRUE(Ends(info->name) && Ends(info->symbolSet) && Ends(info->companionPath1));
    }
    EXPECT_EQ(count, 0);
    HvFonFindFree(list);
    return whole == 2;
  };
  const std::string bound = PclFont({.size = 80, .format = 10, .name = "Bound           "}, {});
  MeetDamage("GLUE.TXT", index, {}, read, "\n[{/;F ", "GLUE.TXT",
             {{"fonts/one.bit", PclFont({}, {})}, {"fonts/two.bnd", bound}, {"fonts/two.tfm", ""}});
}

}  // namespace
