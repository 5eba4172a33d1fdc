#include "support/zip_encoders.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <vector>

#include "support/encoder_parts.h"

namespace hvtest {
namespace {

// The codes of a Shannon-Fano tree by the steps of the application note: sorted by length and then
// by value, they are counted up from the last one on; the order of their bits is then reversed, so
// that they too are written highest bit first.
std::vector<uint32_t> ShannonFanoCodes(const std::vector<unsigned>& lengths) {
  std::vector<std::size_t> order(lengths.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return lengths[a] < lengths[b]; });
  std::vector<uint32_t> codes(lengths.size());
  uint32_t code = 0;
  uint32_t increment = 0;
  unsigned lastLength = 0;
  for (std::size_t i = order.size(); i-- > 0;) {
    code += increment;
    if (lengths[order[i]] != lastLength) {
      lastLength = lengths[order[i]];
      increment = 1U << (16 - lastLength);
    }
    codes[order[i]] = code >> (16 - lastLength);
  }
  return codes;
}

// A tree of imploded data: runs of lengths, behind the number of their bytes less one.
void WriteShannonFanoTree(BitWriter& writer, const std::vector<unsigned>& lengths) {
  std::vector<uint32_t> runs;
  for (std::size_t i = 0; i < lengths.size();) {
    std::size_t count = 1;
    while (count < 16 && i + count < lengths.size() && lengths[i + count] == lengths[i]) ++count;
    runs.push_back((static_cast<uint32_t>(count) - 1) << 4 | (lengths[i] - 1));
    i += count;
  }
  writer.Put(static_cast<uint32_t>(runs.size()) - 1, 8);
  for (const uint32_t run : runs) writer.Put(run, 8);
}

PrefixCode MakeShannonFano(const std::vector<std::size_t>& frequencies) {
  PrefixCode code;
  code.lengths = CodeLengths(frequencies, 16);
  code.codes = ShannonFanoCodes(code.lengths);
  return code;
}

// Matches written as bytes: mark, packed length and distance, more length, low distance.
std::string ReducedBytes(std::string_view content, unsigned factor) {
  constexpr char Mark = '\x90';
  const std::size_t mask = (std::size_t{1} << (8 - factor)) - 1;
  std::string bytes;
  const MatchLimits limits = {3, mask + 255 + 3, std::size_t{256} << factor};
  std::size_t at = 0;
  for (const Token& token : FindTokens(content, limits)) {
    const std::size_t length = token.length - 3;
    const std::size_t packed = std::min(length, mask) | (token.distance - 1) >> 8 << (8 - factor);
    if (token.length == 0 || packed == 0) {
      // Of a match that cannot be told from a mark the bytes stand alone.
      for (std::size_t i = 0; i < std::max<std::size_t>(token.length, 1); ++i) {
        bytes += content[at + i];
        if (content[at + i] == Mark) bytes += '\0';
      }
    } else {
      bytes += Mark;
      bytes += static_cast<char>(packed);
      if (length >= mask) bytes += static_cast<char>(length - mask);
      bytes += static_cast<char>((token.distance - 1) & 0xFF);
    }
    at += std::max<std::size_t>(token.length, 1);
  }
  return bytes;
}

}  // namespace

std::string Shrink(std::string_view content) {
  constexpr uint32_t Limit = 8192;
  std::map<std::pair<uint32_t, unsigned char>, uint32_t> strings;
  std::set<uint32_t> free;
  for (uint32_t code = 257; code < Limit; ++code) free.insert(code);
  BitWriter writer;
  unsigned bits = 9;
  const auto emit = [&](uint32_t code) {
    while (code >> bits != 0) {
      writer.Put(256, bits);
      writer.Put(1, bits);
      ++bits;
    }
    writer.Put(code, bits);
  };
  const auto clearLeaves = [&] {
    writer.Put(256, bits);
    writer.Put(2, bits);
    std::set<uint32_t> parents;
    for (const auto& [key, code] : strings) parents.insert(key.first);
    for (auto it = strings.begin(); it != strings.end();) {
      if (parents.count(it->second) != 0) {
        ++it;
      } else {
        free.insert(it->second);
        it = strings.erase(it);
      }
    }
  };
  for (std::size_t at = 0; at < content.size();) {
    uint32_t code = ByteAt(content, at++);
    while (at < content.size()) {
      const auto longer = strings.find({code, ByteAt(content, at)});
      if (longer == strings.end()) break;
      code = longer->second;
      ++at;
    }
    emit(code);
    if (at == content.size()) break;
    if (free.empty()) clearLeaves();
    if (free.empty()) continue;
    strings[{code, ByteAt(content, at)}] = *free.begin();
    free.erase(free.begin());
  }
  return writer.Bytes();
}

