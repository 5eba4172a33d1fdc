// Exports of the font family.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "fonts/font_download.h"
#include "fonts/font_information.h"

using hv::Guarded;
using hv::IsPathArgument;

uint32_t HVAPI_CALL HvFonQueryInfo(const char* fontPath, HvFontInfo* info, uint32_t companionMode,
                                   uint32_t allowMetricFiles) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (info == nullptr) return HV_BAD_ARGUMENT;
    *info = HvFontInfo{};
    if (!IsPathArgument(fontPath)) return HV_BAD_ARGUMENT;
    return hv::QueryFontInformation(fontPath, info, companionMode, allowMetricFiles != 0);
  });
}

uint32_t HVAPI_CALL HvFonDownload(const char* fontPath, const char* destination,
                                  const HvJobInfo* job, uint32_t targetDevice) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    // A font is always in one of the printer's languages.
    if (!IsPathArgument(fontPath) || !IsPathArgument(destination) || job == nullptr ||
        !hv::IsKnownEmulation(*job) || job->emulation == JOB_EMULATION_NONE ||
        targetDevice < STORAGE_DEVICE_RAM || targetDevice > STORAGE_DEVICE_DISK2) {
      return HV_BAD_ARGUMENT;
    }
    return hv::DownloadFont(fontPath, destination, *job, targetDevice);
  });
}
