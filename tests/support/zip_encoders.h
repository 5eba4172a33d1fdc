// Encoders of the compression methods of zip archives: that of zlib for deflated data, and others
// that are written from the zip application note for the sake of testing: simple, slow, and with no
// code in common with the decoders.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hvtest {

class BitWriter {
 public:
  // The lowest bit first.
  void Put(uint32_t value, unsigned bits) {
    for (unsigned i = 0; i < bits; ++i, ++used_) {
      if (used_ % 8 == 0) bytes_ += '\0';
      if ((value >> i & 1) != 0) bytes_.back() = static_cast<char>(bytes_.back() | 1 << used_ % 8);
    }
  }
  // The highest bit first, as the codes of deflate are written.
  void PutCode(uint32_t code, unsigned bits) {
    while (bits > 0) Put(code >> --bits & 1, 1);
  }
  const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
  std::size_t used_ = 0;
};

std::string Shrink(std::string_view content);
std::string Reduce(std::string_view content, unsigned factor);  // 1 to 4
std::string Implode(std::string_view content, bool largeWindow, bool literalTree);
// With zlib's levels and strategies.
std::string Deflate(std::string_view content, int level, int strategy);
std::string DeflateDynamic(std::string_view content);

// Lines that are alike, and as many letters without order as make deflate send codes of its own.
std::string MixedContent();

// A way to pack, as members of archives name it.
struct Packing {
  const char* name;
  uint16_t method;
  uint16_t flags;
  std::string (*pack)(std::string_view content);
};
extern const Packing Packings[14];

}  // namespace hvtest
