// What the Windows PCL driver makes of PCL symbol sets.
#pragma once

#include <cstdint>
#include <string_view>

namespace hv {

struct PclSymbolSet {
  uint8_t characterSet;       // of Windows
  std::string_view suffix;    // of the face name
  uint16_t translationTable;  // see FindTranslation
};

// fontType is the byte of the descriptor, 0 for fonts of 7-bit codes.
PclSymbolSet FindPclSymbolSet(uint16_t symbolSet, int32_t fontType);

// The text of a symbol set, "8U", as it stands in face names: "W1" and the like for the sets of
// Windows.
std::string_view ShortSymbolSetText(std::string_view symbolSet);

// A PCL typeface by its number.
struct PclTypeface {
  uint8_t family;         // of "pitch and family", 0 for an unknown one
  std::string_view name;  // empty for an unknown one
};
PclTypeface FindPclTypeface(uint32_t typeface);

}  // namespace hv
