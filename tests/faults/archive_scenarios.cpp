// Printer replies and archives.

#include <cstring>
#include <memory>

#include "faults/scenario.h"
#include "hvapi.h"
#include "support/reply_records.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"

namespace hvtest {
namespace {

constexpr std::initializer_list<int64_t> ArchiveFailures = {
    HV_NOT_FOUND, HV_CANNOT_OPEN,   HV_READ_FAILED,      HV_ARCHIVE_ENDED,
    HV_DISK_FULL, HV_UNUSABLE_FILE, HV_SHARING_VIOLATION};

uint32_t HVAPI_CALL TakeProgress(const char* /*name*/, uint32_t /*size*/, uint16_t /*percent*/) {
  return 0;
}

// 1 when a block of an alert is the one that is expected, 0 when there is none.
int Holds(const void* block, const std::string& expected) {
  if (block == nullptr) return 0;
  return std::memcmp(block, expected.data(), expected.size()) == 0 ? 1 : -1;
}

}  // namespace

std::vector<Scenario> ReplyAndArchiveScenarios() {
  const auto options = std::make_shared<ReplyBlock>(Reply(SampleOptions()));
  const auto job = std::make_shared<std::string>();
  const auto device = std::make_shared<std::string>();
  const auto alert = std::make_shared<ReplyBlock>(Reply(SampleAlert(job.get(), device.get())));

  const std::string text = std::string(3000, 'x') + "some text" + std::string(70, 'y');
  std::vector<ZipMember> members;
  std::vector<std::string> outputs;
  for (const Packing& packing : Packings) {
    const std::string name = "sub/m" + std::to_string(members.size()) + ".txt";
    members.push_back(Packed(name, text, packing.method, packing.pack(text), packing.flags));
    outputs.push_back(name);
  }
  const std::string archive = BuildZip(members).bytes;
  const std::string small = BuildZip({members[0], members[10]}).bytes;

  const auto explode = [](HvZipProgress progress) {
    return [progress](Run& run) {
      run.Expect(HvZipExplode(run.Path("a"), nullptr, progress), HV_OK, HV_NO_MEMORY,
                 ArchiveFailures);
    };
  };
  const auto parseOptions = [options](Run& run) {
    HvOptionInfo* const info = HvParseOptionInfo(options->Address());
    run.Expect(info != nullptr, 1, 0);
    if (info != nullptr) run.Note(info->entryCount + info->groupCount);
    HvFreeOptionInfo(info);
  };
  const auto parseAlert = [alert, job, device](Run& run) {
    HvJobAccount* const account = HvParseJobAccountingAlert(alert->Address());
    if (run.Expect(account != nullptr, 1, 0)) {
      run.Expect(Holds(account->jobBlock, *job), 1, 0);
      run.Expect(Holds(account->deviceBlock, *device), 1, 0);
    }
    HvFreeJobAccount(account);
  };
  return {
      {"options", "HvParseOptionInfo HvFreeOptionInfo", {}, parseOptions, {}, true},
      {"alert", "HvParseJobAccountingAlert HvFreeJobAccount", {}, parseAlert, {}, true},
      {"archive of every method", "HvZipExplode", {{"a.zip", archive}}, explode(nullptr), outputs},
      {"archive with progress",
       "HvZipExplode",
       {{"a.zip", small}, {outputs[0], "before"}},
       explode(TakeProgress),
       outputs},
  };
}

}  // namespace hvtest
