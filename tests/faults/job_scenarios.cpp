// Jobs and storage commands.

#include <memory>

#include "faults/scenario.h"
#include "faults/sending_failures.h"
#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"

namespace hvtest {
namespace {

const HvJobInfo PjlJob = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "a name of some length", 2);
const HvJobInfo EscKJob = Job(JOB_FLAG_ESC_K, JOB_EMULATION_POSTSCRIPT, "name", 2);

}  // namespace

std::vector<Scenario> SendingScenarios(const char* destination, const Files& files) {
  Files before = files;
  before["source"] = std::string(5000, 'x');
  const std::vector<std::string> partial = {destination};
  const auto sendFile = [destination](Run& run) {
    run.Expect(HvDatSendFile(run.Path("source"), destination, &PjlJob, 0), HV_OK, HV_NO_MEMORY,
               SendingFailures);
  };
  const auto sendText = [destination](Run& run) {
    run.Expect(HvDatSendString("$a\\n\\x1bE", destination, &EscKJob, 1), HV_OK, HV_NO_MEMORY,
               SendingFailures);
  };
  const auto sendDigits = [destination](Run& run) {
    run.Expect(HvDatSendString("1B45", destination, &PjlJob, 0), HV_OK, HV_NO_MEMORY,
               SendingFailures);
  };
  const auto sendCommand = [destination](Run& run) {
    run.Expect(HvGenResource(STORAGE_TARGET_DEVICE, destination, &PjlJob, STORAGE_DEVICE_FLASH1),
               HV_OK, HV_NO_MEMORY, SendingFailures);
  };
  return {
      {"a file", "HvDatSendFile", before, sendFile, partial},
      {"a text", "HvDatSendString", before, sendText, partial},
      {"digits", "HvDatSendString", before, sendDigits, partial},
      {"a storage command", "HvGenResource", before, sendCommand, partial},
  };
}

std::vector<Scenario> JobScenarios() {
  std::vector<Scenario> scenarios = SendingScenarios("out", {{"out", "before"}});

  const auto nbx = std::make_shared<FakeNbx>(TEST_BINARY_FOLDER);
  const auto flags = std::make_shared<ScopedVariable>("FAKE_NBX_FLAGS", "0x20");
  scenarios.push_back({"through the communication library",
                       "HvDatSendString HvNetGetType",
                       {},
                       [nbx, flags](Run& run) {
                         HvJobInfo job = PjlJob;
                         job.nbxAddress2 = 1;
                         run.Expect(HvDatSendString("$abc", "unused", &job, 0), HV_OK, HV_NO_MEMORY,
                                    SendingFailures);
                         run.Expect(HvNetGetType(7), 0x20, 0, {0});
                       }});
  return scenarios;
}

}  // namespace hvtest
