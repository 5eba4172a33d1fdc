// Jobs sent while memory runs out: the code for it, and nothing left open or half done.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "faults/failing_memory.h"
#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::FailingMemory;
using hvtest::Job;
using hvtest::OpenHandleCount;
using hvtest::TestFolder;

// Sends the jobs of all three exports, letting allocation after allocation fail; `check` is told
// after each what came of it.
template <typename Check>
void SendWithEveryFailure(const std::string& destination, const HvJobInfo& job, Check check) {
  const TestFolder folder;
  const std::string source = folder.Add("source", std::string(5000, 'x'));
  const std::function<uint32_t()> exports[] = {
      [&] { return HvDatSendFile(source.c_str(), destination.c_str(), &job, 0); },
      [&] { return HvDatSendString("$abc", destination.c_str(), &job, 0); },
      [&] { return HvGenResource(STORAGE_TARGET_DEVICE, destination.c_str(), &job, 2); },
  };
  const std::size_t handles = OpenHandleCount();
  for (const auto& send : exports) {
    for (const bool fromThenOn : {false, true}) {
      bool failed = true;
      std::size_t failing = 0;
      for (; failed; ++failing) {
        uint32_t result = HV_OK;
        {
          const FailingMemory memory(failing, fromThenOn);
          result = send();
          failed = memory.Failed();
        }
        SCOPED_TRACE(std::to_string(failing) + (fromThenOn ? " and all after" : ""));
        EXPECT_EQ(result, failed ? HV_NO_MEMORY : HV_OK);
        check(failed);
      }
      EXPECT_GT(failing, 3U);
    }
  }
  EXPECT_EQ(OpenHandleCount(), handles);
}

TEST(JobsWithoutMemory, EndTheConnectionOfTheLibrary) {
  hvtest::FakeNbx fake(TEST_BINARY_FOLDER);
  HvJobInfo job = Job(JOB_FLAG_PJL | JOB_FLAG_ESC_K, JOB_EMULATION_PCL, "a name of some length", 2);
  job.nbxAddress2 = 1;
  SendWithEveryFailure("unused", job, [&](bool /*failed*/) {
    const std::vector<std::string> calls = fake.TakeCalls();
    const auto count = [&](const std::string& function) {
      return std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
        return call.compare(0, function.size(), function) == 0;
      });
    };
    EXPECT_EQ(count("NbxClose"), count("NbxOpen"));
    EXPECT_EQ(count("NbxEndDoc"), count("NbxStartDoc"));
    EXPECT_FALSE(fake.IsLoaded());
  });
}

TEST(JobsWithoutMemory, LeaveNothingInASpoolQueue) {
  const TestFolder spool;
  fs::create_directory(spool / "queue");
  const hvtest::ScopedVariable folder("HVAPI_SPOOL", spool.Path().string());
  const HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "a name of some length", 2);
  SendWithEveryFailure("queue", job, [&](bool failed) {
    EXPECT_EQ(fs::is_empty(spool / "queue"), failed);
    for (const auto& entry : fs::directory_iterator(spool / "queue")) fs::remove(entry.path());
  });
}

TEST(JobsWithoutMemory, CloseTheFile) {
  const TestFolder folder;
  const HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "a name of some length", 2);
  SendWithEveryFailure(folder / "out", job, [](bool /*failed*/) {});
}

}  // namespace
