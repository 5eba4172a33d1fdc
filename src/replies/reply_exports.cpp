// Exports of the printer replies.

#include "api/guard.h"
#include "api/hvapi.h"
#include "replies/job_account.h"
#include "replies/option_info.h"

using hv::Guarded;

HvOptionInfo* HVAPI_CALL HvParseOptionInfo(const void* reply) {
  return Guarded(nullptr, [&]() -> HvOptionInfo* {
    if (reply == nullptr) return nullptr;
    return hv::ParseOptionInfo(static_cast<const uint8_t*>(reply));
  });
}

void HVAPI_CALL HvFreeOptionInfo(HvOptionInfo* info) {
  hv::FreeOptionInfo(info);
}

HvJobAccount* HVAPI_CALL HvParseJobAccountingAlert(const void* reply) {
  return Guarded(nullptr, [&]() -> HvJobAccount* {
    if (reply == nullptr) return nullptr;
    return hv::ParseJobAccount(static_cast<const uint8_t*>(reply));
  });
}

void HVAPI_CALL HvFreeJobAccount(HvJobAccount* record) {
  hv::FreeJobAccount(record);
}
