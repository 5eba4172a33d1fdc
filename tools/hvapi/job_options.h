// The options of commands that send something to a printer: where it goes and how the printer is to
// be addressed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command_line.h"
#include "hvapi.h"

namespace hvtool {

struct JobOptions {
  std::string destination;
  bool pjl = false;
  bool escK = false;
  int emulation = JOB_EMULATION_NONE;
  uint16_t copies = 0;
  uint16_t identifier = 0;  // of a font or macro
  uint32_t printerClass = 0;
  uint8_t personality = 0;
  std::optional<std::string> name;
  std::vector<uint16_t> nbxAddress;  // empty, or two words
  bool append = false;

  // The record of these options; its name points into them.
  HvJobInfo Record() const;
};

// --to, --pjl | --esc-k, --language, --nbx, and --name: what every job takes. Where --name is that
// of something else, the name of the job has an option of its own.
void AddJobOptions(CLI::App* command, JobOptions* job);
void AddJobOptions(CLI::App* command, JobOptions* job, const std::string& nameOption);

// One of them by itself.
void AddLanguageOption(CLI::App* command, JobOptions* job);

// Those that only some jobs take.
void AddCopiesOption(CLI::App* command, JobOptions* job);       // --copies
void AddAppendOption(CLI::App* command, JobOptions* job);       // --append
void AddPersonalityOption(CLI::App* command, JobOptions* job);  // --personality
void AddClassOption(CLI::App* command, JobOptions* job);        // --class
void AddIdentifierOption(CLI::App* command, JobOptions* job);   // --id

// A storage device by name, "ram" to "disk2"; STORAGE_DEVICE_RAM when left out.
CLI::Option* AddDeviceOption(CLI::App* command, const std::string& name, int* device,
                             const std::string& description);

// Reports the result of a job: HV_OK is passed on, other codes become a sentence that names the
// destination, or the file or font `source` where that is at fault (empty: there is none). A source
// that is not its name to a person is shown as `shown`.
int JobOutcome(uint32_t code, const JobOptions& job, const std::string& source = "");
int JobOutcome(uint32_t code, const JobOptions& job, const std::string& source,
               const std::string& shown);

}  // namespace hvtool
