// Zip archives laid out byte by byte, by the tables of the zip application note.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hvtest {

struct ZipMember {
  std::string name;
  std::string data;  // as it lies in the archive
  uint16_t method = 0;
  uint16_t flags = 0;
  uint32_t crc = 0;        // of the extracted bytes
  uint32_t size = 0;       // of the extracted bytes
  uint16_t time = 0x6820;  // 13:01:00
  uint16_t date = 0x2C6F;  // 2002-03-15
};

// A member that holds `content` in the form `data` of a method.
ZipMember Packed(std::string_view name, std::string_view content, uint16_t method, std::string data,
                 uint16_t flags = 0);
ZipMember Stored(std::string_view name, std::string_view content);

// An archive and where its records begin.
struct ZipArchive {
  std::string bytes;
  std::vector<std::size_t> locals;
  std::vector<std::size_t> entries;
  std::size_t end = 0;

  void Set16(std::size_t at, uint16_t value);
};

ZipArchive BuildZip(const std::vector<ZipMember>& members, std::string_view comment = "");

// The CRC-32, a bit at a time.
uint32_t SlowCrc32(std::string_view bytes);

}  // namespace hvtest
