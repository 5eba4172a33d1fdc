// hvapi panel show

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "families.h"
#include "program.h"

namespace hvtool {
namespace {

struct Options {
  uint16_t number = 0;
  std::string directory;
  bool json = false;
};

struct PanelDeleter {
  void operator()(HvIniHandle* handle) const { HvOpcUnregisterCfg(handle); }
};
using Panel = std::unique_ptr<HvIniHandle, PanelDeleter>;

// The keys of a section, each once. The file is open in read mode, so that an empty line is the
// end.
std::set<std::string> KeysOf(HvIniHandle* panel, const char* section) {
  std::set<std::string> keys;
  for (std::string line = HvIniRead(panel, section, nullptr); !line.empty();
       line = HvIniRead(panel, nullptr, nullptr)) {
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) keys.insert(line.substr(0, equals));
  }
  return keys;
}

// A control and the index of one of its lists, 0 for the one without.
struct Control {
  int32_t id;
  uint32_t list;
  bool operator<(const Control& other) const {
    return id != other.id ? id < other.id : list < other.list;
  }
};

std::string KeyOf(const Control& control, bool hexadecimal) {
  char key[40];
  const unsigned id = static_cast<unsigned>(control.id);
  const int length = std::snprintf(key, sizeof key, hexadecimal ? "%04x" : "%u", id);
  std::string text(key, static_cast<std::size_t>(length));
  if (control.list != 0) text += "-" + std::to_string(control.list);
  return text;
}

// The controls that a section has entries of. A key by which no control is looked up is left out.
std::set<Control> ControlsOf(HvIniHandle* panel, const char* section) {
  const bool hexadecimal = *HvIniRead(panel, "Format", "Style") >= '2';
  std::set<Control> controls;
  for (std::string key : KeysOf(panel, section)) {
    for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    char* end = nullptr;
    const unsigned long id = std::strtoul(key.c_str(), &end, hexadecimal ? 16 : 10);
    const unsigned long list = *end == '-' ? std::strtoul(end + 1, nullptr, 10) : 0;
    const Control control = {static_cast<int32_t>(id), static_cast<uint32_t>(list)};
    if (KeyOf(control, hexadecimal) == key) controls.insert(control);
  }
  return controls;
}

Json SpinControls(HvIniHandle* panel) {
  Json list = Json::array();
  for (const Control& control : ControlsOf(panel, "Spin Limits")) {
    int32_t minimum = 0;
    int32_t maximum = 0;
    int32_t step = 0;
    HvOpcGetSpinControlLimits(panel, control.id, &minimum, &maximum, &step);
    list.push_back(
        {{"control", control.id}, {"minimum", minimum}, {"maximum", maximum}, {"step", step}});
  }
  return list;
}

Json ComboBoxes(HvIniHandle* panel) {
  Json list = Json::array();
  for (const Control& control : ControlsOf(panel, "Combos")) {
    const int32_t size = HvOpcGetTextListing(panel, control.id, control.list, nullptr, 0);
    if (size < 0) continue;
    std::vector<uint16_t> values(static_cast<std::size_t>(size) / sizeof(uint16_t));
    HvOpcGetTextListing(panel, control.id, control.list, values.data(),
                        static_cast<uint32_t>(size));
    list.push_back({{"control", control.id}, {"list", control.list}, {"values", values}});
  }
  return list;
}

Json EditFields(HvIniHandle* panel) {
  Json list = Json::array();
  for (const Control& control : ControlsOf(panel, "Edit Lengths")) {
    list.push_back({{"control", control.id}, {"length", HvOpcGetMaxEditLength(panel, control.id)}});
  }
  return list;
}

Json PageDefaults(HvIniHandle* panel, uint32_t page) {
  Json list = Json::array();
  const int32_t size = HvOpcGetPageDefaults(panel, page, nullptr, 0);
  if (size <= 0) return list;
  std::vector<HvPageDefault> entries(static_cast<std::size_t>(size) / sizeof(HvPageDefault));
  const int32_t count =
      HvOpcGetPageDefaults(panel, page, entries.data(), static_cast<uint32_t>(size));
  for (int32_t i = 0; i < count; ++i) {
    const HvPageDefault entry = entries[static_cast<std::size_t>(i)];
    list.push_back({{"control", uint16_t{entry.controlId}}, {"value", uint32_t{entry.value}}});
  }
  return list;
}

Json PageVariables(HvIniHandle* panel, uint32_t page) {
  Json list = Json::array();
  const int32_t size = HvOpcGetPageOmVars(panel, page, nullptr, 0);
  if (size <= 0) return list;
  std::vector<uint8_t> bytes(static_cast<std::size_t>(size));
  const int32_t count = HvOpcGetPageOmVars(panel, page, bytes.data(), static_cast<uint32_t>(size));
  for (std::size_t i = 0; i < static_cast<std::size_t>(std::max(count, 0)); ++i) {
    char text[5];
    std::snprintf(text, sizeof text, "%02X%02X", bytes[2 * i], bytes[2 * i + 1]);
    list.push_back(text);
  }
  return list;
}

Json Pages(HvIniHandle* panel) {
  std::set<uint32_t> numbers;
  for (const std::string& key : KeysOf(panel, "Dialogs")) {
    const unsigned long number = std::strtoul(key.c_str(), nullptr, 10);
    if (std::to_string(number) == key) numbers.insert(static_cast<uint32_t>(number));
  }
  Json list = Json::array();
  for (const uint32_t number : numbers) {
    const std::string name = HvIniRead(panel, "Dialogs", std::to_string(number).c_str());
    list.push_back({{"page", number},
                    {"name", name},
                    {"defaults", PageDefaults(panel, number)},
                    {"variables", PageVariables(panel, number)}});
  }
  return list;
}

// A list as one cell, a text without its quotes.
std::string Cell(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (!value.is_array()) return value.dump();
  std::string text;
  for (const Json& item : value) text += (text.empty() ? "" : " ") + Cell(item);
  return text;
}

// A table of some members of each row; nothing when there are no rows.
void PrintTable(const std::string& title, const std::vector<std::string>& members,
                const Json& rows) {
  if (rows.empty()) return;
  std::vector<std::string> titles = members;
  for (std::string& text : titles) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  Table table(titles);
  for (const Json& row : rows) {
    std::vector<std::string> cells;
    cells.reserve(members.size());
    for (const std::string& member : members) cells.push_back(Cell(row.at(member)));
    table.Add(cells);
  }
  PrintLine("\n" + title);
  table.Print();
}

void PrintPanel(const Json& panel) {
  PrintLine(Cell(panel.at("file")));
  PrintTable("Spin controls", {"control", "minimum", "maximum", "step"}, panel.at("spinControls"));
  PrintTable("Combo boxes", {"control", "list", "values"}, panel.at("comboBoxes"));
  PrintTable("Edit fields", {"control", "length"}, panel.at("editFields"));
  for (const Json& page : panel.at("pages")) {
    const std::string title = "Page " + Cell(page.at("page")) + ", " + Cell(page.at("name"));
    const Json& variables = page.at("variables");
    PrintTable(title, {"control", "value"}, page.at("defaults"));
    if (page.at("defaults").empty()) PrintLine("\n" + title);
    if (!variables.empty()) PrintLine("variables: " + Cell(variables));
  }
}

int Show(const Options& options) {
  if (options.number == 0) return Fail(HV_BAD_ARGUMENT, "configuration numbers begin with 1");
  const bool isHere = options.directory.empty();
  char name[20];
  HvOpcGetFileName(options.number, name);
  const std::string path = isHere ? name : options.directory + "\\" + name;
  const Panel panel(HvOpcRegisterCfg(options.number, isHere ? nullptr : options.directory.c_str()));
  if (panel == nullptr) {
    const bool exists = HvFilExists(path.c_str()) != 0;
    return Outcome(exists ? HV_CANNOT_OPEN : HV_NOT_FOUND, "cannot open " + Quoted(path));
  }
  const Json json = {{"number", options.number},
                     {"file", name},
                     {"spinControls", SpinControls(panel.get())},
                     {"comboBoxes", ComboBoxes(panel.get())},
                     {"editFields", EditFields(panel.get())},
                     {"pages", Pages(panel.get())}};
  if (options.json) {
    PrintJson(json);
  } else {
    PrintPanel(json);
  }
  return HV_OK;
}

}  // namespace

void AddPanelCommands(CLI::App* program) {
  CLI::App* group = AddCommandGroup(program, "panel", "read operator panel files",
                                    "Operator panel files describe the controls and pages of a "
                                    "panel for one printer model. They are named by a number.");
  CLI::App* command = AddCommand(
      group, "show", "show what a panel file holds",
      "Prints the limits of spin controls, the values of combo boxes, the lengths of edit fields, "
      "and the pages with the defaults of their controls and their printer variables, from the "
      "file of configuration NUMBER: \"opc007.cfg\" for 7. Controls are shown in decimal, "
      "variables in hexadecimal.\n"
      "\n"
      "    hvapi panel show 7 --dir /usr/share/panels");
  const auto options = std::make_shared<Options>();
  AddArgument(command, "NUMBER", &options->number, "The configuration number, from 1");
  AddOption(command, "--dir", &options->directory, "DIR",
            "The directory of the file, the current one where this is not given");
  AddJsonOption(command, &options->json);
  OnRun(command, [options] { return Show(*options); });
}

}  // namespace hvtool
