// hvapi show over whole jobs: those that Ghostscript makes, and those that hvapi sends of them.
// Each byte is explained, once and in order.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>

#include "support/font_files.h"
#include "support/hvapi_program.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// What explains a file; a byte left out, told twice or not known fails the test.
std::string Explain(const std::string& path) {
  const ProgramRun run = Hvapi("show " + path);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(run.output.find("unknown"), std::string::npos) << path << ": " << run.output;
  std::istringstream output(run.output);
  std::string line;
  std::getline(output, line);  // the titles
  unsigned long long end = 0;
  while (std::getline(output, line)) {
    unsigned long long offset = 0;
    unsigned long long length = 0;
    EXPECT_EQ(std::sscanf(line.c_str(), "%llx %llu", &offset, &length), 2) << line;
    EXPECT_EQ(offset, end) << line;
    EXPECT_GT(length, 0U) << line;
    end = offset + length;
  }
  EXPECT_EQ(end, std::filesystem::file_size(path));
  return run.output;
}

// Runs hvapi, which writes the file "sent", and explains that; it tells `meanings`.
void ExpectExplained(const std::string& words, const std::vector<std::string>& meanings) {
  SCOPED_TRACE(words);
  const ProgramRun run = Hvapi(words + " --to sent");
  EXPECT_EQ(run.status, 0) << run.errors;
  const std::string explanation = Explain("sent");
  for (const std::string& meaning : meanings) {
    EXPECT_NE(explanation.find(meaning), std::string::npos) << meaning;
  }
}

class ShowJobs : public testing::Test {
 protected:
  const TestFolder folder_;
  const ScopedCurrentFolder here_{folder_.Path()};
};

TEST_F(ShowJobs, ExplainsEachByteOfRealJobs) {
  const struct {
    std::string device;
    std::string language;
    std::string meaning;
  } cases[] = {
      {"ljet4", "pcl", "rows of dots"},
      {"pxlmono", "pclxl", "EndPage: PageCopies 1"},
      {"ps2write", "postscript", "PostScript comment"},
  };
  for (const auto& each : cases) {
    const ProgramRun made =
        RunProgram("gs", {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=" + each.device,
                          "-r300", "-o", "page", TEST_SOURCE_FOLDER "/examples/page.ps"});
    if (made.status != 0) GTEST_SKIP() << "Ghostscript is missing: " << made.errors;
    for (const std::string framing : {" --pjl", " --esc-k"}) {
      ExpectExplained("send page --copies 2 --name x --language " + each.language + framing,
                      {each.meaning, "switch the printer language"});
    }
    for (const std::string method : {"postscript", "pjl", "esc", "demofile"}) {
      ExpectExplained("demo download page --target disk1 --pjl --method " + method, {});
    }
    ExpectExplained("macro create page --id 7 --name Page --filter --language " + each.language,
                    {});
  }
}

TEST_F(ShowJobs, ExplainsDownloads) {
  folder_.Add("font.sfp", PclFont({}, SampleCharacters()));
  ExpectExplained("font download font.sfp --pjl --id 5 --target flash1",
                  {"downloads go to a storage device", "64 bytes: download of a font descriptor",
                   "font: make permanent"});
}

}  // namespace
