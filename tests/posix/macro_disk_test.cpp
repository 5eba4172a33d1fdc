// What becomes of the conversion of macros when the disk is full.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"
#include "support/pclxl_jobs.h"
#include "support/posix/file_size_limit.h"

namespace {

using namespace hvtest;

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
