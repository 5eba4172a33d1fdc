// The metrics that Debian installs for Type 1 fonts, converted: FreeType takes the PFM for the
// font, fontTools finds the widths of the AFM in what comes back. Besides, a disk that is full.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <string>

#include <ft2build.h>
#include FT_FREETYPE_H

#include "hvapi.h"
#include "support/font_files.h"
#include "support/posix/file_size_limit.h"
#include "support/posix/installed_fonts.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// The one that has Debian's modules.
constexpr const char* DebianPython = "/usr/bin/python3";

// The largest file that is read.
constexpr std::size_t Limit = 65534;

std::string Stem(const std::string& path) {
  return std::filesystem::path(path).stem().string();
}

// The lines "KPX a b n" of an AFM.
std::map<std::pair<std::string, std::string>, int> KerningOf(const std::string& afm) {
  std::map<std::pair<std::string, std::string>, int> pairs;
  std::istringstream lines(afm);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string keyword;
    std::string first;
    std::string second;
    int amount = 0;
    words >> keyword >> first >> second >> amount;
    if (keyword == "KPX") pairs[{first, second}] = amount;
  }
  return pairs;
}

bool IsLetter(const std::string& name) {
  return name.size() == 1;
}

// FreeType looks characters up by the encoding of the font, which is that of Windows for letters.
// The number of pairs of letters; none for a file that FreeType does not take for a font.
std::optional<std::size_t> CompareKerning(FT_Library library, const std::string& font,
                                          const std::string& pfm, const std::string& afm) {
  FT_Face face = nullptr;
  if (FT_New_Face(library, font.c_str(), 0, &face) != 0) return std::nullopt;
  EXPECT_EQ(FT_Attach_File(face, pfm.c_str()), 0) << font;
  std::size_t compared = 0;
  for (const auto& [pair, amount] : KerningOf(afm)) {
    if (!IsLetter(pair.first) || !IsLetter(pair.second)) continue;
    FT_Vector kerning = {};
    FT_Get_Kerning(face, FT_Get_Char_Index(face, static_cast<uint8_t>(pair.first[0])),
                   FT_Get_Char_Index(face, static_cast<uint8_t>(pair.second[0])),
                   FT_KERNING_UNSCALED, &kerning);
    EXPECT_EQ(kerning.x, amount) << font << " " << pair.first << " " << pair.second;
    ++compared;
  }
  FT_Done_Face(face);
  return compared;
}

// Reads pairs of AFMs, number.afm and what came back of it, number.AFM. Characters without bounding
// boxes are no AFM to fontTools, so that they get some.
constexpr const char* CompareWidths = R"(
import re, sys
from fontTools.afmLib import AFM, error
from fontTools.agl import UV2AGL

renamed = {'bullet': 'bullet1', 'macron': 'overbar'}
# Fonts call them otherwise, or their codes stand for other characters in what comes back.
lost = {'circumflex', 'tilde', 'asciicircum', 'asciitilde', 'mu', 'Euro', 'Zcaron', 'zcaron',
        'florin', 'hyphen', 'space'}
latin = [bytes([c]).decode('cp1252', 'ignore') for c in range(32, 256)]
names = {UV2AGL.get(ord(c)) for c in latin if c} - lost - {None}
compared = 0
for number in range(int(sys.argv[1])):
    try:
        before = AFM('%d.afm' % number)
    except error:  # of fractions of units
        continue
    text = open('%d.AFM' % number).read()
    if 'FontSpecific' in text:
        widths = dict(re.findall(r'^C  (\d+) ; WX  (\d+) ;$', text, re.M))
        for name in before.chars():
            code, width, box = before[name]
            # These stand for the space, the hyphen and the macron elsewhere.
            if code >= 33 and width != 0 and code not in (160, 173, 175):
                compared += 1
                if widths.get(str(code)) != str(width): print(number, name, code, width)
        continue
    text = re.sub(r'^(C .*) ;$', r'\1 ; B 0 0 0 0 ;', text, flags=re.M)
    open('patched.AFM', 'w').write(text)
    after = AFM('patched.AFM')
    if after.FontName != before.FontName: print(number, after.FontName)
    # Without a space nothing is the reference, and a fixed-pitch font has no width.
    if not before.has_char('space'): continue
    space = before['space'][1]
    if after['space'][1] != space: print(number, 'space')
    fixed = getattr(before, 'IsFixedPitch', 'true') == 'true'
    for name in names & set(before.chars()):
        kept = renamed.get(name, name)
        # A width like the space's is not told of some.
        width = space if fixed else before[name][1]
        if not after.has_char(kept) and width in (0, space): continue
        compared += 1
        if not after.has_char(kept) or after[kept][1] != width:
            print(number, name, before[name], after.has_char(kept) and after[kept])
print('compared', compared)
)";

