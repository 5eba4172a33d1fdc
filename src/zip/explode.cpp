#include <array>
#include <memory>
#include <vector>

#include "zip/bit_reader.h"
#include "zip/decoders.h"
#include "zip/prefix_code.h"

namespace hv {
namespace {

constexpr std::size_t LiteralCount = 256;
constexpr std::size_t LengthCount = 64;
constexpr std::size_t DistanceCount = 64;
constexpr unsigned RootBits = 8;
constexpr uint32_t LongLength = LengthCount - 1;  // eight more bits of length follow

// The codes are written as complements of canonical ones.
constexpr uint64_t Complement = ~uint64_t{0};

using ByteTable = std::array<uint32_t, PrefixTableSize(LiteralCount, RootBits, MaxPrefixBits)>;
using SmallTable = std::array<uint32_t, PrefixTableSize(LengthCount, RootBits, MaxPrefixBits)>;

struct ExplodeTables {
  ByteTable literals;
  SmallTable lengths;
  SmallTable distances;
};

// What each symbol of a Shannon-Fano tree stands for: itself.
constexpr std::array<uint32_t, LiteralCount> MakeSymbols() {
  std::array<uint32_t, LiteralCount> symbols = {};
  for (uint32_t i = 0; i < symbols.size(); ++i) symbols[i] = PrefixSymbol(i);
  return symbols;
}
constexpr std::array<uint32_t, LiteralCount> Symbols = MakeSymbols();

// Reads a tree: the number of bytes that describe it, less one, then a byte for each run of codes
// of one length, with the length and the number of codes, both less one, in its low and high half.
bool ReadTree(BitReader& reader, std::size_t symbolCount, std::span<uint32_t> table) {
  std::array<uint8_t, LiteralCount> lengths = {};
  std::size_t known = 0;
  for (uint32_t runs = reader.Take(8) + 1; runs > 0; --runs) {
    const uint8_t length = static_cast<uint8_t>(reader.Take(4) + 1);
    const uint32_t count = reader.Take(4) + 1;
    if (reader.Failed() || count > symbolCount - known) return false;
    std::fill_n(&lengths[known], count, length);
    known += count;
  }
  return known == symbolCount &&
         BuildPrefixTable({lengths.data(), symbolCount}, {Symbols.data(), symbolCount}, RootBits,
                          IncompleteCode::Refused, table);
}

uint32_t ReadSymbol(BitReader& reader, std::span<const uint32_t> table) {
  return PrefixValue(ReadPrefixCode(reader, table.data(), RootBits, Complement));
}

}  // namespace

bool Explode(MemberInput& input, OutputWindow& window, bool largeWindow, bool literalTree) {
  const auto tables = std::make_unique<ExplodeTables>();
  BitReader reader(input);
  if (literalTree && !ReadTree(reader, LiteralCount, tables->literals)) return false;
  if (!ReadTree(reader, LengthCount, tables->lengths)) return false;
  if (!ReadTree(reader, DistanceCount, tables->distances)) return false;

  const unsigned lowBits = largeWindow ? 7 : 6;
  const uint32_t minMatch = literalTree ? 3 : 2;
  while (window.Wants()) {
    if (reader.Take(1) != 0) {
      const uint32_t byte = literalTree ? ReadSymbol(reader, tables->literals) : reader.Take(8);
      if (reader.Failed()) return false;
      window.Put(static_cast<uint8_t>(byte));
      continue;
    }
    const uint32_t low = reader.Take(lowBits);
    const uint32_t high = ReadSymbol(reader, tables->distances);
    uint32_t length = ReadSymbol(reader, tables->lengths);
    if (length == LongLength) length += reader.Take(8);
    if (reader.Failed()) return false;
    window.Copy((high << lowBits | low) + 1, length + minMatch);
  }
  return true;
}

}  // namespace hv
