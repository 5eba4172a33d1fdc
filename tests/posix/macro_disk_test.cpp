// What becomes of macros when the disk is full.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"
#include "support/pclxl_jobs.h"
#include "support/posix/file_size_limit.h"

namespace {

using namespace hvtest;

constexpr rlim_t Room = 4096;

TEST(MacrosOnAFullDisk, AreReported) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  const std::string large(3 * Room, 'x');
  folder.Add("source", large);
  for (const int32_t emulation : {2, 3, 5}) {
    HvJobInfo job = MacroJob(emulation, 5, JOB_FLAG_PJL);
    for (const uint32_t flags : {0U, uint32_t{MACRO_FLAG_FILTER}}) {
      HvMacroInfo info = MacroInfo(flags);
      const FileSizeLimit full(Room);
      EXPECT_EQ(HvMacCreate("source", "out", &job, &info), HV_WRITE_FAILED);
      for (const uint32_t mode : {1U, 2U, 3U}) {
        EXPECT_EQ(HvMacDownload("source", "out", &job, &info, mode, HV_WRONG_LANGUAGE),
                  HV_WRITE_FAILED);
      }
    }
    // The filtered source has no room, too.
    HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER);
    const FileSizeLimit full(Room);
    EXPECT_EQ(HvMacValidate("source", &job, &info), HV_WRITE_FAILED);
  }
  EXPECT_EQ(ReadFile("source"), large);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"out", "source"}));
}

TEST(MacrosOnAFullDisk, LeaveNoWorkFileOfAConversion) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  const std::string job = OnePagePclXlJob();
  folder.Add("job", job);
  const HvJobInfo record = MacroJob(JOB_EMULATION_PCLXL);
  // From no room at all to room for all: the job, its page, the converted job, the macro.
  const std::size_t whole = ConvertedPclXlJob("x", false).size();
  for (std::size_t room = 0; room <= whole; ++room) {
    HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "x");
    uint32_t code = HV_OK;
    {
      const FileSizeLimit full(room);
      code = HvMacCreate("job", "out", &record, &info);
    }
    const uint32_t without = room < job.size() ? HV_WRITE_FAILED : HV_BAD_PCLXL;
    ASSERT_EQ(code, room < whole ? without : uint32_t{HV_OK}) << room;
    ASSERT_EQ(folder.Names(), (std::vector<std::string>{"job", "out"}));
  }
}

}  // namespace
