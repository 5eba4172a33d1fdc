// hvapi, the command-line program: every family of the library in a person's hands.
//
// It knows the library by its exports alone. A family adds its commands in a file of its own; the
// table below is all that has to know of it.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "command_tree.h"
#include "families.h"
#include "hvapi.h"
#include "manual.h"
#include "program.h"

namespace hvtool {
namespace {

struct Family {
  const char* title;  // heading of its commands in the help
  void (*add)(CLI::App* program);
};

constexpr Family Families[] = {
    {"SENDING TO PRINTERS", AddSendCommands},
    {"SENDING TO PRINTERS", AddQueueCommands},
    {"SENDING TO PRINTERS", AddShowCommands},
    {"PRINTER REPLIES", AddReplyCommands},
    {"FILES", AddFileCommands},
    {"FILES", AddUnzipCommands},
    {"FONTS", AddFontCommands},
    {"MACROS AND DEMONSTRATION FILES", AddMacroCommands},
    {"MACROS AND DEMONSTRATION FILES", AddDemoCommands},
    {"SEARCHES", AddFindCommands},
    {"CONFIGURATION FILES", AddIniCommands},
    {"CONFIGURATION FILES", AddRecordCommands},
    {"CONFIGURATION FILES", AddPanelCommands},
    {"CONFIGURATION FILES", AddSetupCommands},
    {"CONFIGURATION FILES", AddListingCommands},
    {"SUPPORT", AddUrlCommands},
    {"ABOUT", AddDoctorCommands},
    {"ABOUT", AddInfoCommands},
    {"ABOUT", AddShellCommands},
};

void AddFamily(const Family& family, CLI::App* program) {
  const auto any = [](const CLI::App*) { return true; };
  const std::size_t before = program->get_subcommands(any).size();
  family.add(program);
  const std::vector<CLI::App*> commands = program->get_subcommands(any);
  for (std::size_t i = before; i < commands.size(); ++i) commands[i]->group(family.title);
}

// The last command that the arguments named, the program itself when they named none.
const CLI::App* LastCommand(const CLI::App& program) {
  const CLI::App* command = &program;
  while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
  return command;
}

bool HoldsCommands(const CLI::App& command) {
  return !command.get_subcommands({}).empty();
}

// A command as it is typed.
std::string FullName(const CLI::App& command) {
  const CLI::App* parent = command.get_parent();
  return (parent == nullptr ? "" : FullName(*parent) + " ") + command.get_name();
}

// A wrong command line, told as any other error.
int ReportUsage(const CLI::App& command, const std::string& what) {
  return Fail(HV_BAD_ARGUMENT, what + "; see \"" + FullName(command) + " --help\"");
}

int ReportParseError(const CLI::App& program, const CLI::ParseError& error) {
  const CLI::App& command = *LastCommand(program);
  const std::vector<std::string> extras = command.remaining();
  if (HoldsCommands(command) && !extras.empty()) {
    const std::string meant = NearestWord(extras.front(), ListCommands(command).front().commands);
    return ReportUsage(command, Quoted(extras.front()) + " is not a command" +
                                    (meant.empty() ? "" : ", " + Quoted(meant) + " is"));
  }
  std::string text = error.what();
  text.erase(text.find_last_not_of(" .\n") + 1);
  // The parser's "--copies = 70000", behind a phrase that does not say who could not.
  constexpr std::string_view Unreadable = "Could not convert: ";
  if (text.starts_with(Unreadable)) {
    text = "not a value that can be used: " + text.substr(Unreadable.size());
  }
  return ReportUsage(command, text);
}

int Run(int argc, char** argv) {
  CLI::App program("prepare files for page printers and send them", "hvapi");
  program.formatter(std::make_shared<ManualFormatter>());
  program.footer(ProgramManual);
  program.set_help_flag("-h,--help", "Print this page");
  program.set_version_flag("--version", "hvapi " + VersionText(), "Print the version");
  // A word that begins with "/" is a path on every system.
  program.allow_windows_style_options(false);
  for (const Family& family : Families) AddFamily(family, &program);
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& request) {
    return program.exit(request);
  } catch (const CLI::ParseError& error) {
    return ReportParseError(program, error);
  }
  if (const CLI::App& command = *LastCommand(program); HoldsCommands(command)) {
    return ReportUsage(command, "a command is needed");
  }
  return ExitStatus();
}

}  // namespace
}  // namespace hvtool

int main(int argc, char** argv) {
  try {
    const int status = hvtool::Run(argc, argv);
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
      return hvtool::Fail(HV_WRITE_FAILED, "cannot write the output");
    }
    return status;
  } catch (const std::exception& error) {
    return hvtool::Fail(HV_SYSTEM_FAILURE, error.what());
  }
}
