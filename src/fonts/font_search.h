// Searches for fonts and font metrics. Arguments have been checked by the export.
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "fonts/resource_list.h"

namespace hv {

struct FontQuery {
  std::string directory;
  uint32_t fontKind;       // 1 to 28
  uint32_t classFilter;    // 1 to 6
  uint32_t companionMode;  // FONT_COMPANIONS_...
  bool recurse;
  HvFontProgress progress;  // or NULL
};

// Adds what is found to the list. It ends early when there is no memory.
void FindFonts(const FontQuery& query, ResourceList* list);

}  // namespace hv
