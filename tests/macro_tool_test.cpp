// The macro commands of hvapi, as a person uses them.

#include <gtest/gtest.h>

#include <string>

#include "hvapi.h"
#include "support/hvapi_program.h"
#include "support/macro_files.h"

namespace {

using namespace hvtest;

TEST(MacroTool, MakesChecksAndSwitchesMacros) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  folder.Add("letter.pcl", "\033E\x1B&l3Xtext\x0C");
  // What the file "out" holds after a command.
  const std::pair<std::string, std::string> cases[] = {
      {"create letter.pcl --to out --id 12 --filter --call 7",
       "\x1B&f12y0X\x1B&f7y3x12Y\x1B&l3Xtext\x1B&f1X"},
      {"create letter.pcl --to out --id 12 --drop copies,form-feed",
       "\x1B&f12y0X\033Etext\x1B&f1X"},
      {"create letter.pcl --to out --id 12 --mask 0x081", "\x1B&f12y0Xtext\x0C\x1B&f1X"},
      {"download out --to printed", "\x1B&f12y0Xtext\x0C\x1B&f1X"},
      {"download letter.pcl --to out --store --id 9 --filter",
       "\x1B&f9y0X\x1B&l3Xtext\x1B&f1X\x1B&f9y10X"},
      {"download letter.pcl --to out --raw --id 9 --target disk1 --esc-k",
       EscKLanguage(2) + EscKToDevice + "\033E\x1B&l3Xtext\x0C\x1B&f9y10X" + EscKToRam},
      {"enable --to out --id 12", "\x1B&f12y4X"},
      {"disable --to out --id 12", "\x1B&f12y5X"},
      {"delete --to out --id 12", "\x1B&f12y8X"},
  };
  for (const auto& [words, bytes] : cases) {
    const ProgramRun run = Hvapi("macro " + words);
    EXPECT_EQ(run.status, 0) << words << run.errors;
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(ReadFile("out"), bytes) << words;
  }
  EXPECT_EQ(ReadFile("printed"), "\x1B&f12y0Xtext\x0C\x1B&f1X\x1B&f12y4X\xFF\x0C\x1B&f12y5X");
  EXPECT_EQ(Hvapi("macro create letter.pcl --to out --id 12").status, 0);
  EXPECT_EQ(Hvapi("macro validate out").output, "file           out\nidentifier     12\n");
  EXPECT_EQ(Hvapi("macro download letter.pcl --to out --store --language postscript --name Logo "
                  "--demo --target flash1")
                .status,
            0);
  EXPECT_EQ(Hvapi("macro validate out --language postscript --json").output,
            "{\n  \"file\": \"out\",\n  \"name\": \"Logo.demo\",\n  \"target\": \"flash1\",\n"
            "  \"demonstration\": true\n}\n");
}

TEST(MacroTool, SaysWhatIsWrong) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  folder.Add("text", "text");
  const struct {
    const char* words;
    int status;
    std::string sentence;
  } cases[] = {
      {"create text --to out --drop copies,color", HV_BAD_ARGUMENT,
       "\"color\" is not one of reset, form-feed, page-size, paper-source, duplex, orientation, "
       "job-separation, copies, perforation-skip, flush-pages, output-bin, macro-definition, "
       "default, none"},
      {"create text --to out --name 123456789012345678901234", HV_BAD_ARGUMENT,
       "the name \"123456789012345678901234\" has more than 23 characters"},
      {"create text --to out --language pclxl --filter", HV_BAD_PCLXL,
       "cannot convert \"text\": byte 0: the header does not say binary, low byte first"},
      {"download text --to out --language pclxl", HV_READ_FAILED,
       "cannot download \"text\": the file cannot be read"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(std::string("macro ") + c.words);
    EXPECT_EQ(run.status, c.status);
    EXPECT_EQ(run.errors, Sentence(c.sentence, c.status));
  }
}

}  // namespace
