// Exports of the macro family.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "macros/macro_operations.h"
#include "macros/macro_validation.h"
#include "support/ascii.h"

using hv::Guarded;
using hv::IsPathArgument;

namespace {

bool IsMacroIdentifier(const HvJobInfo& job) {
  return job.identifier <= MACRO_MAX_IDENTIFIER;
}

// Two different files, and a job in one of the printer's languages.
bool CanBeSent(const char* source, const char* destination, const HvJobInfo* job,
               const HvMacroInfo* info) {
  return IsPathArgument(source) && IsPathArgument(destination) && job != nullptr &&
         info != nullptr && !hv::EqualsIgnoreCase(source, destination) &&
         hv::IsKnownEmulation(*job) && job->emulation != JOB_EMULATION_NONE;
}

bool CanBeSwitched(const char* destination, const HvJobInfo* job) {
  return IsPathArgument(destination) && job != nullptr && IsMacroIdentifier(*job);
}

}  // namespace

uint32_t HVAPI_CALL HvMacCreate(const char* source, const char* destination, const HvJobInfo* job,
                                HvMacroInfo* info) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!CanBeSent(source, destination, job, info) || !IsMacroIdentifier(*job)) {
      return HV_BAD_ARGUMENT;
    }
    return hv::CreateMacro(source, destination, *job, info);
  });
}

uint32_t HVAPI_CALL HvMacValidate(const char* source, HvJobInfo* job, HvMacroInfo* info) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!IsPathArgument(source) || job == nullptr || info == nullptr) return HV_BAD_ARGUMENT;
    return hv::ValidateMacro(source, job, info);
  });
}

uint32_t HVAPI_CALL HvMacDownload(const char* source, const char* destination, const HvJobInfo* job,
                                  HvMacroInfo* info, uint32_t mode, uint32_t validationResult) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!CanBeSent(source, destination, job, info)) return HV_BAD_ARGUMENT;
    const bool wraps = validationResult == HV_WRONG_LANGUAGE;
    if ((validationResult != HV_OK && !wraps) || (wraps && job->emulation == JOB_EMULATION_PCLXL) ||
        mode < MACRO_PRINT_ONCE || mode > MACRO_SEND_RAW ||
        (mode != MACRO_SEND_RAW && !IsMacroIdentifier(*job)) || info->target < STORAGE_DEVICE_RAM ||
        info->target > STORAGE_DEVICE_DISK2) {
      return HV_BAD_ARGUMENT;
    }
    return hv::DownloadMacro(source, destination, *job, info, mode, wraps);
  });
}

uint32_t HVAPI_CALL HvMacActivate(const char* destination, const HvJobInfo* job, uint32_t enable) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!CanBeSwitched(destination, job)) return HV_BAD_ARGUMENT;
    return hv::ActivateMacro(destination, *job, enable != 0);
  });
}

uint32_t HVAPI_CALL HvMacDelete(const char* destination, const HvJobInfo* job) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!CanBeSwitched(destination, job)) return HV_BAD_ARGUMENT;
    return hv::DeleteMacro(destination, *job);
  });
}
