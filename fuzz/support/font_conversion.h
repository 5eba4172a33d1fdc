// Fonts made of a fuzzer's input, converted through the export.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace hvfuzz {

// Writes the bytes as a file of the extension and converts it with each of the types. What is
// written must be a file of the kind that HvFonQueryInfo knows, its size field its length.
void ConvertFont(const char* extension, const uint8_t* data, std::size_t size,
                 std::initializer_list<int32_t> types);

// The same for a source that is there and was made of the bytes, with tagged metrics for its
// companion.
void ConvertTagged(const std::string& source, const std::string& metrics, const char* symbolSet,
                   const uint8_t* data, std::size_t size);

}  // namespace hvfuzz
