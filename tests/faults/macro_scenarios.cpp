// Macros and demonstration files.

#include "faults/scenario.h"
#include "faults/sending_failures.h"
#include "hvapi.h"
#include "support/macro_files.h"

namespace hvtest {
namespace {

constexpr std::initializer_list<int64_t> MacroFailures = {
    HV_NOT_FOUND,       HV_CANNOT_OPEN,       HV_READ_FAILED,   HV_WRITE_FAILED,
    HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE, HV_BAD_PCLXL};

const std::string PclSource =
    Uel + PjlLanguage("PCL") + "\033E\x1B&l2A" + std::string(3000, 'x') + "\f\033E" + Uel;

Files Sources() {
  return {{"page.pcl", PclSource},
          {"page.ps", "%!PS\n" + std::string(3000, 'x') + "\nshowpage\n"},
          {"page.ppds", std::string(3000, 'x')},
          {"page.xl", OnePagePclXlJob()},
          {"macro.mac", "\x1B&f5Y\x1B&f0Xmacro\x1B&f1X"}};
}

// A conversion of PCL XL that fails has one code, whatever it failed for.
int64_t NoMemoryOf(int32_t emulation, uint32_t code) {
  return emulation == JOB_EMULATION_PCLXL && code == HV_BAD_PCLXL ? HV_BAD_PCLXL : HV_NO_MEMORY;
}

struct Source {
  const char* name;
  int32_t emulation;
};
constexpr Source PageSources[] = {{"page.pcl", JOB_EMULATION_PCL},
                                  {"page.ps", JOB_EMULATION_POSTSCRIPT},
                                  {"page.ppds", JOB_EMULATION_PPDS},
                                  {"page.xl", JOB_EMULATION_PCLXL}};

std::function<void(Run&)> Create(const Source& source, const char* destination) {
  return [=](Run& run) {
    const HvJobInfo job = MacroJob(source.emulation);
    HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "letter");
    const uint32_t code = HvMacCreate(run.Path(source.name), destination, &job, &info);
    run.Expect(code, HV_OK, NoMemoryOf(source.emulation, code), MacroFailures);
  };
}

std::function<void(Run&)> Download(const Source& source, const char* destination) {
  return [=](Run& run) {
    const HvJobInfo job = MacroJob(source.emulation, 5, JOB_FLAG_PJL);
    HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "", STORAGE_DEVICE_FLASH1);
    const uint32_t validation = source.emulation == JOB_EMULATION_PCLXL ? HV_OK : HV_WRONG_LANGUAGE;
    const uint32_t mode = source.emulation == JOB_EMULATION_PPDS ? MACRO_PRINT_ONCE : MACRO_STORE;
    const uint32_t code =
        HvMacDownload(run.Path(source.name), destination, &job, &info, mode, validation);
    run.Expect(code, HV_OK, NoMemoryOf(source.emulation, code), MacroFailures);
  };
}

std::function<void(Run&)> Validate(const Source& source, uint32_t flags) {
  return [=](Run& run) {
    HvJobInfo job = MacroJob(source.emulation);
    HvMacroInfo info = MacroInfo(flags);
    const uint32_t code = HvMacValidate(run.Path(source.name), &job, &info);
    if (run.Expect(code, HV_OK, NoMemoryOf(source.emulation, code), MacroFailures)) {
      run.Note(+info.macroId);
    }
  };
}

}  // namespace

std::vector<Scenario> MacroSendingScenarios(const char* destination, const Files& files) {
  Files before = Sources();
  before.insert(files.begin(), files.end());
  const std::vector<std::string> partial = {destination};
  std::vector<Scenario> scenarios;
  for (const Source& source : PageSources) {
    scenarios.push_back(
        {source.name, "HvMacDownload", before, Download(source, destination), partial});
  }
  const HvJobInfo pcl = MacroJob(JOB_EMULATION_PCL);
  const auto activate = [=](Run& run) {
    run.Expect(HvMacActivate(destination, &pcl, 1), HV_OK, HV_NO_MEMORY, SendingFailures);
  };
  const auto remove = [=](Run& run) {
    run.Expect(HvMacDelete(destination, &pcl), HV_OK, HV_NO_MEMORY, SendingFailures);
  };
  // Success, whatever became of the write.
  scenarios.push_back({"activated", "HvMacActivate", files, activate, partial, true});
  scenarios.push_back({"deleted", "HvMacDelete", files, remove, partial, true});
  for (const int32_t method : {DEMO_METHOD_POSTSCRIPT, DEMO_METHOD_PJL_FILE, DEMO_METHOD_ESC_D,
                               DEMO_METHOD_PJL_DEMO_FILE}) {
    const auto store = [destination, method](Run& run) {
      HvJobInfo job = MacroJob(JOB_EMULATION_PCL, 5, JOB_FLAG_PJL);
      const HvDemoInfo info = {0, method, "demo", 0, STORAGE_DEVICE_FLASH1};
      run.Expect(HvDemDownload(run.Path("page.pcl"), destination, &job, &info), HV_OK, HV_NO_MEMORY,
                 MacroFailures);
    };
    scenarios.push_back({"demonstration file", "HvDemDownload", before, store, partial});
  }
  return scenarios;
}

std::vector<Scenario> MacroScenarios() {
  std::vector<Scenario> scenarios = MacroSendingScenarios("out", {{"out", "before"}});
  Files files = Sources();
  files["out"] = "before";
  for (const Source& source : PageSources) {
    scenarios.push_back({source.name, "HvMacCreate", files, Create(source, "out"), {"out"}});
  }
  scenarios.push_back({"validated", "HvMacValidate", files,
                       Validate({"macro.mac", JOB_EMULATION_PCL}, MACRO_FLAG_FILTER)});
  scenarios.push_back(
      {"PCL XL validated", "HvMacValidate", files, Validate(PageSources[3], MACRO_FLAG_FILTER)});
  return scenarios;
}

}  // namespace hvtest
