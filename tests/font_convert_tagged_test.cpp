// Tagged font metrics as PFM of the PCL 5 driver, and DLF fonts as metrics for "IBM LaserPrinter".

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/pcl_pfm_files.h"
#include "support/tagged_files.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

constexpr int32_t ByMetrics = 6;
constexpr int32_t ByHeader = 16;

HvFontInfo Companions(const std::string& first, const std::string& second) {
  HvFontInfo info = {};
  std::strcpy(info.companionPath1, first.c_str());
  std::strcpy(info.companionPath2, second.c_str());
  std::strcpy(info.symbolSet, "8U");
  return info;
}

// The PFM of the metrics, or "code N". The source is a soft font.
std::string PfmOf(const std::string& metrics, const std::string& symbolSet = "8U",
                  int32_t type = ByMetrics, const PclDescriptor& header = {}) {
  const TestFolder folder;
  folder.Add("font.sfs", PclFont(header, {}));
  HvFontInfo info = Companions(folder.Add("font.tfm", metrics), "");
  std::strcpy(info.symbolSet, symbolSet.c_str());
  return Converted(folder, "font.sfs", type, "PFM", &info);
}

PclDriverPfm SamplePfm() {
  PclDriverPfm pfm = {"PCL5 / HP LaserJet III", 0x81, 12, 950, 200, 50, true, 700};
  pfm.pixelHeight = 1200;
  pfm.pitchAndFamily = 17;
  pfm.averageWidth = 501;
  pfm.maximumWidth = 722;
  pfm.last = 196;
  pfm.leadsToTables = true;
  pfm.widths.assign(196 - 32 + 2, 0);
  pfm.widths[0] = pfm.widths[160 - 32] = 250;
  pfm.widths['A' - 32] = 722;
  pfm.widths['V' - 32] = 700;
  pfm.widths[196 - 32] = 710;
  pfm.face = "Sample (8U)";
  pfm.metrics = {240,  0,    1000, 3,    1000, 1000, 700,  500, 720, 210, -125, 200,
                 -210, 1000, 1000, -100, 50,   0,    -100, 50,  50,  250, 50};
  pfm.kerning = {{' ', 'A', -7}, {'V', 'A', 40}, {'A', 'V', -80}};
  pfm.memory = 0;
  pfm.selection = "\x1B(8U\x1B(s1p12.00v9s3b4101T";
  return pfm;
}

TEST(TaggedMetrics, GiveEveryFieldInBothByteOrders) {
  for (const char* const order : {"II", "MM"}) {
    EXPECT_EQ(PfmOf(TaggedFile(order, {SampleTaggedFont()})), SamplePfm().Bytes()) << order;
  }
}

TEST(TaggedMetrics, AreSelectedByTheHeaderOfTheSoftFont) {
  const PclDescriptor header = {
      .styleHigh = 1, .symbolSet = 629, .styleLow = 2, .strokeWeight = -4, .typeface = 0x1234};
  PclDriverPfm pfm = SamplePfm();
  pfm.face = "Sample (W1)";
  pfm.translation = 17;
  pfm.widths.assign(196 - 32 + 2, 0);
  pfm.widths[0] = 250;
  pfm.widths[196 - 32] = 710;
  pfm.maximumWidth = 710;
  pfm.kerning.clear();
  // The pitch is that of the space: a quarter of 12 points.
  pfm.selection = "\x1B(19U\x1B(s0p12.00v24.00h258s-4b4660T";
  EXPECT_EQ(PfmOf(TaggedFile("II", {SampleTaggedFont()}), "8U", ByHeader, header), pfm.Bytes());
}

