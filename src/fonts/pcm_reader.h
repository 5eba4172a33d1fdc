// PCM files: the metrics of the fonts on a cartridge, one PFM image after another.
#pragma once

#include <cstdint>
#include <memory>

#include "api/hvapi.h"
#include "fonts/font_file.h"

namespace hv {

// Releases a cartridge with its title and faces; NULL does nothing.
void ReleaseCartridge(HvFontCartridge* cartridge);

struct CartridgeDeleter {
  void operator()(HvFontCartridge* cartridge) const { ReleaseCartridge(cartridge); }
};
using OwnedCartridge = std::unique_ptr<HvFontCartridge, CartridgeDeleter>;

// Reads title and faces into memory for the caller. HV_OK or HV_NO_MEMORY; the cartridge stays
// empty for a file that cannot be opened or has no header.
uint32_t PcmReadCartridge(const char* path, OwnedCartridge* cartridge);

uint32_t DescribePcm(const FontFile& file, HvFontInfo* info);

}  // namespace hv
