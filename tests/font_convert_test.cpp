// HvFonConvert: arguments, output names, and AFM files as PFM and PSM, byte by byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// A text font in which every number of the files has a value of its own.
const std::string TextAfm =
    "StartFontMetrics 4.1\nFontName Sample-Oblique\nWeight Bold\nItalicAngle -12.5\n"
    "IsFixedPitch false\nFontBBox -20 -250 1100 960\nUnderlinePosition -101\n"
    "UnderlineThickness 51\nCapHeight 1\nXHeight 2\nAscender 777\nDescender -3\n"
    "StartCharMetrics 9\n"
    "C 32 ; WX 250 ; N space ; B 0 0 0 0 ;\n"
    "C 72 ; WX 720 ; N H ; B 10 0 700 662 ;\n"
    "C 120 ; WX 500 ; N x ; B 17 -1 479 450 ;\n"
    "C 100 ; WX 510 ; N d ; B 27 -10 491 683 ;\n"
    "C 112 ; WX 520 ; N p ; B 5 -217 470 460 ;\n"
    "C 183 ; WX 350 ; N bullet ; B 40 196 310 466 ;\n"
    "C -1 ; WX 730 ; N Adieresis ; B 15 0 706 835 ;\n"
    "C 197 ; WX 334 ; N macron ; B 11 547 322 601 ;\n"
    "C 45 ; WX 333 ; N hyphen ; B 39 194 285 257 ;\n"
    "EndCharMetrics\nStartKernData\nStartKernPairs 3\nKPX x d -15\nKPX H x 7\nKPX d H -300\n"
    "EndKernPairs\nEndKernData\nEndFontMetrics\n";
const std::string SerifInf = "MSMenuName (Sample Text)\nSerif true\n";

FontMetrics TextMetrics() {
  FontMetrics font;
  font = {font.copyright, 777, 210, 1210, -125, 700, 0, 16, true, 0, 730, 662, 450, 683, 217,
          -101,           51};
  font.face = "Sample Text";
  font.fontName = "Sample-Oblique";
  font.widths.assign(224, 350);
  const std::pair<std::size_t, int> widths[] = {{32, 250},  {160, 250}, {72, 720}, {120, 500},
                                                {100, 510}, {112, 520}, {45, 333}, {173, 333},
                                                {196, 730}, {175, 334}};
  int sum = 32 * 350;
  for (const auto& [code, width] : widths) font.widths[code - 32] = width;
  for (const int width : font.widths) sum += width;
  font.averageWidth = sum / 256;
  // By the second code, then by the first.
  font.kerning = {{'d', 'H', -300}, {'x', 'd', -15}, {'H', 'x', 7}};
  return font;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

TEST(FontConvert, ChecksItsArgumentsBeforeItLooksForTheFile) {
  const TestFolder folder;
  const std::string there = folder.Add("font.afm", TextAfm);
  const std::string missing = folder / "missing.afm";
  const std::string tooLong(261, 'x');
  HvFontInfo info = {};
  for (const int32_t type : {1, 2, 3, 4, 5, 6, 16, 17}) {
    EXPECT_EQ(HvFonConvert(nullptr, nullptr, &info, 2, type), HV_BAD_ARGUMENT) << type;
    EXPECT_EQ(Convert(tooLong, "", type, &info, 2), HV_BAD_ARGUMENT) << type;
    EXPECT_EQ(Convert(there, tooLong, type, &info, 2), HV_BAD_ARGUMENT) << type;
    EXPECT_EQ(HvFonConvert(missing.c_str(), nullptr, &info, 2, type), HV_NOT_FOUND) << type;
  }
  for (const int32_t type : {0, 7, 18, -1}) {
    EXPECT_EQ(Convert(there, "", type), HV_BAD_ARGUMENT) << type;
    EXPECT_EQ(Convert(missing, "", type), HV_NOT_FOUND) << type;
  }
  EXPECT_EQ(HvFonConvert(there.c_str(), nullptr, nullptr, 0, 2), HV_BAD_ARGUMENT);
  // Without a dot the extension makes it longer than a path may be.
  const std::string long258 = folder / std::string(257 - folder.Path().string().size(), 'x');
  WriteFile(long258, "");
  for (const int32_t type : {1, 3, 5}) EXPECT_EQ(Convert(long258, "", type), HV_BAD_ARGUMENT);
  EXPECT_EQ(Convert(there, long258, 2), HV_BAD_ARGUMENT);
  std::filesystem::remove(long258);
  EXPECT_EQ(Convert(there, "", 2), HV_BAD_ARGUMENT);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"font.afm"});
}

TEST(FontConvert, NamesItsOutputs) {
  const auto expect = [](const std::string& destination, int32_t type,
                         const std::vector<std::string>& made) {
    const TestFolder folder;
    folder.Add("font.one.afm", TextAfm);
    folder.Add("font.one.INF", SerifInf);
    std::filesystem::create_directory(folder.Path() / "out");
    // All of the destination counts, so that it is looked for from its folder.
    const ScopedCurrentFolder current(folder.Path());
    EXPECT_EQ(Convert("font.one.afm", destination, type), HV_OK);
    for (const std::string& name : made) EXPECT_TRUE(std::filesystem::remove(name)) << name;
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"font.one.INF", "font.one.afm", "out"}));
  };
  expect("", 1, {"font.one.PFM"});
  expect("out.x", 1, {"out.x"});
  expect("out.x", 2, {"out.PFM", "out.PSM"});
  expect("out", 2, {"outPFM", "outPSM"});
  // Without a dot it is a directory.
  expect("out", 1, {"out/FONT.ONE.PFM"});
  expect("out\\", 1, {"out/FONT.ONE.PFM"});
}

