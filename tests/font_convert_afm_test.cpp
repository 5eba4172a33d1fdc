// PFM files as AFM, line by line.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// The AFM of the bytes, line ends as they are in the file; "code N" when there is none.
std::string AfmOf(const std::string& pfm) {
  return Converted("font.pfm", pfm, FONT_CONVERT_PFM_TO_AFM, "AFM");
}
std::string AfmOf(const FontMetrics& font) {
  return AfmOf(PostScriptPfm(font));
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

// What the AFM of both fonts says before their characters.
std::string Head(const std::string& encoding) {
  return "StartFontMetrics 2.0\nComment A notice\nFontName Sample-Text-Roman-Oblique\n"
         "EncodingScheme " +
         encoding +
         "\nFullName Sample Text Roman Oblique\nFamilyName Sample Text\nWeight Medium\n"
         "IsFixedPitch false\nFontBBox -100 -222 910 705\nCapHeight 660\nXHeight 450\n"
         "Descender 217\nAscender 683\n";
}

TEST(AfmWriter, WritesASymbolFontCompletely) {
  FontMetrics font = SymbolFont();
  font.kerning = {{'A', 4, -20}, {0x7F, 196, 0}, {26, 255, 32767}, {'B', 'B', -32768}};
  EXPECT_EQ(AfmOf(font),
            WithCrLf(Head("FontSpecific") +
                     "StartCharMetrics 4\nC  65 ; WX  100 ;\nC  67 ; WX  65535 ;\n"
                     "C  68 ; WX  300 ;\nEndCharMetrics\nStartKernData\nStartKernPairs 3\n"
                     "KPX A macron -20\nKPX W1a ydieresis 32767\nKPX B B -32768\n"
                     "EndKernPairs\nEndKernData\nEndFontMetrics\n"));
}

TEST(AfmWriter, WritesATextFontCompletely) {
  // Without a space among the characters, widths are held against 0.
  FontMetrics font = TextFont();
  font.first = 94;
  font.last = 160;
  font.widths.assign(160 - 94 + 1, 600);
  for (const std::size_t code : {127U, 138U, 146U}) font.widths[code - 94] = 0;
  font.widths[0] = 500;  // code 94, behind 136 in its slot
  std::string expected = Head("AdobeStandardEncoding") + "StartCharMetrics 57\n";
  std::string letters;
  for (char c = 'a'; c <= 'z'; ++c) letters += std::to_string(c) + " 600 " + c + " ";
  std::istringstream lines(
      "94 600 asciicircum 95 600 underscore 96 600 quoteleft " + letters +
      "123 600 braceleft 124 600 bar 125 600 braceright 126 600 asciitilde 127 0 W7f "
      "170 600 quotedblleft 172 600 guilsinglleft 173 600 guilsinglright 177 600 endash "
      "178 600 dagger 179 600 daggerdbl 184 600 quotesinglbase 185 600 quotedblbase "
      "186 600 quotedblright 188 600 ellipsis 189 600 perthousand 193 600 grave 208 600 emdash "
      "234 600 OE 250 600 oe -1 500 asciicircum -1 600 asciitilde -1 600 bullet1 "
      "-1 600 trademark -1 600 scaron -1 600 Ydieresis -1 600 reqspace");
  for (std::string code, width, name; lines >> code >> width >> name;) {
    expected += "C  " + code + " ; WX  " + width + " ; N " + name + " ;\n";
  }
  EXPECT_EQ(AfmOf(font), WithCrLf(expected + "EndCharMetrics\nEndFontMetrics\n"));
}

TEST(AfmWriter, DropsWhatIsAsWideAsTheSpace) {
  FontMetrics font = TextFont();
  font.widths[138 - 32] = font.widths[146 - 32] = font.widths[160 - 32] = 250;
  font.widths[255 - 32] = 0;
  const std::string afm = AfmOf(font);
  EXPECT_EQ(afm.find("N Scaron"), std::string::npos);
  for (const char* const kept : {"N scaron", "N quoteright", "N reqspace"}) {
    EXPECT_NE(afm.find(kept), std::string::npos) << kept;
  }
  // 224 codes less the nine that are never kept and Scaron; ydieresis without a width is counted.
  EXPECT_EQ(LineOf(afm, "StartCharMetrics"), "StartCharMetrics 214");
  EXPECT_EQ(afm.find("ydieresis"), std::string::npos);
}

TEST(AfmWriter, TellsWeightAndPitch) {
  const std::pair<unsigned, const char*> weights[] = {
      {0, "Medium"}, {1, "Light"}, {324, "Light"}, {325, "Medium"}, {475, "Medium"}, {476, "Bold"}};
  FontMetrics font = SymbolFont();
  for (const auto& [weight, word] : weights) {
    font.weight = weight;
    EXPECT_EQ(LineOf(AfmOf(font), "Weight "), std::string("Weight ") + word);
  }
  const auto expectPitch = [&](bool variable, int average, const char* fixed, const char* box) {
    font.variable = variable;
    font.averageWidth = average;
    const std::string afm = AfmOf(font);
    EXPECT_EQ(LineOf(afm, "IsFixed"), std::string("IsFixedPitch ") + fixed);
    EXPECT_EQ(LineOf(afm, "FontBBox"), std::string("FontBBox ") + box);
  };
  expectPitch(false, 500, "true", "-20 -222 910 705");
  expectPitch(true, 900, "true", "-20 -222 910 705");
  font.ascender = font.descent = -1;
  expectPitch(true, 500, "false", "-100 -65540 910 65540");
}

// Puts an offset of four bytes into a file.
std::string WithOffset(std::string pfm, std::size_t at, std::size_t offset) {
  return pfm.replace(at, 4, Le32(static_cast<uint32_t>(offset)));
}

TEST(AfmWriter, ReadsTheWholeFileAndNothingBehindIt) {
  FontMetrics font = SymbolFont();
  font.kerning.assign(2000, {'A', 'B', -5});
  font.copyright = std::string(60, 'c');
  const std::string pfm = PostScriptPfm(font);
  ASSERT_GT(pfm.size(), 8000U);
  const std::string afm = AfmOf(pfm);
  EXPECT_EQ(LineOf(afm, "StartKernPairs"), "StartKernPairs 2000");
  EXPECT_EQ(LineOf(afm, "Comment"), "Comment " + font.copyright);

  // Metrics, widths, kerning, font name: partly outside of the file, beyond it, not ended before
  // its end.
  std::string unended = pfm;
  unended.back() = 'x';
  for (const std::size_t field : {119U, 123U, 131U, 139U}) {
    for (const std::size_t offset : {pfm.size() - 1, pfm.size(), std::size_t{0xFFFFFFFF}}) {
      EXPECT_EQ(AfmOf(WithOffset(unended, field, offset)), "code 27") << field << " " << offset;
    }
  }
  EXPECT_EQ(AfmOf(WithOffset(pfm, 123, 0)), "code 27");

  // A file with a trailer may do without a face.
  std::string faceless = WithOffset(pfm, 105, 0) + std::string(32, '\0');
  faceless.replace(117, 2, 2, '\0');
  EXPECT_EQ(LineOf(AfmOf(faceless), "FullName"), "FullName Sample Text Roman Oblique");
  EXPECT_EQ(LineOf(AfmOf(faceless), "FamilyName"), "");

  // A kerning table without pairs.
  font.kerning.clear();
  const std::string bare = PostScriptPfm(font);
  const std::string empty =
      AfmOf(WithOffset(WithOffset(bare + Le16(0), 2, bare.size() + 2), 131, bare.size()));
  EXPECT_NE(empty.find("StartKernData\r\nStartKernPairs 0\r\nEndKernPairs\r\nEndKernData\r\n"
                       "EndFontMetrics\r\n"),
            std::string::npos);
}

TEST(AfmWriter, RefusesWhatIsNoPfm) {
  EXPECT_EQ(AfmOf(""), "code 27");
  const std::string pfm = PostScriptPfm(TextFont());
  EXPECT_EQ(AfmOf(pfm + "x"), "code 27");
  const TestFolder folder;
  const std::string source = folder.Add("font.pfm", pfm);
  EXPECT_EQ(Convert(source, folder / "nowhere/font.afm", 3), HV_CANNOT_OPEN);
  EXPECT_EQ(Convert(folder.Path().string(), folder / "x", 3), HV_CANNOT_OPEN);
  // The source itself may be the destination: it was read before.
  EXPECT_EQ(Convert(source, source, 3), HV_OK);
  EXPECT_EQ(ReadFile(source), AfmOf(pfm));
}

}  // namespace
