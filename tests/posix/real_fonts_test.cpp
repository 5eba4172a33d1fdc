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
#include "support/font_calls.h"
#include "support/jobs.h"
#include "support/posix/installed_fonts.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

std::string FirstMatch(const std::string& text, const char* pattern) {
  std::smatch match;
  return std::regex_search(text, match, std::regex(pattern)) ? match[1].str() : "";
}

// The name in the clear text of a Type 1 font; empty for a font that computes its name.
std::string NameInFont(const std::string& bytes) {
  return FirstMatch(bytes.substr(0, bytes.find("eexec")), "/FontName /([^\\s/(){}\\[\\]<>%]+)");
}

void ExpectName(const std::string& path, const std::string& name) {
  const DescribedFont font = DescribeFont(path);
  EXPECT_EQ(font.code, name.empty() ? HV_UNUSABLE_FILE : HV_OK) << path;
  EXPECT_EQ(font.info.name, name) << path;
}

TEST(RealFonts, AreNamedAsInTheirFiles) {
  const std::vector<std::string> fonts = InstalledFonts(".pfb");
  if (fonts.empty()) GTEST_SKIP() << "no Type 1 fonts are installed";
  for (const std::string& path : fonts) {
    const std::string bytes = ReadFile(path);
    // Of a line of a PFB 39 characters are looked at, "FontName /" among them.
    ExpectName(path, NameInFont(bytes).substr(0, 29));
    const bool standard = bytes.find("/Encoding StandardEncoding") != std::string::npos;
    EXPECT_EQ(DescribeFont(path).info.flags, standard ? 0x2BU : 0x29U) << path;
  }
  for (const std::string& path : InstalledFonts(".pfa")) {
    ExpectName(path, NameInFont(ReadFile(path)));
  }
}

TEST(RealMetrics, AreNamedAsInTheirFiles) {
  const std::vector<std::string> metrics = InstalledFonts(".afm");
  if (metrics.empty()) GTEST_SKIP() << "no font metrics are installed";
  for (const std::string& path : metrics) {
    const std::string bytes = ReadFile(path);
    const auto [code, info] = DescribeFont(path);
    if (bytes.size() > 65534) {
      EXPECT_EQ(code, HV_LIMIT_REACHED) << path;
      continue;
    }
    // Some have no font in the same folder.
    EXPECT_TRUE(code == HV_OK || code == HV_NOT_SUPPORTED) << path;
    EXPECT_EQ(info.name, FirstMatch(bytes, "[\r\n]FontName[ \t]+([^\r\n]*)")) << path;
  }
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
  const std::string text = ReadFile(out);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << text;
  return text;
}

TEST(RealFonts, AreTakenByGhostscriptAndPrintText) {
  if (std::system("gs --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "gs is not installed";
  std::vector<std::string> fonts = InstalledFonts(".pfb");
  for (const std::string& font : InstalledFonts(".pfa")) {
    if (!NameInFont(ReadFile(font)).empty()) fonts.push_back(font);
  }
  if (fonts.empty()) GTEST_SKIP() << "no Type 1 fonts are installed";
  // Each font is sent to a PostScript printer that is a file, and asked for by its name then.
  const TestFolder folder;
  const HvJobInfo job = Job(0, JOB_EMULATION_POSTSCRIPT);
  std::string files, expected, textFont, textJob;
  std::size_t number = 0;
  for (const std::string& font : fonts) {
    const std::string name = NameInFont(ReadFile(font));
    const std::string label = std::to_string(++number);
    const std::string sent = label + ".prn";
    EXPECT_EQ(HvFonDownload(font.c_str(), (folder / sent).c_str(), &job, STORAGE_DEVICE_RAM), HV_OK)
        << font;
    files += sent + " " + label + ".ps ";
    folder.Add(label + ".ps", "FontDirectory /" + name + " get /FontName get =\n");
    expected += name + "\n";
    if (textFont.empty() || name == "LMRoman10-Regular") {
      textFont = name;
      textJob = sent;
    }
  }
  EXPECT_EQ(RunGhostscript(folder, "-dNODISPLAY " + files), expected);

  // The font must be there before it is asked for; a printer would put another in its place.
  folder.Add("page.ps", "FontDirectory /" + textFont + " known { (downloaded) = } if\n/" +
                            textFont +
                            " findfont 72 scalefont setfont 100 500 moveto (Hxg) show showpage\n");
  const std::string boxes = RunGhostscript(folder, "-sDEVICE=bbox " + textJob + " page.ps");
  EXPECT_NE(boxes.find("downloaded"), std::string::npos) << boxes;
  // Letters of 72 points on the line at 500: ascenders above it and a descender below.
  std::istringstream box(FirstMatch(boxes, "%%BoundingBox: ([-0-9 ]+)"));
  int left = 0, bottom = 0, right = 0, top = 0;
  box >> left >> bottom >> right >> top;
  EXPECT_TRUE(left >= 100 && left < 110 && right > 180 && right < 250) << boxes;
  EXPECT_TRUE(bottom > 470 && bottom < 495 && top > 540 && top < 560) << boxes;
}

}  // namespace
