#include "fontconv/afm_writer.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "api/hvapi.h"
#include "fontconv/output_file.h"
#include "fontconv/pfm_glyph_names.h"
#include "fonts/pfm_header.h"
#include "fonts/pfm_reader.h"
#include "platform/files.h"
#include "support/byte_cursor.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr uint32_t LightestMedium = 325;
constexpr uint32_t HeaviestMedium = 475;
constexpr int32_t SpaceCode = 32;
constexpr int32_t NoStandardCode = -1;

using Bytes = std::span<const uint8_t>;

// The sections of a PFM, each known to lie within it.
struct PfmSections {
  Bytes header;
  Bytes metrics;
  Bytes widths;   // two bytes a character
  Bytes kerning;  // the pairs, four bytes each
  bool hasKerning = false;
  bool hasFaceName = false;
  std::string_view copyright;
  std::string_view faceName;
  std::string_view fontName;
};

// Finds them by their offsets. Nothing lies at offset 0, where the header is.
class SectionFinder {
 public:
  explicit SectionFinder(Bytes file) : file_(file) {}

  Bytes Table(uint32_t offset, std::size_t size) {
    ByteCursor cursor(file_);
    cursor.Seek(offset);
    const Bytes table = cursor.ReadBytes(size);
    failed_ = failed_ || offset == 0 || cursor.Failed();
    return table;
  }

  std::string_view Text(uint32_t offset) {
    if (offset == 0 || offset >= file_.size()) {
      failed_ = true;
      return {};
    }
    const Bytes rest = file_.subspan(offset);
    const std::string_view text =
        FixedText(reinterpret_cast<const char*>(rest.data()), rest.size());
    failed_ = failed_ || text.size() == rest.size();  // it does not end within the file
    return text;
  }

  bool Failed() const { return failed_; }

 private:
  Bytes file_;
  bool failed_ = false;
};

std::optional<PfmSections> FindSections(Bytes pfm) {
  if (pfm.size() < PfmHeaderSize + PfmExtensionSize) return std::nullopt;
  const Bytes extension = pfm.subspan(PfmHeaderSize);
  SectionFinder finder(pfm);
  PfmSections sections;
  sections.header = pfm.first(PfmHeaderSize);
  const PackedField& copyright = PfmRow(PfmField::Copyright);
  sections.copyright =
      FixedText(reinterpret_cast<const char*>(&pfm[copyright.offset]), copyright.width);
  if (const uint32_t face = PfmValue(pfm, PfmField::FaceNameOffset); face != 0) {
    sections.hasFaceName = true;
    sections.faceName = finder.Text(face);
  }
  sections.fontName = finder.Text(PfmValue(extension, PfmExtensionField::DriverInformationOffset));
  sections.metrics =
      finder.Table(PfmValue(extension, PfmExtensionField::ExtendedMetricsOffset), PfmMetricsSize);
  const uint32_t first = PfmValue(pfm, PfmField::FirstCharacter);
  const uint32_t last = PfmValue(pfm, PfmField::LastCharacter);
  const std::size_t characters = last < first ? 0 : last - first + 1;
  sections.widths =
      finder.Table(PfmValue(extension, PfmExtensionField::WidthTableOffset), 2 * characters);
  if (const uint32_t kerning = PfmValue(extension, PfmExtensionField::KerningTableOffset);
      kerning != 0) {
    sections.hasKerning = true;
    const std::size_t pairs = ByteCursor(finder.Table(kerning, 2)).ReadLe16();
    sections.kerning = finder.Table(kerning, 2 + 4 * pairs);
    sections.kerning = sections.kerning.subspan(std::min<std::size_t>(2, sections.kerning.size()));
  }
  if (finder.Failed()) return std::nullopt;
  return sections;
}

class AfmText {
 public:
  explicit AfmText(const PfmSections& pfm) : pfm_(pfm) {}

  std::string Make() {
    AddHeader();
    AddCharacters();
    if (pfm_.hasKerning) AddKerning();
    Add("EndFontMetrics\n");
    return std::move(text_);
  }

 private:
  void AddHeader();
  void AddCharacters();
  void AddCharacter(int32_t code, uint32_t width, std::string_view name);
  void AddKerning();

  void Add(std::string_view text) { text_ += text; }
  void AddNumber(int64_t number) { text_.append(" ").append(std::to_string(number)); }
  uint32_t Header(PfmField field) const { return PfmValue(pfm_.header, field); }
  uint32_t Metric(PfmMetric field) const { return PfmValue(pfm_.metrics, field); }
  bool HasStandardEncoding() const { return Header(PfmField::CharacterSet) == 0; }

  const PfmSections& pfm_;
  std::string text_;
};

