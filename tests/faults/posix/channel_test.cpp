// Jobs through the communication library while memory runs out: it sees the end of all that it saw
// begin. What else becomes of jobs is seen by the sweeps.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "faults/failing_memory.h"
#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

TEST(JobsWithoutMemory, EndTheConnectionOfTheLibrary) {
  FakeNbx fake(TEST_BINARY_FOLDER);
  const TestFolder folder;
  const std::string source = folder.Add("source", std::string(5000, 'x'));
  HvJobInfo job = Job(JOB_FLAG_PJL | JOB_FLAG_ESC_K, JOB_EMULATION_PCL, "a name of some length", 2);
  job.nbxAddress2 = 1;
  const std::function<uint32_t()> exports[] = {
      [&] { return HvDatSendFile(source.c_str(), "unused", &job, 0); },
      [&] { return HvDatSendString("$abc", "unused", &job, 0); },
      [&] { return HvGenResource(STORAGE_TARGET_DEVICE, "unused", &job, 2); },
  };
  for (const auto& send : exports) {
    for (const bool fromThenOn : {false, true}) {
      bool failed = true;
      for (std::size_t failing = 0; failed; ++failing) {
        SCOPED_TRACE(std::to_string(failing) + (fromThenOn ? " and all after" : ""));
        uint32_t result = HV_OK;
        {
          const FailingMemory memory(failing, fromThenOn);
          result = send();
          failed = memory.Failed();
        }
        EXPECT_TRUE(failed || failing > 3);
        EXPECT_EQ(result, failed ? HV_NO_MEMORY : HV_OK);
        const std::vector<std::string> calls = fake.TakeCalls();
        const auto count = [&](const std::string& function) {
          return std::count_if(calls.begin(), calls.end(),
                               [&](const std::string& call) { return call.starts_with(function); });
        };
        EXPECT_EQ(count("NbxClose"), count("NbxOpen"));
        EXPECT_EQ(count("NbxEndDoc"), count("NbxStartDoc"));
        EXPECT_FALSE(fake.IsLoaded());
      }
    }
  }
}

}  // namespace
