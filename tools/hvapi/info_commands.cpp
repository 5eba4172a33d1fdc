// hvapi info

#include <memory>

#include "families.h"
#include "program.h"

namespace hvtool {

void AddInfoCommands(CLI::App* program) {
  CLI::App* command =
      AddCommand(program, "info", "print what the library says of itself",
                 "Prints the library information record: the version, and the words that are not "
                 "zero by their offset in bytes.");
  const auto json = std::make_shared<bool>(false);
  AddJsonOption(command, json.get());
  OnRun(command, [json] {
    HvApiInfo info;
    HvGenQueryApiInfo(&info);
    const std::vector<uint16_t> words(std::begin(info.words), std::end(info.words));
    if (*json) {
      PrintJson({{"version", words[0]}, {"words", words}});
      return int{HV_OK};
    }
    PrintLine("HvApiW32 " + VersionText() + "\n");
    Table table{"OFFSET", "VALUE"};
    for (std::size_t i = 0; i < words.size(); ++i) {
      if (words[i] != 0) table.Add({std::to_string(2 * i), std::to_string(words[i])});
    }
    table.Print();
    return int{HV_OK};
  });
}

}  // namespace hvtool
