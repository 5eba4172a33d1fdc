// How the upper half of the Windows character set is printed with the characters of a PCL symbol
// set. Published source: the PCL 5 symbol set tables.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace hv {

// The character that prints a Windows code, and one that is printed over it.
struct PclTranslation {
  uint8_t first;
  uint8_t second;  // 0 for none
};
constexpr uint8_t MissingCharacter = 127;  // as `first`: the symbol set lacks the character

constexpr std::size_t FirstTranslatedCode = 128;
using PclTranslationTable = std::array<PclTranslation, 128>;

// The table of a number that drivers know a symbol set by (PclSymbolSet::translationTable).
const PclTranslationTable& FindTranslation(uint16_t number);

}  // namespace hv
