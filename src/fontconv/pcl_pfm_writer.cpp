#include "fontconv/pcl_pfm_writer.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "api/hvapi.h"
#include "fontconv/driver_pfm.h"
#include "fontconv/output_file.h"
#include "fontconv/pcl_font_metrics.h"
#include "fontconv/pcl_font_stream.h"
#include "fontconv/pcl_symbol_sets.h"
#include "fonts/soft_font_descriptor.h"
#include "platform/stream.h"

namespace hv {
namespace {

constexpr std::string_view PclDevice = "PCL / HP LaserJet";

// A soft font in the making. What a file says of itself before its first character is in `head`,
// the data of its first descriptor.
struct PclFontReading {
  PclFontMetrics metrics;
  std::vector<uint8_t> head;
};

// Reads all of a font. Empty when it holds no descriptor of its layout, or a character before it,
// and when it cannot be read to its end.
std::optional<PclFontReading> ReadPclFont(platform::Stream* file) {
  const PclFamily family = PclHeaderFamily();
  PclFontStream stream(file);
  PclFontReading font;
  uint8_t code = 0;
  while (std::optional<PclFontItem> item = stream.Next()) {
    const bool started = !font.head.empty();
    switch (item->command) {
      case PclFontCommand::Descriptor:
        if (!font.metrics.Start(family, item->data)) return std::nullopt;
        if (!started) font.head = std::move(item->data);
        break;
      case PclFontCommand::CharacterCode:
        code = static_cast<uint8_t>(item->number < CodeCount ? item->number : 0);
        break;
      case PclFontCommand::Character:
        if (!started) return std::nullopt;
        font.metrics.TakeCharacter(code, item->data);
        break;
      case PclFontCommand::Other:
        if (!started) return std::nullopt;
        break;
    }
  }
  if (font.head.empty() || file->HasError()) return std::nullopt;
  return font;
}

std::string FaceName(const PclFontReading& font, const SoftFontDescriptor& descriptor) {
  std::string face = font.metrics.TypefaceAndSet();
  if (face.empty()) face = DescriptorName(descriptor);
  const std::string set =
      SymbolSetText(static_cast<uint16_t>(DescriptorValue(descriptor, DescriptorField::SymbolSet)));
  return face.append(" (").append(ShortSymbolSetText(set)).append(")");
}

// The display name of the font: its name, size, style and symbol set.
std::string Description(const SoftFontDescriptor& descriptor, std::span<const uint8_t> behind) {
  HvFontInfo info = {};
  PclDescribeFont(descriptor, behind, &info);
  return info.name;
}

}  // namespace

uint32_t ConvertPclFont(const char* source, const std::string& output, bool described) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(source, "rb");
  if (file == nullptr) return HV_CANNOT_OPEN;
  std::optional<PclFontReading> font = ReadPclFont(file.get());
  if (!font) return HV_UNUSABLE_FILE;
  file->Close();

  const std::span<const uint8_t> head(font->head);
  SoftFontDescriptor descriptor = {};
  std::copy_n(head.begin(), descriptor.size(), descriptor.begin());
  DriverPfm pfm = font->metrics.Finish();
  pfm.deviceName = PclDevice;
  pfm.faceName = FaceName(*font, descriptor);
  if (described) pfm.description = Description(descriptor, head.subspan(descriptor.size()));
  return WriteConverted(output, AssembleDriverPfm(pfm));
}

}  // namespace hv
