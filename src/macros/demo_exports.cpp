// Exports of the demonstration files.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "macros/demo_download.h"
#include "support/ascii.h"

using hv::Guarded;
using hv::IsPathArgument;

uint32_t HVAPI_CALL HvDemDownload(const char* source, const char* destination, HvJobInfo* job,
                                  const HvDemoInfo* info) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!IsPathArgument(source) || !IsPathArgument(destination) || job == nullptr ||
        info == nullptr || hv::EqualsIgnoreCase(source, destination) ||
        info->target <= STORAGE_DEVICE_RAM || info->target > STORAGE_DEVICE_DISK2 ||
        info->method < DEMO_METHOD_POSTSCRIPT || info->method > DEMO_METHOD_NOTHING) {
      return HV_BAD_ARGUMENT;
    }
    return hv::DownloadDemo(source, destination, job, *info);
  });
}
