// hvapi completion, hvapi manual: what packages install for the shells and for man.

#include <CLI/CLI.hpp>
#include <memory>

#include "command_tree.h"
#include "completion.h"
#include "families.h"
#include "manual_page.h"
#include "program.h"

namespace hvtool {
namespace {

enum Shell : int { Bash, Zsh, Fish };

void AddCompletion(CLI::App* program) {
  const auto shell = std::make_shared<int>(Bash);
  CLI::App* command =
      AddCommand(program, "completion", "print a script that completes command lines",
                 "Prints a script by which a shell completes the words of an hvapi command line.\n"
                 "\n"
                 "    source <(hvapi completion bash)\n"
                 "    hvapi completion zsh > ~/.zfunc/_hvapi\n"
                 "    hvapi completion fish > ~/.config/fish/completions/hvapi.fish");
  Require(AddChoice(command, "SHELL", shell.get(), "",
                    {{"bash", Bash}, {"zsh", Zsh}, {"fish", Fish}}, "The shell"));
  OnRun(command, [program, shell] {
    const std::vector<CommandRow> commands = ListCommands(*program);
    Print(*shell == Bash  ? BashCompletion(commands)
          : *shell == Zsh ? ZshCompletion(commands)
                          : FishCompletion(commands));
    return int{HV_OK};
  });
}

void AddManual(CLI::App* program) {
  CLI::App* command = AddCommand(program, "manual", "print the manual page",
                                 "Prints hvapi(1), the manual page of all commands, for man:\n"
                                 "\n"
                                 "    hvapi manual | man -l -");
  OnRun(command, [program] {
    Print(ManualPage(ListCommands(*program)));
    return int{HV_OK};
  });
}

}  // namespace

void AddShellCommands(CLI::App* program) {
  AddCompletion(program);
  AddManual(program);
}

}  // namespace hvtool
