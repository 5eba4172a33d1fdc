#include <algorithm>

#include "support/encoder_parts.h"
#include "support/zip_encoders.h"

namespace hvtest {
namespace {

// The canonical code of deflate (RFC 1951, section 3.2.2), first bit highest.
std::vector<uint32_t> CanonicalCodes(const std::vector<unsigned>& lengths) {
  std::vector<uint32_t> codes(lengths.size());
  uint32_t code = 0;
  for (unsigned length = 1; length <= 16; ++length, code <<= 1) {
    for (std::size_t i = 0; i < lengths.size(); ++i) {
      if (lengths[i] == length) codes[i] = code++;
    }
  }
  return codes;
}

struct Range {
  std::size_t symbol;
  std::size_t base;
  unsigned extraBits;
};

// Length and distance symbols of deflate, computed by their rule: four, or two, of each number of
// extra bits.
Range LengthRange(std::size_t length) {
  if (length == 258) return {285, 258, 0};
  std::size_t symbol = 257;
  std::size_t base = 3;
  for (;; ++symbol) {
    const unsigned extra = symbol < 265 ? 0 : static_cast<unsigned>((symbol - 261) / 4);
    if (length < base + (std::size_t{1} << extra)) return {symbol, base, extra};
    base += std::size_t{1} << extra;
  }
}

Range DistanceRange(std::size_t distance) {
  std::size_t symbol = 0;
  std::size_t base = 1;
  for (;; ++symbol) {
    const unsigned extra = symbol < 4 ? 0 : static_cast<unsigned>(symbol / 2 - 1);
    if (distance < base + (std::size_t{1} << extra)) return {symbol, base, extra};
    base += std::size_t{1} << extra;
  }
}

constexpr MatchLimits DeflateLimits = {3, 258, 32768};

void WriteDeflateTokens(BitWriter& writer, const std::vector<Token>& tokens,
                        const PrefixCode& literalLengths, const PrefixCode& distances) {
  for (const Token& token : tokens) {
    if (token.length == 0) {
      literalLengths.Write(writer, token.literal);
      continue;
    }
    const Range length = LengthRange(token.length);
    literalLengths.Write(writer, length.symbol);
    writer.Put(static_cast<uint32_t>(token.length - length.base), length.extraBits);
    const Range distance = DistanceRange(token.distance);
    distances.Write(writer, distance.symbol);
    writer.Put(static_cast<uint32_t>(token.distance - distance.base), distance.extraBits);
  }
  literalLengths.Write(writer, 256);
}

}  // namespace

std::string DeflateStored(std::string_view content) {
  BitWriter writer;
  do {
    const std::string_view block = content.substr(0, 65535);
    content.remove_prefix(block.size());
    writer.Put(content.empty() ? 1 : 0, 3);
    writer.Align();
    writer.Put(static_cast<uint32_t>(block.size()), 16);
    writer.Put(static_cast<uint32_t>(~block.size() & 0xFFFF), 16);
    for (std::size_t i = 0; i < block.size(); ++i) writer.Put(ByteAt(block, i), 8);
  } while (!content.empty());
  return writer.Bytes();
}

std::string DeflateFixed(std::string_view content) {
  PrefixCode literalLengths;
  literalLengths.lengths.assign(288, 8);
  std::fill_n(literalLengths.lengths.begin() + 144, 112, 9U);
  std::fill_n(literalLengths.lengths.begin() + 256, 24, 7U);
  literalLengths.codes = CanonicalCodes(literalLengths.lengths);
  PrefixCode distances;
  distances.lengths.assign(32, 5);
  distances.codes = CanonicalCodes(distances.lengths);
  BitWriter writer;
  writer.Put(1 | 1 << 1, 3);
  WriteDeflateTokens(writer, FindTokens(content, DeflateLimits), literalLengths, distances);
  return writer.Bytes();
}

std::string DeflateDynamic(std::string_view content) {
  const std::vector<Token> tokens = FindTokens(content, DeflateLimits);
  std::vector<std::size_t> literalLengthCounts(286);
  std::vector<std::size_t> distanceCounts(30);
  literalLengthCounts[256] = 1;
  for (const Token& token : tokens) {
    if (token.length == 0) {
      ++literalLengthCounts[token.literal];
    } else {
      ++literalLengthCounts[LengthRange(token.length).symbol];
      ++distanceCounts[DistanceRange(token.distance).symbol];
    }
  }
  PrefixCode literalLengths;
  literalLengths.lengths = CodeLengths(literalLengthCounts, 15);
  literalLengths.codes = CanonicalCodes(literalLengths.lengths);
  PrefixCode distances;
  distances.lengths = CodeLengths(distanceCounts, 15);
  distances.codes = CanonicalCodes(distances.lengths);

  BitWriter writer;
  writer.Put(1 | 2 << 1, 3);
  writer.Put(286 - 257, 5);
  writer.Put(30 - 1, 5);
  writer.Put(19 - 4, 4);
  // The lengths 0 to 15 each get a code of four bits; nothing is repeated.
  for (int i = 0; i < 19; ++i) writer.Put(i < 3 ? 0 : 4, 3);
  for (const std::vector<unsigned>* lengths : {&literalLengths.lengths, &distances.lengths}) {
    for (const unsigned length : *lengths) writer.PutCode(length, 4);
  }
  WriteDeflateTokens(writer, tokens, literalLengths, distances);
  return writer.Bytes();
}

}  // namespace hvtest
