#include "fontconv/tagged_pfm_writer.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "api/file_operations.h"
#include "fontconv/driver_pfm.h"
#include "fontconv/font_selection.h"
#include "fontconv/output_file.h"
#include "fontconv/pcl_symbol_sets.h"
#include "fontconv/pcl_translation.h"
#include "fontconv/tagged_metrics.h"
#include "fonts/font_file.h"
#include "fonts/soft_font_descriptor.h"
#include "platform/files.h"
#include "platform/stream.h"
#include "support/ascii.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::string_view Pcl5Device = "PCL5 / HP LaserJet III";
constexpr uint16_t ScalablePfmType = 0x0081;
constexpr std::size_t LargestTaggedFile = std::size_t{4} * 1024 * 1024;
constexpr std::size_t LongestFaceName = 79;
constexpr int64_t Resolution = 300;
constexpr std::size_t FirstCode = 32;
constexpr int64_t DefaultCode = 127;
constexpr std::size_t MostPairsInFile = 65535;
constexpr uint32_t HundredthsOfPoint = 100;
constexpr uint32_t TwentiethsOfPoint = 20;

// As bits of the serif style.
constexpr int32_t SerifStyleSans = 0x40;
constexpr int32_t SerifStyleSerif = 0x80;
constexpr int64_t FamilyFixedPitch = 48;

// "8U" as a number, 0 for what is no symbol set.
uint16_t SymbolSetValue(std::string_view text) {
  uint32_t number = 0;
  std::size_t at = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    number = std::min<uint32_t>(number * 10 + static_cast<uint32_t>(text[at] - '0'), 2047);
  }
  if (at == 0 || at + 1 != text.size() || text[at] < '@') return 0;
  return static_cast<uint16_t>(number << 5 | static_cast<uint32_t>(text[at] - '@'));
}

// The number that a text begins with.
uint32_t LeadingNumber(std::string_view text) {
  constexpr uint32_t Largest = 0xFFFF;
  uint32_t number = 0;
  for (const char c : text) {
    if (!IsDigit(c)) break;
    number = std::min(number * 10 + static_cast<uint32_t>(c - '0'), Largest);
  }
  return number;
}

int64_t Rounded(const Rational& ratio, uint32_t times = 1) {
  const uint64_t product = uint64_t{ratio.numerator} * times;
  return static_cast<int64_t>((product + ratio.denominator / 2) / ratio.denominator);
}

// The stroke weight of PCL, -7 to 7, of one from 1 to 255.
int32_t PclStrokeWeight(int32_t weight) {
  return std::clamp((weight - 1) / 17 - 7, -7, 7);
}

// The width of a PCL style word, 0 to 7, by the appearance width.
uint32_t PclStyleWidth(int32_t appearance) {
  struct WidthRow {
    int32_t upTo;
    uint32_t styleWidth;
  };
  constexpr WidthRow Rows[] = {{20, 4}, {47, 3}, {74, 2}, {101, 1}, {182, 0}, {209, 6}};
  for (const WidthRow& row : Rows) {
    if (appearance <= row.upTo) return row.styleWidth;
  }
  return 7;
}

// A font that is being converted: its metrics and the glyph of each Windows code.
class TaggedConversion {
 public:
  TaggedConversion(const TaggedFont& font, std::string_view symbolSet)
      : font_(font), symbolSetText_(symbolSet), symbolSet_(SymbolSetValue(symbolSet)) {}

  // Empty when the metrics that a PFM needs are missing.
  std::optional<DriverPfm> Make(const SoftFontDescriptor* header);

 private:
  bool FindGlyphs();
  void PutWidths();
  void PutHeader();
  void PutMetrics();
  void PutKerning();
  FontSelection SelectionOfFont() const;
  uint32_t PitchInHundredths() const;

  int64_t Value(MetricTag tag) const { return font_.NumberOr(tag, 0); }
  Rational Ratio(MetricTag tag, Rational otherwise) const {
    return font_.Ratio(tag).value_or(otherwise);
  }
  Rational PointSize() const { return Ratio(MetricTag::NominalPointSize, {12, 1}); }
  bool IsItalic() const {
    return font_.NumberOr(MetricTag::Posture, Value(MetricTag::Slant) != 0 ? 1 : 0) != 0;
  }
  bool IsFixedPitch() const { return Value(MetricTag::Spacing) != 0; }
  void Put(PfmField field, int64_t value) { SetPfmValue(pfm_.header, field, value); }
  void Put(PfmMetric field, int64_t value) { SetPfmValue(pfm_.metrics, field, value); }

