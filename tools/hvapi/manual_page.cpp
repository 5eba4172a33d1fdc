#include "manual_page.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "program.h"

namespace hvtool {
namespace {

struct EnvironmentRow {
  const char* name;
  const char* meaning;
};

constexpr EnvironmentRow Environment[] = {
    {"HVAPI_SPOOL",
     "The spool folder; else hvapi/spool in XDG_STATE_HOME, else in ~/.local/state."},
    {"HVAPI_DRIVES",
     "The folder in which c:\\ is the directory c and \\\\server\\share is unc/server/share; "
     "unset, "
     "every drive is the root directory."},
    {"HVAPI_NBXCHAN", "The printers' communication library, for jobs with --nbx."},
    {"HVAPI_TIMEOUT",
     "Seconds that a network printer has to take a connection, and to end one; 30 when unset."},
    {"TMP", "Where a file that is rewritten line by line grows, and where standard input is kept."},
};

// Text as troff takes it: backslashes and hyphens are its own, and so is a dot that begins a line.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if ((c == '.' || c == '\'') && (escaped.empty() || escaped.back() == '\n')) escaped += "\\&";
    escaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
  }
  return escaped;
}

// Paragraphs, and lines that begin with a blank as they stand.
std::string Paragraphs(const std::string& text) {
  std::istringstream lines(text);
  std::string page;
  bool verbatim = false;
  for (std::string line; std::getline(lines, line);) {
    const bool indented = !line.empty() && line.front() == ' ';
    if (indented != verbatim) page += indented ? ".nf\n" : ".fi\n";
    verbatim = indented;
    page += line.empty() ? ".PP\n" : Escaped(line) + "\n";
  }
  return verbatim ? page + ".fi\n" : page;
}

std::string Synopsis(const CommandRow& command) {
  std::string text = ".B " + Escaped(command.name) + "\n";
  if (!command.commands.empty()) return text + ".I COMMAND\n\\&...\n";
  std::string required;
  for (const OptionRow& option : command.options) {
    if (option.isArgument) {
      const std::string name = option.names.front() + (option.takesSeveral ? "..." : "");
      const std::string shown = option.isRequired ? name : "[" + name + "]";
      text += ".I " + Escaped(shown) + "\n";
    } else if (option.isRequired) {
      required += ".BI " + Escaped(option.names.back()) + " \" " + Escaped(option.value) + "\"\n";
    }
  }
  return text + required + ".RI [ OPTION ]...\n";
}

std::string Options(const CommandRow& command) {
  std::string text;
  for (const OptionRow& option : command.options) {
    std::string names;
    for (const std::string& name : option.names) {
      names += (names.empty() ? "" : ", ") + Escaped(name);
    }
    if (!option.isArgument && !option.value.empty()) names += " " + Escaped(option.value);
    text += ".TP\n.B \"" + names + "\"\n" + Escaped(option.description) + ".\n";
  }
  return text;
}

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

std::string ManualPage(const std::vector<CommandRow>& commands) {
  const CommandRow& program = commands.front();
  std::string page = ".TH " + Upper(program.name) + " 1 \"\" \"" + program.name + " " +
                     VersionText() + "\" \"User Commands\"\n";
  page += ".SH NAME\n" + program.name + " \\- " + Escaped(program.brief) + "\n";
  page += ".SH SYNOPSIS\n" + Synopsis(program);
  page += ".SH DESCRIPTION\n" + Paragraphs(program.manual);
  page += ".SH OPTIONS\n" + Options(program);
  page += ".SH COMMANDS\n";
  for (const CommandRow& command : commands) {
    if (&command == &program || !command.commands.empty()) continue;
    page += ".SS \"" + Escaped(command.name) + " \\- " + Escaped(command.brief) + "\"\n";
    page += Synopsis(command) + ".PP\n" + Paragraphs(command.manual) + Options(command);
  }
  page += ".SH ENVIRONMENT\n";
  for (const EnvironmentRow& row : Environment) {
    page += ".TP\n.B " + std::string(row.name) + "\n" + Escaped(row.meaning) + "\n";
  }
  page +=
      ".SH EXIT STATUS\n"
      "The result code of the library, which the error message names; 0 for success, 1 for a wrong "
      "command line.\n"
      ".SH SEE ALSO\n"
      ".BR hvapi (3)\n";
  return page;
}

}  // namespace hvtool
