#include <algorithm>
#include <cstring>
#include <memory>

#include "zip/decoders.h"
#include "zip/inflate_block.h"
#include "zip/inflate_codes.h"

namespace hv {
namespace {

enum BlockType : uint8_t { StoredBlock, FixedBlock, DynamicBlock };

bool BuildTables(std::span<const uint8_t> literalLengths, std::span<const uint8_t> distances,
                 InflateTables& tables) {
  return BuildPrefixTable(literalLengths, LiteralLengthSymbols, LiteralLengthRootBits,
                          IncompleteCode::OneBitAllowed, tables.literalLengths) &&
         BuildPrefixTable(distances, DistanceSymbols, DistanceRootBits,
                          IncompleteCode::OneBitAllowed, tables.distances);
}

bool BuildFixedTables(InflateTables& tables) {
  std::array<uint8_t, LiteralLengthCount> lengths;
  std::fill_n(&lengths[0], 144, uint8_t{8});
  std::fill_n(&lengths[144], 112, uint8_t{9});
  std::fill_n(&lengths[256], 24, uint8_t{7});
  std::fill_n(&lengths[280], 8, uint8_t{8});
  std::array<uint8_t, DistanceCodeCount> distances;
  distances.fill(5);
  return BuildTables(lengths, distances, tables);
}

// Reads `lengths`, which are coded themselves: 0 to 15 is a length, the others repeat.
bool ReadCodeLengths(BitReader& reader, std::span<const uint32_t> code,
                     std::span<uint8_t> lengths) {
  for (std::size_t i = 0; i < lengths.size();) {
    const uint32_t entry = ReadPrefixCode(reader, code.data(), CodeLengthRootBits);
    if (reader.Failed() || (entry & PrefixInvalid) != 0) return false;
    const uint8_t symbol = static_cast<uint8_t>(PrefixValue(entry));
    if (symbol < 16) {
      lengths[i++] = symbol;
      continue;
    }
    if (symbol == 16 && i == 0) return false;
    const uint8_t repeated = symbol == 16 ? lengths[i - 1] : uint8_t{0};
    const std::size_t count = symbol == 16   ? reader.Take(2) + 3
                              : symbol == 17 ? reader.Take(3) + 3
                                             : reader.Take(7) + 11;
    if (count > lengths.size() - i) return false;
    std::fill_n(&lengths[i], count, repeated);
    i += count;
  }
  return !reader.Failed();
}

// Reads the codes of a block that brings its own (section 3.2.7).
bool ReadDynamicTables(BitReader& reader, InflateTables& tables) {
  // Five bits cannot say more than there are.
  const std::size_t literalLengthCount = reader.Take(5) + 257;
  const std::size_t distanceCount = reader.Take(5) + 1;
  const std::size_t codeLengthCount = reader.Take(4) + 4;
  std::array<uint8_t, CodeLengthCount> codeLengths = {};
  for (std::size_t i = 0; i < codeLengthCount; ++i) {
    codeLengths[CodeLengthOrder[i]] = static_cast<uint8_t>(reader.Take(3));
  }
  std::array<uint32_t, PrefixTableSize(CodeLengthCount, CodeLengthRootBits, CodeLengthRootBits)>
      code = {};
  if (!BuildPrefixTable(codeLengths, CodeLengthSymbols, CodeLengthRootBits, IncompleteCode::Refused,
                        code)) {
    return false;
  }
  // A repetition may go on from the one alphabet into the other.
  std::array<uint8_t, LiteralLengthCount + DistanceCodeCount> lengths = {};
  const std::span<uint8_t> all(lengths.data(), literalLengthCount + distanceCount);
  return ReadCodeLengths(reader, code, all) && lengths[EndOfBlock] != 0 &&
         BuildTables(all.first(literalLengthCount), all.subspan(literalLengthCount), tables);
}

bool CopyStoredBlock(BitReader& reader, OutputWindow& window) {
  reader.AlignToByte();
  std::size_t length = reader.Take(16);
  if (reader.Take(16) != (~length & 0xFFFF) || reader.Failed()) return false;
  for (; length > 0 && !reader.IsEmpty(); --length) {
    window.Put(static_cast<uint8_t>(reader.Take(8)));
  }
  if (length == 0) return true;
  reader.Clear();
  MemberInput& input = reader.Input();
  while (length > 0 && !window.Stopped()) {
    const std::span<const uint8_t> unread = input.Unread();
    const std::span<const uint8_t> bytes = unread.first(std::min(unread.size(), length));
    window.Append(bytes);
    input.Take(bytes.size());
    length -= bytes.size();
    if (length > 0 && !input.More()) return false;
  }
  return true;
}

}  // namespace

bool Inflate(MemberInput& input, OutputWindow& window) {
  const auto tables = std::make_unique<InflateTables>();
  BitReader reader(input);
  bool tablesAreFixed = false;
  bool isLast = false;
  while (!isLast && !window.Stopped()) {
    isLast = reader.Take(1) != 0;
    switch (reader.Take(2)) {
      case StoredBlock:
        if (!CopyStoredBlock(reader, window)) return false;
        continue;
      case FixedBlock:
        if (!tablesAreFixed) tablesAreFixed = BuildFixedTables(*tables);
        break;
      case DynamicBlock:
        tablesAreFixed = false;
        if (!ReadDynamicTables(reader, *tables)) return false;
        break;
      default:
        return false;
    }
    if (!InflateBlock(reader, *tables, window)) return false;
  }
  return !reader.Failed();
}

}  // namespace hv
