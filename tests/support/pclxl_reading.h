// PCL XL jobs read from memory, for tests that are built of the library's own objects.
#pragma once

#include <algorithm>
#include <string>

#include "pclxl/job_reader.h"

namespace hvtest {

struct PclXlReading {
  uint32_t result;
  int lastOperator;
  uint64_t lastOffset;

  bool operator==(const PclXlReading&) const = default;
};

// What comes of a job that arrives in pieces of this size.
inline PclXlReading ReadPclXl(const std::string& job, std::size_t piece = std::string::npos) {
  std::size_t at = 0;
  hv::PclXlJobReader reader(
      [&](uint8_t* buffer, std::size_t size) {
        const std::size_t part =
            job.copy(reinterpret_cast<char*>(buffer), std::min(size, piece), at);
        at += part;
        return part;
      },
      nullptr);
  const uint32_t result = reader.Read();
  return {result, reader.LastOperator(), reader.LastOffset()};
}

}  // namespace hvtest
