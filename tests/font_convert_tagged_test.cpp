// Tagged font metrics as PFM of the PCL 5 driver, and DLF fonts as metrics for "IBM LaserPrinter".

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/pcl_pfm_files.h"
#include "support/tagged_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::PclDriverPfm;
using hvtest::ReadFile;
using hvtest::SampleTaggedFont;
using hvtest::TaggedFile;
using hvtest::TaggedFontFile;
using hvtest::TestFolder;

constexpr int32_t ByMetrics = 6;
constexpr int32_t ByHeader = 16;

HvFontInfo Companions(const std::string& first, const std::string& second = "") {
  HvFontInfo info = {};
  std::strcpy(info.companionPath1, first.c_str());
  std::strcpy(info.companionPath2, second.c_str());
  std::strcpy(info.symbolSet, "8U");
  return info;
}

// The PFM of the metrics, or "code N". The source is a soft font.
std::string PfmOf(const std::string& metrics, const std::string& symbolSet = "8U",
                  int32_t type = ByMetrics, const hvtest::PclDescriptor& header = {}) {
  const TestFolder folder;
  folder.Add("font.sfs", hvtest::PclFont(header, {}));
  HvFontInfo info = Companions(folder.Add("font.tfm", metrics));
  std::strcpy(info.symbolSet, symbolSet.c_str());
  return hvtest::Converted(folder, "font.sfs", type, "PFM", &info);
}

PclDriverPfm SamplePfm() {
  PclDriverPfm pfm = {"PCL5 / HP LaserJet III",
                      0x81,
                      12,
                      950,
                      200,
                      50,
                      true,
                      700,
                      0,
                      0,
                      1200,
                      17,
                      501,
                      722,
                      32,
                      196};
  pfm.leadsToTables = true;
  pfm.widths.assign(196 - 32 + 2, 0);
  pfm.widths[0] = pfm.widths[160 - 32] = 250;
  pfm.widths['A' - 32] = 722;
  pfm.widths['V' - 32] = 700;
  pfm.widths[196 - 32] = 710;
  pfm.face = "Sample (8U)";
  pfm.metrics = {240,  0,    1000, 3,    1000, 1000, 700,  500, 720, 210, -125, 200,
                 -210, 1000, 1000, -100, 50,   0,    -100, 50,  50,  250, 50};
  pfm.kerning = {{'V', 'A', 40}, {'A', 'V', -80}};
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
  const hvtest::PclDescriptor header = {.styleHigh = 1,
                                        .symbolSet = 629,  // 19U
                                        .styleLow = 2,
                                        .strokeWeight = -4,
                                        .typeface = 0x1234};
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
  TaggedFontFile first = SampleTaggedFont();
  TaggedFontFile second = SampleTaggedFont();
  TaggedFontFile third = SampleTaggedFont();
  first.symbolSets.pop_back();
  second.symbolSets.erase(second.symbolSets.begin());
  third.symbolSets[0].text = "0N";
  for (const auto& [font, name] : {std::pair{&first, "One"}, {&second, "Two"}, {&third, "Three"}}) {
    font->Remove(417);
    font->entries.push_back({417, 2, {}, name});
  }
  const std::string file = TaggedFile("MM", {first, second, third});
  const std::pair<const char*, const char*> cases[] = {{"8U", "One (8U)"},   {"19U", "Two (W1)"},
                                                       {"0N", "Three (0N)"}, {"9E", "One (8U)"},
                                                       {"", "One (8U)"},     {"U8", "One (8U)"}};
  for (const auto& [symbolSet, face] : cases) {
    const std::string pfm = PfmOf(file, symbolSet);
    EXPECT_NE(pfm.find(face + std::string(1, '\0')), std::string::npos) << symbolSet;
  }
}

TEST(TaggedMetrics, AreRefusedWhenTheyCannotBeUsed) {
  const std::string good = TaggedFile("II", {SampleTaggedFont()});
  const auto changed = [](const std::function<void(TaggedFontFile&)>& change) {
    TaggedFontFile font = SampleTaggedFont();
    change(font);
    return TaggedFile("II", {font});
  };
  const auto without = [&](unsigned tag) {
    return changed([&](TaggedFontFile& font) { font.Remove(tag); });
  };
  const std::string cases[] = {
      "",
      "II",
      "IM" + good.substr(2),
      "MI" + good.substr(2),
      good.substr(0, 4) + hvtest::Le32(0) + good.substr(8),
      good.substr(0, 4) + hvtest::Le32(static_cast<uint32_t>(good.size())) + good.substr(8),
      good.substr(0, 100),
      changed([](TaggedFontFile& font) { font.symbolSets.clear(); }),
      changed([](TaggedFontFile& font) {
        font.Set(408, 5, {1000, 0});
      }),
      changed([](TaggedFontFile& font) {
        font.Set(408, 5, {65536, 1});
      }),
      without(408),
      without(433),
  };
  for (const std::string& metrics : cases) EXPECT_EQ(PfmOf(metrics), "code 27");
  // Others have values to stand in for them.
  for (unsigned tag = 401; tag <= 442; ++tag) {
    if (tag == 404 || tag == 408 || tag == 433) continue;
    EXPECT_NE(PfmOf(without(tag)), "code 27") << tag;
  }
}

