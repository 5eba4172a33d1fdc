// Encoders of the compression methods of zip archives, written from the zip application note for
// the sake of testing: simple, slow, and with no code in common with the decoders.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hvtest {

std::string Shrink(std::string_view content);

// factor 1 to 4
std::string Reduce(std::string_view content, unsigned factor);

std::string Implode(std::string_view content, bool largeWindow, bool literalTree);

std::string DeflateStored(std::string_view content);
std::string DeflateFixed(std::string_view content);
std::string DeflateDynamic(std::string_view content);

// A way to pack, as members of archives name it.
struct Packing {
  const char* name;
  uint16_t method;
  uint16_t flags;
  std::string (*pack)(std::string_view content);
};
extern const Packing Packings[14];

}  // namespace hvtest
