// hvapi ini get, set, add, delete, list

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "families.h"
#include "open_ini.h"
#include "program.h"

namespace hvtool {
namespace {

constexpr const char* IniManual =
    "Reads and edits configuration files of sections in brackets and entries key=value. Letter "
    "case does not count in names and keys; of several sections or entries of one name the first "
    "counts.\n"
    "\n"
    "An edit reads the whole file and writes it back with comments and empty lines where they "
    "were; lines end with CR LF then, and blanks before the first \"=\" and at the end of lines "
    "are gone. The old file stays when the new one cannot be written, and when it holds NUL bytes, "
    "as a file of 16-bit characters does.\n"
    "\n"
    "    hvapi ini set printer.ini Tray1 PaperSize A4\n"
    "    hvapi ini get printer.ini tray1 papersize";

// What the commands are asked about; what is left out has no value.
struct Options {
  std::string file;
  std::string section;
  std::optional<std::string> key;
  std::optional<std::string> value;
  bool json = false;
};

Json AsJson(const Options& options) {
  Json json = {{"file", options.file}, {"section", options.section}};
  if (options.key) json["key"] = *options.key;
  if (options.value) json["value"] = *options.value;
  return json;
}

const char* TextOrNull(const std::optional<std::string>& text) {
  return text ? text->c_str() : nullptr;
}

std::shared_ptr<Options> AddFileAndSection(CLI::App* command) {
  auto options = std::make_shared<Options>();
  AddArgument(command, "FILE", &options->file, "The configuration file");
  AddArgument(command, "SECTION", &options->section, "The name of the section");
  AddJsonOption(command, &options->json);
  return options;
}

int ReportMissing(uint32_t code, const Options& options) {
  const std::string section = "the section " + Quoted(options.section);
  return Fail(static_cast<int>(code), code == HV_KEY_MISSING
                                          ? section + " has no key " + Quoted(*options.key)
                                          : "there is no section " + Quoted(options.section) +
                                                " in " + Quoted(options.file));
}

int Get(Options options) {
  const OpenIni ini(options.file, INI_OPEN_READ);
  if (ini.Handle() == nullptr) return ini.ReportFailure();
  // No value is longer than the longest line, but the default may be.
  const std::size_t defaultSize = options.value ? options.value->size() : 0;
  std::string buffer(std::max<std::size_t>(ini.Handle()->maxLineLength, defaultSize) + 1, '\0');
  uint32_t count = 0;
  const uint32_t code = HvIniRead2(ini.Handle(), options.section.c_str(), options.key->c_str(),
                                   TextOrNull(options.value), buffer.data(),
                                   static_cast<uint32_t>(buffer.size()), &count);
  if (code != HV_OK) return ReportMissing(code, options);
  options.value = buffer.substr(0, count);
  if (options.json) {
    PrintJson(AsJson(options));
  } else {
    PrintLine(*options.value);
  }
  return HV_OK;
}

void AddGet(CLI::App* parent) {
  CLI::App* command = AddCommand(parent, "get", "print the value of a key", IniManual);
  const auto options = AddFileAndSection(command);
  AddArgument(command, "KEY", &options->key, "The key");
  AddOption(command, "--default", &options->value, "TEXT",
            "What to print where there is no such section or key");
  OnRun(command, [options] { return Get(*options); });
}

using WriteEntry = decltype(&HvIniWrite);

int Write(const Options& options, WriteEntry write) {
  const bool exists = HvFilExists(options.file.c_str()) != 0;
  OpenIni ini(options.file, exists ? INI_OPEN_UPDATE : INI_OPEN_APPEND);
  if (ini.Handle() == nullptr) return ini.ReportFailure();
  if (write(ini.Handle(), options.section.c_str(), options.key->c_str(), options.value->c_str()) ==
      0) {
    return Fail(HV_BAD_ARGUMENT, "the section's name or the entry is longer than a line can be");
  }
  const int status = ini.Close();
  if (status == HV_OK && options.json) PrintJson(AsJson(options));
  return status;
}

void AddWrite(CLI::App* parent, const char* name, const char* brief, WriteEntry write) {
  CLI::App* command = AddCommand(parent, name, brief, IniManual);
  const auto options = AddFileAndSection(command);
  AddArgument(command, "KEY", &options->key, "The key");
  AddArgument(command, "VALUE", &options->value, "The value");
  OnRun(command, [options, write] { return Write(*options, write); });
}

std::size_t CountLines(const HvIniHandle& handle) {
  std::size_t count = 0;
  for (const HvIniLine* line = handle.lines->next; line != nullptr; line = line->next) ++count;
  return count;
}

int Delete(const Options& options) {
  OpenIni ini(options.file, INI_OPEN_UPDATE);
  if (ini.Handle() == nullptr) return ini.ReportFailure();
  const std::size_t before = CountLines(*ini.Handle());
  HvIniDelete(ini.Handle(), options.section.c_str(), TextOrNull(options.key),
              TextOrNull(options.value));
  const bool removed = CountLines(*ini.Handle()) < before;
  const int status = ini.Close();
  if (status != HV_OK) return status;
  if (options.json) {
    Json json = AsJson(options);
    json["removed"] = removed;
    PrintJson(json);
  } else if (!removed) {
    PrintLine("there was nothing to remove");
  }
  return HV_OK;
}

void AddDelete(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "delete", "remove an entry, or the header of a section", IniManual);
  const auto options = AddFileAndSection(command);
  AddOption(command, "KEY", &options->key, "",
            "The key; without one the section's header is removed alone, and its entries then "
            "belong to the section before it");
  AddOption(command, "VALUE", &options->value, "", "Remove the entry only where it has this value");
  OnRun(command, [options] { return Delete(*options); });
}

// One line of a listing: an entry, or a line without "=".
struct Row {
  std::string section;
  std::string key;
  std::optional<std::string> value;
};

Row RowOf(const std::string& section, const std::string& line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) return {section, line, std::nullopt};
  return {section, line.substr(0, equals), line.substr(equals + 1)};
}

