// Font files made of a fuzzer's input, described and sent through the exports.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace hvfuzz {

// A folder for this process, removed at its end. In memory where the system has such a place.
const std::string& WorkFolder();

// Writes the bytes as a file of WorkFolder, or of a folder in it that the name begins with, and
// returns its path.
std::string WriteInput(const std::string& name, const uint8_t* data, std::size_t size);

// Describes the bytes as a file of the extension, in every companion mode.
void DescribeFont(const char* extension, const uint8_t* data, std::size_t size);

// Sends them to a file as a font of each language that such a file may be sent in.
void SendFont(const char* extension, const uint8_t* data, std::size_t size);

}  // namespace hvfuzz
