// Font information, downloads and searches.

#include "faults/scenario.h"
#include "faults/sending_failures.h"
#include "hvapi.h"
#include "support/font_files.h"
#include "support/jobs.h"

namespace hvtest {
namespace {

constexpr std::initializer_list<int64_t> InformationFailures = {HV_NOT_FOUND, HV_CANNOT_OPEN,
                                                                HV_UNUSABLE_FILE, HV_NOT_SUPPORTED};

std::string Type1Font() {
  return PfbFile({{1, Type1Head("Sample-Roman", "StandardEncoding")},
                  {2, std::string(3000, '\x7E')},
                  {1, "cleartomark\n"}});
}

Files FontFiles() {
  DlfFont dlf;
  return {{"font.sfp", PclFont({}, SampleCharacters())},
          {"font.pfb", Type1Font()},
          {"font.afm", AfmFile("Sample-Roman")},
          {"font.pfm", PfmFile{}.Bytes()},
          {"font.dlf", dlf.Bytes()},
          {"font.fmf", FmfFile("Courier")},
          {"cards.pcm", PcmFile("A cartridge", {PfmFile{}.Bytes(), PfmFile{}.Bytes()})}};
}

// The description of one file.
std::function<void(Run&)> Query(const char* name, uint32_t companions) {
  return [=](Run& run) {
    HvFontInfo info;
    if (run.Expect(HvFonQueryInfo(run.Path(name), &info, companions, 1), HV_OK, HV_NO_MEMORY,
                   InformationFailures)) {
      run.Note(info.name);
      run.Note(info.companionPath1);
      run.Note(info.companionPath2);
    }
    if (info.cartridge == nullptr) return;
    for (HvFontFace* face = info.cartridge->faces; face != nullptr;) {
      HvFontFace* const next = face->next;
      run.Note(face->name == nullptr ? "" : face->name);
      HvMemFree(face->name);
      HvMemFree(face);
      face = next;
    }
    HvMemFree(info.cartridge->title);
    HvMemFree(info.cartridge);
  };
}

void NoteFound(Run& run, HvFoundResource* list, uint16_t count) {
  for (const HvFoundResource* entry = list; entry != nullptr; entry = entry->next) {
    run.Note(entry->path);
    --count;
  }
  run.Expect(count, 0, 0);
  HvFonFindFree(list);
}

void HVAPI_CALL CountReports(const HvFontInfo* /*info*/, uint32_t /*percent*/) {}

void FindFonts(Run& run) {
  uint16_t count = 0;
  HvFoundResource* const list =
      HvFonFind(run.Path(""), &count, FONT_KIND_ANY, FONT_CLASSES_ALL, 0, 1);
  NoteFound(run, list, count);
}

void FindFontsWithProgress(Run& run) {
  uint16_t count = 0;
  HvFoundResource* const list =
      HvFonFind2(run.Path(""), &count, FONT_KIND_PCL, FONT_CLASSES_ALL, 0, 1, CountReports);
  NoteFound(run, list, count);
}

void FindMacros(Run& run) {
  uint16_t count = 0;
  HvFoundResource* const list = HvMacFind(run.Path(""), &count, JOB_EMULATION_PCL, 0, 1);
  // Without memory there is no part of a list; what cannot be read is passed over.
  run.Expect(count, 2, 0, {0, 1});
  NoteFound(run, list, count);
}

void FindDemos(Run& run) {
  uint16_t count = 0;
  HvFoundResource* const list = HvDemFind(run.Path(""), &count, 0, 1);
  run.Expect(count, 7, 0, {0, 1, 2, 3, 4, 5, 6});
  NoteFound(run, list, count);
}

// Of one font, in one language.
std::function<void(Run&)> Download(const char* name, const char* destination, int32_t emulation) {
  return [=](Run& run) {
    HvJobInfo job = Job(JOB_FLAG_PJL, emulation, "name");
    job.identifier = 5;
    const uint32_t code = HvFonDownload(run.Path(name), destination, &job, STORAGE_DEVICE_FLASH1);
    run.Expect(code, HV_OK, HV_NO_MEMORY,
               {HV_NOT_FOUND, HV_CANNOT_OPEN, HV_READ_FAILED, HV_WRITE_FAILED, HV_PRINTER_REFUSED,
                HV_CONNECTION_FAILED, HV_UNUSABLE_FILE});
  };
}

}  // namespace

std::vector<Scenario> FontSendingScenarios(const char* destination, const Files& files) {
  Files before = FontFiles();
  before.insert(files.begin(), files.end());
  std::vector<Scenario> scenarios;
  const struct {
    const char* name;
    int32_t emulation;
  } fonts[] = {{"font.sfp", JOB_EMULATION_PCL},
               {"font.sfp", JOB_EMULATION_PCLXL},
               {"font.pfb", JOB_EMULATION_POSTSCRIPT},
               {"font.pfb", JOB_EMULATION_PPDS},
               {"font.dlf", JOB_EMULATION_PPDS}};
  for (const auto& font : fonts) {
    scenarios.push_back({font.name,
                         "HvFonDownload",
                         before,
                         Download(font.name, destination, font.emulation),
                         {destination}});
  }
  return scenarios;
}

std::vector<Scenario> FontScenarios() {
  std::vector<Scenario> scenarios = FontSendingScenarios("out", {{"out", "before"}});
  for (const char* name : {"font.sfp", "font.afm", "font.pfm", "font.dlf", "font.fmf"}) {
    scenarios.push_back({name, "HvFonQueryInfo", FontFiles(), Query(name, FONT_COMPANIONS_NONE)});
  }
  scenarios.push_back(
      {"companions", "HvFonQueryInfo", FontFiles(), Query("font.pfb", FONT_COMPANIONS_METRICS)});
  scenarios.push_back({"a cartridge",
                       "HvFonQueryInfo HvMemFree",
                       FontFiles(),
                       Query("cards.pcm", FONT_COMPANIONS_NONE),
                       {},
                       true});  // faces are listed as far as they can be read
  Files folder = {
      {"one.sfp", PclFont({}, SampleCharacters())},     {"sub/two.sfp", PclFont({}, {})},
      {"sub/GLUE.TXT", "[Cartridge]\n{ three.bit\n"},   {"GLUE.TXT", "[Cartridge]\n{ one.sfp\n"},
      {"macro.mac", "\x1B&f5Y\x1B&f0Xmacro\x1B&f1X"},   {"other.ps", "%!PS\nshowpage\n"},
      {"sub/next.mac", "\x1B&f6Y\x1B&f0Xmacro\x1B&f1X"}};
  scenarios.push_back({"fonts found", "HvFonFind HvFonFindFree", folder, FindFonts, {}, true});
  scenarios.push_back(
      {"fonts found with progress", "HvFonFind2", folder, FindFontsWithProgress, {}, true});
  scenarios.push_back({"macros found", "HvMacFind", folder, FindMacros, {}, true});
  scenarios.push_back({"demonstrations found", "HvDemFind", folder, FindDemos, {}, true});
  return scenarios;
}

}  // namespace hvtest
