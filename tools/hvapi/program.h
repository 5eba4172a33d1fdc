// What all commands share: how they are declared, how they report, how they print.
//
// A command is declared with AddCommand, its options with the functions below, and what it does
// with OnRun:
//
//   void AddSize(CLI::App* parent) {
//     struct Options { std::string file; bool json = false; };
//     const auto options = std::make_shared<Options>();
//     CLI::App* command = AddCommand(parent, "size", "print the size of a file", "");
//     AddArgument(command, "FILE", &options->file, "The file");
//     AddJsonOption(command, &options->json);
//     OnRun(command, [options] { ... return Outcome(code, "cannot ..."); });
//   }
//
// Data goes to standard output, errors as one sentence with their code to standard error. The exit
// status is the code of the export, 0 for success (on POSIX systems its low 8 bits).
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "command_line.h"
#include "hvapi.h"

namespace hvtool {

// Keeps the order in which members are put in.
using Json = nlohmann::ordered_json;

// ---- Declaring commands

// `brief` is a phrase for lists of commands, in lower case and without a full stop. `manual` is the
// DESCRIPTION of the help: paragraphs parted by empty lines, which are wrapped; lines that begin
// with a blank stand as they are.
CLI::App* AddCommand(CLI::App* parent, const std::string& name, const std::string& brief,
                     const std::string& manual);

// A command that only holds others, as "file" does "copy".
CLI::App* AddCommandGroup(CLI::App* parent, const std::string& name, const std::string& brief,
                          const std::string& manual);

// What the command does; the result becomes the exit status.
void OnRun(CLI::App* command, std::function<int()> run);

// Where the value of an option goes: a vector takes one or more. Numbers may be written as 53 or
// 0x35.
using OptionValue =
    std::variant<std::string*, std::optional<std::string>*, uint8_t*, uint16_t*, uint32_t*, int*,
                 std::vector<std::string>*, std::vector<uint16_t>*, std::vector<uint32_t>*>;

// A positional argument, shown as NAME, which must be given; an option that may be left out, with
// the name of its value; a flag.
CLI::Option* AddArgument(CLI::App* command, const std::string& name, OptionValue value,
                         const std::string& description);
CLI::Option* AddOption(CLI::App* command, const std::string& names, OptionValue value,
                       const std::string& valueName, const std::string& description);
CLI::Option* AddFlag(CLI::App* command, const std::string& names, bool* value,
                     const std::string& description);

// An option that must be given, an argument that may be left out, a list of just so many values,
// two options of which one at most may be given, and two that go together.
void Require(CLI::Option* option);
void MakeOptional(CLI::Option* argument);
void Expect(CLI::Option* option, int count);
void Exclude(CLI::Option* option, CLI::Option* other);
void NeedEachOther(CLI::Option* option, CLI::Option* other);

// --json
void AddJsonOption(CLI::App* command, bool* json);

// One of a list of words, each with its number: AddChoice(command, "--kind", &kind, "KIND",
// {{"cfg", 1}, {"pss", 2}}, "Kind of file").
struct Choice {
  const char* word;
  int value;
};
CLI::Option* AddChoice(CLI::App* command, const std::string& names, int* value,
                       const std::string& valueName, const std::vector<Choice>& choices,
                       const std::string& description);

// The words of an option that AddChoice has added, none for any other.
std::vector<std::string> ChoicesOf(const CLI::Option* option);

// ---- Reporting

// The status that the command that ran has given.
int ExitStatus();

// What a HvResult means, as a phrase: "the file or path does not exist".
std::string ResultText(uint32_t code);

// Prints "hvapi: <sentence> (code N)" on standard error and returns the code.
int Fail(int code, const std::string& sentence);

// HV_OK is passed on; any other code is reported as "<what>: <text of the code>", `what` being
// something like: cannot copy "a" to "b".
int Outcome(uint32_t code, const std::string& what);

// The version of the library, "8.3".
std::string VersionText();

// The text in double quotes.
std::string Quoted(const std::string& text);

// ---- Printing

void Print(const std::string& text);
void PrintLine(const std::string& text);
// Bytes that are not UTF-8 become the replacement character.
void PrintJson(const Json& value);

// A value of JSON as a person reads it: texts without quotes, "yes" and "no".
std::string ValueText(const Json& value);
// The members of an object, a line each, with the values in a column; an array takes a line a value.
void PrintMembers(const Json& members, std::size_t column);

// Columns padded to one width; a column of nothing but numbers is aligned to the right.
class Table {
 public:
  Table(std::initializer_list<std::string> titles) : rows_{titles} {}
  explicit Table(const std::vector<std::string>& titles) : rows_{titles} {}
  void Add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  // Prints the titles too, also when there are no other rows.
  void Print() const;

 private:
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace hvtool
