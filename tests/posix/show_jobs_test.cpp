// hvapi show over whole jobs: those that Ghostscript makes, and those that hvapi sends of them.
// Each byte is explained, once and in order.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/font_files.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using hvtest::ProgramRun;
using hvtest::RunProgram;

ProgramRun Hvapi(const std::vector<std::string>& words) {
  return RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

// The lines that explain a file; a byte left out, told twice or not known fails the test.
std::vector<std::string> Explain(const std::string& path) {
  const ProgramRun run = Hvapi({"show", path});
  EXPECT_EQ(run.status, 0) << run.errors;
  std::istringstream output(run.output);
  std::vector<std::string> lines;
  std::string line;
  std::getline(output, line);  // the titles
  unsigned long long end = 0;
  while (std::getline(output, line)) {
    unsigned long long offset = 0;
    unsigned long long length = 0;
    EXPECT_EQ(std::sscanf(line.c_str(), "%llx %llu", &offset, &length), 2) << line;
    EXPECT_EQ(offset, end) << line;
    EXPECT_GT(length, 0U) << line;
    EXPECT_EQ(line.find("unknown"), std::string::npos) << path << ": " << line;
    end = offset + length;
    lines.push_back(line);
  }
  EXPECT_EQ(end, std::filesystem::file_size(path));
  return lines;
}

bool Tells(const std::vector<std::string>& lines, const std::string& what) {
  for (const std::string& line : lines) {
    if (line.find(what) != std::string::npos) return true;
  }
  return false;
}

TEST(ShowJobs, ExplainsEachByteOfRealJobs) {
  const hvtest::TestFolder folder;
  const hvtest::ScopedCurrentFolder current(folder.Path());
  const struct {
    const char* device;
    const char* language;
    const char* meaning;
  } cases[] = {
      {"ljet4", "pcl", "rows of dots"},
      {"pxlmono", "pclxl", "EndPage: PageCopies 1"},
      {"ps2write", "postscript", "PostScript comment"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.device);
    const ProgramRun made = RunProgram(
        "gs", {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=" + std::string(each.device),
               "-r300", "-o", "page", TEST_SOURCE_FOLDER "/examples/page.ps"});
    if (made.status != 0) GTEST_SKIP() << "Ghostscript is missing: " << made.errors;
    EXPECT_TRUE(Tells(Explain("page"), each.meaning));

    for (const char* framing : {"--pjl", "--esc-k"}) {
      Hvapi({"send", "page", "--to", "sent", framing, "--language", each.language, "--copies", "2",
             "--name", "Weekly report"});
      const std::vector<std::string> lines = Explain("sent");
      EXPECT_TRUE(Tells(lines, each.meaning)) << framing;
      EXPECT_TRUE(Tells(lines, "switch the printer language")) << framing;
    }
    for (const char* method : {"postscript", "pjl", "esc", "demofile"}) {
      const ProgramRun run = Hvapi({"demo", "download", "page", "--method", method, "--target",
                                    "disk1", "--to", "sent", "--pjl"});
      EXPECT_EQ(run.status, 0) << run.errors;
      EXPECT_GT(Explain("sent").size(), 5U) << method;
    }
    ASSERT_EQ(Hvapi({"macro", "create", "page", "--to", "sent", "--language", each.language, "--id",
                     "7", "--name", "Page", "--filter"})
                  .status,
              0);
    Explain("sent");
  }
}

TEST(ShowJobs, ExplainsDownloads) {
  const hvtest::TestFolder folder;
  const hvtest::ScopedCurrentFolder current(folder.Path());
  folder.Add("font.sfp", hvtest::PclFont({}, hvtest::SampleCharacters()));
  ASSERT_EQ(Hvapi({"font", "download", "font.sfp", "--to", "sent", "--pjl", "--id", "5", "--target",
                   "flash1"})
                .status,
            0);
  const std::vector<std::string> lines = Explain("sent");
  EXPECT_TRUE(Tells(lines, "downloads go to a storage device"));
  EXPECT_TRUE(Tells(lines, "64 bytes: download of a font descriptor"));
  EXPECT_TRUE(Tells(lines, "font: make permanent"));
}

}  // namespace
