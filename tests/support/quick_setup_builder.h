// Quick setup files, built from their fields.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace hvtest {

struct QuickSetupBlock {
  std::string data;
  uint16_t count = 0;
  std::optional<uint32_t> offset;  // in the header, when it is not to be the true one
};

// A file whose blocks lie behind the header one after the other. What no reader needs is filled
// with 0xEE.
struct QuickSetupFile {
  std::string magic = "QS";
  uint8_t fileType = 3;
  uint8_t major = 1;
  uint8_t minor = 1;
  QuickSetupBlock block1;
  QuickSetupBlock block2;
  QuickSetupBlock block5;

  std::string Bytes() const;  // with the right checksum
};

// The bytes of a file, damaged maybe, with the checksum that fits them.
std::string WithChecksum(std::string bytes);

}  // namespace hvtest