TEST(TaggedMetrics, OfAFixedPitchFontHaveNoTable) {
  TaggedFontFile font = SampleTaggedFont();
  const std::pair<unsigned, std::vector<int64_t>> words[] = {
      {412, {600}}, {415, {64}}, {409, {0}}, {422, {1100}}, {433, {600, 600, 600, 600}}};
  for (const auto& [tag, values] : words) font.Set(tag, 3, values);
  font.Remove(419);
  font.Remove(439);
  font.Set(408, 5, {2001, 2});  // rounded to the next whole unit
  PclDriverPfm pfm = SamplePfm();
  pfm.widths.clear();
  pfm.kerning.clear();
  pfm.italic = false;
  pfm.internalLeading = 199;
  pfm.externalLeading = 0;
  pfm.pitchAndFamily = 48;
  pfm.pixelWidth = pfm.averageWidth = pfm.maximumWidth = 600;
  for (const std::size_t word : {2U, 4U, 5U, 13U, 14U}) pfm.metrics[word] = 1001;
  pfm.selection = "\x1B(8U\x1B(s0p12.00v10.01h8s3b4101T";
  EXPECT_EQ(PfmOf(TaggedFile("II", {font})), pfm.Bytes());
}

TEST(TaggedMetrics, GiveTheFirstFontWithTheSymbolSet) {
  std::vector<TaggedFontFile> fonts(3, SampleTaggedFont());
  fonts[0].symbolSets.pop_back();
  fonts[1].symbolSets.erase(fonts[1].symbolSets.begin());
  fonts[2].symbolSets[0].text = "0N";
  for (const auto& [font, name] : {std::pair{0U, "One"}, {1U, "Two"}, {2U, "Three"}}) {
    fonts[font].entries[1].text = name;
  }
  const std::string file = TaggedFile("MM", fonts);
  const std::pair<const char*, std::string> cases[] = {{"8U", "One (8U)"},
                                                       {"19U", "Two (W1)"},
                                                       {"0N", "Three (0N)"},
                                                       {"9E", "One (8U)"},
                                                       {"", "One (8U)"}};
  for (const auto& [symbolSet, face] : cases) {
    EXPECT_NE(PfmOf(file, symbolSet).find(face + '\0'), std::string::npos) << symbolSet;
  }
}

TEST(TaggedMetrics, AreRefusedWhenTheyCannotBeUsed) {
  const std::string good = TaggedFile("II", {SampleTaggedFont()});
  const auto withEm = [](int64_t numerator, int64_t denominator) {
    TaggedFontFile font = SampleTaggedFont();
    font.Set(408, 5, {numerator, denominator});
    return TaggedFile("II", {font});
  };
  const std::string cases[] = {
      "",
      "IM" + good.substr(2),
      "MI" + good.substr(2),
      good.substr(0, 4) + Le32(0) + good.substr(8),
      good.substr(0, 4) + Le32(static_cast<uint32_t>(good.size())) + good.substr(8),
      good.substr(0, 100),
      good + std::string(4U << 20, '\0'),
      withEm(1000, 0),
      withEm(65536, 1),
  };
  for (const std::string& metrics : cases) EXPECT_EQ(PfmOf(metrics), "code 27");
  // Three tags are needed, others have values to stand in for them.
  for (unsigned tag = 401; tag <= 442; ++tag) {
    TaggedFontFile font = SampleTaggedFont();
    font.Remove(tag);
    if (tag == 404) font.symbolSets.clear();
    const bool needed = tag == 404 || tag == 408 || tag == 433;
    EXPECT_EQ(PfmOf(TaggedFile("II", {font})) == "code 27", needed) << tag;
  }
}

TEST(TaggedMetrics, MayFormACircle) {
  std::string file = TaggedFile("II", {SampleTaggedFont()});
  const std::size_t next = 8 + 2 + 12 * 28;
  ASSERT_EQ(file.substr(next, 4), std::string(4, '\0'));
  file.replace(next, 4, Le32(8));
  EXPECT_EQ(PfmOf(file, "9E"), SamplePfm().Bytes());
}

