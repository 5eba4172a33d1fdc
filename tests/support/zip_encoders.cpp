#include "support/zip_encoders.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <vector>

namespace hvtest {
namespace {

unsigned char ByteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

// A literal, or with a length a match.
struct Token {
  unsigned char literal = 0;
  std::size_t length = 0;
  std::size_t distance = 0;
};

struct MatchLimits {
  std::size_t minLength;
  std::size_t maxLength;
  std::size_t maxDistance;
};

// Looks at the last place where the next bytes stood, and always at the farthest one allowed.
std::vector<Token> FindTokens(std::string_view content, const MatchLimits& limits) {
  std::vector<Token> tokens;
  std::map<std::string_view, std::size_t> places;
  for (std::size_t at = 0; at < content.size();) {
    Token best = {ByteAt(content, at)};
    const auto known = places.find(content.substr(at, limits.minLength));
    for (const std::size_t distance :
         {limits.maxDistance, known == places.end() ? at + 1 : at - known->second}) {
      if (distance > std::min(at, limits.maxDistance)) continue;
      std::size_t length = 0;
      while (at + length < content.size() && length < limits.maxLength &&
             content[at + length - distance] == content[at + length]) {
        ++length;
      }
      if (length >= limits.minLength && length > best.length) best = {0, length, distance};
    }
    tokens.push_back(best);
    for (std::size_t i = 0; i < std::max<std::size_t>(best.length, 1); ++i, ++at) {
      places[content.substr(at, limits.minLength)] = at;
    }
  }
  return tokens;
}

struct PrefixCode {
  std::vector<unsigned> lengths;
  std::vector<uint32_t> codes;

  void Write(BitWriter& writer, std::size_t symbol) const {
    writer.PutCode(codes[symbol], lengths[symbol]);
  }
};

// A Shannon-Fano tree of `count` codes, a power of two, with codes of many lengths up to 16 bits;
// which symbol has which is turned by `turn`. The codes follow the steps of the application note:
// sorted by length and then by value, they are counted up from the last one on; the order of their
// bits is then reversed, so that they are written highest bit first.
PrefixCode ShannonFano(std::size_t count, unsigned bits, std::size_t turn) {
  // Half as many codes of one length are split one by one, each as far as that goes.
  PrefixCode tree = {std::vector<unsigned>(count / 2, bits - 1), std::vector<uint32_t>(count)};
  for (std::size_t at = 0; tree.lengths.size() < count;) {
    if (tree.lengths[at] == 16) {
      ++at;
    } else {
      tree.lengths.push_back(++tree.lengths[at]);
    }
  }
  std::rotate(tree.lengths.begin(),
              tree.lengths.begin() + static_cast<std::ptrdiff_t>(turn % count), tree.lengths.end());
  uint32_t code = 0;
  for (unsigned length = 16; length > 0; --length) {
    for (std::size_t i = count; i-- > 0;) {
      if (tree.lengths[i] != length) continue;
      tree.codes[i] = code >> (16 - length);
      code += 1U << (16 - length);
    }
  }
  return tree;
}

// A tree of imploded data: runs of lengths, behind the number of their bytes less one.
void WriteTree(BitWriter& writer, const std::vector<unsigned>& lengths) {
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

std::string Deflate(std::string_view content, int level, int strategy) {
  z_stream stream = {};
  deflateInit2(&stream, level, Z_DEFLATED, -15, 9, strategy);
  std::string data(2 * content.size() + 64, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(data.data());
  stream.avail_out = static_cast<uInt>(data.size());
  deflate(&stream, Z_FINISH);
  data.resize(stream.total_out);
  deflateEnd(&stream);
  return data;
}

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
    std::erase_if(strings, [&](const auto& string) {
      return parents.count(string.second) == 0 && free.insert(string.second).second;
    });
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
  // The first followers of each byte, 32 at most.
  std::array<std::vector<unsigned char>, 256> followers;
  unsigned char last = 0;
  for (std::size_t i = 0; i < bytes.size(); last = ByteAt(bytes, i++)) {
    std::vector<unsigned char>& set = followers[last];
    if (set.size() < 32 && std::count(set.begin(), set.end(), ByteAt(bytes, i)) == 0) {
      set.push_back(ByteAt(bytes, i));
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
  const PrefixCode literals = ShannonFano(256, 8, content.size());
  const PrefixCode lengths = ShannonFano(64, 6, content.size());
  const PrefixCode distances = ShannonFano(64, 6, content.size() / 2);
  BitWriter writer;
  if (literalTree) WriteTree(writer, literals.lengths);
  WriteTree(writer, lengths.lengths);
  WriteTree(writer, distances.lengths);
  const MatchLimits limits = {minLength, minLength + 63 + 255, std::size_t{64} << lowBits};
  for (const Token& token : FindTokens(content, limits)) {
    writer.Put(token.length == 0 ? 1 : 0, 1);
    if (token.length == 0) {
      literalTree ? literals.Write(writer, token.literal) : writer.Put(token.literal, 8);
      continue;
    }
    const auto distance = static_cast<uint32_t>(token.distance - 1);
    const auto length = static_cast<uint32_t>(token.length - minLength);
    writer.Put(distance & ((1U << lowBits) - 1), lowBits);
    distances.Write(writer, distance >> lowBits);
    lengths.Write(writer, std::min(length, 63U));
    if (length >= 63) writer.Put(length - 63, 8);
  }
  return writer.Bytes();
}

std::string DeflateDynamic(std::string_view content) {
  return Deflate(content, Z_BEST_COMPRESSION, Z_DEFAULT_STRATEGY);
}

std::string MixedContent() {
  std::string content;
  for (int i = 0; i < 30; ++i) content += "line " + std::to_string(i * i % 23) + "\n";
  uint32_t state = 1;
  for (int i = 0; i < 400; ++i) {
    content += static_cast<char>('a' + (state >> 28));
    state = state * 1664525 + 1013904223;
  }
  return content;
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
    {"deflated stored", 8, 0, [](std::string_view c) { return Deflate(c, 0, 0); }},
    {"deflated fixed", 8, 0, [](std::string_view c) { return Deflate(c, 9, Z_FIXED); }},
    {"deflated dynamic", 8, 0, DeflateDynamic},
    {"deflated, sizes behind", 8, 8, DeflateDynamic},
};

}  // namespace hvtest
