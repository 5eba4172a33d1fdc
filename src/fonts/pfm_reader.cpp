#include "fonts/pfm_reader.h"

#include <memory>

#include "api/file_operations.h"
#include "fonts/pfm_header.h"
#include "platform/stream.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t SmallestFile = 256;
// Some files carry this many bytes behind what their size field counts.
constexpr uint64_t TrailerSize = 32;
// The first field of the extension behind the header, 0 in files with such a trailer.
constexpr PackedField ExtensionSize = {117, 2, ByteOrder::Little, Sign::Unsigned,
                                       "size of extension"};

constexpr uint32_t FirstFaceNameOffset = 35;
constexpr uint32_t LastFaceNameOffset = 2047;
constexpr std::size_t LongestFaceName = 90;
constexpr uint32_t BoldWeight = 700;

bool IsPfm(const PfmImage& image, uint64_t fileSize) {
  if (fileSize < SmallestFile || image.size() < SmallestFile) return false;
  const uint64_t size = PfmValue(image, PfmField::Size);
  return (size == fileSize && HasFaceNameInPlace(image)) ||
         (size == fileSize - TrailerSize && ReadField(image, ExtensionSize) == 0);
}

}  // namespace

std::optional<PfmImage> PfmOpen(const char* path) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path, "rb");
  if (stream == nullptr) return std::nullopt;
  PfmImage image = ReadBytes(stream.get(), PfmImageSize);
  if (!IsPfm(image, FileSize(path))) return std::nullopt;
  return image;
}

bool HasFaceNameInPlace(const PfmImage& image) {
  const uint32_t offset = PfmValue(image, PfmField::FaceNameOffset);
  return offset >= FirstFaceNameOffset && offset <= LastFaceNameOffset;
}

std::string PfmFaceName(const PfmImage& image) {
  const std::string_view face = TextAt(image, PfmValue(image, PfmField::FaceNameOffset));
  if (face.empty()) return {};
  std::string style;
  if (PfmValue(image, PfmField::Italic) != 0) style += " (It)";
  if (PfmValue(image, PfmField::Weight) >= BoldWeight) style += " (Bd)";
  return std::string(face.substr(0, LongestFaceName - style.size())) + style;
}

std::string PfmDeviceName(const PfmImage& image) {
  return std::string(TextAt(image, PfmValue(image, PfmField::DeviceNameOffset)));
}

uint32_t DescribePfm(const FontFile& file, HvFontInfo* info) {
  const std::optional<PfmImage> image = PfmOpen(file.path);
  const std::string name = image ? PfmFaceName(*image) : std::string();
  if (name.empty()) return HV_UNUSABLE_FILE;
  SetFixedText(info->name, name);
  info->fontClass = FONT_CLASS_METRICS;
  info->fontType = FONT_TYPE_PFM;
  info->flags |= FONT_FLAG_BINARY | FONT_FLAG_08 | FONT_FLAG_20;
  return HV_OK;
}

}  // namespace hv
