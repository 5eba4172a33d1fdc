#include "fonts/fmf_reader.h"

#include <memory>
#include <vector>

#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t HeaderSize = 184;
constexpr std::size_t NameOffset = 52;

}  // namespace

std::string FmfFontName(platform::Stream* file) {
  if (!file->Seek(0)) return {};
  const std::vector<uint8_t> header = ReadBytes(file, HeaderSize);
  return std::string(header.size() < HeaderSize ? "" : TextAt(header, NameOffset));
}

uint32_t DescribeFmf(const FontFile& file, HvFontInfo* info) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(file.path, "rb");
  if (stream == nullptr) return HV_CANNOT_OPEN;
  const std::string name = FmfFontName(stream.get());
  if (name.empty()) return HV_UNUSABLE_FILE;
  SetFixedText(info->name, name);
  info->fontClass = FONT_CLASS_METRICS;
  info->fontType = FONT_TYPE_FMF;
  info->flags |= FONT_FLAG_BINARY | FONT_FLAG_08 | FONT_FLAG_20;
  NameCompanion(file, "DLF", info->companionPath1);
  NameCompanion(file, "DLF", info->companionPath2);
  return HV_OK;
}

}  // namespace hv
