// hvapi demo download

#include <cstdint>
#include <memory>
#include <string>

#include "families.h"
#include "job_options.h"
#include "program.h"
#include "source_file.h"

namespace hvtool {
namespace {

constexpr const char* DownloadManual =
    "Stores a print file on the flash or the disk of a printer, which then prints it from its own "
    "panel. How it gets there:\n"
    "\n"
    "    postscript  a PostScript program writes it to the device as NAME.demo\n"
    "    pjl         the PJL file-system commands, as NAME.demo\n"
    "    esc         behind an ESC [ D header with the first 12 characters of the\n"
    "                name; --id, --header-byte and --header-flag go into it\n"
    "    demofile    the PJL commands for demonstration files\n"
    "    none        nothing but the framing of the job\n"
    "\n"
    "The method chooses the language of the framing. Without --store-as the name is that of the "
    "file, in upper case (STDIN for standard input); 23 characters of a name count.\n"
    "\n"
    "    hvapi demo download tour.ps --method postscript --target flash1 --to lp1 --pjl\n"
    "    hvapi demo download tour.pcl --method demofile --target disk1 --store-as Tour --to lp1 "
    "--pjl";

struct DemoOptions {
  std::string file;
  std::string name;
  int method = DEMO_METHOD_NOTHING;
  int target = STORAGE_DEVICE_FLASH1;
  uint8_t headerByte = 0;
  bool headerFlag = false;
  JobOptions job;
};

int Download(const DemoOptions& options) {
  HvDemoInfo info = {};
  info.flags = options.headerFlag ? uint32_t{DEMO_FLAG_ESC_D} : 0U;
  info.method = options.method;
  const SourceFile file(options.file);
  if (file.Status() != HV_OK) return file.Status();
  const std::string name = file.IsInput() && options.name.empty() ? NameOfInput : options.name;
  name.copy(info.name, sizeof info.name - 1);
  info.headerByte = options.headerByte;
  info.target = static_cast<uint32_t>(options.target);
  HvJobInfo job = options.job.Record();
  const uint32_t code =
      HvDemDownload(file.Path().c_str(), options.job.destination.c_str(), &job, &info);
  return JobOutcome(code, options.job, file.Path(), file.Shown());
}

void AddDownload(CLI::App* parent) {
  const auto options = std::make_shared<DemoOptions>();
  CLI::App* command =
      AddCommand(parent, "download", "store a demonstration file in a printer", DownloadManual);
  AddSourceArgument(command, "FILE", &options->file, "The print file");
  Require(AddChoice(command, "--method", &options->method, "METHOD",
                    {{"postscript", DEMO_METHOD_POSTSCRIPT},
                     {"pjl", DEMO_METHOD_PJL_FILE},
                     {"esc", DEMO_METHOD_ESC_D},
                     {"demofile", DEMO_METHOD_PJL_DEMO_FILE},
                     {"none", DEMO_METHOD_NOTHING}},
                    "How the file gets to the device"));
  Require(AddChoice(command, "--target", &options->target, "DEVICE",
                    {{"flash1", STORAGE_DEVICE_FLASH1},
                     {"flash2", STORAGE_DEVICE_FLASH2},
                     {"disk1", STORAGE_DEVICE_DISK1},
                     {"disk2", STORAGE_DEVICE_DISK2}},
                    "Where the printer keeps the file"));
  AddOption(command, "--store-as", &options->name, "TEXT", "Name that the printer knows it by");
  AddJobOptions(command, &options->job);
  AddIdentifierOption(command, &options->job);
  AddPersonalityOption(command, &options->job);
  AddClassOption(command, &options->job);
  AddOption(command, "--header-byte", &options->headerByte, "N",
            "Byte of the ESC [ D header, 0 to 255");
  AddFlag(command, "--header-flag", &options->headerFlag, "Set the flag of the ESC [ D header");
  OnRun(command, [options] { return Download(*options); });
}

}  // namespace

void AddDemoCommands(CLI::App* program) {
  CLI::App* group = AddCommandGroup(program, "demo", "store demonstration files in printers",
                                    "Commands on demonstration files.");
  AddDownload(group);
}

}  // namespace hvtool
