// Builds font and font-metrics files, byte by byte from their printed layouts.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace hvtest {

std::string Be16(unsigned value);
std::string Be32(uint32_t value);
std::string Le16(unsigned value);
std::string Le32(uint32_t value);

// Octets, words and an offset, low byte first; of each number the low bits.
template <typename... Numbers>
std::string Octets(Numbers... numbers) {
  return {static_cast<char>(numbers & 0xFF)...};
}
template <typename... Numbers>
std::string Words(Numbers... numbers) {
  return (Le16(static_cast<unsigned>(numbers) & 0xFFFF) + ...);
}
inline std::string Offset(std::size_t offset) {
  return Le32(static_cast<uint32_t>(offset));
}

// The text in a field of `size` bytes, filled up with `filler`.
std::string Field(const std::string& text, std::size_t size, char filler = '\0');

// The descriptor of a PCL soft font. The defaults are a 12-point Courier in Roman-8.
struct PclDescriptor {
  unsigned size = 64;
  unsigned format = 0;
  unsigned fontType = 1;
  unsigned styleHigh = 0x5A;
  unsigned spacing = 0;
  unsigned symbolSet = 277;
  unsigned pitch = 120;
  unsigned height = 200;
  unsigned styleLow = 0;
  int strokeWeight = 0;
  unsigned typeface = 3;
  unsigned vendor = 0;
  unsigned fontNumber = 0;
  std::string name = "Courier         ";
  unsigned xResolution = 600;  // sent in format 20 only
  unsigned yResolution = 600;

  // As long as `size` says.
  std::string Bytes() const;
};

// One character of a bitmap font, drawn with "#" and ".", one text a row.
struct PclCharacter {
  unsigned code;
  int leftOffset;
  int topOffset;
  unsigned deltaX;  // quarter dots
  std::vector<std::string> rows;
};

// ESC ) s # W and the descriptor, then ESC * c # E and ESC ( s # W with the data of each character.
std::string PclFont(const PclDescriptor& descriptor, const std::vector<PclCharacter>& characters);

// Two characters of nine rows, "A" and "g".
std::vector<PclCharacter> SampleCharacters();

// A DLF file: the header and a block of the format, then some font data.
struct DlfFont {
  unsigned format = 1;
  unsigned flags = 0;
  unsigned codePage = 850;
  uint32_t size = 1000;   // point size of format 1, size value of format 10
  uint32_t pitch = 6000;  // format 1 only
  unsigned letterByte = 0x10;
  std::string name = "Courier";
  unsigned length = 60;

  std::string Bytes() const;
};

std::string FmfFile(const std::string& name);

// A PFB file of segments: 1 text, 2 binary, each with its data; the last one, 3, is added.
std::string PfbFile(const std::vector<std::pair<int, std::string>>& segments);

// The clear text at the head of a Type 1 font.
std::string Type1Head(const std::string& fontName, const std::string& encoding);

struct PfmFile {
  std::string face = "Courier";
  std::string device = "PostScript";
  unsigned italic = 0;
  unsigned weight = 400;
  unsigned faceOffset = 0;  // 0: where the face is
  std::size_t size = 300;   // of the file, and in its size field

  std::string Bytes() const;
};

// A header, the title, the images one after another.
std::string PcmFile(const std::string& title, const std::vector<std::string>& images);

// A small AFM with a few characters and kerning pairs.
std::string AfmFile(const std::string& fontName);

}  // namespace hvtest