  const TaggedFont& font_;
  std::string symbolSetText_;
  uint16_t symbolSet_;
  int64_t unitsPerEm_ = 0;
  std::array<uint16_t, CodeCount> glyphs_ = {};
  std::size_t last_ = FirstCode;
  uint16_t spaceWidth_ = 0;
  DriverPfm pfm_;
};

// Through the translation table of the symbol set, as for soft fonts. A character of two is as wide
// as the lower one.
bool TaggedConversion::FindGlyphs() {
  const GlyphIndex index = font_.FindGlyphs(symbolSetText_);
  const PclTranslationTable& table = FindTranslation(pfm_.translationTable);
  glyphs_.fill(NoGlyph);
  for (std::size_t code = FirstCode; code < CodeCount; ++code) {
    std::size_t pclCode = code;
    if (code >= FirstTranslatedCode) {
      pclCode = table[code - FirstTranslatedCode].first;
      if (pclCode == MissingCharacter) continue;
    }
    if (pclCode >= index.size() || index[pclCode] == NoGlyph) continue;
    glyphs_[code] = index[pclCode];
    last_ = code;
  }
  return !index.empty();
}

void TaggedConversion::PutWidths() {
  const std::vector<int32_t> widths = font_.Numbers(MetricTag::Widths);
  const auto widthOf = [&](std::size_t code) -> uint16_t {
    const std::size_t glyph = glyphs_[code];
    return glyph < widths.size() ? static_cast<uint16_t>(widths[glyph]) : uint16_t{0};
  };
  int64_t sum = 0;
  int64_t count = 0;
  uint16_t widest = 0;
  for (std::size_t code = FirstCode; code <= last_; ++code) {
    const uint16_t width = widthOf(code);
    if (!IsFixedPitch()) pfm_.widths.push_back(width);
    widest = std::max(widest, width);
    sum += width;
    count += width != 0 ? 1 : 0;
  }
  if (!IsFixedPitch()) pfm_.widths.push_back(0);
  spaceWidth_ = widthOf(FirstCode);
  const std::optional<Rational> average = font_.Ratio(MetricTag::AverageWidth);
  Put(PfmField::AverageWidth, average ? Rounded(*average) : sum / std::max<int64_t>(count, 1));
  Put(PfmField::MaximumWidth, widest);
  Put(PfmField::PixelWidth, IsFixedPitch() ? spaceWidth_ : 0);
}

void TaggedConversion::PutHeader() {
  const int64_t ascent = Value(MetricTag::MaximumAscent);
  const int64_t height = ascent - Value(MetricTag::MaximumDescent);
  const int64_t serif = Value(MetricTag::SerifStyle);
  int64_t family = 0;
  if ((serif & SerifStyleSans) != 0) family = FamilySansSerif;
  if ((serif & SerifStyleSerif) != 0) family = FamilySerif;
  if (IsFixedPitch()) family = FamilyFixedPitch;
  std::copy(CopyrightNotice.begin(), CopyrightNotice.end(),
            pfm_.header.begin() + PfmRow(PfmField::Copyright).offset);
  Put(PfmField::Version, PfmVersion);
  Put(PfmField::Type, ScalablePfmType);
  Put(PfmField::Points, Rounded(PointSize()));
  Put(PfmField::VerticalResolution, Resolution);
  Put(PfmField::HorizontalResolution, Resolution);
  Put(PfmField::Ascent, ascent);
  Put(PfmField::InternalLeading, std::max<int64_t>(height - unitsPerEm_, 0));
  Put(PfmField::ExternalLeading, std::max<int64_t>(Value(MetricTag::LineSpacing) - height, 0));
  Put(PfmField::Italic, IsItalic() ? 1 : 0);
  Put(PfmField::Weight,
      WeightOfStroke(PclStrokeWeight(font_.NumberOr(MetricTag::StrokeWeight, 128))));
  Put(PfmField::PixelHeight, height);
  Put(PfmField::PitchAndFamily, family | (IsFixedPitch() ? 0 : PfmVariablePitch));
  Put(PfmField::FirstCharacter, FirstCode);
  Put(PfmField::LastCharacter, static_cast<int64_t>(last_));
  Put(PfmField::DefaultCharacter, DefaultCode - int64_t{FirstCode});
}

