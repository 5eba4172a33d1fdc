// Exports of the configuration listing.

#include "api/arguments.h"
#include "api/caller_memory.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "config/config_listing.h"

HvConfigFileEntry* HVAPI_CALL HvDatQueryFiles(const char* directory, uint32_t fileKind,
                                              uint16_t* count) {
  HvConfigFileEntry* list = nullptr;
  // What was listed before memory ran out is still of use.
  hv::Guarded(0, [&] {
    if (count == nullptr) return 0;
    *count = 0;
    if (hv::IsPathArgument(directory)) hv::ListConfigFiles(directory, fileKind, &list, count);
    return 0;
  });
  return list;
}

void HVAPI_CALL HvDatQueryFilesFree(HvConfigFileEntry* list) {
  while (list != nullptr) {
    HvConfigFileEntry* const next = list->next;
    hv::ReleaseForCaller(list);
    list = next;
  }
}
