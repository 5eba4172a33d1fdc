// The readers that a replay can run, each the fuzz target of its name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace hvfuzz {

struct Reader {
  const char* name;
  int (*run)(const uint8_t* data, std::size_t size);
};

// Made by the build of the files <reader>_fuzz.cpp.
std::span<const Reader> Readers();

}  // namespace hvfuzz
