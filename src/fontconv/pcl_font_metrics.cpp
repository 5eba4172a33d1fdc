#include "fontconv/pcl_font_metrics.h"

#include <algorithm>
#include <string>

#include "fontconv/font_selection.h"
#include "fontconv/output_file.h"
#include "fontconv/pcl_font_stream.h"
#include "fontconv/pcl_symbol_sets.h"
#include "fontconv/pcl_translation.h"

namespace hv {
namespace {

constexpr uint16_t PclPfmType = 0x0080;
constexpr int32_t Resolution = 300;
// Heights and pitches are in quarter dots, and these have 256 parts.
constexpr int32_t QuarterDots = 4;
constexpr uint32_t ExtendedParts = 256;
// Hundredths of a point in 256ths of a quarter dot, and quarter dots in an inch as such.
constexpr uint32_t HeightNumerator = 72;
constexpr uint32_t HeightDenominator = 3072;
constexpr uint32_t PitchDividend = 30720000;

constexpr std::size_t SpaceCode = 32;
constexpr std::size_t LastCode = 255;
constexpr uint32_t DefaultCode = 127;
constexpr std::size_t LongestFace = 79;
// Where fonts of formats 5 and 9 tell how deep their subscripts go, signed.
constexpr PackedField SubscriptField = {70, 1, ByteOrder::Big, Sign::Signed, "subscript offset"};

bool IsFormatOf(PclFamily family, int32_t format) {
  switch (family) {
    case PclFamily::Format5:
      return format == 5;
    case PclFamily::Format9:
      return format == 5 || format == 9;
    default:
      return format == 0 || format == 20;
  }
}

int32_t CharacterValue(std::span<const uint8_t> data, PclCharacterField field) {
  return static_cast<int32_t>(ReadField(data, PclCharacterTable[static_cast<std::size_t>(field)]));
}

uint32_t ByteAt(std::span<const uint8_t> data, std::size_t at) {
  return at < data.size() ? data[at] : 0;
}

// The bitmap of a character that is longer than one download may be comes in further ones, which
// begin with this byte pair and have no descriptor.
bool IsContinuation(std::span<const uint8_t> data) {
  constexpr int32_t BitmapCharacter = 4;
  return CharacterValue(data, PclCharacterField::Format) == BitmapCharacter &&
         CharacterValue(data, PclCharacterField::Continuation) == 1;
}

// What a character tells of the font; `top` and `left` are its offsets.
struct CharacterShape {
  bool portrait;
  int32_t left;
  int32_t top;
  int32_t width;
  int32_t height;

