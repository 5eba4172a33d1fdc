// Macro records and sources, and what becomes of them in a file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "hvapi.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace hvtest {

inline HvJobInfo MacroJob(int32_t emulation, uint16_t identifier = 5, uint32_t flags = 0) {
  HvJobInfo job = Job(flags, emulation);
  job.identifier = identifier;
  return job;
}

inline HvMacroInfo MacroInfo(uint32_t flags = 0, const std::string& name = "",
                             uint32_t target = STORAGE_DEVICE_RAM) {
  HvMacroInfo info = {};
  info.flags = flags;
  name.copy(info.name, sizeof info.name);
  info.target = target;
  return info;
}

// The result of an export, and the bytes of the destination; "(none)" when there is none.
struct SentMacro {
  uint32_t code;
  std::string bytes;

  bool operator==(const SentMacro&) const = default;
};

inline void PrintTo(const SentMacro& sent, std::ostream* out) {
  *out << "code " << sent.code << ", " << testing::PrintToString(sent.bytes);
}

inline SentMacro Sent(uint32_t code, const std::string& destination) {
  return {code, std::filesystem::exists(destination) ? ReadFile(destination) : "(none)"};
}

// A PCL XL job whose one page moves the cursor and embeds a text that looks like a UEL and a PJL
// line would, but for one byte; and the job that it becomes.
std::string OnePagePclXlJob();
std::string ConvertedPclXlJob(const std::string& streamName, bool execute);

}  // namespace hvtest
