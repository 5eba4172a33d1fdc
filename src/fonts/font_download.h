// Fonts sent to printers, to stay there as permanent soft fonts. Arguments have been checked by the
// export; results are the codes of HvResult.
#pragma once

#include <cstdint>

#include "channel/printer_channel.h"

namespace hv {

uint32_t DownloadFont(const char* fontPath, const char* destination, const HvJobInfo& job,
                      uint32_t targetDevice);

// The font identifier as a command of its own.
enum class FontIdForm : uint8_t {
  Ppds,         // ESC = with the identifier in one byte below 100, else in two
  Pcl,          // ESC * c # D
  PpdsType1,    // ESC = as a PPDS printer takes it before a Type 1 font
  PclInPieces,  // as Pcl, in three writes
};

// True when the channel took it.
bool SendFontId(FontIdForm form, uint16_t fontId, PrinterChannel* channel);

// Payloads. Each takes a channel whose job has begun and leaves its end to the caller. The result
// is the channel's status once a write failed.

// A PCL bitmap font in the Pcl form, which is then made permanent, or a DLF font in the Ppds form.
uint32_t DownloadPclFont(const char* fontPath, FontIdForm form, PrinterChannel* channel);
uint32_t DownloadPclScalable(const char* fontPath, PrinterChannel* channel);

enum class Type1Form : uint8_t { Pfa, Pfb };

// A Type 1 font for a PostScript printer; the segments of a PFB are decoded on the way.
uint32_t DownloadType1(const char* fontPath, Type1Form form, PrinterChannel* channel);

// A Type 1 font for a PPDS printer, as the file is, in blocks.
uint32_t DownloadType1Ppds(const char* fontPath, PrinterChannel* channel);

}  // namespace hv
