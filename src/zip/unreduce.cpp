#include <array>
#include <bit>
#include <memory>

#include "zip/bit_reader.h"
#include "zip/decoders.h"

namespace hv {
namespace {

constexpr uint8_t MatchMark = 144;  // DLE: what follows is a match, or this byte itself
constexpr unsigned MinMatch = 3;

// The bytes that are likely behind a byte.
struct FollowerSet {
  std::array<uint8_t, 64> bytes;
  uint8_t size;
  uint8_t indexBits;
};

using FollowerSets = std::array<FollowerSet, 256>;

bool ReadFollowerSets(BitReader& reader, FollowerSets& sets) {
  for (std::size_t i = sets.size(); i-- > 0;) {
    FollowerSet& set = sets[i];
    set.size = static_cast<uint8_t>(reader.Take(6));
    // A set of one still has an index of one bit.
    set.indexBits = static_cast<uint8_t>(set.size <= 2 ? 1 : std::bit_width(set.size - 1U));
    for (unsigned k = 0; k < set.size; ++k) set.bytes[k] = static_cast<uint8_t>(reader.Take(8));
  }
  return !reader.Failed();
}

// The next byte behind `last`; false when there is none or the index is outside the set.
bool ReadByte(BitReader& reader, const FollowerSets& sets, uint8_t last, uint8_t& byte) {
  const FollowerSet& set = sets[last];
  if (set.size == 0 || reader.Take(1) != 0) {
    byte = static_cast<uint8_t>(reader.Take(8));
  } else {
    const uint32_t index = reader.Take(set.indexBits);
    if (index >= set.size) return false;
    byte = set.bytes[index];
  }
  return !reader.Failed();
}

}  // namespace

bool Unreduce(MemberInput& input, OutputWindow& window, unsigned factor) {
  BitReader reader(input);
  const auto sets = std::make_unique<FollowerSets>();
  if (!ReadFollowerSets(reader, *sets)) return false;

  uint8_t last = 0;
  const auto next = [&] { return ReadByte(reader, *sets, last, last); };
  // The byte behind the mark holds the length in its low bits and the high bits of the distance.
  const unsigned lengthBits = 8 - factor;
  const unsigned longLength = (1U << lengthBits) - 1;
  while (window.Wants()) {
    if (!next()) return false;
    if (last != MatchMark) {
      window.Put(last);
      continue;
    }
    if (!next()) return false;
    const unsigned packed = last;
    if (packed == 0) {
      window.Put(MatchMark);
      continue;
    }
    unsigned length = packed & longLength;
    if (length == longLength) {
      if (!next()) return false;
      length += last;
    }
    if (!next()) return false;
    window.Copy((packed >> lengthBits << 8) + last + 1, length + MinMatch);
  }
  return true;
}

}  // namespace hv
