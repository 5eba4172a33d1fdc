// The macro commands of hvapi, as a person uses them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"
#include "support/run_program.h"

namespace {

using hvtest::ProgramRun;
using hvtest::ReadFile;
using hvtest::TestFolder;
using Words = std::vector<std::string>;

ProgramRun Macro(Words words) {
  words.insert(words.begin(), "macro");
  return hvtest::RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

TEST(MacroTool, MakesChecksAndSwitchesMacros) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder here(folder.Path());
  folder.Add("letter.pcl", "\033E\x1B&l3Xtext\x0C");
  const std::string source = "letter.pcl";
  const std::string macro = "letter.mac";
  const std::string out = "out";
  const struct {
    Words words;
    std::string output;
    std::string file;
    std::string bytes;
  } cases[] = {
      {{"create", source, "--to", macro, "--id", "12", "--filter", "--call", "7"},
       "",
       macro,
       "\x1B&f12y0X\x1B&f7y3x12Y\x1B&l3Xtext\x1B&f1X"},
      {{"create", source, "--to", macro, "--id", "12", "--drop", "copies,form-feed"},
       "",
       macro,
       "\x1B&f12y0X\033Etext\x1B&f1X"},
      {{"create", source, "--to", macro, "--id", "12", "--mask", "0x081"},
       "",
       macro,
       "\x1B&f12y0Xtext\x0C\x1B&f1X"},
      {{"validate", macro}, "file           " + macro + "\nidentifier     12\n", "", ""},
      {{"download", macro, "--to", out},
       "",
       out,
       "\x1B&f12y0Xtext\x0C\x1B&f1X\x1B&f12y4X\xFF\x0C\x1B&f12y5X"},
      {{"download", source, "--to", out, "--store", "--id", "9", "--filter"},
       "",
       out,
       "\x1B&f9y0X\x1B&l3Xtext\x1B&f1X\x1B&f9y10X"},
      {{"download", source, "--to", out, "--raw", "--id", "9", "--target", "disk1", "--esc-k"},
       "",
       out,
       hvtest::Bytes("\x1B[K\x03\0\x06\x31\x02\x1B[K\x03\0\x06\xC0\x31\033E\x1B&l3Xtext\x0C"
                     "\x1B&f9y10X\x1B[K\x03\0\x06\xC0\x32")},
      {{"download", source, "--to", out, "--store", "--language", "postscript", "--name", "Logo",
        "--demo", "--target", "flash1"},
       "",
       "",
       ""},
      {{"validate", out, "--language", "postscript", "--json"},
       "{\n  \"file\": " + hvtest::JsonText(out) +
           ",\n  \"name\": \"Logo.demo\",\n  \"target\": \"flash1\",\n  \"demonstration\": "
           "true\n}\n",
       "",
       ""},
      {{"enable", "--to", out, "--id", "12"}, "", out, "\x1B&f12y4X"},
      {{"disable", "--to", out, "--id", "12"}, "", out, "\x1B&f12y5X"},
      {{"delete", "--to", out, "--id", "12"}, "", out, "\x1B&f12y8X"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Macro(c.words);
    EXPECT_EQ(run.status, 0) << c.words.front() << run.errors;
    EXPECT_EQ(run.output, c.output);
    EXPECT_TRUE(c.file.empty() || ReadFile(c.file) == c.bytes) << c.words.front();
  }
}

TEST(MacroTool, SaysWhatIsWrong) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder here(folder.Path());
  folder.Add("text", "text");
  const std::string text = "text";
  const std::string out = "out";
  const struct {
    Words words;
    int status;
    std::string sentence;
  } cases[] = {
      {{"validate", text},
       HV_WRONG_LANGUAGE,
       "cannot take \"" + text +
           "\" for a macro: the file is not of the printer language or version that is needed"},
      {{"create", text, "--to", out, "--drop", "copies,color"},
       HV_BAD_ARGUMENT,
       "\"color\" is not one of reset, form-feed, page-size, paper-source, duplex, orientation, "
       "job-separation, copies, perforation-skip, flush-pages, output-bin, macro-definition, "
       "default, none"},
      {{"create", text, "--to", out, "--name", "123456789012345678901234"},
       HV_BAD_ARGUMENT,
       "the name \"123456789012345678901234\" has more than 23 characters"},
      {{"create", text, "--to", out, "--language", "pclxl", "--filter"},
       HV_BAD_PCLXL,
       "cannot convert \"" + text + "\": byte 0: the header does not say binary, low byte first"},
      {{"download", text, "--to", out, "--language", "pclxl"},
       HV_READ_FAILED,
       "cannot download \"" + text + "\": the file cannot be read"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Macro(c.words);
    EXPECT_EQ(run.status, c.status);
    EXPECT_EQ(run.errors, "hvapi: " + c.sentence + " (code " + std::to_string(c.status) + ")\n");
  }
}

}  // namespace
