// What the encoders of tests share: bits, matches, Huffman codes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hvtest {

inline unsigned char ByteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

class BitWriter {
 public:
  // The lowest bit first.
  void Put(uint32_t value, unsigned bits) {
    for (unsigned i = 0; i < bits; ++i) {
      if (used_ % 8 == 0) bytes_ += '\0';
      if ((value >> i & 1) != 0) bytes_.back() = static_cast<char>(bytes_.back() | 1 << used_ % 8);
      ++used_;
    }
  }
  // The highest bit first, as the codes of deflate are written.
  void PutCode(uint32_t code, unsigned bits) {
    while (bits > 0) Put(code >> --bits & 1, 1);
  }
  void Align() { used_ = bytes_.size() * 8; }
  std::string Bytes() const { return bytes_; }

 private:
  std::string bytes_;
  std::size_t used_ = 0;
};

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

// Looks at the last places where the next bytes stood, and always at the farthest one allowed.
std::vector<Token> FindTokens(std::string_view content, const MatchLimits& limits);

// Code lengths of a Huffman code with no code longer than `limit`. Every symbol of a frequency
// above 0 gets one, at least two symbols do.
std::vector<unsigned> CodeLengths(std::vector<std::size_t> frequencies, unsigned limit);

struct PrefixCode {
  std::vector<unsigned> lengths;
  std::vector<uint32_t> codes;

  void Write(BitWriter& writer, std::size_t symbol) const {
    writer.PutCode(codes[symbol], lengths[symbol]);
  }
};

}  // namespace hvtest
