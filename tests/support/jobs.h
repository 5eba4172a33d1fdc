// Job records as applications fill them.
#pragma once

#include <cstdint>
#include <string>

#include "hvapi.h"

namespace hvtest {

// A job of the framing flags and the language given; every other field is 0.
inline HvJobInfo Job(uint32_t flags, int32_t emulation = 0, const char* name = nullptr,
                     uint16_t copies = 0) {
  HvJobInfo job = {};
  job.flags = flags;
  job.emulation = emulation;
  job.copies = copies;
  job.jobName = name;
  return job;
}

// The bytes of a literal, which may hold NUL.
template <std::size_t Size>
std::string Bytes(const char (&literal)[Size]) {
  return std::string(literal, Size - 1);
}

}  // namespace hvtest
