// The Type 1 fonts and metrics that Debian installs: described by the names that an independent
// look into the files gives, sent to a PostScript printer, and taken by Ghostscript as such.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/posix/installed_fonts.h"
#include "support/test_folder.h"

namespace {

using hvtest::InstalledFonts;
using hvtest::TestFolder;

std::string FirstMatch(const std::string& text, const char* pattern) {
  std::smatch match;
  return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : "";
}

// The name in the clear text of a Type 1 font; empty for a font that computes its name.
std::string NameInFont(const std::string& bytes) {
  return FirstMatch(bytes.substr(0, bytes.find("eexec")), "/FontName /([^\\s/(){}\\[\\]<>%]+)");
}

// The font as text, as t1ascii makes it: lines end in line feeds, binary data is in digits.
std::string PfaOfPfb(const std::string& pfb) {
  std::string pfa;
  for (std::size_t at = 0; at + 6 <= pfb.size() && pfb[at + 1] != 3;) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      length |= std::size_t{static_cast<unsigned char>(pfb[at + 2 + i])} << (8 * i);
    }
    const std::string data = pfb.substr(at + 6, length);
    if (pfb[at + 1] == 1) {
      pfa += std::regex_replace(data, std::regex("\r\n?"), "\n");
    } else {
      const std::string digits = hvtest::ToHex(data);
      for (std::size_t i = 0; i < digits.size(); i += 64) pfa += digits.substr(i, 64) + "\n";
    }
    at += 6 + length;
  }
  return pfa;
}

uint32_t Describe(const std::string& path, HvFontInfo* info) {
  return HvFonQueryInfo(path.c_str(), info, FONT_COMPANIONS_NONE, 1);
}

void ExpectName(const std::string& path, const std::string& name) {
  HvFontInfo info;
  EXPECT_EQ(Describe(path, &info), name.empty() ? HV_UNUSABLE_FILE : HV_OK) << path;
  EXPECT_EQ(info.name, name) << path;
}

TEST(RealFonts, AreNamedAsInTheirFiles) {
  const TestFolder folder;
  const std::vector<std::string> fonts = InstalledFonts(".pfb");
  if (fonts.empty()) GTEST_SKIP() << "no Type 1 fonts are installed";
  for (const std::string& path : fonts) {
    const std::string bytes = hvtest::ReadFile(path);
    const std::string name = NameInFont(bytes);
    // Of a line of a PFB 39 characters are looked at, "FontName /" among them.
    ExpectName(path, name.substr(0, 29));
    HvFontInfo info;
    Describe(path, &info);
    EXPECT_EQ(info.fileSize, bytes.size()) << path;
    const bool standard = bytes.find("/Encoding StandardEncoding") != std::string::npos;
    EXPECT_EQ((info.flags & FONT_FLAG_STANDARD_ENCODING) != 0, standard) << path;
    std::filesystem::remove(folder.Path() / "font.pfa");
    ExpectName(folder.Add("font.pfa", PfaOfPfb(bytes)), name);
  }
  for (const std::string& path : InstalledFonts(".pfa")) {
    ExpectName(path, NameInFont(hvtest::ReadFile(path)));
  }
}

TEST(RealMetrics, AreNamedAsInTheirFiles) {
  const TestFolder folder;
  folder.Add("metrics.pfb", "");
  std::size_t seen = 0;
  std::size_t tooLong = 0;
  for (const std::string& path : InstalledFonts(".afm")) {
    const std::string bytes = hvtest::ReadFile(path);
    HvFontInfo info;
    const uint32_t code = Describe(folder.Add("metrics.afm", bytes), &info);
    ++seen;
    if (bytes.size() > 65534) {
      EXPECT_EQ(code, HV_LIMIT_REACHED) << path;
      ++tooLong;
      continue;
    }
    EXPECT_EQ(code, HV_OK) << path;
    EXPECT_EQ(info.name, FirstMatch(bytes, "[\r\n]FontName[ \t]+([^\r\n]*)")) << path;
  }
  if (seen == 0) GTEST_SKIP() << "no font metrics are installed";
  EXPECT_LT(tooLong, seen);
}

