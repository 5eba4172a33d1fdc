// Names of programs and system files, which are never taken for macros or demonstration files.
#pragma once

#include <string_view>

namespace hv {

// Whether what follows the last dot of path begins with the extension of a program or system file,
// without regard to letter case.
bool HasSystemExtension(std::string_view path);

}  // namespace hv
