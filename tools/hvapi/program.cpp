#include "program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <utility>

namespace hvtool {
namespace {

struct CodeText {
  uint32_t code;
  const char* text;
};

constexpr CodeText CodeTexts[] = {
    {HV_OK, "success"},
    {HV_BAD_ARGUMENT, "an argument is missing, too long or out of range"},
    {HV_NOT_FOUND, "the file or path does not exist"},
    {HV_CANNOT_OPEN, "the file or the destination cannot be opened"},
    {HV_CANNOT_CLOSE, "a file cannot be closed"},
    {HV_ACCESS_DENIED, "access is denied"},
    {HV_READ_FAILED, "the file cannot be read"},
    {HV_WRITE_FAILED, "the file cannot be written"},
    {HV_ARCHIVE_ENDED, "the archive ends too early"},
    {HV_NO_MEMORY, "there is not enough memory"},
    {HV_PRINTER_REFUSED, "the printer did not take all bytes"},
    {HV_NOT_A_VOLUME, "the volume is not a valid disk volume"},
    {HV_DISK_FULL, "the disk is full"},
    {HV_CONNECTION_FAILED,
     "no connection through the communication library, or a path or temporary file cannot be made"},
    {HV_UNUSABLE_FILE, "the file is missing, a directory, or of a kind that cannot be used"},
    {HV_DRIVE_LOCKED, "the drive is locked"},
    {HV_WRONG_LANGUAGE, "the file is not of the printer language or version that is needed"},
    {HV_SHARING_VIOLATION, "the file is in use or cannot be created"},
    {HV_NOT_SUPPORTED, "the request is not supported, or a companion file is missing"},
    {HV_SYSTEM_FAILURE, "the system failed"},
    {HV_LIMIT_REACHED, "a limit of size or number is reached"},
    {HV_KEY_MISSING, "there is no such key"},
    {HV_BUFFER_TOO_SMALL, "the result does not fit the buffer"},
    {HV_BAD_CHECKSUM, "the checksum of the file does not match"},
    {HV_UNKNOWN_MODEL, "the model is unknown, or the file is of another kind"},
    {HV_SECTION_MISSING, "there is no such section"},
    {HV_BAD_PCLXL, "the PCL XL source is not valid"},
    {HV_PCLXL_JOB, "the file is a PCL XL job"},
};

int exitStatus = 0;

std::map<const CLI::Option*, std::vector<std::string>>& OptionChoices() {
  static std::map<const CLI::Option*, std::vector<std::string>> choices;
  return choices;
}

bool IsNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789.-") == std::string::npos;
}

std::string Padded(const std::string& text, std::size_t width, bool right) {
  const std::string blanks(width - std::min(width, text.size()), ' ');
  return right ? blanks + text : text + blanks;
}

}  // namespace

CLI::App* AddCommand(CLI::App* parent, const std::string& name, const std::string& brief,
                     const std::string& manual) {
  CLI::App* command = parent->add_subcommand(name, brief);
  command->footer(manual);
  return command;
}

CLI::App* AddCommandGroup(CLI::App* parent, const std::string& name, const std::string& brief,
                          const std::string& manual) {
  return AddCommand(parent, name, brief, manual);
}

void OnRun(CLI::App* command, std::function<int()> run) {
  command->callback([run = std::move(run)] { exitStatus = run(); });
}

CLI::Option* AddArgument(CLI::App* command, const std::string& name, OptionValue value,
                         const std::string& description) {
  return AddOption(command, name, value, "", description)->required();
}

CLI::Option* AddOption(CLI::App* command, const std::string& names, OptionValue value,
                       const std::string& valueName, const std::string& description) {
  const auto add = [&](auto* to) { return command->add_option(names, *to, description); };
  return std::visit(add, value)->type_name(valueName);
}

CLI::Option* AddFlag(CLI::App* command, const std::string& names, bool* value,
                     const std::string& description) {
  return command->add_flag(names, *value, description);
}

