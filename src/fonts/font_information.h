// What a font or font-metrics file is. Arguments have been checked by the export.
#pragma once

#include <cstdint>
#include <string_view>

#include "api/hvapi.h"
#include "fonts/directory_walk.h"

namespace hv {

// Fills a cleared record. Results are those of HvFonQueryInfo. What a listing has told of the file
// is not asked of the system again.
uint32_t QueryFontInformation(const char* fontPath, HvFontInfo* info, uint32_t companionMode,
                              bool allowMetricFiles, const FoundFile* listed = nullptr);

// What the description of a file can say, told by its name alone.
struct FontPossibility {
  uint32_t fontClass;  // FONT_CLASS_...
  uint32_t fontTypes;  // bit FONT_TYPE_... is set for each type; 0 for a file that is no font
};
FontPossibility PossibilityOf(std::string_view fontPath);

constexpr uint32_t FontTypeBit(int32_t fontType) {
  return uint32_t{1} << fontType;
}

}  // namespace hv
