#include "fonts/pfm_reader.h"

#include <algorithm>
#include <memory>
#include <span>

#include "api/file_operations.h"
#include "fonts/pfm_header.h"
#include "platform/stream.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t SmallestFile = 256;
// Some files carry this many bytes behind what their size field counts.
constexpr uint64_t TrailerSize = 32;
constexpr uint32_t FirstFaceNameOffset = 35;
constexpr uint32_t LastFaceNameOffset = 2047;
constexpr std::size_t LongestFaceName = 90;
constexpr uint32_t BoldWeight = 700;

// 0 in files with such a trailer.
uint32_t ExtensionSize(const PfmImage& image) {
  return PfmValue(std::span(image).subspan(PfmHeaderSize), PfmExtensionField::Size);
}

bool IsPfm(const PfmImage& image, uint64_t fileSize) {
  if (fileSize < SmallestFile || image.size() < SmallestFile) return false;
  const uint64_t size = PfmValue(image, PfmField::Size);
  return (size == fileSize && HasFaceNameInPlace(image)) ||
         (size == fileSize - TrailerSize && ExtensionSize(image) == 0);
}

}  // namespace

std::optional<PfmImage> PfmOpen(const char* path, std::size_t limit) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path, "rb");
  if (stream == nullptr) return std::nullopt;
  const uint32_t size = FileSize(path);
  PfmImage image = ReadBytes(stream.get(), std::min<std::size_t>(limit, size));
  if (!IsPfm(image, size)) return std::nullopt;
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
