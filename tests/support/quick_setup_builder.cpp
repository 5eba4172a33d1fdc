#include "support/quick_setup_builder.h"

namespace hvtest {
namespace {

void Put(std::string* bytes, std::size_t offset, std::size_t width, uint64_t value) {
  for (std::size_t i = 0; i < width; ++i) (*bytes)[offset + i] = static_cast<char>(value >> 8 * i);
}

unsigned ByteAt(const std::string& bytes, std::size_t offset) {
  return static_cast<unsigned char>(bytes[offset]);
}

}  // namespace

std::string QuickSetupFile::Bytes() const {
  std::string bytes(74, '\xEE');
  bytes.replace(0, 2, magic);
  Put(&bytes, 4, 1, fileType);
  Put(&bytes, 5, 1, major);
  Put(&bytes, 6, 1, minor);
  std::size_t place = 44;
  for (const QuickSetupBlock* block : {&block1, &block2, &block5}) {
    Put(&bytes, place, 4, block->offset.value_or(static_cast<uint32_t>(bytes.size())));
    Put(&bytes, place + 4, 2, block->count);
    bytes += block->data;
    place += 6;
  }
  return WithChecksum(bytes);
}

std::string WithChecksum(std::string bytes) {
  if (bytes.size() < 4) return bytes;
  unsigned sum = 0;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    // Words are counted in 16 bits; number 2 is the checksum, and left out each time it comes.
    if ((i / 2 + 1) % 65536 == 2) continue;
    const std::size_t high = i + 1 < bytes.size() ? i + 1 : i - 1;
    sum += ByteAt(bytes, i) + 256 * ByteAt(bytes, high);
  }
  Put(&bytes, 2, 2, 65536 - sum % 65536);
  return bytes;
}

}  // namespace hvtest
