// What the system says of itself and its user.
#pragma once

#include <cstdint>

namespace hv::platform {

// Names into a buffer of `size` bytes. False when the system does not say, or when the name and its
// NUL do not fit; the buffer is then not to be used.
bool ComputerName(char* buffer, uint32_t size);
bool UserName(char* buffer, uint32_t size);

// The language identifier of the user: primary language in bits 0 to 9, sublanguage above.
uint16_t UserLanguage();

struct OsVersion {
  uint32_t major;
  uint32_t minor;
  uint32_t platform;  // 1 the 95 line, 2 the NT line
};

// 5.1 of platform 2 on POSIX systems.
OsVersion SystemVersion();

}  // namespace hv::platform