TEST(TaggedMetrics, MayFormACircle) {
  std::string file = TaggedFile("II", {SampleTaggedFont()});
  const std::size_t next = 8 + 2 + 12 * 28;
  ASSERT_EQ(file.substr(next, 4), std::string(4, '\0'));
  file.replace(next, 4, hvtest::Le32(8));
  EXPECT_EQ(PfmOf(file, "9E"), SamplePfm().Bytes());
}

TEST(TaggedMetrics, CheckTheRecord) {
  const TestFolder folder;
  const std::string source = folder.Add("font.sfs", "no soft font");
  const std::string metrics = folder.Add("font.tfm", TaggedFile("II", {SampleTaggedFont()}));
  const std::string out = folder.Add("out.pfm", "old");
  const HvFontInfo first = Companions(metrics);
  const HvFontInfo second = Companions("", metrics);
  const HvFontInfo missing = Companions(folder / "missing.tfm", folder.Path().string());
  const std::string nowhere = folder / "nowhere/out.pfm";
  const struct {
    const HvFontInfo* info;
    uint32_t selector;
    int32_t type;
    int32_t code;
  } cases[] = {
      {nullptr, 2, ByMetrics, HV_BAD_ARGUMENT},   {nullptr, 4, ByHeader, HV_BAD_ARGUMENT},
      {&first, 0, ByMetrics, HV_BAD_ARGUMENT},    {&first, 3, ByMetrics, HV_BAD_ARGUMENT},
      {&first, 5, ByHeader, HV_BAD_ARGUMENT},     {&second, 2, ByMetrics, HV_UNUSABLE_FILE},
      {&missing, 2, ByMetrics, HV_UNUSABLE_FILE}, {&missing, 4, ByMetrics, HV_UNUSABLE_FILE},
      {&first, 4, ByMetrics, HV_UNUSABLE_FILE},   {&first, 2, ByHeader, HV_UNUSABLE_FILE},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hvtest::Convert(source, out, c.type, c.info, c.selector), c.code);
    EXPECT_EQ(ReadFile(out), "old");
  }
  EXPECT_EQ(hvtest::Convert(source, nowhere, ByMetrics, &first, 2), HV_CANNOT_OPEN);
  EXPECT_EQ(hvtest::Convert(folder.Path().string(), out, ByMetrics, &first, 2), HV_CANNOT_OPEN);
  for (const auto& [info, selector] : {std::pair{&first, 2U}, {&second, 4U}}) {
    std::filesystem::remove(out);
    EXPECT_EQ(hvtest::Convert(source, out, ByMetrics, info, selector), HV_OK);
    EXPECT_EQ(ReadFile(out), SamplePfm().Bytes());
  }
}

// The PBM of a DLF font, or "code N".
std::string PbmOf(const std::string& dlf) {
  return hvtest::Converted("font.dlf", dlf, FONT_CONVERT_DLF_TO_PBM, "PBM");
}

// The layout is that of a PSM; some fields are a DLF font's own.
void ExpectPbm(const hvtest::DlfFont& dlf, const std::string& name, const std::string& suffix,
               unsigned family, int width, unsigned points, unsigned charSet) {
  hvtest::FontMetrics font;
  font.boxHeight = 1000;
  font.charSet = charSet;
  font.family = family;
  font.variable = false;
  font.averageWidth = font.maximumWidth = width;
  font.face = name + suffix;
  font.fontName = name;
  std::string pbm = hvtest::LaserPrinterPsm(font);
  pbm.replace(68, 2, hvtest::Le16(points));
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
  ExpectPbm({.format = 10, .flags = 2, .codePage = 1004, .size = 840}, "Courier", " (1004)", 0, 0,
            8, 0);
  ExpectPbm({.format = 10, .flags = 2, .codePage = 1004, .size = 840, .name = ""}, "font",
            " (1004)", 0, 0, 8, 0);
}

TEST(DlfMetrics, AreRefusedAndNotWritten) {
  EXPECT_EQ(PbmOf(""), "code 27");
  EXPECT_EQ(PbmOf(hvtest::DlfFont().Bytes().substr(0, 39)), "code 27");
  EXPECT_EQ(PbmOf(hvtest::DlfFont{.format = 2}.Bytes()), "code 27");
  const TestFolder folder;
  const std::string source = folder.Add("font.dlf", hvtest::DlfFont().Bytes());
  EXPECT_EQ(hvtest::Convert(source, folder / "nowhere/x.pbm", 4), HV_CANNOT_OPEN);
  EXPECT_EQ(hvtest::Convert(folder.Path().string(), "", 4), HV_CANNOT_OPEN);
}

}  // namespace
