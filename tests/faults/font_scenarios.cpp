// Font information, downloads and searches.

#include <algorithm>

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
  return {{"font.sfp", PclFont({}, SampleCharacters())},
          {"font.pfb", Type1Font()},
          {"font.afm", AfmFile("Sample-Roman")},
          {"font.pfm", PfmFile{}.Bytes()},
          {"font.dlf", DlfFont().Bytes()},
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
    while (HvFontFace* const face = info.cartridge->faces) {
      info.cartridge->faces = face->next;
      run.Note(face->name == nullptr ? "" : face->name);
      HvMemFree(face->name);
      HvMemFree(face);
    }
    HvMemFree(info.cartridge->title);
    HvMemFree(info.cartridge);
  };
}

using Search = HvFoundResource* (*)(const char* folder, uint16_t* count);

// A search that finds so many; without memory some give a part, others nothing. What the system
// does not let be read is passed over.
std::function<void(Run&)> Find(uint16_t whole, bool givesPart, Search search) {
  return [=](Run& run) {
    uint16_t count = 0;
    HvFoundResource* const list = search(run.Path(""), &count);
    uint16_t entries = 0;
    for (const auto* entry = list; entry != nullptr; entry = entry->next, ++entries) {
      run.Note(entry->path);
    }
    HvFonFindFree(list);
    run.Expect(entries, count, count);
    run.Expect(count, whole, givesPart ? std::min(count, whole) : 0, {0, 1, 2, 3, 4, 5, 6});
  };
}

void HVAPI_CALL CountReports(const HvFontInfo* /*info*/, uint32_t /*percent*/) {}

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
  const std::pair<const char*, int32_t> fonts[] = {{"font.sfp", JOB_EMULATION_PCL},
                                                   {"font.sfp", JOB_EMULATION_PCLXL},
                                                   {"font.pfb", JOB_EMULATION_POSTSCRIPT},
                                                   {"font.pfb", JOB_EMULATION_PPDS},
                                                   {"font.dlf", JOB_EMULATION_PPDS}};
  for (const auto& [font, emulation] : fonts) {
    const auto use = Download(font, destination, emulation);
    scenarios.push_back({font, "HvFonDownload", before, use, {destination}});
  }
  return scenarios;
}

std::vector<Scenario> FontScenarios() {
  std::vector<Scenario> scenarios = FontSendingScenarios("out", {{"out", "before"}});
  const auto add = [&](const char* name, const char* exports, const Files& files,
                       const std::function<void(Run&)>& use, bool maySkip = false) {
    scenarios.push_back({name, exports, files, use, {}, maySkip});
  };
  const auto describe = [&](const char* name, uint32_t companions, bool maySkip = false) {
    add(name, "HvFonQueryInfo HvMemFree", FontFiles(), Query(name, companions), maySkip);
  };
  for (const char* name : {"font.sfp", "font.afm", "font.pfm", "font.dlf", "font.fmf"}) {
    describe(name, FONT_COMPANIONS_NONE);
  }
  describe("font.pfb", FONT_COMPANIONS_METRICS);
  // Faces are listed as far as they can be read.
  describe("cards.pcm", FONT_COMPANIONS_NONE, true);
  Files folder = {{"one.sfp", PclFont({}, SampleCharacters())},
                  {"sub/two.sfp", PclFont({.name = "Two"}, {})},
                  {"sub/GLUE.TXT", "[Cartridge]\n{ three.bit\n"},
                  {"GLUE.TXT", "[Cartridge]\n{ one.sfp\n"},
                  {"macro.mac", "\x1B&f5Y\x1B&f0Xmacro\x1B&f1X"},
                  {"other.ps", "%!PS\nshowpage\n"},
                  {"sub/other.mac", "\x1B&f6Y\x1B&f0Xmacro\x1B&f1X"}};
  const auto fonts = [](const char* path, uint16_t* count) {
    return HvFonFind(path, count, FONT_KIND_ANY, FONT_CLASSES_ALL, 0, 1);
  };
  const auto fontsWithProgress = [](const char* path, uint16_t* count) {
    return HvFonFind2(path, count, FONT_KIND_PCL, FONT_CLASSES_ALL, 0, 1, CountReports);
  };
  const auto macros = [](const char* path, uint16_t* count) {
    return HvMacFind(path, count, JOB_EMULATION_PCL, 0, 1);
  };
  const auto demos = [](const char* path, uint16_t* count) { return HvDemFind(path, count, 0, 1); };
  add("fonts", "HvFonFind HvFonFindFree", folder, Find(2, true, fonts), true);
  add("fonts with progress", "HvFonFind2", folder, Find(2, true, fontsWithProgress), true);
  add("macros", "HvMacFind", folder, Find(2, false, macros));
  add("demonstrations", "HvDemFind", folder, Find(7, false, demos));
  return scenarios;
}

}  // namespace hvtest
