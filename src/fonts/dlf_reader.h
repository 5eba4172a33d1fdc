// DLF fonts of PPDS printers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "api/hvapi.h"
#include "fonts/font_file.h"
#include "platform/stream.h"

namespace hv {

// What the block at the head of a DLF font says of it.
struct DlfMetrics {
  std::string name;           // at most 24 characters, filled up with blanks
  bool isReferenced = false;  // a block without a point size and pitch of its own
  bool fixedPitch = false;
  bool psStyle = false;
  uint32_t codePage = 0;
  char codePageLetter = ' ';  // 'A' to 'O', or a blank
  uint32_t pointSize = 0;     // hundredths of a point; of a referenced font, if proportional
  uint32_t pitchWidth = 0;    // thousandths of a point a character, if fixed pitch
};

// Empty for a file that is no DLF font.
std::optional<DlfMetrics> ReadDlf(platform::Stream* file);

// One line that describes a DLF font: name, pitch or point size, code page; at most `limit`
// characters of it. Empty for a file that is no DLF font.
std::string DlfDescribe(platform::Stream* file, std::size_t limit);

uint32_t DescribeDlf(const FontFile& file, HvFontInfo* info);

}  // namespace hv
