#include "job_options.h"

#include "pclxl_fault.h"
#include "program.h"

namespace hvtool {

HvJobInfo JobOptions::Record() const {
  HvJobInfo job = {};
  job.flags = (pjl ? uint32_t{JOB_FLAG_PJL} : 0U) | (escK ? uint32_t{JOB_FLAG_ESC_K} : 0U);
  job.printerClass = printerClass;
  job.emulation = emulation;
  job.copies = copies;
  job.identifier = identifier;
  if (!nbxAddress.empty()) {
    job.nbxAddress1 = nbxAddress.at(0);
    job.nbxAddress2 = nbxAddress.at(1);
  }
  job.jobName = name ? name->c_str() : nullptr;
  job.personality = personality;
  return job;
}

void AddJobOptions(CLI::App* command, JobOptions* job) {
  AddJobOptions(command, job, "--name");
}

void AddJobOptions(CLI::App* command, JobOptions* job, const std::string& nameOption) {
  Require(AddOption(command, "--to", &job->destination, "DEST",
                    "Printer queue, socket://host[:port], or path of a file or port"));
  CLI::Option* pjl =
      AddFlag(command, "--pjl", &job->pjl, "Frame the job with PJL: the printer understands it");
  Exclude(AddFlag(command, "--esc-k", &job->escK,
                  "Use ESC [ K sequences instead: the printer takes no PJL"),
          pjl);
  AddLanguageOption(command, job);
  AddOption(command, nameOption, &job->name, "TEXT",
            "Name of the document; a PJL printer shows its first 20 characters on the panel");
  Expect(AddOption(command, "--nbx", &job->nbxAddress, "A B",
                   "Reach the printer through its communication library, under these two address "
                   "words (0 to 65535, the second not 0); DEST is not opened then"),
         2);
}

void AddLanguageOption(CLI::App* command, JobOptions* job) {
  AddChoice(command, "--language", &job->emulation, "LANGUAGE",
            {{"none", JOB_EMULATION_NONE},
             {"default", JOB_EMULATION_DEFAULT},
             {"ppds", JOB_EMULATION_PPDS},
             {"postscript", JOB_EMULATION_POSTSCRIPT},
             {"gl", JOB_EMULATION_GL},
             {"pcl", JOB_EMULATION_PCL},
             {"pclxl", JOB_EMULATION_PCLXL}},
            "Language that the printer is to be switched to");
}

void AddCopiesOption(CLI::App* command, JobOptions* job) {
  AddOption(command, "--copies", &job->copies, "N",
            "Copies that the printer is asked for; without framing the data are sent N times");
}

void AddAppendOption(CLI::App* command, JobOptions* job) {
  AddFlag(command, "--append", &job->append,
          "Append to a file destination instead of replacing it");
}

void AddPersonalityOption(CLI::App* command, JobOptions* job) {
  AddOption(command, "--personality", &job->personality, "N",
            "Personality byte of the ESC [ K language switch, 0 for the usual one");
}

void AddClassOption(CLI::App* command, JobOptions* job) {
  AddOption(command, "--class", &job->printerClass, "N",
            "Class of the printer; class 2 needs a lead-in before downloads to a device");
}

void AddIdentifierOption(CLI::App* command, JobOptions* job) {
  AddOption(command, "--id", &job->identifier, "N", "Identifier of the font or macro, 0 to 65535");
}

CLI::Option* AddDeviceOption(CLI::App* command, const std::string& name, int* device,
                             const std::string& description) {
  *device = STORAGE_DEVICE_RAM;
  return AddChoice(command, name, device, "DEVICE",
                   {{"ram", STORAGE_DEVICE_RAM},
                    {"flash1", STORAGE_DEVICE_FLASH1},
                    {"flash2", STORAGE_DEVICE_FLASH2},
                    {"disk1", STORAGE_DEVICE_DISK1},
                    {"disk2", STORAGE_DEVICE_DISK2}},
                   description);
}

int JobOutcome(uint32_t code, const JobOptions& job, const std::string& source) {
  return JobOutcome(code, job, source, Quoted(source));
}

int JobOutcome(uint32_t code, const JobOptions& job, const std::string& source,
               const std::string& shown) {
  const std::string destination = Quoted(job.destination);
  const int status = static_cast<int>(code);
  switch (code) {
    case HV_OK:
      return HV_OK;
    case HV_CANNOT_OPEN: {
      // Either end may be meant; the checksum needs the source alone.
      uint16_t sum = 0;
      const bool sourceOpens =
          source.empty() || HvFilChecksum(source.c_str(), 0, 0, &sum) != HV_CANNOT_OPEN;
      return Fail(status, sourceOpens ? "cannot open the destination " + destination
                                      : "cannot open the file " + shown);
    }
    case HV_WRITE_FAILED:
      return Fail(status, "cannot write the destination " + destination);
    case HV_PRINTER_REFUSED:
      return Fail(status, "the printer " + destination + " did not take all bytes");
    case HV_CONNECTION_FAILED:
      return Fail(status, "no connection to " + destination + " by the communication library");
    case HV_BAD_PCLXL: {
      const std::string fault = PclXlFault(source);
      const std::string what = "cannot convert " + shown;
      return fault.empty() ? Outcome(code, what) : Fail(status, what + ": " + fault);
    }
    default:
      return Outcome(code, source.empty() ? "cannot send to " + destination
                                          : "cannot send " + shown + " to " + destination);
  }
}

}  // namespace hvtool
