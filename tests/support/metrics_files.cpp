#include "support/metrics_files.h"

#include "support/font_files.h"

namespace hvtest {
namespace {

// Where the sections of a file begin, in bytes from its start; 0 for none.
struct Places {
  std::size_t size = 0, device = 0, face = 0, metrics = 0, widths = 0, kerning = 0, driver = 0;
};

std::string Header(const FontMetrics& font, const Places& at, bool psm) {
  return Words(0x100) + Offset(at.size) + Field(font.copyright, 60) +
         Words(psm ? 0x8280 : 0x81, 10, 300, 300, font.ascender, font.internalLeading,
               psm ? 196 : 0) +
         Octets(font.italicAngle != 0 ? 1 : 0, 0, 0) + Words(font.weight) + Octets(font.charSet) +
         Words(psm && font.variable ? 0 : font.maximumWidth, font.boxHeight) +
         Octets(font.family + (font.variable ? 1 : 0)) +
         Words(font.averageWidth, font.maximumWidth) +
         Octets(font.first, font.last, 149 - font.first, 0) + Words(0) + Offset(at.device) +
         Offset(at.face) + Offset(0) + Offset(0);
}

std::string Extension(const Places& at) {
  return Words(30) + Offset(at.metrics) + Offset(at.widths) + Offset(0) + Offset(at.kerning) +
         Offset(0) + Offset(at.driver) + Offset(0);
}

std::string Metrics(const FontMetrics& f) {
  const int line = f.underlinePosition;
  const int thickness = f.underlineThickness;
  return Words(52, 240, 0, 1000, 3, 1000, 1000, f.capHeight, f.xHeight, f.ascent, f.descent,
               f.italicAngle, -500, 250, 500, 500, line, thickness, line / 2, line, thickness / 2,
               thickness / 2, 500, 100, f.kerning.size(), 0);
}

std::string KerningTable(const FontMetrics& font) {
  if (font.kerning.empty()) return {};
  std::string table = Words(font.kerning.size());
  for (const Kerning& pair : font.kerning) {
    table += Octets(pair.first, pair.second) + Words(pair.amount);
  }
  return table;
}

}  // namespace

std::string PostScriptPfm(const FontMetrics& font) {
  Places at;
  at.metrics = 117 + 30;
  at.device = at.metrics + 52;
  at.face = at.device + 11;
  at.driver = at.face + font.face.size() + 1;
  at.widths = at.driver + font.fontName.size() + 1;
  const std::size_t widthsEnd = at.widths + 2 * font.widths.size();
  at.kerning = font.kerning.empty() ? 0 : widthsEnd;
  at.size = widthsEnd + KerningTable(font).size();

  std::string file = Header(font, at, false) + Extension(at) + Metrics(font);
  file += Field("PostScript", 11) + font.face + '\0' + font.fontName + '\0';
  for (const int width : font.widths) file += Words(width);
  return file + KerningTable(font);
}

std::string LaserPrinterPsm(const FontMetrics& font) {
  std::string widths;
  std::string pixels;
  for (const int width : font.widths) {
    widths += Offset(static_cast<std::size_t>(width));
    pixels += Offset(static_cast<std::size_t>(width * 416 / 1000 / 10));
  }
  widths += Le32(0);
  if (!font.variable) widths = pixels = "";

  Places at;
  at.widths = font.variable ? 117 : 0;
  at.device = 117 + widths.size() + 30;
  at.face = at.device + 20;
  at.metrics = at.face + 32;
  at.driver = at.metrics + 52 + pixels.size();
  at.kerning = font.kerning.empty() ? 0 : at.driver + 37;
  at.size = at.driver + 37 + KerningTable(font).size();

  std::string file = Header(font, at, true) + widths + Extension(at);
  file += Field("IBM LaserPrinter", 20) + Field(font.face.substr(0, 31), 32);
  file += Metrics(font) + pixels + Field(font.fontName.substr(0, 32), 33);
  return file + Octets(font.first, font.last, 3, 0x33) + KerningTable(font);
}

}  // namespace hvtest
