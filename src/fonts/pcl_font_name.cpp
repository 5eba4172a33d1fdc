#include "fonts/pcl_font_name.h"

namespace hv {
namespace {

constexpr int32_t HeightPerNameUnit = 16;

bool IsScalableFormat(int32_t format) {
  return format == 10 || format == 11 || format == 15;
}

// Drops, from the left, characters of `dropped` until the text has the length of a font name.
std::string Shortened(const std::string& text, std::string_view dropped) {
  std::size_t excess = text.size() > DescriptorNameLength ? text.size() - DescriptorNameLength : 0;
  std::string kept;
  for (const char c : text) {
    if (excess > 0 && dropped.find(c) != std::string_view::npos) {
      --excess;
    } else {
      kept += c;
    }
  }
  return kept;
}

}  // namespace

std::string PclMakeFontName(const SoftFontDescriptor& descriptor) {
  std::string name(DescriptorName(descriptor));
  name.erase(name.find_last_not_of(' ') + 1);
  if (!IsScalableFormat(DescriptorValue(descriptor, DescriptorField::Format))) {
    const int32_t height = DescriptorValue(descriptor, DescriptorField::Height);
    name += std::to_string(height / HeightPerNameUnit) + PclStyleSuffix(descriptor);
  }
  name +=
      SymbolSetText(static_cast<uint16_t>(DescriptorValue(descriptor, DescriptorField::SymbolSet)));
  name = Shortened(name, " ,.:;");
  name = Shortened(name, "aeiouy");
  name.resize(DescriptorNameLength, ' ');
  return name;
}

}  // namespace hv
