// The record that an AFM and an INF are read into.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "api/hvapi.h"
#include "fontconv/afm_reader.h"
#include "support/memory_stream.h"

namespace {

using hv::FontMetricsRecord;
using hv::WidthRule;

FontMetricsRecord Read(const std::string& afm, const char* inf = nullptr,
                       WidthRule rule = WidthRule::Plain) {
  hvtest::MemoryStream afmFile(afm);
  hvtest::MemoryStream infFile(inf == nullptr ? "" : inf);
  FontMetricsRecord record;
  EXPECT_EQ(hv::ReadAfmAndInf(&afmFile, inf == nullptr ? nullptr : &infFile, &record, rule), HV_OK);
  return record;
}

// The metrics as text: left top right bottom width.
std::string Text(const hv::CharMetrics& m) {
  return std::to_string(m.left) + " " + std::to_string(m.top) + " " + std::to_string(m.right) +
         " " + std::to_string(m.bottom) + " " + std::to_string(m.width);
}

// A section of as many lines as there are.
std::string Section(const std::string& lines) {
  return "IsFixedPitch false\nStartCharMetrics " +
         std::to_string(std::count(lines.begin(), lines.end(), '\n')) + "\n" + lines +
         "EndCharMetrics\n";
}

TEST(AfmReader, ReadsCharacterLinesByPosition) {
  const FontMetricsRecord font =
      Read(Section("C 65 ; WX 1 ; N circumflex ; B 1 2 3 4 ;\n"
                   "C 1 ; XX 2 ; NN A ; BB -1 -2 -3 -4 ;\n"
                   "C 2;WX 3;N B;B 5 6 7 8;\n"
                   "  \tC 67 ;\tWX\t4 ;\tN\tC ;\tB\t9 8 7 6 ;\n"
                   "X 68 ; WX 5 ; N D ; B 0 0 0 0 ;\n"
                   "C 69 ; WX 6.9 ; N E ; B 1.5 2 3 4 ;\n"
                   "C 70 ; N F ; WX 7 ; B 0 0 0 0 ;\n"
                   "C 71 ; WX ; N G ;\n"
                   "C 72 ; WX +8 ; N H ; B - 1 2 3 ;\n"
                   "C 94 ; WX 9 ; N asciicircum ; B 0 0 0 0 ;\n"
                   "C 175 ; WX 10 ; N overline ; B 0 0 0 0 ;\n"
                   "C 45 ; WX 11 ; N hyphen ; B 0 0 0 0 ;\n"));
  const std::pair<std::size_t, const char*> metrics[] = {
      {94, "1 4 3 2 1"}, {65, "-1 -4 -3 -2 2"}, {66, "5 8 7 6 3"}, {67, "9 6 7 8 4"},
      {68, "0 0 0 0 5"}, {71, "0 0 0 0 0"},     {72, "0 3 2 1 0"}};
  for (const auto& [code, text] : metrics) EXPECT_EQ(Text(font.charMetrics[code]), text) << code;
  EXPECT_EQ(font.charMetrics[69].width, 6);
  EXPECT_EQ(font.charMetrics[70].width, -1);
  EXPECT_EQ(font.charMetrics[136].width, -1);  // no bullet to take its place
  EXPECT_EQ(font.charMetrics[175].width, -1);  // as code 0, whatever the overline is
  EXPECT_EQ(font.charMetrics[173].width, 11);
}

TEST(AfmReader, KeepsTheCodesOfSymbolFonts) {
  const std::string lines =
      "C 33 ; WX 1 ; N A ;\nCH 2A ; WX 2 ; N A ;\nCH <2b> ; WX 3 ; N ;\nCH -2C ; WX 4 ; N A ;\n"
      "C 256 ; WX 5 ; N A ;\nCH FFFFFFFFFFFFFFFF2D ; WX 6 ; N A ;\nC 255 ; WX 7 ; N A ;\n"
      "C 0 ; WX 8 ; N A ;\nCX 46 ; WX 9 ; N A ;\nC 175 ; WX 10 ; N macron ;\n";
  for (const char* const inf : {"MSMenuName (Symbol Set)\n", "Pi true\n"}) {
    const FontMetricsRecord font = Read(Section(lines), inf);
    const std::pair<std::size_t, int32_t> widths[] = {{33, 1},  {42, 2},  {43, 3}, {44, -1},
                                                      {45, -1}, {255, 7}, {0, -1}, {46, -1},
                                                      {65, -1}, {175, -1}};
    for (const auto& [code, width] : widths) EXPECT_EQ(font.charMetrics[code].width, width) << code;
  }
  EXPECT_EQ(Read(Section(lines), "MSMenuName (Symbo)\n").charMetrics[65].width, 9);
}

TEST(AfmReader, TakesAsManyLinesAsAnnounced) {
  const std::string a = "C 65 ; WX 1 ; N A ; B 0 0 0 0 ;\n";
  // Too few: what is left is no section.
  EXPECT_EQ(Read("StartCharMetrics 1\n" + a + a + "Ascender 5\n").ascender, 5);
  EXPECT_EQ(Read("StartCharMetrics -3\nAscender 4\nAscender 5\n").ascender, 5);
  // Too many: they swallow what follows.
  const FontMetricsRecord swallowed =
      Read("StartCharMetrics 3\n" + a + "EndCharMetrics\nWeight Bold\nAscender 4\nAscender 5\n");
  EXPECT_EQ(swallowed.ascender, 5);
  EXPECT_EQ(swallowed.weight, 400);
  const FontMetricsRecord endless = Read("IsFixedPitch True\nStartCharMetrics 2147483647\n" + a);
  EXPECT_EQ(endless.charMetrics[65].width, 1);
}

TEST(AfmReader, SortsKerningPairsBySecondCode) {
  const auto pairs = [](const FontMetricsRecord& font) {
    std::string text;
    for (std::size_t i = 0; i < font.kernPairCount; ++i) {
      const hv::KernPair& pair = font.kernPairs[i];
      text += std::to_string(pair.first) + "," + std::to_string(pair.second) + "," +
              std::to_string(pair.amount) + " ";
    }
    return text;
  };
  const std::string head = "StartKernData\nStartKernPairs 5\n";
  const std::string three = "KPX B A -1\nKPX A B -2\nKPX A A 3\n";
  // The lines that are missing leave the end of the section in its place.
  EXPECT_EQ(pairs(Read(head + three + "EndKernPairs\nEndKernData\n")),
            "65,65,3 66,65,-1 65,66,-2 ");
  EXPECT_EQ(Read(head + three + "EndKernPairs\nAscender 5\n").ascender, 5);
  EXPECT_EQ(pairs(Read("StartKernData\nStartKernPairs 2\n" + three)), "66,65,-1 65,66,-2 ");
  EXPECT_EQ(pairs(Read(head + "KPX nosuchglyph A 40000\nKPX A\n")), "65,0,0 0,65,-25536 ");
  EXPECT_EQ(pairs(Read("StartKernData")), "");
}

TEST(AfmReader, WorksOutTheWidthOfNothing) {
  // All codes have -1, in unsigned arithmetic.
  const FontMetricsRecord font = Read(Section(""));
  EXPECT_EQ(font.avgWidth, (0U - 256) / 256);
  EXPECT_EQ(font.maxWidth, 0);
  EXPECT_EQ(Read(Section(""), nullptr, WidthRule::Weighted).avgWidth,
            static_cast<uint16_t>((0U - 1000) / 1000));
}

TEST(AfmReader, ReadsWordsAndNumbers) {
  const std::pair<const char*, int32_t> angles[] = {
      {"-9.46", -94}, {"0.99", 9}, {"-0.05", 0},       {"12.", 120},
      {".5", 5},      {"+5", 0},   {"3276.8", -32768}, {"1.1234567890123456789", 11}};
  for (const auto& [text, angle] : angles) {
    EXPECT_EQ(Read(std::string("ItalicAngle ") + text).italicAngle, angle) << text;
  }
  const std::pair<const char*, int32_t> ascenders[] = {
      {"Ascender 12abc", 12}, {"Ascender -99999999999", -2147483647},
      {"Ascender\t 7", 7},    {"ascender 7", 0},
      {"Ascender7", 0},       {"Ascender; 7", 0}};
  for (const auto& [line, ascender] : ascenders) EXPECT_EQ(Read(line).ascender, ascender) << line;
  EXPECT_EQ(Read("Weight Light").weight, 300);
  EXPECT_EQ(Read("Weight bold").weight, 400);
}

// The name of the font or, by an INF, of the menu, and the character set or the family with it.
TEST(AfmReader, TellsNamesCharacterSetAndFamily) {
  const auto expect = [](const char* afm, const char* inf, const std::string& name, int32_t kind) {
    const FontMetricsRecord font = Read(afm, inf);
    EXPECT_EQ(inf == nullptr ? font.fontName : font.menuName, name);
    EXPECT_EQ(inf == nullptr ? font.charSet : font.pitchAndFamily, kind) << name;
  };
  expect("FontName SymbolMT", nullptr, "SymbolMT", 2);
  expect("FontName ZapfDingbats", nullptr, "ZapfDingbats", 2);
  expect("FontName ZapfDingbatsX", nullptr, "ZapfDingbatsX", 0);
  expect("FontName \t Two Words; and more", nullptr, "Two Words; and more", 0);
  expect("FontName Symbol\nFontName Times", nullptr, "Times", 0);
  expect("FontName\nTimes", nullptr, "", 0);
  expect("", "MSMenuName (Times New) x\nSerif true\n", "Times New", 16);
  expect("", "MSMenuName  Times New \nSerif false\n", "Times New ", 32);
  expect("", "MSMenuName (Times\nPi true\nSerif true\n", "Times", 80);
  expect("", "Serif true\nSerif maybe\n", "", 16);
  expect("", "Serif true\nSerif false\nPCLStyle true\n", "", 32);
  expect("", "", "", 32);
  const std::string n(90, 'n');
  expect(("FontName " + n).c_str(), nullptr, n.substr(0, 79), 0);
  expect("", ("MSMenuName (" + n + ")").c_str(), n.substr(0, 79), 32);
}

TEST(AfmReader, FindsLinesWhateverTheyEndIn) {
  for (const char* const end : {"\n", "\r", "\r\n", "\n\r", "\n\n", "\r\r\n", " \n\t\r\n"}) {
    EXPECT_EQ(Read("FontName A" + std::string(end) + "Ascender 5" + end).ascender, 5);
  }
  // A line of 255 characters and more loses the rest of it, up to a line feed.
  const std::string line = "Comment " + std::string(247, 'x');
  EXPECT_EQ(Read(line + "\nAscender 5\n").ascender, 5);
  EXPECT_EQ(Read(line + "Ascender 4\nAscender 5\n").ascender, 5);
  EXPECT_EQ(Read(line + "\r\nAscender 5\n").ascender, 5);
  EXPECT_EQ(Read(line + "\rAscender 4\rWeight Bold\nAscender 5").weight, 400);
  EXPECT_EQ(Read(line.substr(1) + "\rAscender 4\n").ascender, 4);
  EXPECT_EQ(Read("EndFontMetrics\nAscender 5\n").ascender, 0);
  EXPECT_EQ(Read("Ascender 5\x1A\nAscender 6\n").ascender, 5);
}

}  // namespace