void AfmText::AddHeader() {
  std::string fullName(pfm_.fontName);
  std::replace(fullName.begin(), fullName.end(), '-', ' ');
  const uint32_t weight = Header(PfmField::Weight);
  const uint32_t widest = Header(PfmField::MaximumWidth);
  const bool variable = (Header(PfmField::PitchAndFamily) & PfmVariablePitch) != 0 &&
                        Header(PfmField::AverageWidth) != widest;
  const uint32_t descent = Metric(PfmMetric::LowerCaseDescent);

  text_.append("StartFontMetrics 2.0\nComment ").append(pfm_.copyright);
  text_.append("\nFontName ").append(pfm_.fontName);
  Add("\nEncodingScheme ");
  Add(HasStandardEncoding() ? "AdobeStandardEncoding\n" : "FontSpecific\n");
  text_.append("FullName ").append(fullName);
  if (pfm_.hasFaceName) text_.append("\nFamilyName ").append(pfm_.faceName);
  Add("\nWeight ");
  if (weight > HeaviestMedium) {
    Add("Bold");
  } else {
    Add(weight > 0 && weight < LightestMedium ? "Light" : "Medium");
  }
  Add("\nIsFixedPitch ");
  Add(variable ? "false" : "true");
  Add("\nFontBBox");
  AddNumber(variable ? -100 : -20);
  AddNumber(-5 - int64_t{descent});
  AddNumber(int64_t{widest} + 10);
  AddNumber(int64_t{Header(PfmField::Ascent)} + 5);
  Add("\nCapHeight");
  AddNumber(Metric(PfmMetric::CapHeight));
  Add("\nXHeight");
  AddNumber(Metric(PfmMetric::XHeight));
  Add("\nDescender");
  AddNumber(descent);
  Add("\nAscender");
  AddNumber(Metric(PfmMetric::LowerCaseAscent));
  Add("\n");
}

void AfmText::AddCharacters() {
  const auto first = static_cast<int32_t>(Header(PfmField::FirstCharacter));
  const auto last = static_cast<int32_t>(Header(PfmField::LastCharacter));
  std::array<uint32_t, 256> widths = {};
  ByteCursor table(pfm_.widths);
  for (int32_t code = first; code <= last; ++code) {
    widths[static_cast<std::size_t>(code)] = table.ReadLe16();
  }
  const uint32_t referenceWidth = widths[SpaceCode];

  // The code of the character that stands at each standard code.
  std::array<std::optional<uint8_t>, 256> slots = {};
  int32_t count = last - first + 1;
  for (int32_t c = first; c <= last && HasStandardEncoding(); ++c) {
    const auto code = static_cast<uint8_t>(c);
    if (const uint8_t standard = StandardCodeOf(code); standard != 0) {
      slots[standard] = code;
    } else if (!IsKeptInAfm(code, widths[code] == referenceWidth)) {
      widths[code] = 0;
      --count;
    }
  }

  Add("StartCharMetrics");
  AddNumber(count);
  Add("\n");
  for (std::size_t standard = 0; standard < slots.size(); ++standard) {
    if (!slots[standard]) continue;
    const uint8_t code = *slots[standard];
    AddCharacter(static_cast<int32_t>(standard), widths[code], PfmGlyphName(code));
    widths[code] = 0;
  }
  for (int32_t c = first; c <= last; ++c) {
    const auto code = static_cast<uint8_t>(c);
    if (widths[code] == 0) continue;
    if (HasStandardEncoding()) {
      AddCharacter(NoStandardCode, widths[code], PfmGlyphName(code));
    } else {
      AddCharacter(c, widths[code], {});
    }
  }
  Add("EndCharMetrics\n");
}

void AfmText::AddCharacter(int32_t code, uint32_t width, std::string_view name) {
  Add("C ");
  AddNumber(code);
  Add(" ; WX ");
  AddNumber(width);
  if (!name.empty()) text_.append(" ; N ").append(name);
  Add(" ;\n");
}

void AfmText::AddKerning() {
  std::string pairs;
  int64_t count = 0;
  for (ByteCursor table(pfm_.kerning); !table.AtEnd();) {
    const uint8_t left = table.ReadU8();
    const uint8_t right = table.ReadU8();
    const auto amount = static_cast<int16_t>(table.ReadLe16());
    if (amount == 0) continue;
    ++count;
    pairs.append("KPX ").append(PfmGlyphName(left)).append(" ").append(PfmGlyphName(right));
    pairs.append(" ").append(std::to_string(amount)).append("\n");
  }
  Add("StartKernData\nStartKernPairs");
  AddNumber(count);
  Add("\n");
  Add(pairs);
  Add("EndKernPairs\nEndKernData\n");
}

}  // namespace

std::optional<std::string> AfmOfPfm(std::span<const uint8_t> pfm) {
  const std::optional<PfmSections> sections = FindSections(pfm);
  if (!sections) return std::nullopt;
  return AfmText(*sections).Make();
}

uint32_t WriteAfmFromPfm(const char* source, const std::string& output) {
  if (platform::KindOf(source) == platform::FileKind::Directory) return HV_CANNOT_OPEN;
  const std::optional<PfmImage> pfm = PfmOpen(source, LargestPfm);
  const std::optional<std::string> afm = pfm ? AfmOfPfm(*pfm) : std::nullopt;
  return afm ? WriteConvertedText(output, *afm) : uint32_t{HV_UNUSABLE_FILE};
}

}  // namespace hv
