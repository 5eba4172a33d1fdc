// hvapi font: what is told of fonts, what is sent, and the characters that are drawn.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/font_files.h"
#include "support/jobs.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;
using Words = std::vector<std::string>;

ProgramRun Font(Words words) {
  words.insert(words.begin(), "font");
  return RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

std::string SampleFont() {
  return PclFont({}, SampleCharacters());
}

TEST(FontCommands, TellWhatAFileIs) {
  const TestFolder folder;
  // The output behind the line of the file.
  const auto expect = [&](const char* file, const std::string& bytes, int status,
                          const std::string& output, const char* companions = "none") {
    const std::string path = folder.Add(file, bytes);
    const ProgramRun run = Font({"info", "--companions", companions, path});
    EXPECT_EQ(run.status, status) << file;
    EXPECT_EQ(run.output, output.empty() ? "" : "file               " + path + "\n" + output);
    EXPECT_EQ(run.errors.empty(), status == 0) << run.errors;
  };
  expect("font.sfp", SampleFont(), 0,
         "kind               PCL bitmap font\n"
         "name               Courier           [12.0 Pt.] (Roman-8)\n"
         "description        Ven:0  Typ:3  Fon:?0\n"
         "symbol set         8U\n"
         "proportional       no\n"
         "size               154\n"
         "memory             474\n");
  expect("type1.pfb", Field("/FontName /Times-Roman def\n", 500), 32,
         "kind               Type 1 font\n"
         "name               Times-Roman\n"
         "standard encoding  yes\n"
         "size               500\n"
         "memory             576\n",
         "metrics");
  const PfmFile bold = {.weight = 700};
  expect("cartridge.pcm", PcmFile("Cartridge Z", {PfmFile().Bytes(), bold.Bytes()}), 0,
         "kind               PCM cartridge\n"
         "name               Cartridge Z\n"
         "size               696\n"
         "faces              Courier\n"
         "                   Courier (Bd)\n");
  expect("read.me", "text", 27, "");
}

TEST(FontCommands, GiveOneArrayForAllFiles) {
  const TestFolder folder;
  const ProgramRun run =
      Font({"info", "--json", folder.Add("a.ttf", ""), folder / "none", folder.Add("b.tfm", "")});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output.front(), '[');
  for (const char* const part : {"\"kind\": \"TrueType font\",\n    \"name\": \"a\"",
                                 "\"kind\": \"TFM metrics\",\n    \"name\": \"b\""}) {
    EXPECT_NE(run.output.find(part), std::string::npos) << run.output;
  }
  EXPECT_NE(run.errors.find("none"), std::string::npos);
}

TEST(FontCommands, SendAsTheOptionsSay) {
  const TestFolder folder;
  const std::string font = folder.Add("font.sfp", SampleFont());
  const auto expect = [&](const Words& options, const std::string& before,
                          const std::string& after) {
    std::filesystem::remove(folder.Path() / "sent");
    Words words = {"download", font, "--to", folder / "sent"};
    words.insert(words.end(), options.begin(), options.end());
    EXPECT_EQ(Font(words).status, 0);
    EXPECT_EQ(ReadFile(folder / "sent"), before + SampleFont() + after);
  };
  expect({"--id", "5"}, "\x1B*c5D", "\x1B*c5F");
  expect({"--id", "7", "--pjl", "--target", "flash1"},
         Uel + PjlLanguage("PCL") + PjlTarget("flash1") + "\x1B*c7D",
         "\x1B*c5F" + PjlTarget("ram") + PjlEnd);
}

TEST(FontCommands, DrawTheCharacters) {
  const TestFolder folder;
  const std::string font = folder.Add("font.sfp", SampleFont());
  // Half blocks: two rows of dots to a line.
  EXPECT_EQ(Font({"show", font}).output,
            "Courier           [12.0 Pt.] (Roman-8)\n"
            "65 0x41     103 0x67\n"
            "    \u2588\u2588      \u2584\u2580\u2580\u2580\u2580\u2584\u2588\u2580\n"
            "   \u2588  \u2588     \u2588     \u2588\n"
            "  \u2588\u2584\u2584\u2584\u2584\u2588    \u2580\u2584\u2584\u2584\u2584\u2580\u2588\n"
            " \u2588      \u2588   \u2584     \u2588\n"
            "\u2580        \u2580   \u2580\u2580\u2580\u2580\u2580\n");
  EXPECT_EQ(Font({"show", folder.Add("none.pfb", "no font")}).status, 27);
}

}  // namespace
