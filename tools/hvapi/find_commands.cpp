// hvapi find fonts, macros, demos

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "families.h"
#include "font_kinds.h"
#include "program.h"
#include "progress.h"

namespace hvtool {
namespace {

struct Options {
  std::string directory;
  bool recurse = false;
  uint16_t most = 0;
  bool json = false;
};

using Entries = std::vector<const HvFoundResource*>;
using OwnedList = std::unique_ptr<HvFoundResource, decltype(&HvFonFindFree)>;

// In the order in which they were found.
Entries InOrder(const OwnedList& list) {
  Entries entries;
  for (const HvFoundResource* entry = list.get(); entry != nullptr; entry = entry->next) {
    entries.push_back(entry);
  }
  std::reverse(entries.begin(), entries.end());
  return entries;
}

void AddSearchOptions(CLI::App* command, Options* options) {
  AddArgument(command, "DIR", &options->directory, "The directory");
  AddFlag(command, "--recurse", &options->recurse, "Search its subdirectories too");
  AddOption(command, "--most", &options->most, "N",
            "End the search when so many are found, 32767 where this is not given");
  AddJsonOption(command, &options->json);
}

// Runs a search of a directory that is there, and prints what it found.
template <typename Search, typename AsJson>
int Find(const Options& options, const std::vector<std::string>& titles, Search search,
         AsJson asJson) {
  if (HvFilExists(options.directory.c_str()) == 0) {
    return Outcome(HV_NOT_FOUND, "cannot search " + Quoted(options.directory));
  }
  uint16_t count = options.most;
  const OwnedList list(search(&count), HvFonFindFree);
  Json found = Json::array();
  for (const HvFoundResource* entry : InOrder(list)) found.push_back(asJson(*entry));
  if (options.json) {
    PrintJson(found);
    return HV_OK;
  }
  Table table(titles);
  for (const Json& entry : found) {
    std::vector<std::string> cells;
    for (const auto& member : entry.items()) {
      if (cells.size() == titles.size()) break;
      cells.push_back(ValueText(member.value()));
    }
    table.Add(std::move(cells));
  }
  table.Print();
  return HV_OK;
}

// ---- Fonts

ProgressBar* bar = nullptr;

// Drawn before each file, with the name of the font that was found last.
void HVAPI_CALL ShowProgress(const HvFontInfo* info, uint32_t percent) {
  bar->Show(percent, 100, info == nullptr ? "" : info->name);
}

// The columns of the table come first.
Json FontAsJson(const HvFoundResource& entry) {
  const auto& info = *static_cast<const HvFontInfo*>(entry.details);
  Json font = {{"name", info.name},
               {"kind", FontKindText(info)},
               {"symbolSet", info.symbolSet},
               {"size", uint32_t{entry.size}},
               {"path", entry.path},
               {"memory", uint32_t{info.memoryNeeded}},
               {"companion1", info.companionPath1},
               {"companion2", info.companionPath2}};
  return font;
}

void AddFonts(CLI::App* parent) {
  struct FontOptions : Options {
    int kind = FONT_KIND_ANY;
    int classes = FONT_CLASSES_ALL;
    int companions = FONT_COMPANIONS_NONE;
  };
  const auto options = std::make_shared<FontOptions>();
  CLI::App* command = AddCommand(
      parent, "fonts", "find fonts and font metrics",
      "Lists the fonts and font metrics of DIR. Of those of one name the first is listed. A file "
      "GLUE.TXT in DIR is read as an index of fonts, which come first.\n"
      "\n"
      "--kind pcl is all PCL fonts; pcl-contour, pcl-plain and pcl-standard are groups of them, "
      "and pcl-windows is pcl-standard with PFM and PCM metrics, but for those of PostScript "
      "printers. --companions leaves fonts out whose metrics are missing, as \"hvapi font info\" "
      "does.\n"
      "\n"
      "    hvapi find fonts /usr/share/fonts --recurse --kind type1 --class font");
  AddSearchOptions(command, options.get());
  AddChoice(command, "--kind", &options->kind, "KIND",
            {{"any", FONT_KIND_ANY},
             {"type1", FONT_TYPE_TYPE1},
             {"dlf", FONT_TYPE_DLF},
             {"pcl", FONT_KIND_PCL},
             {"pcl-resolution", FONT_TYPE_PCL_RESOLUTION},
             {"pcl-bitmap", FONT_TYPE_PCL_BITMAP},
             {"pcl-extended", FONT_TYPE_PCL_EXTENDED},
             {"pcl-bound", FONT_TYPE_PCL_BOUND},
             {"pcl-unbound", FONT_TYPE_PCL_UNBOUND},
             {"pcl-truetype", FONT_TYPE_PCL_TRUETYPE},
             {"pcl-contour", FONT_KIND_PCL_CONTOUR},
             {"pcl-plain", FONT_KIND_PCL_PLAIN},
             {"pcl-standard", FONT_KIND_PCL_STANDARD},
             {"pcl-windows", FONT_KIND_PCL_WINDOWS},
             {"truetype", FONT_TYPE_TRUETYPE},
             {"tfm", FONT_TYPE_TFM},
             {"fmf", FONT_TYPE_FMF},
             {"pfm", FONT_TYPE_PFM},
             {"pcm", FONT_TYPE_PCM}},
            "Kind of font");
  AddChoice(command, "--class", &options->classes, "CLASS",
            {{"all", FONT_CLASSES_ALL},
             {"metrics", FONT_CLASS_METRICS},
             {"font", FONT_CLASS_DOWNLOADABLE},
             {"afm", FONT_CLASS_AFM}},
            "Class of font");
  AddCompanionsOption(command, &options->companions);
  AddQuietOption(command);
  OnRun(command, [options] {
    return Find(
        *options, {"NAME", "KIND", "SYMBOLS", "SIZE", "FILE"},
        [&](uint16_t* count) {
          ProgressBar shown;
          bar = &shown;
          return HvFonFind2(options->directory.c_str(), count, static_cast<uint32_t>(options->kind),
                            static_cast<uint32_t>(options->classes),
                            static_cast<uint32_t>(options->companions), options->recurse ? 1 : 0,
                            shown.IsSeen() ? ShowProgress : nullptr);
        },
        FontAsJson);
  });
}

// ---- Macros and demonstration files

Json MacroAsJson(const HvFoundResource& entry) {
  const auto& info = *static_cast<const HvMacroInfo*>(entry.details);
  return {{"name", info.name},
          {"id", uint16_t{info.macroId}},
          {"size", uint32_t{entry.size}},
          {"path", entry.path},
          {"target", uint32_t{info.target}},
          {"demo", (info.flags & MACRO_FLAG_DEMO) != 0}};
}

Json DemoAsJson(const HvFoundResource& entry) {
  return {{"size", uint32_t{entry.size}}, {"path", entry.path}};
}

void AddMacros(CLI::App* parent) {
  struct MacroOptions : Options {
    int language = JOB_EMULATION_PCL;
  };
  const auto options = std::make_shared<MacroOptions>();
  CLI::App* command =
      AddCommand(parent, "macros", "find macros of a printer language",
                 "Lists the files of DIR that are macros or overlays of a language, with the name "
                 "and the number that each gives itself.\n"
                 "\n"
                 "    hvapi find macros forms --language postscript");
  AddSearchOptions(command, options.get());
  AddChoice(command, "--language", &options->language, "LANGUAGE",
            {{"pcl", JOB_EMULATION_PCL},
             {"ppds", JOB_EMULATION_PPDS},
             {"postscript", JOB_EMULATION_POSTSCRIPT},
             {"pclxl", JOB_EMULATION_PCLXL}},
            "Language, pcl where this is not given");
  OnRun(command, [options] {
    return Find(
        *options, {"NAME", "ID", "SIZE", "FILE"},
        [&](uint16_t* count) {
          return HvMacFind(options->directory.c_str(), count,
                           static_cast<uint32_t>(options->language), 0, options->recurse ? 1 : 0);
        },
        MacroAsJson);
  });
}

void AddDemos(CLI::App* parent) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(parent, "demos", "list files that may be demonstration files",
                                 "Lists the files of DIR but for programs and system files; what "
                                 "they hold is not looked at.");
  AddSearchOptions(command, options.get());
  OnRun(command, [options] {
    return Find(
        *options, {"SIZE", "FILE"},
        [&](uint16_t* count) {
          return HvDemFind(options->directory.c_str(), count, 0, options->recurse ? 1 : 0);
        },
        DemoAsJson);
  });
}

}  // namespace

void AddFindCommands(CLI::App* program) {
  CLI::App* group = AddCommandGroup(program, "find", "find fonts, macros and demonstration files",
                                    "Searches a directory, in the order of names.");
  AddFonts(group);
  AddMacros(group);
  AddDemos(group);
}

}  // namespace hvtool