TEST(TaggedMetrics, CheckTheRecord) {
  const TestFolder folder;
  const std::string source = folder.Add("font.sfs", "no soft font");
  const std::string metrics = folder.Add("font.tfm", TaggedFile("II", {SampleTaggedFont()}));
  const std::string out = folder.Add("out.pfm", "old");
  const HvFontInfo first = Companions(metrics, folder.Path().string());
  const HvFontInfo second = Companions(folder / "missing.tfm", metrics);
  const auto convert = [&](const HvFontInfo* info, uint32_t selector, int32_t type = ByMetrics) {
    return Convert(source, out, type, info, selector);
  };
  for (const int32_t type : {ByMetrics, ByHeader}) {
    EXPECT_EQ(convert(nullptr, 2, type), HV_BAD_ARGUMENT);
    EXPECT_EQ(convert(&first, 0, type), HV_BAD_ARGUMENT);
    EXPECT_EQ(convert(&first, 3, type), HV_BAD_ARGUMENT);
  }
  EXPECT_EQ(convert(&first, 4), HV_UNUSABLE_FILE);
  EXPECT_EQ(convert(&second, 2), HV_UNUSABLE_FILE);
  EXPECT_EQ(convert(&first, 2, ByHeader), HV_UNUSABLE_FILE);
  EXPECT_EQ(ReadFile(out), "old");
  EXPECT_EQ(Convert(source, folder / "nowhere/x", ByMetrics, &first, 2), HV_CANNOT_OPEN);
  EXPECT_EQ(Convert(folder.Path().string(), out, ByMetrics, &first, 2), HV_CANNOT_OPEN);
  for (const auto& [info, selector] : {std::pair{&first, 2U}, {&second, 4U}}) {
    std::filesystem::remove(out);
    EXPECT_EQ(convert(info, selector), HV_OK);
    EXPECT_EQ(ReadFile(out), SamplePfm().Bytes());
  }
}

// The PBM of a DLF font, or "code N".
std::string PbmOf(const std::string& dlf) {
  return Converted("font.dlf", dlf, FONT_CONVERT_DLF_TO_PBM, "PBM");
}

// The layout is that of a PSM; some fields are a DLF font's own.
void ExpectPbm(const DlfFont& dlf, const std::string& name, const std::string& suffix,
               unsigned family, int width, unsigned points, unsigned charSet) {
  FontMetrics font;
  font.boxHeight = 1000;
  font.charSet = charSet;
  font.family = family;
  font.variable = false;
  font.averageWidth = font.maximumWidth = width;
  font.face = name + suffix;
  font.fontName = name;
  std::string pbm = LaserPrinterPsm(font);
  pbm.replace(68, 2, Le16(points));
  if (width == 0) pbm[90] = static_cast<char>(pbm[90] | 1);
  EXPECT_EQ(PbmOf(dlf.Bytes()), pbm) << font.face;
}

TEST(DlfMetrics, HoldWhatTheBlockSays) {
  ExpectPbm({}, "Courier", " (850A)", 0, 0, 10, 255);
  // Six points of twelve and a half.
  ExpectPbm({.flags = 1, .size = 1250, .letterByte = 0}, "Courier", " (850)", 48, 480, 13, 255);
  // Ten characters an inch.
  ExpectPbm({.format = 10, .flags = 1, .codePage = 1004, .size = 7200}, "Courier", " (1004)", 48,
            600, 12, 0);
  ExpectPbm({.format = 10, .flags = 2, .codePage = 1252, .size = 840, .name = ""}, "font",
            " (1252)", 0, 0, 8, 0);
}

TEST(DlfMetrics, AreRefusedAndNotWritten) {
  EXPECT_EQ(PbmOf(""), "code 27");
  EXPECT_EQ(PbmOf(DlfFont().Bytes().substr(0, 39)), "code 27");
  EXPECT_EQ(PbmOf(DlfFont{.format = 2}.Bytes()), "code 27");
  const TestFolder folder;
  const std::string source = folder.Add("font.dlf", DlfFont().Bytes());
  EXPECT_EQ(Convert(source, folder / "nowhere/x.pbm", 4), HV_CANNOT_OPEN);
  EXPECT_EQ(Convert(folder.Path().string(), "", 4), HV_CANNOT_OPEN);
}

}  // namespace