std::string Reduce(std::string_view content, unsigned factor) {
  const std::string bytes = ReducedBytes(content, factor);
  // The most frequent followers of each byte, 32 at most.
  std::array<std::map<unsigned char, std::size_t>, 256> counts;
  unsigned char last = 0;
  for (std::size_t i = 0; i < bytes.size(); last = ByteAt(bytes, i++)) {
    ++counts[last][ByteAt(bytes, i)];
  }
  std::array<std::vector<unsigned char>, 256> followers;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    std::vector<std::pair<std::size_t, unsigned char>> sorted;
    for (const auto& [byte, count] : counts[i]) sorted.push_back({count, byte});
    std::sort(sorted.rbegin(), sorted.rend());
    for (std::size_t k = 0; k < std::min<std::size_t>(sorted.size(), 32); ++k) {
      followers[i].push_back(sorted[k].second);
    }
  }

  BitWriter writer;
  for (std::size_t i = followers.size(); i-- > 0;) {
    writer.Put(static_cast<uint32_t>(followers[i].size()), 6);
    for (const unsigned char byte : followers[i]) writer.Put(byte, 8);
  }
  last = 0;
  for (std::size_t i = 0; i < bytes.size(); last = ByteAt(bytes, i++)) {
    const std::vector<unsigned char>& set = followers[last];
    const auto found = std::find(set.begin(), set.end(), ByteAt(bytes, i));
    if (!set.empty()) writer.Put(found == set.end() ? 1 : 0, 1);
    if (found == set.end()) {
      writer.Put(ByteAt(bytes, i), 8);
      continue;
    }
    unsigned indexBits = 1;
    while (std::size_t{1} << indexBits < set.size()) ++indexBits;
    writer.Put(static_cast<uint32_t>(found - set.begin()), indexBits);
  }
  return writer.Bytes();
}

std::string Implode(std::string_view content, bool largeWindow, bool literalTree) {
  const unsigned lowBits = largeWindow ? 7 : 6;
  const std::size_t minLength = literalTree ? 3 : 2;
  const std::vector<Token> tokens =
      FindTokens(content, {minLength, minLength + 63 + 255, std::size_t{64} << lowBits});
  // Every symbol needs a code, since the trees list them all.
  std::vector<std::size_t> literals(256, 1);
  std::vector<std::size_t> lengths(64, 1);
  std::vector<std::size_t> distances(64, 1);
  for (const Token& token : tokens) {
    if (token.length == 0) {
      literals[token.literal] += 4;
    } else {
      lengths[std::min<std::size_t>(token.length - minLength, 63)] += 4;
      distances[(token.distance - 1) >> lowBits] += 4;
    }
  }
  const PrefixCode literalCode = MakeShannonFano(literals);
  const PrefixCode lengthCode = MakeShannonFano(lengths);
  const PrefixCode distanceCode = MakeShannonFano(distances);

  BitWriter writer;
  if (literalTree) WriteShannonFanoTree(writer, literalCode.lengths);
  WriteShannonFanoTree(writer, lengthCode.lengths);
  WriteShannonFanoTree(writer, distanceCode.lengths);
  for (const Token& token : tokens) {
    writer.Put(token.length == 0 ? 1 : 0, 1);
    if (token.length == 0) {
      if (literalTree) {
        literalCode.Write(writer, token.literal);
      } else {
        writer.Put(token.literal, 8);
      }
      continue;
    }
    const std::size_t distance = token.distance - 1;
    const std::size_t length = token.length - minLength;
    writer.Put(static_cast<uint32_t>(distance & ((std::size_t{1} << lowBits) - 1)), lowBits);
    distanceCode.Write(writer, distance >> lowBits);
    lengthCode.Write(writer, std::min<std::size_t>(length, 63));
    if (length >= 63) writer.Put(static_cast<uint32_t>(length - 63), 8);
  }
  return writer.Bytes();
}

const Packing Packings[14] = {
    {"stored", 0, 0, [](std::string_view c) { return std::string(c); }},
    {"shrunk", 1, 0, Shrink},
    {"reduced1", 2, 0, [](std::string_view c) { return Reduce(c, 1); }},
    {"reduced2", 3, 0, [](std::string_view c) { return Reduce(c, 2); }},
    {"reduced3", 4, 0, [](std::string_view c) { return Reduce(c, 3); }},
    {"reduced4", 5, 0, [](std::string_view c) { return Reduce(c, 4); }},
    {"imploded 4K", 6, 0, [](std::string_view c) { return Implode(c, false, false); }},
    {"imploded 8K", 6, 2, [](std::string_view c) { return Implode(c, true, false); }},
    {"imploded 4K trees", 6, 4, [](std::string_view c) { return Implode(c, false, true); }},
    {"imploded 8K trees", 6, 6, [](std::string_view c) { return Implode(c, true, true); }},
    {"deflated stored", 8, 0, DeflateStored},
    {"deflated fixed", 8, 0, DeflateFixed},
    {"deflated dynamic", 8, 0, DeflateDynamic},
    {"deflated, sizes behind", 8, 8, DeflateDynamic},
};

}  // namespace hvtest
