// Decoding tables of prefix codes, for codes that arrive with their first bit lowest.
//
// A table has 2^rootBits entries, indexed by the next bits of the input. Codes that are longer go
// on in subtables behind them. An entry is
//
//   bits 0-5    bits to drop: those of the code and of the extra bits behind it
//   bits 8-12   bits of the code alone; of a link: bits that index its subtable
//   bits 13-15  kind: PrefixLink, PrefixEnd, PrefixInvalid
//   bits 16-30  value: what the symbol stands for, or where the subtable begins
//   bit 31      PrefixLiteral
//
// The code bits of an entry of a subtable are those behind the root's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "zip/bit_reader.h"

namespace hv {

constexpr uint32_t PrefixLink = 1 << 13;
constexpr uint32_t PrefixEnd = 1 << 14;      // the symbol that ends a block
constexpr uint32_t PrefixInvalid = 1 << 15;  // no symbol: a code or a symbol that does not exist
constexpr uint32_t PrefixSpecial = PrefixLink | PrefixEnd | PrefixInvalid;
constexpr uint32_t PrefixLiteral = uint32_t{1} << 31;

constexpr unsigned PrefixDropBits(uint32_t entry) {
  return entry & 0x3F;
}
constexpr unsigned PrefixCodeBits(uint32_t entry) {
  return entry >> 8 & 0x1F;
}
constexpr uint32_t PrefixValue(uint32_t entry) {
  return entry >> 16 & 0x7FFF;
}

// What a symbol's entries hold but for the length of its code: value, kind, and the extra bits.
constexpr uint32_t PrefixSymbol(uint32_t value, unsigned extraBits = 0) {
  return value << 16 | extraBits;
}

constexpr std::size_t MaxPrefixSymbols = 288;
constexpr unsigned MaxPrefixBits = 16;

// Entries that suffice for any code. A subtable of 2^k entries is made for codes of which the
// longest has k bits behind the root's, so that at least k + 1 symbols share it.
constexpr std::size_t PrefixTableSize(std::size_t symbols, unsigned rootBits, unsigned maxBits) {
  const unsigned behind = maxBits > rootBits ? maxBits - rootBits : 0;
  return (std::size_t{1} << rootBits) + (symbols << behind) / (behind + 1) + 1;
}

// What is done with lengths that leave some bit strings without a symbol.
enum class IncompleteCode : uint8_t {
  Refused,
  // No code, or one of a single bit, is taken; what has no symbol is PrefixInvalid.
  OneBitAllowed,
};

// Makes the table of the canonical code with the given lengths, 0 for a symbol that does not occur:
// shorter codes before longer ones, equal ones by symbol. `symbols` holds a PrefixSymbol a length;
// `table` has PrefixTableSize entries. False when the lengths make no prefix code.
bool BuildPrefixTable(std::span<const uint8_t> lengths, std::span<const uint32_t> symbols,
                      unsigned rootBits, IncompleteCode incomplete, std::span<uint32_t> table);

// Reads one code and gives its entry; the extra bits behind it are still to be read. With `flip`
// all ones the input holds the complement of each bit of the code.
uint32_t ReadPrefixCode(BitReader& reader, const uint32_t* table, unsigned rootBits,
                        uint64_t flip = 0);

}  // namespace hv
