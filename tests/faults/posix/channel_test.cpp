// Jobs sent through the communication library while memory runs out: what was begun is ended.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "faults/failing_memory.h"
#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"

namespace {

TEST(JobsWithoutMemory, EndTheConnectionOfTheLibrary) {
  hvtest::FakeNbx fake(TEST_BINARY_FOLDER);
  HvJobInfo job = hvtest::Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "a name of some length", 2);
  job.nbxAddress2 = 1;
  for (const bool fromThenOn : {false, true}) {
    bool failed = true;
    for (std::size_t failing = 0; failed; ++failing) {
      SCOPED_TRACE(failing);
      {
        const hvtest::FailingMemory memory(failing, fromThenOn);
        HvDatSendString("$abc", "unused", &job, 0);
        failed = memory.Failed();
      }
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

}  // namespace
