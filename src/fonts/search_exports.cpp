// Exports of the searches.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "fonts/font_search.h"
#include "fonts/resource_list.h"
#include "fonts/resource_search.h"

using hv::Guarded;
using hv::IsPathArgument;

namespace {

constexpr uint32_t LastFontKind = 28;

// Runs a search over an empty list and gives the list to the caller; with `keepsPart` also when the
// search ended before all was found, which it says with false.
template <typename Search>
HvFoundResource* RunSearch(uint16_t* count, bool keepsPart, Search search) {
  if (count == nullptr) return nullptr;
  hv::ResourceList list(*count);
  *count = 0;
  const bool whole = Guarded(false, [&] { return search(&list); });
  if (!whole && !keepsPart) return nullptr;
  *count = list.Count();
  return list.Release();
}

}  // namespace

HvFoundResource* HVAPI_CALL HvFonFind(const char* directory, uint16_t* count, uint32_t fontKind,
                                      uint32_t classFilter, uint32_t companionMode,
                                      uint32_t recurse) {
  return HvFonFind2(directory, count, fontKind, classFilter, companionMode, recurse, nullptr);
}

HvFoundResource* HVAPI_CALL HvFonFind2(const char* directory, uint16_t* count, uint32_t fontKind,
                                       uint32_t classFilter, uint32_t companionMode,
                                       uint32_t recurse, HvFontProgress progress) {
  // The fonts that were found before memory ran out are still of use.
  return RunSearch(count, true, [&](hv::ResourceList* list) {
    if (!IsPathArgument(directory) || fontKind < 1 || fontKind > LastFontKind || classFilter < 1 ||
        classFilter > FONT_CLASSES_ALL) {
      return false;
    }
    hv::FindFonts({directory, fontKind, classFilter, companionMode, recurse != 0, progress}, list);
    return true;
  });
}

HvFoundResource* HVAPI_CALL HvMacFind(const char* directory, uint16_t* count, uint32_t language,
                                      uint32_t jobParameter, uint32_t recurse) {
  return RunSearch(count, false, [&](hv::ResourceList* list) {
    return IsPathArgument(directory) && language > JOB_EMULATION_NONE &&
           language <= JOB_EMULATION_PCLXL &&
           hv::FindMacros(directory, language, jobParameter, recurse != 0, list);
  });
}

HvFoundResource* HVAPI_CALL HvDemFind(const char* directory, uint16_t* count, uint32_t /*reserved*/,
                                      uint32_t recurse) {
  return RunSearch(count, false, [&](hv::ResourceList* list) {
    return IsPathArgument(directory) && hv::FindDemos(directory, recurse != 0, list);
  });
}

void HVAPI_CALL HvFonFindFree(HvFoundResource* list) {
  hv::ReleaseResources(list);
}
