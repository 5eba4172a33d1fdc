// Jobs that Ghostscript writes become macros: an interpreter, a decoder or a model of the tests'
// own takes what comes out.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/job_filter_model.h"
#include "support/macro_files.h"
#include "support/pclxl_jobs.h"
#include "support/run_program.h"

namespace {

using namespace hvtest;

// A folder that is the current one, and what Ghostscript makes in it.
class MacroJobs : public testing::Test {
 protected:
  void SetUp() override {
    if (RunProgram("gs", {"--version"}).status != 0) GTEST_SKIP() << "gs is not installed";
  }

  // Writes the page of the examples in a printer's language.
  static std::string MakeJob(const std::string& device) {
    Ghostscript(device, "job.prn", TEST_SOURCE_FOLDER "/examples/page.ps");
    return ReadFile("job.prn");
  }

  // The pages that a PostScript job prints.
  static std::vector<std::string> Pages(const std::string& job) {
    Ghostscript("pgmraw", "page%d.pgm", job);
    std::vector<std::string> pages;
    for (int number = 1;; ++number) {
      const std::string name = "page" + std::to_string(number) + ".pgm";
      if (!std::filesystem::exists(name)) return pages;
      pages.push_back(ReadFile(name));
      std::filesystem::remove(name);
    }
  }

  TestFolder folder_;
  ScopedCurrentFolder here_{folder_.Path()};

 private:
  static void Ghostscript(const std::string& device, const std::string& output,
                          const std::string& input) {
    const ProgramRun run = RunProgram("gs", {"-q", "-dJOBSERVER", "-dBATCH", "-dNOPAUSE", "-r72",
                                             "-sDEVICE=" + device, "-o", output, input});
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
    EXPECT_EQ(run.output, "");
  }
};

TEST_F(MacroJobs, APclJobBecomesAMacro) {
  const std::string job = MakeJob("ljet4");
  HvJobInfo record = MacroJob(JOB_EMULATION_PCL, 12);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER);
  ASSERT_EQ(HvMacCreate("job.prn", "macro", &record, &info), HV_OK);
  const std::string filtered = FilterPclModel(job, DEFAULT_FILTER_MASK);
  EXPECT_TRUE(ReadFile("macro") == "\x1B&f12y0X" + filtered + "\x1B&f1X");
  EXPECT_LT(filtered.size(), job.size());
  info = MacroInfo();
  record.identifier = 0;
  EXPECT_EQ(HvMacValidate("macro", &record, &info), HV_OK);
  EXPECT_EQ(+record.identifier, 12);
}

TEST_F(MacroJobs, APclXlJobBecomesAStream) {
  const std::string job = MakeJob("pxlmono");
  HvJobInfo record = MacroJob(JOB_EMULATION_PCLXL);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "Letterhead");
  ASSERT_EQ(HvMacCreate("job.prn", "macro", &record, &info), HV_OK);
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"job.prn", "macro"}));
  const std::string macro = ReadFile("macro");
  const std::size_t session = job.find('\n', job.find(PclXlHeader.substr(0, 11))) + 1;
  const std::string settings = job.substr(session, job.find('\x41', session) + 1 - session);
  // The page stands in the job, between BeginPage and EndPage, as it stands in the stream.
  const std::size_t begin = macro.find(PclXlHeader, 1) + PclXlHeader.size();
  const std::string page = macro.substr(begin, macro.size() - begin - 3);
  ASSERT_GT(page.size(), 100U);
  EXPECT_TRUE(macro == PclXlStreamJob(settings, "Letterhead", page, false));
  EXPECT_NE(job.find("\x43" + page + PclXlUint16(1, 0x31) + "\x44"), std::string::npos);
  info = MacroInfo();
  EXPECT_EQ(HvMacValidate("macro", &record, &info), HV_OK);
  EXPECT_STREQ(info.name, "Letterhead");
}

TEST_F(MacroJobs, APostScriptJobPrintsTheSamePage) {
  const std::string body = MakeJob("ps2write");
  WriteFile("job.prn", Uel + "@PJL ENTER LANGUAGE = POSTSCRIPT\r\n" + body + "\x04" + Uel);
  WriteFile("job.ps", body);
  const std::vector<std::string> pages = Pages("job.ps");
  ASSERT_EQ(pages.size(), 1U);

  HvJobInfo record = MacroJob(JOB_EMULATION_POSTSCRIPT);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "Letterhead");
  ASSERT_EQ(HvMacCreate("job.prn", "overlay", &record, &info), HV_OK);
  EXPECT_TRUE(Pages("overlay") == pages);
  info = MacroInfo(MACRO_FLAG_PS_OVERLAY);
  EXPECT_EQ(HvMacValidate("overlay", &record, &info), HV_OK);
  EXPECT_STREQ(info.name, "Letterhead");
}

TEST_F(MacroJobs, APostScriptPageIsPrintedOnceOrStored) {
  const std::string drawing =
      "%!PS\n100 100 moveto 300 400 lineto 20 setlinewidth stroke\nshowpage\n";
  WriteFile("page.ps", drawing);
  const std::vector<std::string> pages = Pages("page.ps");
  ASSERT_EQ(pages.size(), 1U);

  const HvJobInfo record = MacroJob(JOB_EMULATION_POSTSCRIPT);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "Logo");
  ASSERT_EQ(HvMacDownload("page.ps", "once", &record, &info, MACRO_PRINT_ONCE, HV_WRONG_LANGUAGE),
            HV_OK);
  EXPECT_TRUE(Pages("once") == pages);

  // A later job runs what is stored, which prints nothing by itself.
  info = MacroInfo(0, "Logo", STORAGE_DEVICE_RAM);
  ASSERT_EQ(HvMacDownload("page.ps", "stored", &record, &info, MACRO_STORE, HV_WRONG_LANGUAGE),
            HV_OK);
  EXPECT_EQ(Pages("stored").size(), 0U);
  WriteFile("stored", ReadFile("stored") + "\x04Logo\n");
  EXPECT_TRUE(Pages("stored") == pages);
}

}  // namespace
