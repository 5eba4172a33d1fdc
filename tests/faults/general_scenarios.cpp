// Library information, memory, paths, file utilities.

#include <cstring>

#include "faults/scenario.h"
#include "hvapi.h"

namespace hvtest {
namespace {

// Makes the first letter another one, and drops lines that begin with "-".
uint32_t HVAPI_CALL ChangeLine(char* line, uintptr_t argument) {
  if (*line == '-') {
    *line = '\0';
  } else {
    *line = static_cast<char>(argument);
  }
  return 0;
}

void LibraryInformation(Run& run) {
  HvApiInfo info;
  HvGenQueryApiInfo(&info);
  run.Note(+info.words[0]);
  char text[32];
  run.Note(HvStrCpyFile(text, "c:\\fonts\\arial.pcl"));
  run.Note(HvStrCpyPath(text, "c:\\fonts\\arial.pcl"));
  char buffer[1024];
  run.Expect(HvGenQueryAdapters(0, 0, buffer, sizeof buffer), HV_OK, HV_OK);
  run.Expect(HvGenQueryQueues(0, 0, buffer, sizeof buffer), HV_OK, HV_OK);
  run.Expect(HvZipImplode("a.zip", "*", nullptr), HV_NOT_SUPPORTED, HV_NOT_SUPPORTED);
  HvMemFree(nullptr);
}

void Questions(Run& run) {
  run.Expect(HvFilExists(run.Path("SUB/source.TXT")), 1, 0, {0});
  run.Expect(HvFilQuerySize(run.Path("sub/*.txt")), 700, 0, {0});
}

void Checksum(Run& run) {
  uint16_t sum = 0;
  if (run.Expect(HvFilChecksum(run.Path("source.txt"), 0, 2, &sum), HV_OK, HV_NO_MEMORY,
                 {HV_CANNOT_OPEN, HV_CANNOT_CLOSE, HV_READ_FAILED})) {
    run.Note(sum);
  }
}

constexpr std::initializer_list<int64_t> CopyFailures = {
    HV_BAD_ARGUMENT,   HV_NOT_FOUND,         HV_ACCESS_DENIED,    HV_READ_FAILED,
    HV_WRITE_FAILED,   HV_CANNOT_CLOSE,      HV_CANNOT_OPEN,      HV_NOT_A_VOLUME,
    HV_DISK_FULL,      HV_UNUSABLE_FILE,     HV_DRIVE_LOCKED,     HV_LIMIT_REACHED,
    HV_SYSTEM_FAILURE, HV_SHARING_VIOLATION, HV_CONNECTION_FAILED};

void Copy(Run& run) {
  run.Expect(HvFilCopy(run.Path("source.txt"), run.Path("target.txt")), 0, HV_NO_MEMORY,
             CopyFailures);
}

void BackUp(Run& run) {
  char name[260] = "";
  if (run.Expect(HvFilBackup(run.Path("source.txt"), name), HV_OK, HV_NO_MEMORY, CopyFailures)) {
    run.Note(name);
  }
}

void Modify(Run& run) {
  run.Expect(HvFilModify(run.Path("source.txt"), '*', ChangeLine), HV_OK, HV_NO_MEMORY,
             CopyFailures);
}

void MakePath(Run& run) {
  char created[260];
  run.Expect(HvFilMakePath(run.DrivePath("made/one/two"), created), HV_OK, HV_CONNECTION_FAILED,
             {HV_CONNECTION_FAILED});
}

}  // namespace

std::vector<Scenario> GeneralScenarios() {
  const std::string text = "first line\n-second\n" + std::string(40000, 'x') + "\nlast\n";
  return {
      {"library information",
       "HvGenQueryApiInfo HvStrCpyFile HvStrCpyPath HvGenQueryAdapters HvGenQueryQueues "
       "HvZipImplode HvMemFree",
       {},
       LibraryInformation},
      {"questions",
       "HvFilExists HvFilQuerySize",
       {{"sub/Source.txt", std::string(700, 'x')}},
       Questions,
       {},
       true},
      {"checksum", "HvFilChecksum", {{"source.txt", text}}, Checksum},
      {"copy to a new file", "HvFilCopy", {{"source.txt", text}}, Copy},
      {"copy over a file", "HvFilCopy", {{"source.txt", text}, {"target.txt", "before"}}, Copy},
      {"backup",
       "HvFilBackup",
       {{"source.txt", text}, {"source.001", "before"}},
       BackUp,
       {"source.003"},
       true},  // a number that may be taken is passed over
      {"lines changed", "HvFilModify", {{"source.txt", text}}, Modify},
      {"directories", "HvFilMakePath", {}, MakePath, {"made/", "made/one/"}},
  };
}

}  // namespace hvtest
