#include "manual.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace hvtool {

const char* const ProgramManual =
    "Sends files, fonts, macros and commands to page printers and prepares the files that printers "
    "and their drivers consume. Each command calls one function of the library HvApiW32.\n"
    "\n"
    "A destination (--to) is, in this order: the address of a printer, "
    "socket://host[:port]; the name of a queue, a directory of the spool folder or a queue of the "
    "system's spooler; or the path of a file or port. \"hvapi queue list\" names the queues.\n"
    "\n"
    "Errors are one sentence on standard error. \"hvapi COMMAND --help\" describes a command.";

namespace {

constexpr std::size_t PageWidth = 78;
constexpr const char* Margin = "    ";
constexpr const char* DeepMargin = "        ";

// One paragraph, broken between words.
std::string Wrapped(const std::string& paragraph, const std::string& margin) {
  std::istringstream words(paragraph);
  std::string page;
  std::string line = margin;
  for (std::string word; words >> word;) {
    if (line.size() > margin.size()) {
      if (line.size() + 1 + word.size() > PageWidth) {
        page += line + "\n";
        line = margin;
      } else {
        line += ' ';
      }
    }
    line += word;
  }
  return line.size() > margin.size() ? page + line + "\n" : page;
}

// Paragraphs are wrapped; empty lines and lines that begin with a blank stay.
std::string LaidOut(const std::string& text, const std::string& margin) {
  std::istringstream lines(text);
  std::string page;
  std::string paragraph;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.front() != ' ') {
      paragraph += line + " ";
      continue;
    }
    page += Wrapped(paragraph, margin) + (line.empty() ? "" : margin + line) + "\n";
    paragraph.clear();
  }
  return page + Wrapped(paragraph, margin);
}

std::string Section(const std::string& title, const std::string& body) {
  return body.empty() ? "" : "\n" + title + "\n" + body;
}

std::string OptionTitle(const CLI::Option& option) {
  std::string names = option.get_name(false, true);
  if (const std::size_t comma = names.find(','); comma != std::string::npos) {
    names.insert(comma + 1, " ");
  }
  const std::string value = option.get_type_name();
  return names + (value.empty() ? "" : " " + value);
}

std::string Synopsis(const CLI::App& app, const std::string& name) {
  std::string text = name;
  if (!app.get_subcommands({}).empty()) return text + " COMMAND ...";
  std::string last;
  for (const CLI::Option* option : app.get_options()) {
    const bool several = option->get_expected_max() > 1;
    if (option->get_positional()) {
      const std::string shown = option->get_name(true) + (several ? "..." : "");
      text += option->get_required() ? " " + shown : " [" + shown + "]";
    } else if (option->get_required()) {
      last += " " + OptionTitle(*option);
    }
  }
  return text + last + " [OPTION]...";
}

std::string Options(const CLI::App& app, bool positional) {
  std::string text;
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional() != positional) continue;
    const std::string title = positional ? option->get_name(true) : OptionTitle(*option);
    text += Margin + title + "\n" + Wrapped(option->get_description(), DeepMargin);
  }
  return text;
}

// Each group of commands under its own heading, in the order in which they were added.
std::string Commands(const CLI::App& app) {
  const std::vector<const CLI::App*> commands = app.get_subcommands({});
  std::size_t width = 0;
  for (const CLI::App* command : commands) width = std::max(width, command->get_name().size());
  std::string page;
  std::vector<std::string> groups;
  for (const CLI::App* command : commands) {
    if (std::find(groups.begin(), groups.end(), command->get_group()) == groups.end()) {
      groups.push_back(command->get_group());
    }
  }
  for (const std::string& group : groups) {
    std::string text;
    for (const CLI::App* command : commands) {
      if (command->get_group() != group) continue;
      const std::string& name = command->get_name();
      text += Margin + name + std::string(width - name.size() + 2, ' ') +
              command->get_description() + "\n";
    }
    page += Section(group == "Subcommands" ? "COMMANDS" : group, text);
  }
  return page;
}

}  // namespace

std::string ManualFormatter::make_help(const CLI::App* app, std::string name,
                                       CLI::AppFormatMode) const {
  const bool isProgram = app->get_parent() == nullptr;
  std::string page = "NAME\n" + Wrapped(name + " - " + app->get_description(), Margin);
  page += Section("SYNOPSIS", Wrapped(Synopsis(*app, name), Margin));
  page += Section("DESCRIPTION", LaidOut(app->get_footer(), Margin));
  page += Commands(*app);
  page += Section("ARGUMENTS", Options(*app, true));
  page += Section("OPTIONS", Options(*app, false));
  if (isProgram) {
    page += Section("EXIT STATUS",
                    LaidOut("The result code of the library, which the error message names; 0 for "
                            "success, 1 for a wrong command line.",
                            Margin));
  }
  return page;
}

}  // namespace hvtool
