// Names of PCL typefaces by their number.
#pragma once

#include <cstdint>
#include <string_view>

namespace hv {

// A class letter (R serif, W sans serif, M fixed pitch, S script, D decorative), a comma and the
// name; empty for a number that is not assigned.
std::string_view TypefaceName(uint32_t typeface);

}  // namespace hv