// Runs Ghostscript in a folder and returns what it prints; empty, with the test failed, when it
// reports failure.
std::string RunGhostscript(const TestFolder& folder, const std::string& arguments) {
  const std::string out = folder / "gs.out";
  // As a printer, which takes jobs that change its state for good.
  const std::string command = "cd '" + folder.Path().string() +
                              "' && gs -q -dJOBSERVER -dBATCH -dNOPAUSE " + arguments +
                              " > gs.out 2>&1 < /dev/null";
  const int status = std::system(command.c_str());
  const std::string text = hvtest::ReadFile(out);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << text;
  return text;
}

bool HasGhostscript() {
  return std::system("gs --version > /dev/null 2>&1") == 0;
}

// Sends the font to a PostScript printer that is a file, and returns the file's name.
std::string SendToPrinter(const TestFolder& folder, const std::string& font,
                          const std::string& name) {
  const HvJobInfo job = hvtest::Job(0, JOB_EMULATION_POSTSCRIPT);
  EXPECT_EQ(HvFonDownload(font.c_str(), (folder / name).c_str(), &job, STORAGE_DEVICE_RAM), HV_OK)
      << font;
  return name;
}

TEST(RealFonts, AreTakenByGhostscriptUnderTheirNames) {
  if (!HasGhostscript()) GTEST_SKIP() << "gs is not installed";
  const std::vector<std::string> fonts = InstalledFonts(".pfb");
  if (fonts.empty()) GTEST_SKIP() << "no Type 1 fonts are installed";
  // Each font is asked for by its name as soon as it was sent.
  const TestFolder folder;
  std::string files;
  std::string expected;
  std::size_t number = 0;
  for (const std::string& font : fonts) {
    const std::string bytes = hvtest::ReadFile(font);
    const std::string name = NameInFont(bytes);
    const std::string label = std::to_string(++number);
    // Every fourth as text.
    const std::string source = number % 4 == 0 ? folder.Add(label + ".pfa", PfaOfPfb(bytes)) : font;
    files += SendToPrinter(folder, source, label + ".prn") + " " + label + ".ps ";
    folder.Add(label + ".ps", "FontDirectory /" + name + " get /FontName get =\n");
    expected += name + "\n";
  }
  EXPECT_EQ(RunGhostscript(folder, "-dNODISPLAY " + files), expected);
}

TEST(RealFonts, PrintTextWithGhostscript) {
  if (!HasGhostscript()) GTEST_SKIP() << "gs is not installed";
  const TestFolder folder;
  std::string font;
  for (const std::string& path : InstalledFonts(".pfb")) {
    if (path.find("lmr10.pfb") != std::string::npos || font.empty()) font = path;
  }
  if (font.empty()) GTEST_SKIP() << "no Type 1 fonts are installed";
  const std::string name = NameInFont(hvtest::ReadFile(font));
  const std::string sent = SendToPrinter(folder, font, "font.prn");
  // The font must be there before it is asked for; a printer would put another in its place.
  folder.Add("page.ps", "FontDirectory /" + name + " known { (downloaded) = } if\n/" + name +
                            " findfont 72 scalefont setfont 100 500 moveto (Hxg) show showpage\n");
  const std::string boxes = RunGhostscript(folder, "-sDEVICE=bbox " + sent + " page.ps");
  EXPECT_NE(boxes.find("downloaded"), std::string::npos) << boxes;
  // Letters of 72 points on the line at 500: ascenders above it and a descender below.
  const std::string numbers = FirstMatch(boxes, "%%BoundingBox: ([-0-9 ]+)");
  std::istringstream box(numbers);
  int left = 0;
  int bottom = 0;
  int right = 0;
  int top = 0;
  box >> left >> bottom >> right >> top;
  EXPECT_TRUE(left >= 100 && left < 110 && right > 180 && right < 250) << boxes;
  EXPECT_TRUE(bottom > 470 && bottom < 495 && top > 540 && top < 560) << boxes;
}

}  // namespace