TEST(RealMetrics, ConvertThereAndBack) {
  const std::vector<std::string> metrics = InstalledFonts(".afm");
  if (metrics.empty()) GTEST_SKIP() << "no font metrics are installed";
  std::map<std::string, std::string> fonts;
  for (const char* const extension : {".pfb", ".pfa", ".t1"}) {
    for (const std::string& font : InstalledFonts(extension)) fonts.emplace(Stem(font), font);
  }
  FT_Library library = nullptr;
  ASSERT_EQ(FT_Init_FreeType(&library), 0);
  const TestFolder folder;
  int32_t number = 0;
  std::size_t tooLong = 0;
  std::size_t attached = 0;
  std::size_t kerned = 0;
  for (const std::string& path : metrics) {
    const std::string afm = ReadFile(path);
    const std::string base = folder / std::to_string(number);
    const std::string source = folder.Add(std::to_string(number) + ".afm", afm);
    const bool pi = afm.find("EncodingScheme FontSpecific") != std::string::npos &&
                    (afm.find("FontName Symbol") != std::string::npos ||
                     afm.find("FontName ZapfDingbats") != std::string::npos);
    folder.Add(std::to_string(number) + ".inf",
               "MSMenuName (" + Stem(path) + ")\nSerif true\n" + (pi ? "Pi true\n" : ""));
    const int32_t code = HvFonConvert(source.c_str(), (base + ".x").c_str(), nullptr, 0, 2);
    if (afm.size() > Limit) {
      EXPECT_EQ(code, HV_LIMIT_REACHED) << path;
      EXPECT_FALSE(std::filesystem::exists(base + ".PFM") ||
                   std::filesystem::exists(base + ".PSM"));
      ++tooLong;
      continue;
    }
    ASSERT_EQ(code, HV_OK) << path;
    for (const char* const output : {".PFM", ".PSM"}) {
      HvFontInfo info;
      EXPECT_EQ(HvFonQueryInfo((base + output).c_str(), &info, 0, 1), HV_OK) << path;
    }
    if (const auto font = fonts.find(Stem(path)); font != fonts.end()) {
      const auto pairs = CompareKerning(library, font->second, base + ".PFM", afm);
      kerned += pairs.value_or(0);
      attached += pairs ? 1 : 0;
    }
    // The name in lower case is that of the source.
    ASSERT_EQ(HvFonConvert((base + ".PFM").c_str(), (base + ".back").c_str(), nullptr, 0, 3),
              HV_OK);
    std::filesystem::rename(base + ".back", base + ".AFM");
    ++number;
  }
  FT_Done_FreeType(library);
  EXPECT_GT(tooLong, 0U);
  EXPECT_GT(attached, 0U);
  EXPECT_GT(kerned, 0U);
  const ScopedCurrentFolder current(folder.Path());
  folder.Add("compare.py", CompareWidths);
  const ProgramRun run = RunProgram(DebianPython, {"compare.py", std::to_string(number)});
  if (run.errors.find("No module named 'fontTools'") != std::string::npos) {
    GTEST_SKIP() << "fontTools is not installed";
  }
  EXPECT_EQ(run.errors, "");
  ASSERT_EQ(run.output.compare(0, 9, "compared "), 0) << run.output;
  EXPECT_GT(std::stoi(run.output.substr(9)), 100 * number);
  std::printf("%d converted, %zu too long, %zu fonts with %zu pairs, %s", number, tooLong, attached,
              kerned, run.output.c_str());
}

TEST(RealMetrics, TranslateToRoman8AsPythonDoes) {
  // A font in which each character is as wide as its code tells the code of each Windows character.
  std::string font = PclFont({}, {});
  for (unsigned code = 1; code < 256; ++code) {
    std::string data = {4, 0, 14, 1, 0, 0};
    data += std::string(8, '\0') + Be16(4 * code);
    font += "\x1B*c" + std::to_string(code) + "E\x1B(s16W" + data;
  }
  const TestFolder folder;
  const std::string source = folder.Add("font.sfp", font);
  HvFontInfo info;
  ASSERT_EQ(HvFonQueryInfo(source.c_str(), &info, 0, 0), HV_OK);
  ASSERT_EQ(HvFonConvert(source.c_str(), nullptr, nullptr, 0, 5), HV_OK);
  const std::string pfm = ReadFile(folder / "font.PFM");
  const auto first = static_cast<uint8_t>(pfm[95]);
  // Rows that Python has otherwise: single quotes, the copyright sign, the soft hyphen,
  // overstrikes.
  const std::map<unsigned, int> others = {{145, 96}, {146, 39}, {169, 67}, {173, 45},
                                          {221, 89}, {247, 45}, {253, 121}};
  std::istringstream expected(
      RunProgram(DebianPython, {"-c",
                                "for c in range(128, 256):\n"
                                "  t = bytes([c]).decode('cp1252', 'ignore')\n"
                                "  print((t.encode('hp-roman8', 'ignore') or b'\\x7f')[0])\n"})
          .output);
  for (unsigned code = 128; code < 256; ++code) {
    int wanted = 0;
    ASSERT_TRUE(expected >> wanted);
    if (others.count(code) == 1) wanted = others.at(code);
    EXPECT_EQ(static_cast<uint8_t>(pfm[117 + 2 * (code - first)]), wanted) << code;
  }
}

TEST(FontConvertDisk, ReplacesAFileInOneStepOrLeavesIt) {
  const TestFolder folder;
  const std::string afm = folder.Add("font.afm", AfmFile("Times"));
  folder.Add("font.inf", "MSMenuName (Times)\n");
  const std::string out = folder.Add("out.pfm", "old");
  std::filesystem::create_hard_link(out, folder / "link");
  const auto convert = [&] { return HvFonConvert(afm.c_str(), out.c_str(), nullptr, 0, 1); };
  {
    const FileSizeLimit full(100);
    EXPECT_EQ(convert(), HV_OK);
  }
  EXPECT_EQ(ReadFile(out), "old");
  EXPECT_EQ(convert(), HV_OK);
  EXPECT_GT(ReadFile(out).size(), 100U);
  // The new file took the place of the old one, which was not written over.
  EXPECT_EQ(ReadFile(folder / "link"), "old");
  EXPECT_EQ(folder.Names().size(), 4U);
}

}  // namespace