std::vector<Row> AllRows(const HvIniHandle& handle) {
  std::vector<Row> rows;
  std::string section;
  for (const HvIniLine* line = handle.lines->next; line != nullptr; line = line->next) {
    const std::string text = line->text;
    if (text.front() != '[') {
      rows.push_back(RowOf(section, text));
    } else {
      section = text.substr(1, text.find_last_of(']') - 1);
    }
  }
  return rows;
}

// The file is open in read mode, so that an empty line is the end.
std::vector<Row> SectionRows(HvIniHandle* handle, const std::string& section) {
  std::vector<Row> rows;
  for (std::string line = HvIniRead(handle, section.c_str(), nullptr); !line.empty();
       line = HvIniRead(handle, nullptr, nullptr)) {
    rows.push_back(RowOf(section, line));
  }
  return rows;
}

bool HasSection(HvIniHandle* handle, const std::string& section) {
  char value = '\0';
  uint32_t count = 0;
  return HvIniRead2(handle, section.c_str(), "", nullptr, &value, 1, &count) != HV_SECTION_MISSING;
}

void PrintRows(const std::vector<Row>& rows, bool json) {
  if (!json) {
    Table table{"SECTION", "KEY", "VALUE"};
    for (const Row& row : rows) table.Add({row.section, row.key, row.value.value_or("")});
    return table.Print();
  }
  Json list = Json::array();
  for (const Row& row : rows) {
    Json item = {{"section", row.section}};
    item[row.value ? "key" : "line"] = row.key;
    if (row.value) item["value"] = *row.value;
    list.push_back(item);
  }
  PrintJson(list);
}

void AddList(CLI::App* parent) {
  CLI::App* command = AddCommand(parent, "list", "list entries", IniManual);
  struct ListOptions {
    std::string file;
    std::optional<std::string> section;
    bool json = false;
  };
  const auto options = std::make_shared<ListOptions>();
  AddArgument(command, "FILE", &options->file, "The configuration file");
  AddOption(command, "SECTION", &options->section, "", "List this section alone");
  AddJsonOption(command, &options->json);
  OnRun(command, [options] {
    const OpenIni ini(options->file, INI_OPEN_READ);
    if (ini.Handle() == nullptr) return ini.ReportFailure();
    const std::optional<std::string>& section = options->section;
    if (section && !HasSection(ini.Handle(), *section)) {
      return ReportMissing(HV_SECTION_MISSING, {options->file, *section, {}, {}, false});
    }
    PrintRows(section ? SectionRows(ini.Handle(), *section) : AllRows(*ini.Handle()),
              options->json);
    return int{HV_OK};
  });
}

}  // namespace

void AddIniCommands(CLI::App* program) {
  CLI::App* ini =
      AddCommandGroup(program, "ini", "read and edit sectioned configuration files", IniManual);
  AddGet(ini);
  AddWrite(ini, "set", "set the value of a key", HvIniWrite);
  AddWrite(ini, "add", "add a value to a key that may have several", HvIniWriteAll);
  AddDelete(ini);
  AddList(ini);
}

}  // namespace hvtool
