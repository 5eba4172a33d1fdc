// The layout family of the PCL font descriptor read last, one value for the process. Conversions of
// PCL fonts choose the layout of character descriptors by it.
#pragma once

#include <cstdint>

namespace hv {

enum class PclFamily : uint8_t {
  Format0 = 0,   // also before any descriptor was read
  Format5 = 1,   // format 5
  Format9 = 2,   // formats 9 and 12
  Scalable = 4,  // formats 10, 11, 15 and 20
};

PclFamily PclHeaderFamily();
void SetPclHeaderFamily(PclFamily family);

}  // namespace hv
