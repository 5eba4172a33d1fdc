// What failures make of the records of macros and demonstration files, which the sweeps do not look at.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "faults/failing_memory.h"
#include "faults/posix/failing_system.h"
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

// A source that cannot be read on is not judged by what was read.
TEST(MacroFaults, AreNotTakenForTheEndOfTheSource) {
  const TestFolder folder;
  const std::string source = folder.Add("source", ") HP-PCL XL;1;1;\n");
  for (const int32_t emulation : {2, 3, 5, 6}) {
    std::vector<uint32_t> codes;
    for (bool failed = true; failed;) {
      HvJobInfo job = Job(0, emulation);
      HvMacroInfo info = {};
      const FailingSystem system(codes.size(), false);
      codes.push_back(HvMacValidate(source.c_str(), &job, &info));
      failed = system.Failed();
    }
    // Between the opening and the close.
    const std::vector<uint32_t> read(
        std::find(codes.rbegin(), codes.rend(), uint32_t{HV_CANNOT_OPEN}).base(), codes.end() - 2);
    EXPECT_GE(read.size(), 2U);
    EXPECT_EQ(read, std::vector<uint32_t>(read.size(), HV_READ_FAILED)) << emulation;
  }
}

}  // namespace
