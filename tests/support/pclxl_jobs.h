// Builds PCL XL jobs, byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hvtest {

// Numbers with their tags: a value as attribute, low byte first.
std::string PclXlUbyte(int value, int attribute);
std::string PclXlUint16(int value, int attribute);
std::string PclXlXy(int x, int y, int attribute);
std::string PclXlText(std::string_view text, int attribute);
std::string PclXlData(std::string_view data);

// A job of one page with a value of each kind, embedded data of both kinds and a font.
std::string PclXlSampleJob();

}  // namespace hvtest
