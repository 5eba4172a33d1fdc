// hvapi macro create, validate, download, enable, disable, delete

#include <cstring>
#include <memory>
#include <string>

#include "families.h"
#include "job_options.h"
#include "macro_options.h"
#include "program.h"
#include "source_file.h"

namespace hvtool {
namespace {

struct Options {
  Options() { job.emulation = JOB_EMULATION_PCL; }

  MacroOptions macro;
  JobOptions job;
};

// What commands take that make a macro of a source.
void AddMakingOptions(CLI::App* command, Options* options) {
  AddSourceOptions(command, &options->macro);
  AddJobOptions(command, &options->job, "--job-name");
  AddIdentifierOption(command, &options->job);
  AddMacroOptions(command, &options->macro);
}

// Runs a command with its records and its source; the status of what cannot be had of them.
template <typename Run>
int WithSource(const Options& options, Run run) {
  HvJobInfo job = options.job.Record();
  HvMacroInfo info;
  if (!options.macro.Fill(&info)) return HV_BAD_ARGUMENT;
  const SourceFile source(options.macro.source);
  return source.Status() != HV_OK ? source.Status() : run(source, &job, &info);
}

void AddCreate(CLI::App* parent) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(
      parent, "create", "make a macro of a print file",
      "Makes a macro of a print file: a PCL macro definition or a PPDS macro block with the number "
      "of --id; with --filter a PostScript overlay whose name stands in a comment, or a PCL XL "
      "job that defines a stream of that name. The language is PCL when --language is left out.\n"
      "\n"
      "A letterhead printed to a file becomes an overlay:\n"
      "\n"
      "    hvapi macro create letter.pcl --to letter.mac --id 5 --filter\n"
      "    hvapi macro create letter.pcl --to lp1 --id 5 --drop reset,form-feed");
  AddMakingOptions(command, options.get());
  OnRun(command, [options] {
    return WithSource(*options, [&](const SourceFile& source, HvJobInfo* job, HvMacroInfo* info) {
      const uint32_t code =
          HvMacCreate(source.Path().c_str(), options->job.destination.c_str(), job, info);
      return JobOutcome(code, options->job, source.Path(), source.Shown());
    });
  });
}

const char* DeviceName(uint32_t device) {
  constexpr const char* Names[] = {"", "ram", "flash1", "flash2", "disk1", "disk2"};
  return device < std::size(Names) ? Names[device] : "";
}

// What a macro of the language says of itself.
Json Findings(const std::string& source, const HvJobInfo& job, const HvMacroInfo& info) {
  Json members = {{"file", source}};
  const bool isStored =
      job.emulation == JOB_EMULATION_POSTSCRIPT && (info.flags & MACRO_FLAG_PS_OVERLAY) == 0;
  if (job.emulation == JOB_EMULATION_PCL) members["identifier"] = uint16_t{info.macroId};
  if (info.name[0] != '\0') members["name"] = std::string(info.name);
  if (isStored) {
    members["target"] = DeviceName(info.target);
    members["demonstration"] = (info.flags & MACRO_FLAG_DEMO) != 0;
  }
  return members;
}

void AddValidate(CLI::App* parent) {
  struct ValidateOptions : Options {
    bool json = false;
  };
  const auto options = std::make_shared<ValidateOptions>();
  CLI::App* command = AddCommand(
      parent, "validate", "tell whether a file is a macro, and which",
      "Tells whether a file already is a macro of the language (PCL when --language is left out) "
      "and prints what it says of itself: the identifier of a PCL macro, name and place of a "
      "PostScript procedure or file, the name of an overlay (--overlay) or of a PCL XL stream. "
      "With --filter the file is looked at as it will be after the filter; of a PCL XL job that "
      "tells whether it can be converted.\n"
      "\n"
      "    hvapi macro validate letter.mac\n"
      "    hvapi macro validate logo.ps --language postscript --overlay");
  AddSourceOptions(command, &options->macro);
  AddLanguageOption(command, &options->job);
  AddFlag(command, "--overlay", &options->macro.overlay, "Look for a PostScript overlay page");
  AddJsonOption(command, &options->json);
  OnRun(command, [options] {
    return WithSource(*options, [&](const SourceFile& source, HvJobInfo* job, HvMacroInfo* info) {
      const uint32_t code = HvMacValidate(source.Path().c_str(), job, info);
      if (code != HV_OK) return Outcome(code, "cannot take " + source.Shown() + " for a macro");
      constexpr std::size_t Column = 15;
      const Json members = Findings(options->macro.source, *job, *info);
      if (options->json) {
        PrintJson(members);
      } else {
        PrintMembers(members, Column);
      }
      return int{HV_OK};
    });
  });
}

// Whether the source has to become a macro on the way (HV_WRONG_LANGUAGE) or is one already
// (HV_OK), whose identifier and name then count. Other codes are those of HvMacValidate.
uint32_t Prepare(const std::string& source, uint32_t mode, HvJobInfo* job, HvMacroInfo* info) {
  constexpr uint32_t Filters = MACRO_FLAG_FILTER | MACRO_FLAG_FILTER_MASK;
  const bool converts = job->emulation == JOB_EMULATION_PCLXL && (info->flags & Filters) != 0;
  if (converts || mode == MACRO_SEND_RAW) return HV_OK;
  HvJobInfo foundJob = *job;
  HvMacroInfo found = *info;
  const uint32_t code = HvMacValidate(source.c_str(), &foundJob, &found);
  if (code == HV_BAD_ARGUMENT) return HV_WRONG_LANGUAGE;  // a language without macros
  if (code == HV_OK) job->identifier = foundJob.identifier;
  return code;
}

void AddDownload(CLI::App* parent) {
  struct DownloadOptions : Options {
    bool once = false;
    bool store = false;
    bool raw = false;
  };
  const auto options = std::make_shared<DownloadOptions>();
  CLI::App* command = AddCommand(
      parent, "download", "send a macro to a printer",
      "Sends a macro, or a print file that becomes one on the way, to a printer. With --once (the "
      "usual way) it is printed on one page, with --store it stays in the printer under the number "
      "of --id, with --raw the file is sent as it is and made permanent. --target names the "
      "storage device that keeps it. The language is PCL when --language is left out; a PCL XL job "
      "needs --filter.\n"
      "\n"
      "    hvapi macro download letter.mac --to lp1 --pjl --store --target flash1 --id 5\n"
      "    hvapi macro download letter.pcl --to lp1 --pjl --filter --id 5 --name Letterhead");
  AddMakingOptions(command, options.get());
  CLI::Option* once = AddFlag(command, "--once", &options->once, "Print it once");
  CLI::Option* store = AddFlag(command, "--store", &options->store, "Keep it in the printer");
  CLI::Option* raw =
      AddFlag(command, "--raw", &options->raw, "Send the file as it is and make it permanent");
  Exclude(once, store);
  Exclude(once, raw);
  Exclude(store, raw);
  AddDeviceOption(command, "--target", &options->macro.target, "Where the printer keeps it");
  AddFlag(command, "--demo", &options->macro.demo,
          "A PostScript demonstration page: stored as NAME.demo on a device");
  AddPersonalityOption(command, &options->job);
  AddClassOption(command, &options->job);
  OnRun(command, [options] {
    return WithSource(*options, [&](const SourceFile& source, HvJobInfo* job, HvMacroInfo* info) {
      if (source.IsInput() && options->macro.name.empty()) std::strcpy(info->name, NameOfInput);
      const uint32_t mode = options->store ? MACRO_STORE
                            : options->raw ? MACRO_SEND_RAW
                                           : MACRO_PRINT_ONCE;
      const uint32_t prepared = Prepare(source.Path(), mode, job, info);
      if (prepared != HV_OK && prepared != HV_WRONG_LANGUAGE) {
        return Outcome(prepared, "cannot download " + source.Shown());
      }
      const uint32_t code = HvMacDownload(source.Path().c_str(), options->job.destination.c_str(),
                                          job, info, mode, prepared);
      return JobOutcome(code, options->job, source.Path(), source.Shown());
    });
  });
}

struct SwitchCommand {
  const char* name;
  const char* brief;
  const char* manual;
  uint32_t (*send)(const char* destination, const HvJobInfo& job);
};

constexpr SwitchCommand SwitchCommands[] = {
    {"enable", "print a stored macro on every page",
     "Switches the stored macro of --id on: every page that follows has it as overlay. PCL (the "
     "language when --language is left out) and PPDS have this command, PostScript and PCL XL send "
     "nothing.",
     [](const char* destination, const HvJobInfo& job) {
       return HvMacActivate(destination, &job, 1);
     }},
    {"disable", "stop printing a stored macro",
     "Switches the overlay off that \"hvapi macro enable\" has switched on.",
     [](const char* destination, const HvJobInfo& job) {
       return HvMacActivate(destination, &job, 0);
     }},
    {"delete", "delete a stored macro",
     "Deletes the stored macro of --id. PCL (the language when --language is left out) has this "
     "command; PPDS and PostScript send nothing.",
     [](const char* destination, const HvJobInfo& job) { return HvMacDelete(destination, &job); }},
};

void AddSwitch(CLI::App* parent, const SwitchCommand& what) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(parent, what.name, what.brief, what.manual);
  AddJobOptions(command, &options->job, "--job-name");
  AddIdentifierOption(command, &options->job);
  OnRun(command, [options, send = what.send] {
    const HvJobInfo job = options->job.Record();
    return JobOutcome(send(options->job.destination.c_str(), job), options->job);
  });
}

}  // namespace

void AddMacroCommands(CLI::App* program) {
  CLI::App* group =
      AddCommandGroup(program, "macro", "make, check, download and switch macros and overlays",
                      "Commands on macros: pages that a printer keeps and prints under others.");
  AddCreate(group);
  AddValidate(group);
  AddDownload(group);
  for (const SwitchCommand& command : SwitchCommands) AddSwitch(group, command);
}

}  // namespace hvtool
