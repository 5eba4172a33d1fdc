// hvapi font: what is told of fonts, what is sent, and the characters that are drawn.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/font_files.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using hvtest::ProgramRun;
using hvtest::ReadFile;
using hvtest::TestFolder;
using Words = std::vector<std::string>;

ProgramRun Font(Words words) {
  words.insert(words.begin(), "font");
  return hvtest::RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

std::string SampleFont() {
  return hvtest::PclFont({}, hvtest::SampleCharacters());
}

TEST(FontCommands, TellWhatAFileIs) {
  const TestFolder folder;
  const std::string pfb =
      hvtest::PfbFile({{1, hvtest::Type1Head("Times-Roman", "StandardEncoding")}, {2, "xyz"}});
  const hvtest::PfmFile bold = {.weight = 700};
  // The output behind the line of the file.
  const auto expect = [](Words words, const std::string& output, int status = 0) {
    words.insert(words.begin(), "info");
    const ProgramRun run = Font(words);
    EXPECT_EQ(run.status, status) << words.back();
    EXPECT_EQ(run.output,
              output.empty() ? "" : "file               " + words.back() + "\n" + output);
    EXPECT_EQ(run.errors.empty(), status == 0) << run.errors;
  };
  expect({folder.Add("font.sfp", SampleFont())},
         "kind               PCL bitmap font\n"
         "name               Courier           [12.0 Pt.] (Roman-8)\n"
         "description        Ven:0  Typ:3  Fon:?0\n"
         "symbol set         8U\n"
         "proportional       no\n"
         "size               154\n"
         "memory             474\n");
  const std::string type1 =
      "kind               Type 1 font\n"
      "name               Times-Roman\n"
      "standard encoding  yes\n"
      "size               " +
      std::to_string(pfb.size()) + "\nmemory             " +
      std::to_string(pfb.size() * 11531 / 10000) + "\n";
  expect({folder.Add("type1.pfb", pfb)}, type1);
  expect({"--companions", "metrics", folder / "type1.pfb"}, type1, 32);
  expect({folder.Add("cartridge.pcm",
                     hvtest::PcmFile("Cartridge Z", {hvtest::PfmFile().Bytes(), bold.Bytes()}))},
         "kind               PCM cartridge\n"
         "name               Cartridge Z\n"
         "size               696\n"
         "faces              Courier\n"
         "                   Courier (Bd)\n");
  expect({folder.Add("read.me", "text")}, "", 27);
}

TEST(FontCommands, GiveOneArrayForAllFiles) {
  const TestFolder folder;
  const ProgramRun run =
      Font({"info", "--json", folder.Add("a.ttf", ""), folder / "none", folder.Add("b.tfm", "")});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output.front(), '[');
  EXPECT_NE(run.output.find("\"kind\": \"TrueType font\",\n    \"name\": \"a\""),
            std::string::npos);
  EXPECT_NE(run.output.find("\"kind\": \"TFM metrics\",\n    \"name\": \"b\""), std::string::npos);
  EXPECT_NE(run.errors.find("none"), std::string::npos);
}

TEST(FontCommands, SendAsTheOptionsSay) {
  const TestFolder folder;
  const std::string font = folder.Add("font.sfp", SampleFont());
  const std::string uel = "\x1B%-12345X";
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
         uel + "@PJL ENTER LANGUAGE = PCL\n" + uel + "@PJL SET QDOWNLOADTARGET = flash1\n\x1B*c7D",
         "\x1B*c5F" + uel + "@PJL SET QDOWNLOADTARGET = ram\n" + uel +
             "@PJL RDYMSG DISPLAY = \"\"\n" + uel);
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
