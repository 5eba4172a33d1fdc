#include "fonts/pcm_reader.h"

#include <string>
#include <vector>

#include "api/caller_memory.h"
#include "fonts/pfm_header.h"
#include "fonts/pfm_reader.h"
#include "platform/stream.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr PackedField PcmHeader[] = {
    {0, 4, ByteOrder::Little, Sign::Unsigned, "not read"},
    {4, 4, ByteOrder::Little, Sign::Unsigned, "end offset"},
    {8, 4, ByteOrder::Little, Sign::Unsigned, "title offset"},
    {12, 4, ByteOrder::Little, Sign::Unsigned, "offset of the first PFM"},
};
constexpr std::size_t PcmHeaderSize = 16;
static_assert(IsGapless(PcmHeader) && RecordSize(PcmHeader) == PcmHeaderSize);
constexpr const PackedField& EndOffset = PcmHeader[1];
constexpr const PackedField& TitleOffset = PcmHeader[2];
constexpr const PackedField& FirstPfmOffset = PcmHeader[3];

constexpr std::size_t TitleSize = 80;
constexpr std::size_t FaceNameSize = 91;

char* NewText(std::size_t size, std::string_view text) {
  char* const field = static_cast<char*>(AllocateForCaller(size));
  if (field != nullptr) SetFixedText(field, size, text);
  return field;
}

// NULL when there is no memory.
HvFontFace* NewFace(std::string_view name) {
  CallerMemory<HvFontFace> face(static_cast<HvFontFace*>(AllocateForCaller(sizeof(HvFontFace))));
  if (face == nullptr) return nullptr;
  face->name = NewText(FaceNameSize, name);
  return face->name == nullptr ? nullptr : face.release();
}

// The names in the PFM images from `position` up to `end`. An image of no possible size ends the
// walk, since where the next one begins is not known.
std::vector<std::string> ReadFaceNames(platform::Stream* file, int64_t position, int64_t end) {
  std::vector<std::string> names;
  while (position < end && file->Seek(position)) {
    const PfmImage image = ReadBytes(file, PfmImageSize);
    const uint32_t size = PfmValue(image, PfmField::Size);
    if (size < PfmHeaderSize) break;
    if (HasFaceNameInPlace(image)) {
      std::string name = PfmFaceName(image);
      if (!name.empty()) names.push_back(std::move(name));
    }
    position += size;
  }
  return names;
}

}  // namespace

void ReleaseCartridge(HvFontCartridge* cartridge) {
  if (cartridge == nullptr) return;
  HvFontFace* face = cartridge->faces;
  while (face != nullptr) {
    HvFontFace* const next = face->next;
    ReleaseForCaller(face->name);
    ReleaseForCaller(face);
    face = next;
  }
  ReleaseForCaller(cartridge->title);
  ReleaseForCaller(cartridge);
}

uint32_t PcmReadCartridge(const char* path, OwnedCartridge* cartridge) {
  cartridge->reset();
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(path, "rb");
  if (file == nullptr) return HV_OK;
  const std::vector<uint8_t> header = ReadBytes(file.get(), PcmHeaderSize);
  if (header.size() < PcmHeaderSize) return HV_OK;

  if (!file->Seek(ReadField(header, TitleOffset))) return HV_OK;
  const std::vector<uint8_t> title = ReadBytes(file.get(), TitleSize);

  OwnedCartridge made(static_cast<HvFontCartridge*>(AllocateForCaller(sizeof(HvFontCartridge))));
  if (made == nullptr) return HV_NO_MEMORY;
  made->title = NewText(TitleSize, TextAt(title, 0));
  if (made->title == nullptr) return HV_NO_MEMORY;

  // Packed records have no pointers to pointers: the list is made from its end.
  const std::vector<std::string> names =
      ReadFaceNames(file.get(), ReadField(header, FirstPfmOffset), ReadField(header, EndOffset));
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    HvFontFace* const face = NewFace(*name);
    if (face == nullptr) return HV_NO_MEMORY;
    face->next = made->faces;
    made->faces = face;
  }
  *cartridge = std::move(made);
  return HV_OK;
}

uint32_t DescribePcm(const FontFile& file, HvFontInfo* info) {
  OwnedCartridge cartridge;
  const uint32_t read = PcmReadCartridge(file.path, &cartridge);
  if (read != HV_OK) return read;
  if (cartridge == nullptr) return HV_UNUSABLE_FILE;
  SetFixedText(info->name, cartridge->title);
  // It is the caller's also when it has no title.
  info->cartridge = cartridge.release();
  if (*info->name == '\0') return HV_UNUSABLE_FILE;
  info->fontClass = FONT_CLASS_METRICS;
  info->fontType = FONT_TYPE_PCM;
  info->flags |= FONT_FLAG_BINARY;
  return HV_OK;
}

}  // namespace hv
