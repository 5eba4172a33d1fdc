// GLUE.TXT, the text in which a directory lists its fonts.
//
//   [Cartridge]
//   { FILE NAME
//   /class = ...
//   [PCL fonts]
//   {O}
//   FONT = NAME
//   /font file = FILE
//   /symset = 8U
//   /tfm = FILE
//   /resource = WORD 12345
//
// Lines are cut after 99 characters; leading blanks, and blanks and control characters at the end
// do not count, empty lines and those that begin with ";" say nothing. A value ends at ";" or "}".
// The attributes of a font follow in any order, up to a line that begins with "{", "F" or "[".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hv {

struct FontIndexEntry {
  std::string fontPath;
  std::string symbolSet;      // at most 3 characters; empty where it is not told
  std::string metricsPath;    // empty where it is not told
  uint32_t memoryNeeded = 0;  // in bytes
};

// The cartridges and then the fonts, in the order of the text; those without a file are left out.
std::vector<FontIndexEntry> ParseFontIndex(std::string_view text);

// The index of a folder, given with its separator; nothing when there is none that can be read.
std::vector<FontIndexEntry> ReadFontIndex(const std::string& folder);

}  // namespace hv