// Converts to both files and compares them; the PSM has an average width of its own.
void ExpectBoth(const std::string& afm, const std::string& inf, FontMetrics font, int psmAverage) {
  const TestFolder folder;
  const std::string source = folder.Add("font.afm", afm);
  folder.Add("font.inf", inf);
  ASSERT_EQ(Convert(source, folder / "font.x", 2), HV_OK);
  EXPECT_EQ(ReadFile(folder / "font.PFM"), PostScriptPfm(font));
  font.averageWidth = psmAverage;
  EXPECT_EQ(ReadFile(folder / "font.PSM"), LaserPrinterPsm(font));
}

TEST(FontConvert, WritesEveryFieldOfBothFiles) {
  // By the frequency of letters: space 166, d 35, p 17, x 3 and 779 others.
  ExpectBoth(TextAfm, SerifInf, TextMetrics(),
             (166 * 250 + 35 * 510 + 17 * 520 + 3 * 500 + 779 * 350) / 1000);
}

TEST(FontConvert, WritesFixedPitchFontsWithoutKerning) {
  std::string afm = Replaced(TextAfm, "FontBBox -20 -250 1100 960", "FontBBox 0 -200 600 700");
  afm = Replaced(afm, "ItalicAngle -12.5", "ItalicAngle 0");
  FontMetrics font = TextMetrics();
  font.variable = false;
  font.internalLeading = font.italicAngle = 0;
  font.boxHeight = 900;
  font.family = 32;
  font.face = std::string(79, 'n');
  font.kerning.clear();
  font.widths.assign(224, 250);
  font.averageWidth = font.maximumWidth = 250;
  afm = afm.substr(0, afm.find("StartKernData"));
  for (const char* const pitch : {"", "IsFixedPitch true\n"}) {
    ExpectBoth(Replaced(afm, "IsFixedPitch false\n", pitch), "MSMenuName (" + font.face + ")\n",
               font, 250);
  }
}

TEST(FontConvert, WritesSymbolFontsAndAsManyPairsAsThereAre) {
  std::string afm =
      "FontName SymbolSample\nIsFixedPitch false\nStartCharMetrics 2\n"
      "C 33 ; WX 111 ; N universal ; B 0 0 0 0 ;\nC 149 ; WX 222 ; N a ; B 0 0 0 0 ;\n"
      "EndCharMetrics\nStartKernData\nStartKernPairs 1025\n";
  for (int i = 0; i < 1025; ++i) afm += "KPX A B " + std::to_string(i) + "\n";
  FontMetrics font;
  font.charSet = 2;
  font.family = 80;
  font.face = "Symbol Sample";
  font.fontName = "SymbolSample";
  font.widths.assign(224, 222);
  font.widths[1] = 111;
  font.averageWidth = (255 * 222 + 111) / 256;
  font.maximumWidth = 222;
  for (int i = 0; i < 1024; ++i) font.kerning.push_back({'A', 'B', i});
  ExpectBoth(afm + "EndKernPairs\n", "MSMenuName (Symbol Sample)\nPi true\n", font, 222);
}

TEST(FontConvert, NeedsTheInfAndFilesWithinTheLimit) {
  const TestFolder folder;
  const std::string source = folder.Add("font.afm", TextAfm);
  const std::string old = folder.Add("font.PFM", "old");
  EXPECT_EQ(Convert(source, "", 1), HV_NOT_FOUND);
  std::filesystem::create_directory(folder.Path() / "font.inf");
  EXPECT_EQ(Convert(source, "", 1), HV_CANNOT_OPEN);
  std::filesystem::remove(folder.Path() / "font.inf");

  folder.Add("font.inf", SerifInf + std::string(65535 - SerifInf.size(), '\n'));
  EXPECT_EQ(Convert(source, "", 1), HV_LIMIT_REACHED);
  folder.Add("font.inf", SerifInf + std::string(65534 - SerifInf.size(), '\n'));
  folder.Add("font.afm", TextAfm + std::string(65535 - TextAfm.size(), ' '));
  EXPECT_EQ(Convert(source, folder / "x.x", 2), HV_LIMIT_REACHED);
  EXPECT_EQ(ReadFile(old), "old");
  EXPECT_EQ(folder.Names().size(), 3U);
  folder.Add("font.afm", TextAfm + std::string(65534 - TextAfm.size(), ' '));
  EXPECT_EQ(Convert(source, "", 1), HV_OK);
  EXPECT_EQ(ReadFile(old), PostScriptPfm(TextMetrics()));

  std::filesystem::create_directory(folder.Path() / "dir.afm");
  folder.Add("dir.inf", SerifInf);
  EXPECT_EQ(Convert(folder / "dir.afm", "", 1), HV_CANNOT_OPEN);
}

TEST(FontConvert, SaysNothingOfAnOutputThatItCannotMake) {
  const TestFolder folder;
  const std::string source = folder.Add("font.afm", TextAfm);
  folder.Add("font.inf", SerifInf);
  std::filesystem::create_directory(folder.Path() / "font.PFM");
  EXPECT_EQ(Convert(source, "", 1), HV_OK);
  EXPECT_EQ(Convert(source, folder / "nowhere/font.pfm", 1), HV_OK);
  EXPECT_EQ(folder.Names().size(), 3U);
  // The PSM is written all the same.
  EXPECT_EQ(Convert(source, folder / "font.x", 2), HV_OK);
  EXPECT_TRUE(std::filesystem::exists(folder / "font.PSM"));
}

}  // namespace
