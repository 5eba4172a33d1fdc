// The metrics of a PCL soft font as the Windows PCL driver wants them, gathered from its descriptor
// and its characters. Fonts come in two layouts: bitmap fonts (formats 0 and 20) and fonts of
// formats 5 and 9, of which a character tells no more than its width.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "fontconv/driver_pfm.h"
#include "fonts/pcl_header_family.h"
#include "fonts/soft_font_descriptor.h"

namespace hv {

// The widths of the characters read so far, in dots.
struct PclWidths {
  std::array<uint16_t, CodeCount> ofCode = {};
  uint32_t first = 255;
  uint32_t last = 0;
  uint32_t count = 0;
  uint32_t sum = 0;
  int32_t widest = 0;
  int32_t previous = 0;
  bool differ = false;

  // A character was read.
  void Count(int32_t width);
  // A code has a width.
  void Set(std::size_t code, int32_t width);
};

class PclFontMetrics {
 public:
  // Starts with a descriptor and the bytes behind it. False when a font of the layout `family` has
  // no descriptor of its format.
  bool Start(PclFamily family, std::span<const uint8_t> descriptor);

  // A character of the code, the data of its download; what is cut off reads as 0.
  void TakeCharacter(uint8_t code, std::span<const uint8_t> data);

  // After the last character: what follows from all of them. The names are left to the caller.
  DriverPfm Finish();

  // The name of the typeface and of the symbol set, empty when the typeface is not known.
  std::string TypefaceAndSet() const;

 private:
  int32_t Value(DescriptorField field) const { return DescriptorValue(descriptor_, field); }
  void Put(PfmField field, int64_t value) { SetPfmValue(pfm_.header, field, value); }
  void Put(PfmMetric field, int64_t value) { SetPfmValue(pfm_.metrics, field, value); }
  uint32_t Get(PfmMetric field) const { return PfmValue(pfm_.metrics, field); }
  void PutCommon();
  void PutBitmapFont();
  void PutExtendedFont();
  void PutMasterHeight(int64_t height);
  void TakeBitmapCharacter(uint8_t code, std::span<const uint8_t> data);
  void TakeExtendedCharacter(uint8_t code, std::span<const uint8_t> data);

  SoftFontDescriptor descriptor_ = {};
  bool isBitmap_ = true;
  int32_t extendedSubscript_ = 0;
  DriverPfm pfm_;
  PclWidths widths_;
};

}  // namespace hv
