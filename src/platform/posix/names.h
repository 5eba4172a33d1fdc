// From the names that callers give to the names of this system.
#pragma once

#include <string>
#include <string_view>

namespace hv::platform {

// The system's name for `path`: both separators become "/", "c:" the folder of the drive and
// "\\server\share" the folder of the network path. Where the name as spelled does not exist, each
// component that exists in another letter case takes the spelling on disk (of several the first by
// byte order); from the first component that does not exist on, the spelling given is kept.
// Empty for a NULL or empty path and for a socket address, which names no file.
std::string SystemName(const char* path);

// Whether a name is no more than that: not empty, no separator, not "." or "..".
bool IsPlainName(std::string_view name);

// Whether a destination is given as "socket://...".
bool IsSocketAddress(const char* destination);

}  // namespace hv::platform