void Require(CLI::Option* option) {
  option->required();
}

void MakeOptional(CLI::Option* argument) {
  argument->required(false);
}

void Expect(CLI::Option* option, int count) {
  option->expected(count);
}

void Exclude(CLI::Option* option, CLI::Option* other) {
  option->excludes(other);
}

void NeedEachOther(CLI::Option* option, CLI::Option* other) {
  option->needs(other);
  other->needs(option);
}

void AddJsonOption(CLI::App* command, bool* json) {
  command->add_flag("--json", *json, "Print the result as JSON");
}

CLI::Option* AddChoice(CLI::App* command, const std::string& names, int* value,
                       const std::string& valueName, const std::vector<Choice>& choices,
                       const std::string& description) {
  std::string words;
  for (const Choice& choice : choices) {
    words += (words.empty() ? "" : ", ") + std::string(choice.word);
  }
  const auto set = [choices, words, value](const std::string& word) {
    for (const Choice& choice : choices) {
      if (word != choice.word) continue;
      *value = choice.value;
      return;
    }
    throw CLI::ValidationError("\"" + word + "\" is not one of " + words);
  };
  CLI::Option* const option =
      command->add_option_function<std::string>(names, set, description + ": " + words)
          ->type_name(valueName);
  for (const Choice& choice : choices) OptionChoices()[option].emplace_back(choice.word);
  return option;
}

std::vector<std::string> ChoicesOf(const CLI::Option* option) {
  const auto found = OptionChoices().find(option);
  return found == OptionChoices().end() ? std::vector<std::string>() : found->second;
}

int ExitStatus() {
  return exitStatus;
}

std::string ResultText(uint32_t code) {
  const auto* found = std::find_if(std::begin(CodeTexts), std::end(CodeTexts),
                                   [code](const CodeText& entry) { return entry.code == code; });
  return found == std::end(CodeTexts) ? "an unknown failure" : found->text;
}

int Fail(int code, const std::string& sentence) {
  std::fprintf(stderr, "hvapi: %s (code %d)\n", sentence.c_str(), code);
  return code;
}

int Outcome(uint32_t code, const std::string& what) {
  if (code == HV_OK) return HV_OK;
  return Fail(static_cast<int>(code), what + ": " + ResultText(code));
}

std::string VersionText() {
  HvApiInfo info;
  HvGenQueryApiInfo(&info);
  std::array<char, 16> text = {};
  std::snprintf(text.data(), text.size(), "%g", info.words[0] / 100.0);
  return text.data();
}

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

void Print(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void PrintLine(const std::string& text) {
  Print(text + "\n");
}

void PrintJson(const Json& value) {
  PrintLine(value.dump(2, ' ', false, Json::error_handler_t::replace));
}

std::string ValueText(const Json& value) {
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
  return value.is_string() ? value.get<std::string>() : value.dump();
}

void PrintMembers(const Json& members, std::size_t column) {
  for (const auto& member : members.items()) {
    std::string title = Padded(member.key(), column, false);
    if (!member.value().is_array()) {
      PrintLine(title + ValueText(member.value()));
      continue;
    }
    for (const Json& value : member.value()) {
      PrintLine(title + ValueText(value));
      title.assign(column, ' ');
    }
  }
}

void Table::Print() const {
  const std::size_t columns = rows_.front().size();
  std::vector<std::size_t> widths(columns, 0);
  std::vector<bool> numbers(columns, rows_.size() > 1);
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    for (std::size_t c = 0; c < columns; ++c) {
      widths[c] = std::max(widths[c], rows_[r].at(c).size());
      if (r > 0 && !IsNumber(rows_[r][c])) numbers[c] = false;
    }
  }
  for (const std::vector<std::string>& row : rows_) {
    std::string line;
    for (std::size_t c = 0; c < columns; ++c) {
      line += (c == 0 ? "" : "  ") + Padded(row[c], widths[c], numbers[c]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    PrintLine(line);
  }
}

}  // namespace hvtool