void TaggedConversion::PutMetrics() {
  const int64_t capHeight = Value(MetricTag::CapHeight);
  const int64_t xHeight = Value(MetricTag::XHeight);
  const int64_t descent = -Value(MetricTag::LowerCaseDescent);
  const int64_t depth = Value(MetricTag::UnderlineDepth);
  const int64_t thickness = Value(MetricTag::UnderlineThickness);
  Put(PfmMetric::Size, PfmMetricsSize);
  Put(PfmMetric::PointSize, Rounded(PointSize(), TwentiethsOfPoint));
  for (const PfmMetric field :
       {PfmMetric::MasterHeight, PfmMetric::MaximumScale, PfmMetric::MasterUnits,
        PfmMetric::SuperscriptSize, PfmMetric::SubscriptSize}) {
    Put(field, unitsPerEm_);
  }
  Put(PfmMetric::MinimumScale, 3);
  Put(PfmMetric::CapHeight, capHeight);
  Put(PfmMetric::XHeight, xHeight);
  Put(PfmMetric::LowerCaseAscent, Value(MetricTag::LowerCaseAscent));
  Put(PfmMetric::LowerCaseDescent, descent);
  // A PFM counts tenths of a degree to the left.
  Put(PfmMetric::Slant, -Value(MetricTag::Slant) / 10);
  Put(PfmMetric::SuperscriptOffset, capHeight - xHeight);
  Put(PfmMetric::SubscriptOffset, -descent);
  Put(PfmMetric::UnderlineOffset, depth);
  Put(PfmMetric::UnderlineWidth, thickness);
  Put(PfmMetric::DoubleUpperUnderlineOffset, depth + 2 * thickness);
  Put(PfmMetric::DoubleLowerUnderlineOffset, depth);
  Put(PfmMetric::DoubleUpperUnderlineWidth, thickness);
  Put(PfmMetric::DoubleLowerUnderlineWidth, thickness);
  Put(PfmMetric::StrikeOutOffset, xHeight / 2);
  Put(PfmMetric::StrikeOutWidth, thickness);
  Put(PfmMetric::KerningPairs, static_cast<int64_t>(pfm_.kerning.size()));
}

// A glyph that has several codes is kerned at the lowest of them.
void TaggedConversion::PutKerning() {
  std::map<int32_t, uint8_t> codes;
  for (std::size_t code = FirstCode; code <= last_; ++code) {
    if (glyphs_[code] != NoGlyph) codes.emplace(glyphs_[code], static_cast<uint8_t>(code));
  }
  // A count, then two glyphs and an amount.
  const std::vector<int32_t> words = font_.Numbers(MetricTag::KerningPairs);
  for (std::size_t at = 1;
       at + 3 <= words.size() && (at - 1) / 3 < static_cast<std::size_t>(words[0]); at += 3) {
    const auto first = codes.find(words[at]);
    const auto second = codes.find(words[at + 1]);
    if (first == codes.end() || second == codes.end()) continue;
    pfm_.kerning.push_back({first->second, second->second, static_cast<int16_t>(words[at + 2])});
  }
  std::stable_sort(pfm_.kerning.begin(), pfm_.kerning.end(),
                   [](const KernPair& a, const KernPair& b) { return a.Key() < b.Key(); });
  pfm_.kerning.resize(std::min(pfm_.kerning.size(), MostPairsInFile));
}

FontSelection TaggedConversion::SelectionOfFont() const {
  FontSelection selection;
  selection.symbolSet = symbolSet_;
  selection.spacing = IsFixedPitch() ? 0 : 1;
  selection.style =
      (IsItalic() ? std::clamp<uint32_t>(
                        static_cast<uint32_t>(font_.NumberOr(MetricTag::Posture, 1)), 1, 3)
                  : 0) |
      PclStyleWidth(font_.NumberOr(MetricTag::AppearanceWidth, 128)) << 2 |
      static_cast<uint32_t>(font_.NumberOr(MetricTag::TypeStructure, 0) / 8 & 31) << 5;
  selection.strokeWeight = PclStrokeWeight(font_.NumberOr(MetricTag::StrokeWeight, 128));
  selection.typeface = LeadingNumber(font_.Text(MetricTag::PclTypeface));
  return selection;
}

// Hundredths of characters an inch, by the width of them all or, when they differ, of the space.
uint32_t TaggedConversion::PitchInHundredths() const {
  constexpr double Largest = 0xFFFFFFFF;
  const auto valueOf = [](const Rational& ratio) {
    return static_cast<double>(ratio.numerator) / ratio.denominator;
  };
  const double units = font_.NumberOr(MetricTag::Spacing, 0) > 0
                           ? font_.NumberOr(MetricTag::Spacing, 0)
                           : spaceWidth_;
  const double inches = units / static_cast<double>(unitsPerEm_) * valueOf(PointSize()) *
                        valueOf(Ratio(MetricTag::InchesPerPoint, {1, 72}));
  return inches > 0 ? static_cast<uint32_t>(std::min(100 / inches + 0.5, Largest)) : 0;
}

