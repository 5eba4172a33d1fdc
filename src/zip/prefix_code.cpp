#include "zip/prefix_code.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace hv {
namespace {

using LengthCounts = std::array<uint16_t, MaxPrefixBits + 1>;

LengthCounts CountLengths(std::span<const uint8_t> lengths) {
  LengthCounts counts = {};
  for (const uint8_t length : lengths) ++counts[length];
  counts[0] = 0;
  return counts;
}

// The share of all bit strings of MaxPrefixBits that no code begins; negative when codes collide.
int32_t UnusedStrings(const LengthCounts& counts) {
  int32_t unused = 1 << MaxPrefixBits;
  for (unsigned length = 1; length <= MaxPrefixBits; ++length) {
    unused -= counts[length] << (MaxPrefixBits - length);
  }
  return unused;
}

// Puts the symbols that occur in the order of their codes.
std::array<uint16_t, MaxPrefixSymbols> SortByLength(std::span<const uint8_t> lengths,
                                                    const LengthCounts& counts) {
  std::array<uint16_t, MaxPrefixBits + 2> place = {};
  for (unsigned length = 1; length <= MaxPrefixBits; ++length) {
    place[length + 1] = static_cast<uint16_t>(place[length] + counts[length]);
  }
  std::array<uint16_t, MaxPrefixSymbols> sorted;
  for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
    if (lengths[symbol] != 0) sorted[place[lengths[symbol]]++] = static_cast<uint16_t>(symbol);
  }
  return sorted;
}

// The code behind `code`, both of `length` bits with the first one lowest.
uint32_t NextCode(uint32_t code, unsigned length) {
  uint32_t bit = uint32_t{1} << (length - 1);
  while ((code & bit) != 0) bit >>= 1;
  return bit == 0 ? 0 : (code & (bit - 1)) | bit;
}

uint32_t EntryOf(uint32_t symbol, unsigned codeBits) {
  return symbol + codeBits + (codeBits << 8);
}

// The table of a code that leaves bit strings without a symbol: none, or one code of a single bit.
void FillIncomplete(std::span<const uint8_t> lengths, std::span<const uint32_t> symbols,
                    std::span<uint32_t> root) {
  std::fill(root.begin(), root.end(), EntryOf(PrefixInvalid, 1));
  const auto single = std::find(lengths.begin(), lengths.end(), 1);
  if (single == lengths.end()) return;
  const uint32_t entry = EntryOf(symbols[static_cast<std::size_t>(single - lengths.begin())], 1);
  for (std::size_t i = 0; i < root.size(); i += 2) root[i] = entry;
}

// The bits that index a subtable whose first code has `length` bits.
unsigned SubtableBits(LengthCounts counts, unsigned length, unsigned rootBits) {
  unsigned bits = length - rootBits;
  int32_t unused = 1 << bits;
  while (rootBits + bits < MaxPrefixBits) {
    unused -= counts[rootBits + bits];
    if (unused <= 0) break;
    unused *= 2;
    ++bits;
  }
  return bits;
}

}  // namespace

bool BuildPrefixTable(std::span<const uint8_t> lengths, std::span<const uint32_t> symbols,
                      unsigned rootBits, IncompleteCode incomplete, std::span<uint32_t> table) {
  LengthCounts counts = CountLengths(lengths);
  const int32_t unused = UnusedStrings(counts);
  const std::size_t rootSize = std::size_t{1} << rootBits;
  if (unused != 0) {
    const bool atMostOneBit =
        unused == 1 << MaxPrefixBits || (counts[1] == 1 && unused == 1 << (MaxPrefixBits - 1));
    if (unused < 0 || incomplete == IncompleteCode::Refused || !atMostOneBit) return false;
    FillIncomplete(lengths, symbols, table.first(rootSize));
    return true;
  }

  const std::array<uint16_t, MaxPrefixSymbols> sorted = SortByLength(lengths, counts);
  const uint16_t* next = sorted.data();
  uint32_t code = 0;
  // Codes that fit the root: the table for one more bit is the table so far, twice.
  for (unsigned length = 1; length <= rootBits; ++length) {
    const std::size_t half = std::size_t{1} << (length - 1);
    std::copy_n(table.begin(), half, table.begin() + static_cast<std::ptrdiff_t>(half));
    for (unsigned i = counts[length]; i > 0; --i) {
      table[code] = EntryOf(symbols[*next++], length);
      code = NextCode(code, length);
    }
  }
  // The others, by the root's bits they begin with.
  std::size_t subtable = rootSize;
  std::size_t subtableSize = 0;
  uint32_t prefix = UINT32_MAX;
  for (unsigned length = rootBits + 1; length <= MaxPrefixBits; ++length) {
    for (; counts[length] > 0; --counts[length]) {
      if ((code & (rootSize - 1)) != prefix) {
        prefix = code & static_cast<uint32_t>(rootSize - 1);
        subtable += subtableSize;
        const unsigned bits = SubtableBits(counts, length, rootBits);
        subtableSize = std::size_t{1} << bits;
        table[prefix] =
            PrefixSymbol(static_cast<uint32_t>(subtable)) | PrefixLink | bits << 8 | rootBits;
      }
      const uint32_t entry = EntryOf(symbols[*next++], length - rootBits);
      const std::size_t step = std::size_t{1} << (length - rootBits);
      for (std::size_t i = code >> rootBits; i < subtableSize; i += step)
        table[subtable + i] = entry;
      code = NextCode(code, length);
    }
  }
  return true;
}

uint32_t ReadPrefixCode(BitReader& reader, const uint32_t* table, unsigned rootBits,
                        uint64_t flip) {
  reader.Refill();
  uint32_t entry = table[(reader.Peek() ^ flip) & ((uint64_t{1} << rootBits) - 1)];
  if ((entry & PrefixLink) != 0) {
    reader.Drop(rootBits);
    const uint64_t index = (reader.Peek() ^ flip) & ((uint64_t{1} << PrefixCodeBits(entry)) - 1);
    entry = table[PrefixValue(entry) + index];
  }
  reader.Drop(PrefixCodeBits(entry));
  return entry;
}

}  // namespace hv
