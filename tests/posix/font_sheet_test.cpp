// The picture of a font, which the program makes where it is built with a PNG library.

#include <gtest/gtest.h>

#include <string>

#include "support/font_files.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

TEST(FontSheet, IsAPngOfItsRowsOfSixteen) {
  const hvtest::TestFolder folder;
  const std::string font = folder.Add("font.sfp", hvtest::PclFont({}, hvtest::SampleCharacters()));
  const std::string picture = folder / "sheet.png";
  const hvtest::ProgramRun run =
      hvtest::RunProgram(TEST_BINARY_FOLDER "/hvapi", {"font", "show", font, "--png", picture});
  EXPECT_EQ(run.status, 0) << run.errors;
  const std::string bytes = hvtest::ReadFile(picture);
  ASSERT_EQ(bytes.substr(0, 16), std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16));
  // Rows of 0x40 to 0x6F, of cells wide enough for the widest character.
  const auto side = [&](std::size_t at) {
    return static_cast<unsigned char>(bytes[at + 2]) * 256U +
           static_cast<unsigned char>(bytes[at + 3]);
  };
  EXPECT_GE(side(16), 16 * 10U);
  EXPECT_GE(side(20), 3 * 9U);

  const hvtest::ProgramRun refused = hvtest::RunProgram(
      TEST_BINARY_FOLDER "/hvapi", {"font", "show", font, "--png", folder / "no/sheet.png"});
  EXPECT_EQ(refused.status, 7);
  EXPECT_NE(refused.errors.find("sheet.png"), std::string::npos);
}

}  // namespace
