// hvapi records list, find, count

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "families.h"
#include "program.h"

namespace hvtool {
namespace {

constexpr const char* RecordManual =
    "Reads files of printer command records: a line a record, with a short key, a description, the "
    "printer language, the command, and the format, range and step of its variable part. Letter "
    "case counts in keys. A line that is not a record ends the reading.\n"
    "\n"
    "    hvapi records find commands.dat SET";

struct Options {
  std::string file;
  std::optional<std::string> key;
  bool json = false;
};

std::shared_ptr<Options> AddFile(CLI::App* command) {
  auto options = std::make_shared<Options>();
  AddArgument(command, "FILE", &options->file, "The record file");
  AddJsonOption(command, &options->json);
  return options;
}

int ReportOpening(int32_t code, const std::string& file) {
  const bool exists = HvFilExists(file.c_str()) != 0;
  return Fail(code, "cannot open " + Quoted(file) + (exists ? "" : ": it does not exist"));
}

// A record file that a command has open.
class OpenRecords {
 public:
  explicit OpenRecords(const std::string& file)
      : handle_(HvDatOpenFile(file.c_str(), 0, DAT_FILE_COMMANDS)) {}
  OpenRecords(const OpenRecords&) = delete;
  OpenRecords& operator=(const OpenRecords&) = delete;
  ~OpenRecords() {
    if (handle_ >= 0) HvDatCloseFile(handle_);
  }
  // Negative for the code of a failure.
  int32_t Handle() const { return handle_; }

 private:
  int32_t handle_;
};

std::string NumberText(double value) {
  std::array<char, 32> text;
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() ? std::string(text.data(), end) : "";
}

Json AsJson(const HvCommandRecord& record) {
  // The numbers of a record are not aligned.
  const double from = record.dVarRangeLo;
  const double to = record.dVarRangeHi;
  const double step = record.dVarIncrement;
  return {{"key", record.szKey},
          {"description", record.szDescr},
          {"language", record.szEmulation},
          {"command", record.szCommand},
          {"format", record.szVarFormat},
          {"from", from},
          {"to", to},
          {"step", step},
          {"duration", record.szDuration}};
}

void PrintRecords(const std::vector<HvCommandRecord>& records, bool json) {
  if (json) {
    Json list = Json::array();
    for (const HvCommandRecord& record : records) list.push_back(AsJson(record));
    return PrintJson(list);
  }
  Table table{"KEY", "LANGUAGE", "COMMAND",  "FORMAT",     "FROM",
              "TO",  "STEP",     "DURATION", "DESCRIPTION"};
  for (const HvCommandRecord& record : records) {
    table.Add({record.szKey, record.szEmulation, record.szCommand, record.szVarFormat,
               NumberText(record.dVarRangeLo), NumberText(record.dVarRangeHi),
               NumberText(record.dVarIncrement), record.szDuration, record.szDescr});
  }
  table.Print();
}

// Adds to the list the records in a row, from the first one on, whose keys begin with `prefix`.
// Returns the code of the last search.
int32_t ReadRecords(int32_t handle, const std::string& prefix,
                    std::vector<HvCommandRecord>* records) {
  HvCommandRecord record = {};
  std::memcpy(record.szKey, prefix.data(), std::min(prefix.size(), sizeof record.szKey));
  int32_t code = HvDatGetFirstKey(handle, &record);
  while (code == 0 && std::string(record.szKey).compare(0, prefix.size(), prefix) == 0) {
    records->push_back(record);
    code = HvDatGetNextKey(handle, &record);
  }
  return code;
}

int Show(const Options& options) {
  const OpenRecords file(options.file);
  if (file.Handle() < 0) return ReportOpening(file.Handle(), options.file);
  std::vector<HvCommandRecord> records;
  const int32_t code = ReadRecords(file.Handle(), options.key.value_or(""), &records);
  if (options.key && code == DAT_NO_RECORD) {
    return Fail(code, Quoted(options.file) + " has no record whose key begins with " +
                          Quoted(*options.key));
  }
  // What comes before a malformed line is of use all the same.
  PrintRecords(records, options.json);
  if (code != DAT_FAILED) return HV_OK;
  const std::string last =
      records.empty() ? "" : ", after the record " + Quoted(records.back().szKey);
  return Fail(code, Quoted(options.file) + " has a line that is no record" + last);
}

int CountByKey(const Options& options) {
  char prefix[sizeof(HvCommandRecord)] = {};
  options.key->copy(prefix, sizeof prefix - 1);
  const uint32_t count = HvDatQueryCount(options.file.c_str(), prefix, DAT_FILE_COMMANDS);
  if (static_cast<int16_t>(count) == DAT_CANNOT_OPEN) {
    return ReportOpening(DAT_CANNOT_OPEN, options.file);
  }
  if (options.json) {
    PrintJson({{"file", options.file}, {"key", *options.key}, {"count", count}});
  } else {
    PrintLine(std::to_string(count));
  }
  return HV_OK;
}

int CountByLetter(const Options& options) {
  constexpr std::array Keys = {"A", "F", "G", "P", "S", "T", "SA", "SF", "SG", "SP", "SS", "ST"};
  std::array<uint16_t, Keys.size()> counts;
  const int32_t code = HvDatQueryCounts(options.file.c_str(), counts.data(), DAT_FILE_COMMANDS);
  if (code != 0) return ReportOpening(code, options.file);
  Json byKey;
  Table table{"KEY", "RECORDS"};
  for (std::size_t i = 0; i < Keys.size(); ++i) {
    byKey[Keys[i]] = counts[i];
    table.Add({Keys[i], std::to_string(counts[i])});
  }
  if (options.json) {
    PrintJson({{"file", options.file}, {"counts", byKey}});
  } else {
    table.Print();
  }
  return HV_OK;
}

}  // namespace

void AddRecordCommands(CLI::App* program) {
  CLI::App* records =
      AddCommandGroup(program, "records", "read files of printer command records", RecordManual);
  CLI::App* list = AddCommand(records, "list", "list all records", RecordManual);
  const auto listOptions = AddFile(list);
  OnRun(list, [listOptions] { return Show(*listOptions); });

  CLI::App* find = AddCommand(records, "find", "list the records of a key",
                              "Lists the first record whose key begins with KEY, letter case "
                              "counting, and those behind it as long as theirs do too.");
  const auto findOptions = AddFile(find);
  AddArgument(find, "KEY", &findOptions->key, "What the key begins with");
  OnRun(find, [findOptions] { return Show(*findOptions); });

  CLI::App* count = AddCommand(
      records, "count", "count records",
      "Counts the records whose keys begin with KEY, letter case counting, as far as they follow "
      "each other; 5 characters of KEY count. Without KEY all records are counted by the first "
      "letters of their keys, whatever the letter case. The first line that is no record ends the "
      "count.");
  const auto countOptions = AddFile(count);
  MakeOptional(AddArgument(count, "KEY", &countOptions->key, "What the key begins with"));
  OnRun(count, [countOptions] {
    return countOptions->key ? CountByKey(*countOptions) : CountByLetter(*countOptions);
  });
}

}  // namespace hvtool
