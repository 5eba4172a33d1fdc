#include "macro_options.h"

#include <algorithm>
#include <iterator>

#include "program.h"
#include "source_file.h"

namespace hvtool {
namespace {

struct DropWord {
  const char* word;
  uint32_t bit;
};

constexpr DropWord DropWords[] = {
    {"reset", FILTER_DROP_RESET},
    {"form-feed", FILTER_DROP_FORM_FEED},
    {"page-size", FILTER_DROP_PAGE_SIZE},
    {"paper-source", FILTER_DROP_PAPER_SOURCE},
    {"duplex", FILTER_DROP_DUPLEX},
    {"orientation", FILTER_DROP_ORIENTATION},
    {"job-separation", FILTER_DROP_JOB_SEPARATION},
    {"copies", FILTER_DROP_COPIES},
    {"perforation-skip", FILTER_DROP_PERFORATION_SKIP},
    {"flush-pages", FILTER_DROP_FLUSH_PAGES},
    {"output-bin", FILTER_DROP_OUTPUT_BIN},
    {"macro-definition", FILTER_DROP_MACRO_DEFINITION},
    {"default", DEFAULT_FILTER_MASK},
    {"none", 0},
};

std::string AllDropWords() {
  std::string words;
  for (const DropWord& drop : DropWords)
    words += (words.empty() ? "" : ", ") + std::string(drop.word);
  return words;
}

// False after reporting a word that is none.
bool ParseDropList(const std::string& list, uint32_t* mask) {
  *mask = 0;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    const std::string word = list.substr(at, end - at);
    const auto* found = std::find_if(std::begin(DropWords), std::end(DropWords),
                                     [&](const DropWord& drop) { return word == drop.word; });
    if (found == std::end(DropWords)) {
      Fail(HV_BAD_ARGUMENT, Quoted(word) + " is not one of " + AllDropWords());
      return false;
    }
    *mask |= found->bit;
    at = end + 1;
  }
  return true;
}

}  // namespace

bool MacroOptions::Fill(HvMacroInfo* info) const {
  *info = {};
  constexpr std::size_t LongestName = sizeof info->name - 1;
  if (name.size() > LongestName) {
    Fail(HV_BAD_ARGUMENT, "the name " + Quoted(name) + " has more than " +
                              std::to_string(LongestName) + " characters");
    return false;
  }
  name.copy(info->name, name.size());
  info->target = static_cast<uint32_t>(target);
  if (filter) info->flags |= MACRO_FLAG_FILTER;
  if (demo) info->flags |= MACRO_FLAG_DEMO;
  if (overlay) info->flags |= MACRO_FLAG_PS_OVERLAY;
  if (!call.empty()) {
    info->flags |= MACRO_FLAG_CALL_MACRO;
    info->callMacroId = call.front();
  }
  if (!drop && mask.empty()) return true;
  info->flags |= MACRO_FLAG_FILTER_MASK;
  uint32_t chosen = mask.empty() ? 0 : mask.front();
  if (drop && !ParseDropList(*drop, &chosen)) return false;
  info->filterMask = chosen;
  return true;
}

void AddSourceOptions(CLI::App* command, MacroOptions* macro) {
  AddSourceArgument(command, "SOURCE", &macro->source, "The print file or macro");
  AddFlag(command, "--filter", &macro->filter,
          "Take the commands of the job out of the source; convert a PCL XL job to a stream");
  CLI::Option* drop = AddOption(command, "--drop", &macro->drop, "LIST",
                                "Filter, and take out of PCL just these commands, parted by "
                                "commas: " +
                                    AllDropWords());
  CLI::Option* mask = AddOption(command, "--mask", &macro->mask, "MASK",
                                "The same as a sum of bits, as 0x33F, which is the default");
  Expect(mask, 1);
  Exclude(mask, drop);
}

void AddMacroOptions(CLI::App* command, MacroOptions* macro) {
  AddOption(command, "--name", &macro->name, "TEXT",
            "Name of the macro, at most 23 characters: of a PCL XL stream, a PostScript overlay, "
            "procedure or file, or in the description of a stored PCL macro");
  Expect(AddOption(command, "--call", &macro->call, "N",
                   "Identifier of another PCL macro that the macro calls first"),
         1);
}

}  // namespace hvtool