std::optional<DriverPfm> TaggedConversion::Make(const SoftFontDescriptor* header) {
  const std::optional<Rational> em = font_.Ratio(MetricTag::DesignUnitsPerEm);
  unitsPerEm_ = em ? Rounded(*em) : 0;
  if (unitsPerEm_ <= 0 || unitsPerEm_ > 0xFFFF || font_.Numbers(MetricTag::Widths).empty()) {
    return std::nullopt;
  }
  constexpr int32_t EightBitFont = 1;
  const PclSymbolSet set = FindPclSymbolSet(symbolSet_, EightBitFont);
  pfm_.translationTable = set.translationTable;
  if (!FindGlyphs()) return std::nullopt;
  Put(PfmField::CharacterSet, set.characterSet);
  PutWidths();
  PutKerning();
  PutHeader();
  PutMetrics();
  pfm_.leadsToTables = true;
  pfm_.deviceName = Pcl5Device;
  std::string name(font_.Text(MetricTag::TypefaceName));
  name.erase(name.find_last_not_of(' ') + 1);
  const std::string suffix =
      std::string(" (").append(ShortSymbolSetText(symbolSetText_)).append(")");
  pfm_.faceName = name.substr(0, LongestFaceName - suffix.size()) + suffix;
  pfm_.symbolSet = symbolSet_;

  FontSelection selection = header == nullptr ? SelectionOfFont() : SelectionOfHeader(*header);
  selection.height = static_cast<uint32_t>(Rounded(PointSize(), HundredthsOfPoint));
  selection.pitch = PitchInHundredths();
  pfm_.selection = SelectionEscape(selection);
  return pfm_;
}

// The header of a soft font.
std::optional<SoftFontDescriptor> ReadHeader(const char* path) {
  const std::unique_ptr<platform::Stream> file = PclFontOpen(path);
  SoftFontDescriptor header = {};
  if (file == nullptr || file->Read(header.data(), header.size()) != header.size()) {
    return std::nullopt;
  }
  return header;
}

// Empty for a file that is too large or cannot be read to its end.
std::vector<uint8_t> ReadWhole(const std::string& path) {
  const uint32_t size = FileSize(path.c_str());
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(path.c_str(), "rb");
  if (file == nullptr || size > LargestTaggedFile) return {};
  std::vector<uint8_t> bytes = ReadBytes(file.get(), size);
  if (file->HasError()) bytes.clear();
  return bytes;
}

bool HasSymbolSet(const TaggedFont& font, std::string_view symbolSet) {
  const std::vector<std::string_view> sets = font.SymbolSets();
  return std::find(sets.begin(), sets.end(), symbolSet) != sets.end();
}

}  // namespace

uint32_t ConvertTaggedMetrics(const char* source, const std::string& output,
                              const HvFontInfo* fontInfo, uint32_t pathSelector, bool byHeader) {
  if (fontInfo == nullptr) return HV_BAD_ARGUMENT;
  std::string_view path;
  if (pathSelector == FONT_COMPANIONS_METRICS) {
    path = FixedText(fontInfo->companionPath1, sizeof fontInfo->companionPath1);
  } else if (pathSelector == FONT_COMPANIONS_WINDOWS) {
    path = FixedText(fontInfo->companionPath2, sizeof fontInfo->companionPath2);
  } else {
    return HV_BAD_ARGUMENT;
  }
  if (platform::KindOf(source) == platform::FileKind::Directory) return HV_CANNOT_OPEN;

  std::optional<SoftFontDescriptor> header;
  std::string symbolSet(FixedText(fontInfo->symbolSet, sizeof fontInfo->symbolSet));
  if (byHeader) {
    header = ReadHeader(source);
    if (!header) return HV_UNUSABLE_FILE;
    symbolSet =
        SymbolSetText(static_cast<uint16_t>(DescriptorValue(*header, DescriptorField::SymbolSet)));
  }
  const std::vector<uint8_t> bytes = ReadWhole(std::string(path));
  const std::vector<TaggedFont> fonts = ReadTaggedMetrics(bytes);
  if (fonts.empty()) return HV_UNUSABLE_FILE;
  const auto matching = std::find_if(fonts.begin(), fonts.end(), [&](const TaggedFont& font) {
    return HasSymbolSet(font, symbolSet);
  });
  const TaggedFont& font = matching == fonts.end() ? fonts.front() : *matching;
  if (matching == fonts.end()) {
    const std::vector<std::string_view> sets = font.SymbolSets();
    if (sets.empty()) return HV_UNUSABLE_FILE;
    symbolSet = sets.front();
  }
  const std::optional<DriverPfm> pfm =
      TaggedConversion(font, symbolSet).Make(header ? &*header : nullptr);
  if (!pfm) return HV_UNUSABLE_FILE;
  return WriteConverted(output, AssembleDriverPfm(*pfm));
}

}  // namespace hv
