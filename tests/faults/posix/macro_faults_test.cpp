// What failures make of the records of macros and demonstration files, which the sweeps do not look at.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "faults/failing_memory.h"
#include "hvapi.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

TEST(DemoFaults, LeaveTheLanguageOfAJobThatDidNotBegin) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "demo page");
  const std::string out = folder / "out";
  const HvDemoInfo info = {0, DEMO_METHOD_POSTSCRIPT, "Logo", 0, STORAGE_DEVICE_FLASH1};
  bool failed = true;
  for (std::size_t failing = 0; failed; ++failing) {
    HvJobInfo job = Job(0, JOB_EMULATION_PPDS);
    uint32_t code = HV_OK;
    {
      const FailingMemory memory(failing, false);
      code = HvDemDownload(source.c_str(), out.c_str(), &job, &info);
      failed = memory.Failed();
    }
    EXPECT_EQ(code, failed ? HV_NO_MEMORY : HV_OK) << failing;
    const bool began = std::filesystem::remove(out);
    EXPECT_TRUE(began || job.emulation == JOB_EMULATION_PPDS) << failing;
  }
}

}  // namespace
