// hvapi config list

#include <memory>
#include <string>

#include "families.h"
#include "program.h"

namespace hvtool {
namespace {

struct Options {
  std::string directory;
  int kind = 0;
  bool json = false;
};

int List(const Options& options) {
  if (HvFilExists(options.directory.c_str()) == 0) {
    return Outcome(HV_NOT_FOUND, "cannot list " + Quoted(options.directory));
  }
  uint16_t count = 0;
  HvConfigFileEntry* const list =
      HvDatQueryFiles(options.directory.c_str(), static_cast<uint32_t>(options.kind), &count);
  Json files = Json::array();
  Table table{"DESCRIPTION", "FILE"};
  for (const HvConfigFileEntry* entry = list; entry != nullptr; entry = entry->next) {
    files.push_back({{"path", entry->path}, {"description", entry->description}});
    table.Add({entry->description, entry->path});
  }
  HvDatQueryFilesFree(list);
  if (options.json) {
    PrintJson(files);
  } else {
    table.Print();
  }
  return HV_OK;
}

}  // namespace

void AddListingCommands(CLI::App* program) {
  CLI::App* config = AddCommandGroup(program, "config", "find configuration files",
                                     "Configuration files describe themselves in their first "
                                     "line, behind the characters #!.");
  CLI::App* command =
      AddCommand(config, "list", "list the configuration files of a directory",
                 "Lists the files of DIR whose first line has a description behind the characters "
                 "#!, with that description.");
  const auto options = std::make_shared<Options>();
  AddArgument(command, "DIR", &options->directory, "The directory");
  AddChoice(command, "--kind", &options->kind, "KIND",
            {{"cfg", DAT_KIND_CFG}, {"pss", DAT_KIND_PSS}, {"all", 0}},
            "Which files to look at, all of them where this is not given");
  AddJsonOption(command, &options->json);
  OnRun(command, [options] { return List(*options); });
}

}  // namespace hvtool
