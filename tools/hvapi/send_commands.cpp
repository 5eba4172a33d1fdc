// hvapi send, hvapi string, hvapi storage

#include <memory>

#include "families.h"
#include "job_options.h"
#include "program.h"
#include "progress.h"
#include "source_file.h"

namespace hvtool {
namespace {

constexpr const char* SendManual =
    "Sends a file unchanged, framed as the options say: a job prepared elsewhere, in a language "
    "that the printer understands.\n"
    "\n"
    "With --pjl the job begins with PJL lines that show its name on the panel, switch the language "
    "and set the copies, and ends with a reset. With --esc-k language and copies are chosen with "
    "escape sequences. With neither the bytes of the file are all that is sent.\n"
    "\n"
    "Three copies on a printer that understands PJL, and the same file to a file:\n"
    "\n"
    "    hvapi send report.pcl --to lp1 --pjl --language pcl --copies 3\n"
    "    hvapi send report.pcl --to job.prn --pjl --language pcl\n"
    "\n"
    "A page of a program that writes to standard output:\n"
    "\n"
    "    gs -q -sDEVICE=ljet4 -o - page.ps | hvapi send - --to lp1 --pjl --language pcl";

constexpr const char* StringManual =
    "Sends a short text, whose first character tells how it is written:\n"
    "\n"
    "    $TEXT   the text; \\n is a line feed, \\xHH the byte of two hexadecimal\n"
    "            digits, \\c the character c; a zero byte ends it\n"
    "    %FILE   the contents of a file, as \"hvapi send\" does\n"
    "    HEX     pairs of hexadecimal digits, one byte a pair\n"
    "\n"
    "Copies and ESC [ K sequences are sent for %FILE only.\n"
    "\n"
    "A reset of a PCL printer, in two notations:\n"
    "\n"
    "    hvapi string 1B45 --to lp1\n"
    "    hvapi string '$\\x1BE' --to lp1";

constexpr const char* StorageManual =
    "Sends one command about the printer's storage as a job of its own. With --pjl it is a PJL "
    "command, with --esc-k a sequence of printers without PJL. With neither, \"format\" and "
    "\"directory\" are sequences too, and \"ram\" and \"target\" send nothing.";

// How much "hvapi send" writes to a file destination, framing left aside.
uint64_t BytesToSend(const std::string& file, const JobOptions& job) {
  const uint64_t size = HvFilQuerySize(file.c_str());
  const bool framed = job.pjl || job.escK;
  return framed || job.copies == 0 ? size : size * job.copies;
}

void AddDataOptions(CLI::App* command, JobOptions* job) {
  AddJobOptions(command, job);
  AddCopiesOption(command, job);
  AddAppendOption(command, job);
  AddPersonalityOption(command, job);
  AddClassOption(command, job);
}

void AddSend(CLI::App* program) {
  struct Options {
    std::string file;
    JobOptions job;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddCommand(program, "send", "send a print file to a printer or a file", SendManual);
  AddSourceArgument(command, "FILE", &options->file, "The file to send");
  AddDataOptions(command, &options->job);
  AddQuietOption(command);
  OnRun(command, [options] {
    const SourceFile file(options->file);
    if (file.Status() != HV_OK) return file.Status();
    const JobOptions& job = options->job;
    const HvJobInfo record = job.Record();
    uint32_t code = HV_OK;
    {
      const FileProgress progress(job.destination, BytesToSend(file.Path(), job), job.append);
      code = HvDatSendFile(file.Path().c_str(), job.destination.c_str(), &record, job.append);
    }
    return JobOutcome(code, job, file.Path(), file.Shown());
  });
}

bool IsHexNotation(const std::string& text) {
  return text.size() % 2 == 0 &&
         text.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
}

void AddString(CLI::App* program) {
  struct Options {
    std::string text;
    JobOptions job;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddCommand(program, "string", "send a command string to a printer", StringManual);
  AddArgument(command, "TEXT", &options->text, "The text, in one of the three notations");
  AddDataOptions(command, &options->job);
  OnRun(command, [options] {
    const JobOptions& job = options->job;
    const HvJobInfo record = job.Record();
    const std::string& text = options->text;
    const uint32_t code =
        HvDatSendString(text.c_str(), job.destination.c_str(), &record, job.append);
    const char notation = text.empty() ? '\0' : text.front();
    if (code == HV_BAD_ARGUMENT && notation != '$' && notation != '%' && !IsHexNotation(text)) {
      return Fail(HV_BAD_ARGUMENT, Quoted(text) +
                                       " is not pairs of hexadecimal digits; a text begins with "
                                       "\"$\", the name of a file with \"%\"");
    }
    return JobOutcome(code, job, notation == '%' ? text.substr(1) : "");
  });
}

struct StorageCommand {
  const char* name;
  const char* brief;
  uint32_t operation;
  bool namesDevice;
};

constexpr StorageCommand StorageCommands[] = {
    {"ram", "let downloads go to the printer's memory again", STORAGE_TARGET_RAM, false},
    {"target", "let downloads go to a storage device", STORAGE_TARGET_DEVICE, true},
    {"format", "format a storage device: all that it holds is lost", STORAGE_FORMAT, true},
    {"directory", "print a list of what the printer's storage holds", STORAGE_PRINT_DIRECTORY,
     false},
};

void AddStorageCommand(CLI::App* storage, const StorageCommand& what) {
  struct Options {
    int device = STORAGE_DEVICE_RAM;
    JobOptions job;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(storage, what.name, what.brief, StorageManual);
  CLI::Option* device = AddDeviceOption(command, "--device", &options->device, "The device");
  if (what.namesDevice) Require(device);
  AddJobOptions(command, &options->job);
  AddClassOption(command, &options->job);
  OnRun(command, [options, operation = what.operation] {
    const JobOptions& job = options->job;
    const HvJobInfo record = job.Record();
    const uint32_t code = HvGenResource(operation, job.destination.c_str(), &record,
                                        static_cast<uint32_t>(options->device));
    return JobOutcome(code, job);
  });
}

}  // namespace

void AddSendCommands(CLI::App* program) {
  AddSend(program);
  AddString(program);
  CLI::App* storage = AddCommandGroup(program, "storage",
                                      "command the storage devices of a printer", StorageManual);
  for (const StorageCommand& command : StorageCommands) AddStorageCommand(storage, command);
}

}  // namespace hvtool
