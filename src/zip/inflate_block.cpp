#include "zip/inflate_block.h"

#include <cstring>

namespace hv {
namespace {

constexpr uint64_t LiteralLengthMask = (1 << LiteralLengthRootBits) - 1;
constexpr uint64_t DistanceMask = (1 << DistanceRootBits) - 1;

// Two refills of 8 bytes a turn.
constexpr std::size_t FastInputBytes = 24;
// The most that a turn may write: two literals, a match of 258, and the rest of a word behind it.
constexpr std::size_t MaxMatch = 258;
constexpr std::size_t WordSize = 16;
static_assert(2 + MaxMatch + WordSize <= OutputWindow::Margin);
static_assert(2 + MaxMatch + WordSize <= OutputWindow::RingSize - OutputWindow::WindowSize);

enum class Progress : uint8_t { GoesOn, BlockEnded, Damaged };

// Copies by words, of which the last may reach behind the match.
inline void CopyMatch(uint8_t* to, const uint8_t* from, std::size_t distance, std::size_t length) {
  uint8_t* const end = to + length;
  if (distance >= WordSize) {
    // Most matches are shorter than two words, and two are copied sooner than a loop is left.
    std::memcpy(to, from, WordSize);
    std::memcpy(to + WordSize, from + WordSize, WordSize);
    to += 2 * WordSize;
    from += 2 * WordSize;
    while (to < end) {
      std::memcpy(to, from, WordSize);
      to += WordSize;
      from += WordSize;
    }
  } else if (distance == 1) {
    std::memset(to, *from, length);
  } else if (distance >= 8) {
    do {
      std::memcpy(to, from, 8);
      to += 8;
      from += 8;
    } while (to < end);
  } else {
    // Each step repeats what the step before it has made.
    do {
      std::memcpy(to, from, 8);
      to += distance;
      from += distance;
    } while (to < end);
  }
}

inline uint32_t ExtraBits(uint64_t bits, uint32_t entry) {
  const uint64_t mask = (uint64_t{1} << PrefixDropBits(entry)) - 1;
  return static_cast<uint32_t>((bits & mask) >> PrefixCodeBits(entry));
}

// The entry behind a link. Drops the root's bits.
inline uint32_t FollowLink(BitBuffer& buffer, const uint32_t* table, uint32_t link,
                           unsigned rootBits) {
  buffer.Drop(rootBits);
  return table[PrefixValue(link) + (buffer.bits & ((uint64_t{1} << PrefixCodeBits(link)) - 1))];
}

// Decodes as long as there are plenty of input in the buffer and room in the ring.
Progress InflateFast(BitReader& reader, const InflateTables& tables, OutputWindow& window) {
  const uint32_t* const literalLengths = tables.literalLengths.data();
  const uint32_t* const distances = tables.distances.data();
  const std::span<const uint8_t> unread = reader.Input().Unread();
  const uint8_t* in = unread.data();
  const uint8_t* const lastIn = in + (unread.size() - FastInputBytes);
  uint8_t* const ring = window.Ring();
  uint8_t* out = ring + window.At();
  uint8_t* const ringEnd = ring + OutputWindow::RingSize;
  BitBuffer buffer = reader.Buffer();
  Progress progress = Progress::GoesOn;

  in += buffer.Refill(in);
  uint32_t entry = literalLengths[buffer.bits & LiteralLengthMask];
  do {
    // Here there are 56 bits less those of at most one literal...
    if ((entry & PrefixLiteral) != 0) {
      *out++ = static_cast<uint8_t>(entry >> 16);
      buffer.Drop(PrefixDropBits(entry));
      entry = literalLengths[buffer.bits & LiteralLengthMask];
      if ((entry & PrefixLiteral) != 0) {
        *out++ = static_cast<uint8_t>(entry >> 16);
        buffer.Drop(PrefixDropBits(entry));
        entry = literalLengths[buffer.bits & LiteralLengthMask];
        if ((entry & PrefixLiteral) != 0) {
          *out++ = static_cast<uint8_t>(entry >> 16);
          buffer.Drop(PrefixDropBits(entry));
          in += buffer.Refill(in);
          entry = literalLengths[buffer.bits & LiteralLengthMask];
          continue;
        }
      }
      in += buffer.Refill(in);
    }
    if ((entry & PrefixSpecial) != 0) {
      if ((entry & PrefixLink) != 0) {
        entry = FollowLink(buffer, literalLengths, entry, LiteralLengthRootBits);
      }
      if ((entry & PrefixLiteral) != 0) {
        *out++ = static_cast<uint8_t>(entry >> 16);
        buffer.Drop(PrefixDropBits(entry));
        in += buffer.Refill(in);
        entry = literalLengths[buffer.bits & LiteralLengthMask];
        continue;
      }
      if ((entry & PrefixSpecial) != 0) {
        buffer.Drop(PrefixDropBits(entry));
        progress = (entry & PrefixEnd) != 0 ? Progress::BlockEnded : Progress::Damaged;
        break;
      }
    }
    const std::size_t length = PrefixValue(entry) + ExtraBits(buffer.bits, entry);
    buffer.Drop(PrefixDropBits(entry));

    entry = distances[buffer.bits & DistanceMask];
    if ((entry & PrefixSpecial) != 0) {
      if ((entry & PrefixLink) != 0) {
        entry = FollowLink(buffer, distances, entry, DistanceRootBits);
      }
      if ((entry & PrefixSpecial) != 0) {
        progress = Progress::Damaged;
        break;
      }
    }
    const std::size_t distance = PrefixValue(entry) + ExtraBits(buffer.bits, entry);
    buffer.Drop(PrefixDropBits(entry));
    in += buffer.Refill(in);
    entry = literalLengths[buffer.bits & LiteralLengthMask];

    const std::size_t at = static_cast<std::size_t>(out - ring);
    const std::size_t wraps = std::size_t{0} - static_cast<std::size_t>(distance > at);
    const std::size_t from = at - distance + (wraps & OutputWindow::RingSize);
    if (from <= OutputWindow::RingSize - MaxMatch) {
      CopyMatch(out, ring + from, distance, length);
      out += length;
    } else {
      window.MoveTo(at);
      window.Copy(distance, length);
      out = ring + window.At();
    }
  } while (in <= lastIn && out < ringEnd);

  reader.Input().Take(static_cast<std::size_t>(in - unread.data()));
  reader.Buffer() = buffer;
  window.MoveTo(static_cast<std::size_t>(out - ring));
  return progress;
}

// Decodes one symbol, with a look at the end of the input at each step.
Progress InflateSymbol(BitReader& reader, const InflateTables& tables, OutputWindow& window) {
  const auto read = [&](const auto& table, unsigned rootBits) {
    return ReadPrefixCode(reader, table.data(), rootBits);
  };
  const auto value = [&](uint32_t entry) {
    return PrefixValue(entry) + reader.Take(PrefixDropBits(entry) - PrefixCodeBits(entry));
  };
  const uint32_t entry = read(tables.literalLengths, LiteralLengthRootBits);
  if (reader.Failed() || (entry & PrefixInvalid) != 0) return Progress::Damaged;
  if ((entry & PrefixEnd) != 0) return Progress::BlockEnded;
  if ((entry & PrefixLiteral) != 0) {
    window.Put(static_cast<uint8_t>(PrefixValue(entry)));
    return Progress::GoesOn;
  }
  const std::size_t length = value(entry);
  const uint32_t distanceEntry = read(tables.distances, DistanceRootBits);
  if ((distanceEntry & PrefixInvalid) != 0) return Progress::Damaged;
  const std::size_t distance = value(distanceEntry);
  if (reader.Failed()) return Progress::Damaged;
  window.Copy(distance, length);
  return Progress::GoesOn;
}

}  // namespace

bool InflateBlock(BitReader& reader, const InflateTables& tables, OutputWindow& window) {
  Progress progress = Progress::GoesOn;
  while (progress == Progress::GoesOn && !window.Stopped()) {
    MemberInput& input = reader.Input();
    if (input.Unread().size() < FastInputBytes) input.More();
    progress = input.Unread().size() >= FastInputBytes ? InflateFast(reader, tables, window)
                                                       : InflateSymbol(reader, tables, window);
  }
  return progress != Progress::Damaged;
}

}  // namespace hv
