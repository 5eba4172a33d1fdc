// The system's part of a stream: the bytes of a file as they are, behind a buffer.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/stream.h"

namespace hv::platform {

enum class StreamAction : uint8_t { Read, Replace, Append };

// Opens a file to be read ("r"), made or emptied ("w"), or made or written behind its end ("a");
// `update` adds the other direction ("+"). Writing may follow reading at once, and reading writing.
// NULL when there is no such file, for a directory, and without access.
std::unique_ptr<Stream> OpenBinaryStream(const char* path, StreamAction action, bool update);

}  // namespace hv::platform