  int32_t Extent() const { return portrait ? height : width; }
  int32_t Rise() const { return portrait ? top : left; }
};

}  // namespace

void PclWidths::Count(int32_t width) {
  differ = differ || (count > 0 && width != previous);
  previous = width;
  ++count;
  sum += static_cast<uint32_t>(width);
  widest = std::max(widest, width);
}

void PclWidths::Set(std::size_t code, int32_t width) {
  ofCode[code] = static_cast<uint16_t>(width);
  first = std::min(first, static_cast<uint32_t>(code));
  last = std::max(last, static_cast<uint32_t>(code));
}

bool PclFontMetrics::Start(PclFamily family, std::span<const uint8_t> descriptor) {
  if (descriptor.size() < SoftFontDescriptorSize) return false;
  std::copy_n(descriptor.begin(), SoftFontDescriptorSize, descriptor_.begin());
  if (!IsFormatOf(family, Value(DescriptorField::Format))) return false;
  isBitmap_ = family != PclFamily::Format5 && family != PclFamily::Format9;
  pfm_ = {};
  widths_ = {};
  PutCommon();
  if (isBitmap_) {
    PutBitmapFont();
  } else {
    PutExtendedFont();
    extendedSubscript_ = static_cast<int32_t>(ReadField(descriptor, SubscriptField)) + 1;
  }
  // Fonts may do without a space; it is as wide as the pitch then.
  widths_.ofCode[SpaceCode] = static_cast<uint16_t>(Value(DescriptorField::Pitch) / QuarterDots);
  return true;
}

void PclFontMetrics::PutCommon() {
  const FontSelection header = SelectionOfHeader(descriptor_);
  const PclSymbolSet set = FindPclSymbolSet(header.symbolSet, Value(DescriptorField::FontType));
  pfm_.symbolSet = header.symbolSet;
  pfm_.translationTable = set.translationTable;
  std::copy(CopyrightNotice.begin(), CopyrightNotice.end(),
            pfm_.header.begin() + PfmRow(PfmField::Copyright).offset);
  Put(PfmField::Version, PfmVersion);
  Put(PfmField::Type, PclPfmType);
  Put(PfmField::Points, int64_t{Value(DescriptorField::Height)} * 72 / 1200);
  Put(PfmField::VerticalResolution, Resolution);
  Put(PfmField::HorizontalResolution, Resolution);
  Put(PfmField::Weight, WeightOfStroke(header.strokeWeight));
  Put(PfmField::CharacterSet, set.characterSet);
  Put(PfmField::PitchAndFamily, FindPclTypeface(header.typeface).family);
  Put(PfmMetric::Size, PfmMetricsSize);
  Put(PfmMetric::Orientation, Value(DescriptorField::Orientation) == 0 ? 1 : 2);
}

void PclFontMetrics::PutMasterHeight(int64_t height) {
  for (const PfmMetric field :
       {PfmMetric::MasterHeight, PfmMetric::MinimumScale, PfmMetric::MaximumScale,
        PfmMetric::MasterUnits, PfmMetric::SuperscriptSize, PfmMetric::SubscriptSize}) {
    Put(field, height);
  }
}

void PclFontMetrics::PutBitmapFont() {
  const int32_t baseline = Value(DescriptorField::Baseline);
  const int32_t cell = Value(DescriptorField::CellHeight);
  const int32_t height = Value(DescriptorField::Height);
  const int32_t rounded = (height + 2) / QuarterDots;
  const int32_t style = Value(DescriptorField::StyleLow);
  Put(PfmField::Ascent, baseline);
  Put(PfmField::InternalLeading, cell - rounded);
  Put(PfmField::ExternalLeading, height / QuarterDots - baseline);
  Put(PfmField::Italic, (style & 3) == 1 ? 1 : 0);
  Put(PfmField::PixelHeight, cell);
  Put(PfmMetric::PointSize, int64_t{cell} * 1440 / Resolution);
  PutMasterHeight(cell);
  Put(PfmMetric::CapHeight, rounded - cell + baseline);

  FontSelection selection = SelectionOfHeader(descriptor_);
  const auto value = [&](DescriptorField field) { return static_cast<uint32_t>(Value(field)); };
  selection.height =
      (value(DescriptorField::Height) * ExtendedParts + value(DescriptorField::HeightExtended)) *
      HeightNumerator / HeightDenominator;
  const uint32_t pitch =
      value(DescriptorField::Pitch) * ExtendedParts + value(DescriptorField::PitchExtended);
  selection.pitch = pitch == 0 ? 0 : PitchDividend / pitch;
  pfm_.selection = SelectionEscape(selection);
}

void PclFontMetrics::PutExtendedFont() {
  const int32_t text = Value(DescriptorField::TextHeight);
  const int32_t pixels = text / QuarterDots;
  // Three quarters, from .34 on upward.
  const int32_t ascent = pixels * 75 / 100 + (pixels * 75 % 100 >= 34 ? 1 : 0);
  const int32_t below = pixels - ascent;
  const int32_t internal = 2 * (below / 3) + below % 3;
  const int32_t xHeight = Value(DescriptorField::XHeight);
  const int32_t thickness = Value(DescriptorField::UnderlineThickness);
  Put(PfmField::Ascent, ascent);
  Put(PfmField::InternalLeading, internal);
  Put(PfmField::ExternalLeading, internal / 2);
  Put(PfmField::Italic, Value(DescriptorField::StyleLow) == 1 ? 1 : 0);
  Put(PfmField::PixelHeight, pixels);
  Put(PfmMetric::PointSize, pixels * 24 / 5);
  PutMasterHeight(pixels);
  Put(PfmMetric::CapHeight, ascent - internal);
  Put(PfmMetric::XHeight, xHeight / QuarterDots);
  Put(PfmMetric::LowerCaseAscent, 58 * text / QuarterDots / 100);
  Put(PfmMetric::LowerCaseDescent, 18 * text / QuarterDots / 100);
  Put(PfmMetric::UnderlineOffset, Value(DescriptorField::UnderlinePosition));
  Put(PfmMetric::UnderlineWidth, thickness);
  Put(PfmMetric::StrikeOutOffset, xHeight / 8);
  Put(PfmMetric::StrikeOutWidth, thickness);
}

void PclFontMetrics::TakeCharacter(uint8_t code, std::span<const uint8_t> data) {
  if (isBitmap_) {
    if (!IsContinuation(data)) TakeBitmapCharacter(code, data);
  } else {
    TakeExtendedCharacter(code, data);
  }
}

void PclFontMetrics::TakeBitmapCharacter(uint8_t code, std::span<const uint8_t> data) {
  const int32_t width = CharacterValue(data, PclCharacterField::DeltaX) / QuarterDots;
  widths_.Count(width);
  if (code < FirstTranslatedCode) widths_.Set(code, width);

  const CharacterShape shape = {CharacterValue(data, PclCharacterField::Orientation) == 0,
                                CharacterValue(data, PclCharacterField::LeftOffset),
                                CharacterValue(data, PclCharacterField::TopOffset),
                                CharacterValue(data, PclCharacterField::Width),
                                CharacterValue(data, PclCharacterField::Height)};
  switch (code) {
    case '-':
      Put(PfmMetric::StrikeOutWidth, shape.Extent());
      Put(PfmMetric::StrikeOutOffset, shape.Rise() - shape.Extent());
      break;
    case '_':
      Put(PfmMetric::UnderlineWidth, shape.Extent());
      Put(PfmMetric::UnderlineOffset, shape.Rise());
      break;
    case 'd':
      Put(PfmMetric::LowerCaseAscent, shape.Rise());
      break;
    case 'p':
      Put(PfmMetric::LowerCaseDescent, shape.Extent() - shape.Rise());
      break;
    case 'x':
      Put(PfmMetric::XHeight, shape.Rise());
      break;
    default:
      break;
  }

  const PclTranslationTable& table = FindTranslation(pfm_.translationTable);
  for (std::size_t windows = FirstTranslatedCode; windows <= LastCode; ++windows) {
    const PclTranslation entry = table[windows - FirstTranslatedCode];
    // The character below gives the width; the one above it does so only until that is known.
    const bool above =
        entry.second == code && code != 0 && windows != LastCode && widths_.ofCode[windows] == 0;
    if (entry.first == code || above) widths_.Set(windows, width);
  }
}

void PclFontMetrics::TakeExtendedCharacter(uint8_t code, std::span<const uint8_t> data) {
  constexpr uint32_t NoWidthByte = 255;
  const uint32_t body = ByteAt(data, 4);
  const uint32_t twice = body == NoWidthByte ? 0 : body + ByteAt(data, 6) + ByteAt(data, 7);
  const auto width = static_cast<int32_t>(twice / 2);
  widths_.Count(width);
  if (code < FirstTranslatedCode) widths_.Set(code, width);
  const PclTranslationTable& table = FindTranslation(pfm_.translationTable);
  for (std::size_t windows = FirstTranslatedCode; windows <= LastCode; ++windows) {
    const PclTranslation entry = table[windows - FirstTranslatedCode];
    if (entry.first != code && (entry.second != code || code == 0)) continue;
    // The wider of two characters that are printed over each other counts.
    const int32_t before = widths_.ofCode[windows];
    if (before == 0 || before < width) widths_.Set(windows, width);
  }
}

DriverPfm PclFontMetrics::Finish() {
  const uint32_t first = std::min(widths_.first, static_cast<uint32_t>(SpaceCode));
  const uint32_t last = widths_.last;
  const uint32_t height = PfmValue(pfm_.header, PfmField::PixelHeight);
  if (widths_.differ) {
    Put(PfmField::PitchAndFamily,
        PfmValue(pfm_.header, PfmField::PitchAndFamily) | PfmVariablePitch);
    for (std::size_t code = first; code <= last; ++code) {
      pfm_.widths.push_back(widths_.ofCode[code]);
    }
    // Also that of the code behind the last one, where there is such a code.
    if (last >= first) pfm_.widths.push_back(last < LastCode ? widths_.ofCode[last + 1] : 0);
  }
  Put(PfmField::PixelWidth, widths_.differ ? 0 : widths_.ofCode[SpaceCode]);
  Put(PfmField::AverageWidth, widths_.count > 0 ? widths_.sum / widths_.count : 0);
  Put(PfmField::MaximumWidth, widths_.widest);
  Put(PfmField::FirstCharacter, first);
  Put(PfmField::LastCharacter, last);
  Put(PfmField::DefaultCharacter, int64_t{DefaultCode} - first);
  Put(PfmField::BreakCharacter, int64_t{SpaceCode} - first);
  pfm_.memoryUsage = (widths_.sum + 7) / 8 * height + 63;

  const int64_t underline = Get(PfmMetric::UnderlineOffset);
  const int64_t thickness = Get(PfmMetric::UnderlineWidth);
  Put(PfmMetric::SuperscriptOffset, int64_t{Get(PfmMetric::CapHeight)} - Get(PfmMetric::XHeight));
  Put(PfmMetric::SubscriptOffset,
      isBitmap_ ? -int64_t{Get(PfmMetric::LowerCaseDescent)} : int64_t{extendedSubscript_});
  Put(PfmMetric::DoubleUpperUnderlineOffset, underline + 2 * thickness);
  Put(PfmMetric::DoubleLowerUnderlineOffset, underline);
  Put(PfmMetric::DoubleUpperUnderlineWidth, thickness);
  Put(PfmMetric::DoubleLowerUnderlineWidth, thickness);
  return pfm_;
}

std::string PclFontMetrics::TypefaceAndSet() const {
  std::string name(FindPclTypeface(SelectionOfHeader(descriptor_).typeface).name);
  const std::string_view suffix =
      FindPclSymbolSet(pfm_.symbolSet, Value(DescriptorField::FontType)).suffix;
  if (!name.empty() && name.size() + suffix.size() <= LongestFace) name += suffix;
  return name;
}

}  // namespace hv
