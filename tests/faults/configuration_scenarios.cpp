// INI files, keyed records, panel files, quick setup files, listings, support addresses.

#include <cstring>

#include "faults/scenario.h"
#include "hvapi.h"
#include "support/quick_setup_builder.h"

namespace hvtest {
namespace {

const std::string IniText =
    "; comment\r\n[One]\r\nfirst=1\r\nsecond=two\r\n\r\n[Two]\r\nfirst=2\r\nremoved=x\r\n";

void EditIni(Run& run) {
  HvIniHandle* const ini = HvIniOpen2(run.Path("a.ini"), INI_OPEN_UPDATE);
  if (!run.Expect(ini != nullptr, 1, 0, {0})) return;
  run.Expect(HvIniWrite(ini, "one", "First", "a longer value than before"), 1, 0);
  run.Expect(HvIniWrite(ini, "Three", "new", "3"), 1, 0);
  run.Expect(HvIniWriteAll(ini, "Two", "first", "another"), 1, 0);
  run.Expect(HvIniDelete(ini, "Two", "removed", nullptr), 1, 0);
  run.Expect(HvIniClose(ini), 1, 0, {0});
}

std::function<void(Run&)> WriteIni(const char* name, uint32_t mode) {
  return [=](Run& run) {
    HvIniHandle* const ini = HvIniOpen2(run.Path(name), mode);
    if (!run.Expect(ini != nullptr, 1, 0, {0})) return;
    run.Expect(HvIniWrite(ini, "one", "first", "a longer value than before"), 1, 0);
    run.Expect(HvIniClose(ini), 1, 0, {0});
  };
}

void ReadIni(Run& run) {
  HvIniHandle* const ini = HvIniOpen(run.Path("a.ini"));
  if (!run.Expect(ini != nullptr, 1, 0, {0})) return;
  run.Expect(std::strcmp(HvIniRead(ini, "ONE", "second"), "two"), 0, -'t');
  char buffer[20];
  uint32_t count = 0;
  run.Expect(HvIniRead2(ini, "Two", "first", nullptr, buffer, sizeof buffer, &count), HV_OK,
             HV_NO_MEMORY);
  run.Expect(HvIniRead2(ini, "Two", "none", "default", buffer, sizeof buffer, &count), HV_OK,
             HV_NO_MEMORY);
  char address[200] = "";
  run.Expect(HvWebGetURL(WEB_NO_MODEL, 1, 1, address, sizeof address, ini), HV_OK, HV_NO_MEMORY);
  run.Note(address);
  run.Expect(HvWebGetCGIURL(1, 2, 6, 0x407, address, sizeof address, 0), HV_OK, HV_NO_MEMORY);
  run.Note(address);
  run.Expect(HvIniClose(ini), 1, 0, {0});
}

std::string RecordLine(const std::string& key) {
  return '"' + key + "\",\"Set size\",\"PCL\",\"1B45\",\"%d\",1,2.5,0.5,\"D\"\n";
}

void ReadRecords(Run& run) {
  const int32_t handle = HvDatOpenFile(run.Path("r.dat"), 0, DAT_FILE_COMMANDS);
  if (!run.Expect(handle, 0, DAT_FAILED, {DAT_BAD_ARGUMENT, DAT_CANNOT_OPEN})) return;
  HvCommandRecord record = {};
  std::strcpy(record.szKey, "A");
  if (run.Expect(HvDatGetFirstKey(handle, &record), 0, DAT_FAILED, {DAT_FAILED, DAT_NO_RECORD})) {
    run.Note(record.szKey);
    if (run.Expect(HvDatGetNextKey(handle, &record), 0, DAT_FAILED,
                   {DAT_FAILED, DAT_NO_RECORD, DAT_END_OF_FILE})) {
      run.Note(record.szKey);
    }
  }
  run.Expect(HvDatCloseFile(handle), 0, DAT_FAILED, {DAT_FAILED});
}

void CountRecords(Run& run) {
  char prefix[sizeof(HvCommandRecord)] = "A";
  run.Expect(HvDatQueryCount(run.Path("r.dat"), prefix, DAT_FILE_COMMANDS), 2,
             static_cast<uint16_t>(DAT_CANNOT_OPEN),
             {0, 1, static_cast<uint16_t>(DAT_CANNOT_OPEN), static_cast<uint16_t>(DAT_FAILED)});
  uint16_t counts[12];
  if (run.Expect(HvDatQueryCounts(run.Path("r.dat"), counts, DAT_FILE_COMMANDS), 0, DAT_CANNOT_OPEN,
                 {DAT_FAILED})) {
    for (const uint16_t count : counts) run.Note(count);
  }
}

const std::string PanelText =
    "[Format]\nStyle=2\n[Combos]\n01a2=10;20;30\n[Edit Lengths]\n001f=40\n[Spin Limits]\n"
    "01a2=1;9;2\n[Dialogs]\n1=Paper\n[Paper]\nNumCtrls=2\nDefaults=0010;5;0011;7\nNumOMVAR=2\n"
    "OMVAR=1A2B 0003\n";

void ReadPanel(Run& run) {
  char name[20];
  run.Expect(HvOpcGetFileName(31, name), 1, 0);
  HvIniHandle* const panel = HvOpcRegisterCfg(31, run.Path(""));
  if (!run.Expect(panel != nullptr, 1, 0, {0})) return;
  int32_t limits[3] = {};
  HvOpcGetSpinControlLimits(panel, 0x1A2, &limits[0], &limits[1], &limits[2]);
  uint16_t values[4] = {};
  run.Expect(HvOpcGetTextListing(panel, 0x1A2, 0, values, sizeof values), 3, OPC_NO_MEMORY);
  run.Expect(HvOpcGetMaxEditLength(panel, 0x1F), 40, 0);
  HvPageDefault defaults[2] = {};
  run.Expect(HvOpcGetPageDefaults(panel, 1, defaults, sizeof defaults), 2, OPC_MISSING);
  uint8_t variables[4];
  run.Expect(HvOpcGetPageOmVars(panel, 1, variables, sizeof variables), 2, OPC_MISSING);
  run.Expect(HvOpcUnregisterCfg(panel), 1, 0, {0});
}

constexpr std::initializer_list<int64_t> QuickSetupFailures = {
    HV_CANNOT_OPEN, HV_READ_FAILED, HV_UNUSABLE_FILE, HV_BAD_CHECKSUM, 8, 9};

void ReadQuickSetup(Run& run) {
  HvQsfHandle* setup = nullptr;
  if (!run.Expect(HvQsfOpen(run.Path("a.qsf"), 3, &setup), HV_OK, HV_NO_MEMORY,
                  QuickSetupFailures)) {
    run.Expect(setup == nullptr, 1, 1);
    return;
  }
  uint8_t* data = nullptr;
  uint16_t count = 0;
  run.Expect(HvQsfGetVariables(setup, 2, &data, &count), HV_OK, HV_NO_MEMORY, QuickSetupFailures);
  run.Expect((data == nullptr) == (count == 0), 1, 1);
  HvMemFree(data);
  HvQsfClose(setup);
}

void ReadSetupList(Run& run) {
  HvIniHandle* const ini = HvIniOpen(run.Path("setup.ini"));
  if (!run.Expect(ini != nullptr, 1, 0, {0})) return;
  uint8_t* values = nullptr;
  uint16_t count = 0;
  run.Expect(HvQsfIniGetSection(ini, QSF_LIST_REQUIRED, 5, &values, &count), HV_OK, HV_NO_MEMORY);
  run.Expect((values == nullptr) == (count == 0), 1, 1);
  HvMemFree(values);
  run.Expect(HvIniClose(ini), 1, 0, {0});
}

void ListConfigurations(Run& run) {
  uint16_t count = 0;
  HvConfigFileEntry* const list = HvDatQueryFiles(run.Path(""), DAT_KIND_CFG, &count);
  for (const HvConfigFileEntry* entry = list; entry != nullptr; entry = entry->next) {
    run.Note(entry->description);
    --count;
  }
  run.Expect(count, 0, 0);
  HvDatQueryFilesFree(list);
}

}  // namespace

std::vector<Scenario> ConfigurationScenarios() {
  const std::string records = RecordLine("A1") + RecordLine("A2") + RecordLine("SF");
  QuickSetupFile setup;
  setup.block1 = {"first block", 4, {}};
  setup.block2 = {"second", 0x0102, {}};
  std::vector<Scenario> all;
  const auto add = [&](const char* name, const char* exports, Files files,
                       const std::function<void(Run&)>& use) -> Scenario& {
    return all.emplace_back(Scenario{name, exports, std::move(files), use});
  };
  add("INI file edited", "HvIniOpen2 HvIniWrite HvIniWriteAll HvIniDelete HvIniClose",
      {{"a.ini", IniText}}, EditIni)
      .partial = {"a.ini"};  // edits that could be made are written
  add("INI file written", "HvIniOpen2 HvIniWrite HvIniClose", {{"a.ini", IniText}},
      WriteIni("a.ini", INI_OPEN_UPDATE));
  add("INI file made", "HvIniOpen2 HvIniWrite HvIniClose", {}, WriteIni("new.ini", INI_OPEN_APPEND))
      .partial = {"new.ini"};
  add("INI file and addresses",
      "HvIniOpen HvIniRead HvIniRead2 HvWebGetURL HvWebGetCGIURL HvIniClose", {{"a.ini", IniText}},
      ReadIni);
  add("records", "HvDatOpenFile HvDatGetFirstKey HvDatGetNextKey HvDatCloseFile",
      {{"r.dat", records}}, ReadRecords);
  add("records counted", "HvDatQueryCount HvDatQueryCounts", {{"r.dat", records}}, CountRecords)
      .maySkip = true;
  add("panel file",
      "HvOpcGetFileName HvOpcRegisterCfg HvOpcGetSpinControlLimits HvOpcGetTextListing "
      "HvOpcGetMaxEditLength HvOpcGetPageDefaults HvOpcGetPageOmVars HvOpcUnregisterCfg",
      {{"opc031.cfg", PanelText}}, ReadPanel)
      .maySkip = true;
  add("quick setup file", "HvQsfOpen HvQsfGetVariables HvQsfClose HvMemFree",
      {{"a.qsf", setup.Bytes()}}, ReadQuickSetup);
  add("setup list", "HvQsfIniGetSection",
      {{"setup.ini", "[005REQUIRED]\nNUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=3\n"}},
      ReadSetupList);
  add("configurations", "HvDatQueryFiles HvDatQueryFilesFree",
      {{"a.cfg", "#! first\n"}, {"B.CFG", "x #! second\n"}, {"c.cfg", "none\n"}},
      ListConfigurations)
      .maySkip = true;
  return all;
}

}  // namespace hvtest
