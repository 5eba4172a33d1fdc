// Macros at print queues: the documents that appear, and what a failure leaves.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/macro_files.h"
#include "support/posix/file_size_limit.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

class MacroQueue : public testing::Test {
 protected:
  MacroQueue() { fs::create_directory(queue_); }

  TestFolder folder_;
  std::string queue_ = folder_ / "queue";
  ScopedVariable spool_{"HVAPI_SPOOL", folder_.Path().string()};
};

TEST_F(MacroQueue, TakesAMacroWhoseFilterEndsWithAFullPiece) {
  const std::string body(3072, 'x');
  const std::string source = folder_.Add("source", "\033E" + body);
  const HvJobInfo job = MacroJob(JOB_EMULATION_PCL, 5, JOB_FLAG_PJL);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER);
  ASSERT_EQ(HvMacCreate(source.c_str(), "queue", &job, &info), HV_OK);
  ASSERT_EQ(
      HvMacDownload(source.c_str(), "queue", &job, &info, MACRO_PRINT_ONCE, HV_WRONG_LANGUAGE),
      HV_OK);
  ASSERT_EQ(HvMacActivate("queue", &job, 1), HV_OK);
  ASSERT_EQ(HvMacDelete("queue", &job), HV_OK);
  const std::string macro = "\x1B&f5y0X" + body + "\x1B&f1X";
  const std::string printed = Uel + PjlLanguage("PCL") + macro + "\x1B&f5y4X\xFF\x0C\x1B&f5y5X";
  EXPECT_EQ(ReadFile(queue_ + "/000001.prn"), macro);
  EXPECT_EQ(ReadFile(queue_ + "/000002.prn"), printed + PjlEnd);
  EXPECT_EQ(ReadFile(queue_ + "/000003.prn"), "\x1B&f5y4X");
  EXPECT_EQ(ReadFile(queue_ + "/000004.prn"), "\x1B&f5y8X");
}

TEST_F(MacroQueue, KeepsNothingOfAMacroThatFindsNoRoom) {
  constexpr rlim_t Room = 4096;
  const std::string source = folder_.Add("source", std::string(3 * Room, 'x'));
  const HvJobInfo job = MacroJob(JOB_EMULATION_PCL, 5, JOB_FLAG_PJL);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER);
  testing::internal::CaptureStdout();
  {
    const FileSizeLimit full(Room);
    EXPECT_EQ(HvMacDownload(source.c_str(), "queue", &job, &info, MACRO_STORE, HV_WRONG_LANGUAGE),
              HV_PRINTER_REFUSED);
  }
  // One write failed, and none was tried behind it.
  const std::string report = testing::internal::GetCapturedStdout();
  EXPECT_EQ(report.rfind("\nWritePrinter FAILED! ", 0), 0U) << report;
  EXPECT_EQ(report.find("WritePrinter", 20), std::string::npos) << report;
  EXPECT_TRUE(fs::is_empty(queue_));
}

}  // namespace
