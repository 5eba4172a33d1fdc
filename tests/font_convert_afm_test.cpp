// PFM files as AFM, line by line.

#include <gtest/gtest.h>

#include <string>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/test_folder.h"

namespace {

using namespace std::string_literals;

using hvtest::FontMetrics;
using hvtest::ReadFile;
using hvtest::TestFolder;

// The AFM of the bytes, line ends as they are in the file; "code N" when there is none.
std::string AfmOf(const std::string& pfm) {
  return hvtest::Converted("font.pfm", pfm, FONT_CONVERT_PFM_TO_AFM, "AFM");
}
std::string AfmOf(const FontMetrics& font) {
  return AfmOf(hvtest::PostScriptPfm(font));
}

// The text of a line that begins so, without its end; empty when there is none.
std::string LineOf(const std::string& afm, const std::string& start) {
  const std::size_t at = afm.find("\r\n" + start);
  if (at == std::string::npos) return {};
  return afm.substr(at + 2, afm.find("\r\n", at + 2) - at - 2);
}

std::string WithCrLf(const std::string& text) {
  std::string result;
  for (const char c : text) result += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return result;
}

FontMetrics TextFont() {
  FontMetrics font = {"A notice", 700, 0, 0, 0, 400, 0, 32, true, 500, 900, 660, 450, 683, 217};
  font.face = "Sample Text";
  font.fontName = "Sample-Text-Roman-Oblique";
  font.widths.assign(224, 600);
  font.widths[0] = 250;
  return font;
}

// A character set with its codes kept, of few characters.
FontMetrics SymbolFont() {
  FontMetrics font = TextFont();
  font.charSet = 2;
  font.first = 65;
  font.last = 68;
  font.widths = {100, 0, 65535, 300};
  return font;
}

TEST(AfmWriter, WritesASymbolFontCompletely) {
  FontMetrics font = SymbolFont();
  font.kerning = {{'A', 4, -20}, {0x7F, 196, 0}, {26, 255, 32767}, {'B', 'B', -32768}};
  EXPECT_EQ(AfmOf(font),
            WithCrLf("StartFontMetrics 2.0\nComment A notice\nFontName Sample-Text-Roman-Oblique\n"
                     "EncodingScheme FontSpecific\nFullName Sample Text Roman Oblique\n"
                     "FamilyName Sample Text\nWeight Medium\nIsFixedPitch false\n"
                     "FontBBox -100 -222 910 705\nCapHeight 660\nXHeight 450\nDescender 217\n"
                     "Ascender 683\nStartCharMetrics 4\n"
                     "C  65 ; WX  100 ;\nC  67 ; WX  65535 ;\nC  68 ; WX  300 ;\n"
                     "EndCharMetrics\nStartKernData\nStartKernPairs 3\nKPX A macron -20\n"
                     "KPX W1a ydieresis 32767\nKPX B B -32768\nEndKernPairs\nEndKernData\n"
                     "EndFontMetrics\n"));
}

TEST(AfmWriter, EncodesATextFontAsAdobeDoes) {
  FontMetrics font = TextFont();
  const std::pair<std::size_t, int> widths[] = {{39, 11},   {94, 12},  // behind 136 in its slot
                                                {96, 13},   {136, 14},
                                                {138, 250},              // as the space: dropped
                                                {149, 15},               // another width: kept
                                                {145, 16},  {146, 250},  // always kept
                                                {129, 17},               // never kept
                                                {160, 250}, {255, 0}};
  for (const auto& [code, width] : widths) font.widths[code - 32] = width;
  const std::string afm = AfmOf(font);
  const auto line = [&](const std::string& code, int width, const std::string& name) {
    return "C  " + code + " ; WX  " + std::to_string(width) + " ; N " + name + " ;\r\n";
  };
  for (const std::string& expected :
       {line("32", 250, "space"), line("169", 11, "quotesingle"), line("94", 14, "asciicircum"),
        line("-1", 12, "asciicircum"), line("193", 13, "grave"), line("96", 16, "quoteleft"),
        line("-1", 15, "bullet1"), line("-1", 250, "quoteright"), line("-1", 250, "reqspace"),
        line("-1", 600, "Adieresis"), line("126", 600, "asciitilde"), line("127", 600, "W7f"),
        line("251", 600, "germandbls"), line("249", 600, "oslash"), line("-1", 600, "mu")}) {
    EXPECT_NE(afm.find(expected), std::string::npos) << expected;
  }
  for (const char* const dropped : {" W81 ", " W80 ", " W9e ", " Scaron ", " W83 ", "ydieresis"}) {
    EXPECT_EQ(afm.find(dropped), std::string::npos) << dropped;
  }
  // Standard codes first, in their order.
  EXPECT_LT(afm.find("N quoteleft"), afm.find("N quotesingle"));
  EXPECT_LT(afm.find("N germandbls"), afm.find("C  -1"));
  EXPECT_LT(afm.find(line("-1", 12, "asciicircum")), afm.find("N bullet1"));
  // 224 codes less the nine that are never kept and Scaron; ydieresis without a width is counted.
  EXPECT_EQ(LineOf(afm, "StartCharMetrics"), "StartCharMetrics 214");
  std::size_t lines = 0;
  for (std::size_t at = 0; (at = afm.find("\r\nC ", at)) != std::string::npos; ++at) ++lines;
  EXPECT_EQ(lines, 213U);
}

TEST(AfmWriter, TakesTheWidthOfTheSpaceForReference) {
  // No space among the characters: 0 is what other widths are held against.
  FontMetrics font = TextFont();
  font.first = 138;
  font.last = 154;
  font.widths.assign(17, 600);
  font.widths[0] = 0;  // 138
  const std::string afm = AfmOf(font);
  EXPECT_EQ(afm.find("Scaron"), std::string::npos);
  EXPECT_NE(afm.find("C  -1 ; WX  600 ; N scaron ;"), std::string::npos);
  EXPECT_EQ(LineOf(afm, "StartCharMetrics"), "StartCharMetrics 12");
}

TEST(AfmWriter, TellsWeightAndPitch) {
  const std::pair<unsigned, const char*> weights[] = {
      {0, "Medium"},   {1, "Light"},    {300, "Light"}, {324, "Light"}, {325, "Medium"},
      {400, "Medium"}, {475, "Medium"}, {476, "Bold"},  {65535, "Bold"}};
  for (const auto& [weight, word] : weights) {
    FontMetrics font = SymbolFont();
    font.weight = weight;
    EXPECT_EQ(LineOf(AfmOf(font), "Weight "), std::string("Weight ") + word);
  }
  for (const bool variable : {false, true}) {
    for (const int average : {500, 900}) {
      FontMetrics font = SymbolFont();
      font.variable = variable;
      font.averageWidth = average;
      const bool fixed = !variable || average == 900;
      const std::string afm = AfmOf(font);
      EXPECT_EQ(LineOf(afm, "IsFixed"), fixed ? "IsFixedPitch true" : "IsFixedPitch false");
      EXPECT_EQ(LineOf(afm, "FontBBox"),
                fixed ? "FontBBox -20 -222 910 705" : "FontBBox -100 -222 910 705");
    }
  }
  FontMetrics negative = SymbolFont();
  negative.ascender = -1;
  negative.descent = -1;
  EXPECT_EQ(LineOf(AfmOf(negative), "FontBBox"), "FontBBox -100 -65540 910 65540");
}

// Puts an offset of four bytes into a file.
std::string WithOffset(std::string pfm, std::size_t at, std::size_t offset) {
  return pfm.replace(at, 4, hvtest::Le32(static_cast<uint32_t>(offset)));
}

TEST(AfmWriter, ReadsTheWholeFileAndNothingBehindIt) {
  FontMetrics font = SymbolFont();
  font.kerning.assign(2000, {'A', 'B', -5});
  font.copyright = std::string(80, 'c').substr(0, 60);
  const std::string pfm = hvtest::PostScriptPfm(font);
  ASSERT_GT(pfm.size(), 8000U);
  const std::string afm = AfmOf(pfm);
  EXPECT_EQ(LineOf(afm, "StartKernPairs"), "StartKernPairs 2000");
  EXPECT_EQ(LineOf(afm, "Comment"), "Comment " + std::string(60, 'c'));

  // Metrics, widths, kerning, font name: at the end, beyond it, not ended before it.
  for (const std::size_t field : {119U, 123U, 131U, 139U}) {
    for (const std::size_t offset : {pfm.size(), pfm.size() - 1, std::size_t{0xFFFFFFFF}}) {
      if (field == 139 && offset == pfm.size() - 1) continue;
      EXPECT_EQ(AfmOf(WithOffset(pfm, field, offset)), "code 27") << field << " " << offset;
    }
  }
  std::string unended = WithOffset(pfm, 139, pfm.size() - 1);
  unended.back() = 'x';
  EXPECT_EQ(AfmOf(unended), "code 27");
  EXPECT_EQ(AfmOf(WithOffset(pfm, 123, 0)), "code 27");

  font.kerning.clear();
  EXPECT_EQ(AfmOf(WithOffset(hvtest::PostScriptPfm(font) + "\0\0"s, 2, 0)), "code 27");
}

TEST(AfmWriter, WritesAnEmptyKerningBlock) {
  FontMetrics font = SymbolFont();
  std::string pfm = hvtest::PostScriptPfm(font) + hvtest::Le16(0);
  pfm = WithOffset(WithOffset(pfm, 2, pfm.size()), 131, pfm.size() - 2);
  const std::string afm = AfmOf(pfm);
  EXPECT_NE(afm.find("StartKernData\r\nStartKernPairs 0\r\nEndKernPairs\r\nEndKernData\r\n"
                     "EndFontMetrics\r\n"),
            std::string::npos);
}

TEST(AfmWriter, RefusesWhatIsNoPfm) {
  EXPECT_EQ(AfmOf(""), "code 27");
  EXPECT_EQ(AfmOf(hvtest::PostScriptPfm(SymbolFont()) + "x"), "code 27");
  const TestFolder folder;
  const std::string pfm = hvtest::PostScriptPfm(TextFont());
  const std::string source = folder.Add("font.pfm", pfm);
  EXPECT_EQ(hvtest::Convert(source, folder / "nowhere/font.afm", 3), HV_CANNOT_OPEN);
  std::filesystem::create_directory(folder.Path() / "dir.pfm");
  EXPECT_EQ(hvtest::Convert(folder / "dir.pfm", "", 3), HV_CANNOT_OPEN);
  // The source itself may be the destination: it was read before.
  EXPECT_EQ(hvtest::Convert(source, source, 3), HV_OK);
  EXPECT_EQ(ReadFile(source), AfmOf(pfm));
}

}  // namespace
