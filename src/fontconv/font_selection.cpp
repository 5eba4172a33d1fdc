#include "fontconv/font_selection.h"

#include <cstdio>

namespace hv {
namespace {

// By stroke weight, from -7 to 7.
constexpr uint32_t Weights[] = {100, 100, 200, 200, 300, 300, 400, 400,
                                500, 600, 700, 700, 800, 800, 900};
constexpr int32_t LightestStroke = -7;

std::string Hundredths(uint32_t value, char letter) {
  char text[24];
  std::snprintf(text, sizeof text, "%u.%02u%c", value / 100, value % 100, letter);
  return text;
}

std::string SizeText(const FontSelection& font) {
  std::string text = Hundredths((font.height + 9) / 10 * 10, 'v');
  if (font.spacing == 0) text += Hundredths(font.pitch, 'h');
  return text;
}

}  // namespace

FontSelection SelectionOfHeader(const SoftFontDescriptor& header) {
  const auto value = [&](DescriptorField field) {
    return static_cast<uint32_t>(DescriptorValue(header, field));
  };
  FontSelection selection;
  selection.symbolSet = static_cast<uint16_t>(value(DescriptorField::SymbolSet));
  selection.spacing = value(DescriptorField::Spacing);
  selection.style = value(DescriptorField::StyleHigh) << 8 | value(DescriptorField::StyleLow);
  selection.strokeWeight = DescriptorValue(header, DescriptorField::StrokeWeight);
  selection.typeface =
      value(DescriptorField::TypefaceHigh) << 8 | value(DescriptorField::TypefaceLow);
  return selection;
}

std::string SelectionEscape(const FontSelection& font) {
  char text[120];
  std::snprintf(text, sizeof text, "\x1B(%d%c\x1B(s%up%s%us%db%uT", font.symbolSet / 32,
                (font.symbolSet & 31) + '@', font.spacing, SizeText(font).c_str(), font.style,
                font.strokeWeight, font.typeface);
  return text;
}

uint32_t WeightOfStroke(int32_t strokeWeight) {
  if (strokeWeight < LightestStroke || strokeWeight > -LightestStroke) return 0;
  return Weights[strokeWeight - LightestStroke];
}

}  // namespace hv
