// A PCL XL job as Ghostscript writes it, converted: the stream holds the operators of its page.

#include <gtest/gtest.h>

#include <string>

#include "pclxl/job_reader.h"
#include "pclxl/stream_conversion.h"
#include "support/pclxl_walker.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

constexpr int BeginPage = 0x43;
constexpr int EndPage = 0x44;
constexpr int ReadStream = 0x5C;

TEST(PclXlGhostscript, ThePageBecomesTheStream) {
  const hvtest::TestFolder folder;
  const hvtest::ScopedCurrentFolder current(folder.Path());
  const hvtest::ProgramRun made =
      hvtest::RunProgram("gs", {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pxlmono", "-o",
                                "job.pxl", TEST_SOURCE_FOLDER "/examples/page.ps"});
  if (made.status != 0) GTEST_SKIP() << "Ghostscript is missing: " << made.errors;
  const std::string file = hvtest::ReadFile("job.pxl");
  const std::size_t begin = file.find(") HP-PCL XL");
  ASSERT_NE(begin, std::string::npos);
  const std::string job = file.substr(begin);

  hvtest::WriteFile("in.str", job);
  const hv::PclXlWorkFiles files;
  ASSERT_EQ(hv::PclXlConvertStream(files, "Page", 1), hv::PclXlOk);

  // The page by the tests' own rules: all from behind BeginPage to the values of EndPage.
  std::size_t pageBegin = 0;
  std::string page;
  for (const hvtest::PclXlOperator& each : hvtest::WalkPclXl(job)) {
    if (each.tag == BeginPage) pageBegin = each.end;
    if (each.tag == EndPage) page = job.substr(pageBegin, each.offset - pageBegin);
  }
  ASSERT_GT(page.size(), 100U);

  const std::string converted = hvtest::ReadFile("out.str");
  const std::vector<hvtest::PclXlOperator> operators = hvtest::WalkPclXl(converted);
  std::string tags;
  for (const hvtest::PclXlOperator& each : operators) tags += static_cast<char>(each.tag);
  EXPECT_EQ(tags, "\x41\x48\x47\x5B\x5C\x5D\x43\x5E\x44\x49\x42");
  ASSERT_GT(operators.size(), 4U);
  EXPECT_EQ(operators[4].tag, ReadStream);
  EXPECT_TRUE(operators[4].data == ") HP-PCL XL;1;1;\n" + page);
  hvtest::WalkPclXl(operators[4].data);
}

}  // namespace
