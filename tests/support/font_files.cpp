#include "support/font_files.h"

namespace hvtest {
namespace {

char Byte(unsigned value) {
  return static_cast<char>(value & 0xFF);
}

std::string Number(std::size_t value) {
  return std::to_string(value);
}

// One bit a dot, the first dot in the highest bit, each row filled up to whole bytes.
std::string Bitmap(const std::vector<std::string>& rows) {
  std::string bytes;
  for (const std::string& row : rows) {
    for (std::size_t at = 0; at < row.size(); at += 8) {
      unsigned bits = 0;
      for (std::size_t dot = at; dot < at + 8; ++dot) {
        bits = bits << 1 | (dot < row.size() && row[dot] == '#' ? 1U : 0U);
      }
      bytes += Byte(bits);
    }
  }
  return bytes;
}

}  // namespace

std::string Be16(unsigned value) {
  return {Byte(value >> 8), Byte(value)};
}
std::string Be32(uint32_t value) {
  return Be16(value >> 16) + Be16(value & 0xFFFF);
}
std::string Le16(unsigned value) {
  return {Byte(value), Byte(value >> 8)};
}
std::string Le32(uint32_t value) {
  return Le16(value & 0xFFFF) + Le16(value >> 16);
}

std::string Field(const std::string& text, std::size_t size, char filler) {
  std::string field = text;
  field.resize(size, filler);
  return field;
}

std::string PclDescriptor::Bytes() const {
  std::string bytes = Be16(size);
  bytes += {Byte(format), Byte(fontType), Byte(styleHigh), '\0'};
  bytes += Be16(40) + Be16(30) + Be16(50);  // baseline, cell width and height
  bytes += {'\0', Byte(spacing)};
  bytes += Be16(symbolSet) + Be16(pitch) + Be16(height) + Be16(96);
  bytes += {'\0', Byte(styleLow), Byte(static_cast<unsigned>(strokeWeight))};
  bytes += {Byte(typeface), Byte(typeface >> 8)};
  bytes += Field("", 44 - 27, '\x11');
  bytes += Byte(vendor);
  bytes += {Byte(fontNumber >> 16), Byte(fontNumber >> 8), Byte(fontNumber)};
  bytes += Field(name, 16);
  if (format == 20) bytes += Be16(xResolution) + Be16(yResolution);
  return Field(bytes, size, '\x22');
}

std::string PclFont(const PclDescriptor& descriptor, const std::vector<PclCharacter>& characters) {
  const std::string head = descriptor.Bytes();
  std::string file = "\x1B)s" + Number(head.size()) + "W" + head;
  for (const PclCharacter& character : characters) {
    const std::string bitmap = Bitmap(character.rows);
    std::string data = {4, 0, 14, 1, 0, 0};  // format, no continuation, descriptor size, class
    data += Be16(static_cast<unsigned>(character.leftOffset) & 0xFFFF);
    data += Be16(static_cast<unsigned>(character.topOffset) & 0xFFFF);
    data += Be16(static_cast<unsigned>(character.rows.front().size()));
    data += Be16(static_cast<unsigned>(character.rows.size()));
    data += Be16(character.deltaX) + bitmap;
    file += "\x1B*c" + Number(character.code) + "E\x1B(s" + Number(data.size()) + "W" + data;
  }
  return file;
}

std::vector<PclCharacter> SampleCharacters() {
  return {
      {'A',
       1,
       9,
       48,
       {"....##....", "....##....", "...#..#...", "...#..#...", "..#....#..", "..######..",
        ".#......#.", ".#......#.", "#........#"}},
      {'g',
       0,
       6,
       40,
       {".####.##", "#....##.", "#.....#.", "#.....#.", "#....##.", ".####.#.", "......#.",
        "#.....#.", ".#####.."}},
  };
}

std::string DlfFont::Bytes() const {
  std::string block = {Byte(format == 10 ? 1 : 0), Byte(flags)};
  block += Be16(codePage);
  if (format == 10) {
    block += Field("", 6, '\x33') + Be32(size);
  } else {
    block += Field("", 2, '\x33') + Be32(size) + Field("", 16, '\x33') + Be32(pitch);
    block += Byte(letterByte) + Field("", 3, '\x33');
  }
  block += Field(name, 24, ' ');
  return "\x1B=" + Le16(length) + "1" + Byte(format) + block + Field("", 40, '\x44');
}

std::string FmfFile(const std::string& name) {
  return Field("", 52, '\x55') + Field(name, 184 - 52) + "metrics";
}

std::string PfbFile(const std::vector<std::pair<int, std::string>>& segments) {
  std::string file;
  for (const auto& [type, data] : segments) {
    file += {'\x80', Byte(static_cast<unsigned>(type))};
    file += Le32(static_cast<uint32_t>(data.size())) + data;
  }
  return file + "\x80\x03";
}

std::string Type1Head(const std::string& fontName, const std::string& encoding) {
  return "%!PS-AdobeFont-1.0: " + fontName +
         " 001.000\n12 dict begin\n/FontInfo 9 dict dup begin\n/FullName (A /name in a text) "
         "readonly def\nend readonly def\n/FontName /" +
         fontName + " def\n/PaintType 0 def\n/Encoding " + encoding +
         " def\n/FontBBox {0 0 1000 1000} readonly def\ncurrentdict end\ncurrentfile eexec\n";
}

std::string PfmFile::Bytes() const {
  const std::size_t faceAt = 160;
  const std::size_t deviceAt = 270;
  std::string bytes = Le16(0x0100) + Le32(static_cast<uint32_t>(size));
  bytes += Field("A copyright notice", 60);
  bytes += Field("", 80 - 66, '\x66');
  bytes += {Byte(italic), '\0', '\0'};
  bytes += Le16(weight) + Field("", 101 - 85, '\x66');
  bytes += Le32(static_cast<uint32_t>(deviceAt));
  bytes += Le32(static_cast<uint32_t>(faceOffset == 0 ? faceAt : faceOffset));
  bytes += Field("", 117 - 109) + Le16(30);
  bytes = Field(bytes, faceAt) + face;
  bytes = Field(bytes, deviceAt) + device;
  return Field(bytes, size);
}

std::string PcmFile(const std::string& title, const std::vector<std::string>& images) {
  const std::size_t titleAt = 16;
  const std::size_t firstAt = titleAt + 80;
  std::string body;
  for (const std::string& image : images) body += image;
  return Le32(0x204D4350) + Le32(static_cast<uint32_t>(firstAt + body.size())) + Le32(titleAt) +
         Le32(firstAt) + Field(title, 80) + body;
}

std::string AfmFile(const std::string& fontName) {
  return "StartFontMetrics 2.0\nComment Made for a test\nFontName " + fontName +
         "\nWeight Bold\nItalicAngle -12.5\nIsFixedPitch false\nFontBBox -10 -200 1000 900\n"
         "UnderlinePosition -100\nUnderlineThickness 50\nCapHeight 700\nAscender 710\n"
         "StartCharMetrics 5\nC 32 ; WX 250 ; N space ; B 0 0 0 0 ;\n"
         "C 65 ; WX 722 ; N A ; B 15 0 706 674 ;\nC -1 ; WX 721 ; N Adieresis ; B 15 0 706 835 ;\n"
         "C 183 ; WX 350 ; N bullet ; B 40 196 310 466 ;\nC 197 ; WX 333 ; N macron ; B 11 547 322 "
         "601 ;\nEndCharMetrics\nStartKernData\nStartKernPairs 2\nKPX A space -55\nKPX space A "
         "-60\n"
         "EndKernPairs\nEndKernData\nEndFontMetrics\n";
}

}  // namespace hvtest
