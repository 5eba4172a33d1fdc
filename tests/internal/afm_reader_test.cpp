// The record that an AFM and an INF are read into.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "api/hvapi.h"
#include "fontconv/afm_reader.h"
#include "platform/stream.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hv::FontMetricsRecord;
using hv::WidthRule;

struct Reading {
  uint32_t code;
  std::unique_ptr<FontMetricsRecord> record = std::make_unique<FontMetricsRecord>();
  const FontMetricsRecord* operator->() const { return record.get(); }
  const hv::CharMetrics& operator[](std::size_t at) const { return record->charMetrics[at]; }
};

Reading Read(const std::string& afm, const char* inf = nullptr, WidthRule rule = WidthRule::Plain) {
  const hvtest::TestFolder folder;
  const std::string afmPath = folder.Add("a.afm", afm);
  const std::string infPath = inf == nullptr ? folder / "none" : folder.Add("a.inf", inf);
  Reading reading;
  reading.record->kernPairCount = 77;  // what a record held before is gone
  reading.record->charMetrics[65].left = 77;
  reading.code = hv::ReadAfmAndInf(hv::platform::OpenStream(afmPath.c_str(), "rb").get(),
                                   hv::platform::OpenStream(infPath.c_str(), "rb").get(),
                                   reading.record.get(), rule);
  return reading;
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

TEST(AfmReader, ReadsTheGlobalMetrics) {
  const Reading font = Read(hvtest::AfmFile("Times-Bold"));
  EXPECT_EQ(font.code, HV_OK);
  EXPECT_STREQ(font->fontName, "Times-Bold");
  const hv::FontMetricsRecord& m = *font.record;
  EXPECT_EQ((std::vector<int32_t>{m.weight, m.italicAngle, m.variablePitch, m.underlinePosition,
                                  m.underlineThickness, m.ascender, m.charSet, m.firstChar,
                                  m.lastChar, m.pitchAndFamily, m.maxWidth}),
            (std::vector<int32_t>{700, -125, 1, -100, 50, 710, 0, 32, 255, 0, 722}));
  const auto& box = m.fontBBox;
  EXPECT_EQ((std::vector<int32_t>{box.left, box.bottom, box.right, box.top}),
            (std::vector<int32_t>{-10, -200, 1000, 900}));
  // 250 for 32 and 160, 722 for 65, 721 for 196, 333 for 175, 350 for the 251 others.
  EXPECT_EQ(font->avgWidth, (2 * 250 + 722 + 721 + 333 + 251 * 350) / 256);
}

TEST(AfmReader, PutsGlyphsWhereWindowsHasThem) {
  const Reading font = Read(hvtest::AfmFile("Times-Bold"));
  EXPECT_EQ(Text(font[65]), "15 674 706 0 722");
  EXPECT_EQ(Text(font[196]), "15 835 706 0 721");
  EXPECT_EQ(Text(font[32]), "0 0 0 0 250");
  EXPECT_EQ(Text(font[160]), "0 0 0 0 250");
  EXPECT_EQ(Text(font[149]), "40 466 310 196 350");
  EXPECT_EQ(Text(font[183]), "40 466 310 196 350");  // the C code does not count
  EXPECT_EQ(Text(font[175]), "11 601 322 547 333");  // the glyph named macron
  for (const std::size_t code : {0U, 31U, 66U, 173U, 255U}) {
    EXPECT_EQ(Text(font[code]), Text(font[149])) << code;
  }
}

TEST(AfmReader, ReadsCharacterLinesByPosition) {
  const Reading font =
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
  for (const auto& [code, text] : metrics) EXPECT_EQ(Text(font[code]), text) << code;
  EXPECT_EQ(font[69].width, 6);
  EXPECT_EQ(font[70].width, -1);
  EXPECT_EQ(font[136].width, -1);  // no bullet to take its place
  EXPECT_EQ(font[175].width, -1);  // as code 0, whatever the overline is
  EXPECT_EQ(font[173].width, 11);
}

TEST(AfmReader, KeepsTheCodesOfSymbolFonts) {
  const std::string box = "; B 0 0 0 0 ;\n";
  const std::string lines = "C 33 ; WX 1 ; N A " + box + "CH 2A ; WX 2 ; N A " + box +
                            "CH <2b> ; WX 3 ; N " + box + "CH -2C ; WX 4 ; N A " + box +
                            "C 256 ; WX 5 ; N A " + box + "CH FFFFFFFFFFFFFFFF2D ; WX 6 ; N A " +
                            box + "C 255 ; WX 7 ; N A " + box + "C 0 ; WX 8 ; N A " + box +
                            "CX 46 ; WX 9 ; N A " + box + "C 175 ; WX 10 ; N macron " + box;
  for (const char* const inf : {"MSMenuName (Symbol Set)\n", "Pi true\n"}) {
    const Reading font = Read(Section(lines), inf);
    const std::pair<std::size_t, int32_t> widths[] = {{33, 1},  {42, 2},  {43, 3}, {44, -1},
                                                      {45, -1}, {255, 7}, {0, -1}, {46, -1},
                                                      {65, -1}, {175, -1}};
    for (const auto& [code, width] : widths) EXPECT_EQ(font[code].width, width) << code;
  }
  EXPECT_EQ(Read(Section(lines), "MSMenuName (Symbo)\n")[65].width, 9);
}

TEST(AfmReader, TakesAsManyLinesAsAnnounced) {
  const std::string a = "C 65 ; WX 1 ; N A ; B 0 0 0 0 ;\n";
  const std::string b = "C 66 ; WX 2 ; N B ; B 0 0 0 0 ;\n";
  // Too few: what is left is no section.
  EXPECT_EQ(Read("StartCharMetrics 1\n" + a + b + "Ascender 5\n")->ascender, 5);
  EXPECT_EQ(Read("StartCharMetrics 0\nAscender 4\nAscender 5\n")->ascender, 5);
  EXPECT_EQ(Read("StartCharMetrics -3\nAscender 4\nAscender 5\n")->ascender, 5);
  // Too many: they swallow what follows.
  const Reading swallowed =
      Read("StartCharMetrics 4\n" + a + "EndCharMetrics\nStartKernData\nAscender 4\nWeight Bold\n" +
           "Ascender 5\n");
  EXPECT_EQ(swallowed->ascender, 5);
  EXPECT_EQ(swallowed->weight, 400);
  EXPECT_EQ(swallowed->kernPairCount, 0U);
  const Reading endless = Read("StartCharMetrics 2147483647\n" + a);
  EXPECT_EQ(endless[65].width, -1) << "fixed pitch: the width of the space";
}

TEST(AfmReader, GivesAFixedPitchFontOneWidth) {
  const std::string section =
      "StartCharMetrics 3\nC 32 ; WX 600 ; N space ; B 0 0 0 0 ;\nC 65 ; WX 700 ; N A ; B 1 2 3 4 "
      ";\nC 183 ; WX 650 ; N bullet ; B 0 0 0 0 ;\nEndCharMetrics\n";
  for (const char* const pitch : {"", "IsFixedPitch true\n"}) {
    const Reading font = Read(pitch + section);
    EXPECT_EQ(font->variablePitch, 0);
    EXPECT_EQ(Text(font[65]), "1 4 3 2 600");
    EXPECT_EQ(font[255].width, 600);
    EXPECT_EQ(font[31].width, 650);
    EXPECT_EQ(font->avgWidth, 600U);
    EXPECT_EQ(font->maxWidth, 600);
  }
  EXPECT_EQ(Read("IsFixedPitch True\n" + section)[65].width, 700);
}

TEST(AfmReader, SortsKerningPairsBySecondCode) {
  const auto pairs = [](const Reading& font) {
    std::string text;
    for (std::size_t i = 0; i < font->kernPairCount; ++i) {
      const hv::KernPair& pair = font->kernPairs[i];
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
  EXPECT_EQ(Read(head + three + "EndKernPairs\nAscender 5\n")->ascender, 5);
  EXPECT_EQ(pairs(Read("StartKernData\nStartKernPairs 2\n" + three)), "66,65,-1 65,66,-2 ");
  EXPECT_EQ(pairs(Read(head + "KPX nosuchglyph A 40000\nKPX A\n")), "65,0,0 0,65,-25536 ");
  EXPECT_EQ(pairs(Read("StartKernData")), "");

  std::string many = "StartKernData\nStartKernPairs 1030\n";
  for (int i = 0; i < 1030; ++i) many += "KPX A B " + std::to_string(i) + "\n";
  const Reading full = Read(many + "EndKernPairs\nEndKernData\nAscender 5\n");
  EXPECT_EQ(full->kernPairCount, 1024U);
  EXPECT_EQ(full->ascender, 5);
}

TEST(AfmReader, WorksOutBothAverageWidths) {
  Reading font = Read(Section("C 32 ; WX 1000 ; N space ; B 0 0 0 0 ;\n"
                              "C 101 ; WX 500 ; N e ; B 0 0 0 0 ;\n"
                              "C 183 ; WX 300 ; N bullet ; B 0 0 0 0 ;\n"),
                      nullptr, WidthRule::Weighted);
  // e has 100 of 1000 parts, the space 166, and 734 fall on letters as wide as the bullet.
  EXPECT_EQ(font->avgWidth, (166U * 1000 + 100 * 500 + 734 * 300) / 1000);
  hv::RecomputeAverageWidth(font.record.get(), WidthRule::Plain);
  EXPECT_EQ(font->avgWidth, (2U * 1000 + 500 + 253 * 300) / 256);
  // No width at all: all codes have -1, in unsigned arithmetic.
  font = Read(Section(""));
  EXPECT_EQ(font->avgWidth, (0U - 256) / 256);
  EXPECT_EQ(font->maxWidth, 0);
  hv::RecomputeAverageWidth(font.record.get(), WidthRule::Weighted);
  EXPECT_EQ(font->avgWidth, static_cast<uint16_t>((0U - 1000) / 1000));
}

TEST(AfmReader, ReadsWordsAndNumbers) {
  const std::pair<const char*, int32_t> angles[] = {
      {"-12.5", -125},    {"-9.46", -94},
      {"0.99", 9},        {"-0.05", 0},
      {"12", 120},        {"12.", 120},
      {".5", 5},          {"+5", 0},
      {"3276.8", -32768}, {"1.1234567890123456789", 11}};
  for (const auto& [text, angle] : angles) {
    EXPECT_EQ(Read(std::string("ItalicAngle ") + text)->italicAngle, angle) << text;
  }
  const std::pair<const char*, int32_t> ascenders[] = {{"Ascender 12abc", 12},
                                                       {"Ascender -2147483647", -2147483647},
                                                       {"Ascender 99999999999", 2147483647},
                                                       {"Ascender\t 7", 7},
                                                       {"ascender 7", 0},
                                                       {"Ascender7", 0},
                                                       {"Ascender; 7", 0}};
  for (const auto& [line, ascender] : ascenders) EXPECT_EQ(Read(line)->ascender, ascender) << line;
  const auto expectName = [](const char* lines, const char* name, int32_t charSet) {
    const Reading font = Read(lines);
    EXPECT_STREQ(font->fontName, name);
    EXPECT_EQ(font->charSet, charSet) << lines;
  };
  expectName("FontName SymbolMT", "SymbolMT", 2);
  expectName("FontName ZapfDingbats", "ZapfDingbats", 2);
  expectName("FontName ZapfDingbatsX", "ZapfDingbatsX", 0);
  expectName("FontName \t Two Words; and more", "Two Words; and more", 0);
  expectName("FontName Symbol\nFontName Times", "Times", 0);
  expectName("FontName\nTimes", "", 0);
  EXPECT_EQ(Read("FontName " + std::string(90, 'n'))->fontName, std::string(79, 'n'));
  EXPECT_EQ(Read("Weight Light")->weight, 300);
  EXPECT_EQ(Read("Weight bold")->weight, 400);
}

TEST(AfmReader, FindsLinesWhateverTheyEndIn) {
  for (const char* const end : {"\n", "\r", "\r\n", "\n\r", "\n\n", "\r\r\n", " \n\t\r\n"}) {
    const Reading font = Read("FontName A" + std::string(end) + "Ascender 5" + end);
    EXPECT_EQ(std::string(font->fontName).substr(0, 1), "A");
    EXPECT_EQ(font->ascender, 5);
  }
  // A line of 255 characters and more loses the rest of it, up to a line feed.
  const std::string line = "Comment " + std::string(247, 'x');
  EXPECT_EQ(Read(line + "\nAscender 5\n")->ascender, 5);
  EXPECT_EQ(Read(line + "Ascender 4\nAscender 5\n")->ascender, 5);
  EXPECT_EQ(Read(line + "\r\nAscender 5\n")->ascender, 5);
  EXPECT_EQ(Read(line + "\rAscender 4\rWeight Bold\nAscender 5")->weight, 400);
  EXPECT_EQ(Read(line.substr(1) + "\rAscender 4\n")->ascender, 4);
  EXPECT_EQ(Read("EndFontMetrics\nAscender 5\n")->ascender, 0);
  EXPECT_EQ(Read("Ascender 5\x1A\nAscender 6\n")->ascender, 5);
}

TEST(InfReader, TellsMenuNameAndFamily) {
  const auto expect = [](const char* inf, const char* menuName, int32_t family) {
    const Reading font = Read("", inf);
    EXPECT_STREQ(font->menuName, menuName) << inf;
    EXPECT_EQ(font->pitchAndFamily, family) << inf;
  };
  expect("MSMenuName (Times New) x\nSerif true\n", "Times New", 16);
  expect("MSMenuName  Times New \nSerif false\n", "Times New ", 32);
  expect("MSMenuName (Times\nPi true\nSerif true\n", "Times", 80);
  expect("Serif true\nSerif maybe\n", "", 16);
  expect("Serif true\nSerif false\n", "", 32);
  expect("Pi false", "", 32);
  expect("", "", 32);
  expect("PCLStyle true\nVPStyle (B)\n", "", 32);
  const std::string longName = "MSMenuName (" + std::string(90, 'n') + ")\n";
  EXPECT_EQ(Read("", longName.c_str())->menuName, std::string(79, 'n'));
}

}  // namespace
