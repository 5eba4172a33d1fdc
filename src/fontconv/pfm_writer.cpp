#include "fontconv/pfm_writer.h"

#include <algorithm>
#include <array>

#include "fontconv/output_file.h"
#include "fonts/pfm_header.h"
#include "support/byte_order.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

// Values of the header that do not follow from the font.
constexpr uint16_t PfmType = 0x0081;
constexpr uint16_t PsmType = 0x8280;
constexpr uint16_t Points = 10;
constexpr uint16_t Resolution = 300;
constexpr uint16_t PsmExternalLeading = 196;
constexpr int32_t DefaultCode = 149;  // the bullet

constexpr std::string_view PostScriptDevice = "PostScript";

// Fields of a PSM.
constexpr std::size_t DeviceFieldSize = 20;
constexpr std::size_t FaceFieldSize = 32;
constexpr std::size_t PsmFontNameSize = 33;
constexpr uint8_t PsmDriverTail[] = {3, 0x33};

// A width in thousandths of the em in pixels: the em of a ten-point font has 41.6 of them.
constexpr int64_t PixelWidth(int32_t width) {
  return int64_t{width} * 416 / 1000 / 10;
}

enum class Section : uint16_t {
  None = 0,
  FileSize = 1,
  DeviceName = 2,
  FaceName = 3,
  ExtendedMetrics = 6,
  WidthTable = 7,
  KerningTable = 9,
  DriverInformation = 11,
};

// Where the sections of a file lie.
class OffsetTable {
 public:
  void Set(Section section, std::size_t offset) {
    for (Entry& entry : entries_) {
      if (entry.section != section && entry.section != Section::None) continue;
      entry = {section, static_cast<uint32_t>(offset)};
      return;
    }
  }

  // 0 for a section that the file does not have.
  uint32_t Get(Section section) const {
    const auto* entry = std::find_if(entries_.begin(), entries_.end(),
                                     [&](const Entry& e) { return e.section == section; });
    return entry == entries_.end() ? 0 : entry->offset;
  }

 private:
  struct Entry {
    Section section = Section::None;
    uint32_t offset = 0;
  };
  std::array<Entry, 13> entries_ = {};
};

// A file in the making. It is made twice: the first time tells where its sections lie, the second
// time every offset in it is known.
class Assembly {
 public:
  Assembly(const FontMetricsRecord& record, MetricsVariant variant)
      : record_(record), isPsm_(variant == MetricsVariant::LaserPrinterPsm) {}

  std::vector<uint8_t> Make() {
    Pass();
    Pass();
    return std::move(bytes_);
  }

 private:
  void Pass();
  void AddHeader();
  void AddExtension();
  void AddExtendedMetrics();
  void AddDeviceName();
  void AddFaceName();
  void AddDriverInformation();
  void AddWidthTable();
  void AddPixelWidthTable();
  void AddKerningTable();

  bool IsVariablePitch() const { return record_.variablePitch == 1; }
  int64_t BoxHeight() const { return int64_t{record_.fontBBox.top} - record_.fontBBox.bottom; }

  void Begin(Section section) { offsets_.Set(section, bytes_.size()); }
  void AddBytes(std::span<const uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  }
  void Add16(int64_t value) {
    uint8_t bytes[2];
    StoreLe16(bytes, static_cast<uint16_t>(value));
    AddBytes(bytes);
  }
  void Add32(int64_t value) {
    uint8_t bytes[4];
    StoreLe32(bytes, static_cast<uint32_t>(value));
    AddBytes(bytes);
  }
  // The text, cut where it leaves no room for a NUL, in a field of `size` bytes.
  void AddField(std::string_view text, std::size_t size) {
    text = text.substr(0, size - 1);
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    bytes_.resize(bytes_.size() + size - text.size());
  }
  void AddText(std::string_view text) { AddField(text, text.size() + 1); }

  template <typename Visit>
  void ForEachWidth(Visit visit) {
    for (int32_t code = record_.firstChar; code <= record_.lastChar; ++code) {
      visit(record_.charMetrics[static_cast<std::size_t>(code)].width);
    }
  }

  const FontMetricsRecord& record_;
  bool isPsm_;
  OffsetTable offsets_;
  std::vector<uint8_t> bytes_;
};

void Assembly::Pass() {
  bytes_.clear();
  AddHeader();
  if (isPsm_) {
    if (IsVariablePitch()) AddWidthTable();
    AddExtension();
    AddDeviceName();
    AddFaceName();
    AddExtendedMetrics();
    if (IsVariablePitch()) AddPixelWidthTable();
    AddDriverInformation();
  } else {
    AddExtension();
    AddExtendedMetrics();
    AddDeviceName();
    AddFaceName();
    AddDriverInformation();
    AddWidthTable();
  }
  if (record_.kernPairCount > 0) AddKerningTable();
  offsets_.Set(Section::FileSize, bytes_.size());
}

void Assembly::AddHeader() {
  std::array<uint8_t, PfmHeaderSize> header = {};
  const auto set = [&](PfmField field, int64_t value) { SetPfmValue(header, field, value); };
  set(PfmField::Version, PfmVersion);
  set(PfmField::Size, offsets_.Get(Section::FileSize));
  std::copy(CopyrightNotice.begin(), CopyrightNotice.end(),
            header.begin() + PfmRow(PfmField::Copyright).offset);
  set(PfmField::Type, isPsm_ ? PsmType : PfmType);
  set(PfmField::Points, Points);
  set(PfmField::VerticalResolution, Resolution);
  set(PfmField::HorizontalResolution, Resolution);
  set(PfmField::Ascent, record_.ascender);
  set(PfmField::InternalLeading, std::max(BoxHeight() - UnitsPerEm, int64_t{0}));
  set(PfmField::ExternalLeading, isPsm_ ? PsmExternalLeading : 0);
  set(PfmField::Italic, record_.italicAngle != 0 ? 1 : 0);
  set(PfmField::Weight, record_.weight);
  set(PfmField::CharacterSet, record_.charSet);
  set(PfmField::PixelWidth, isPsm_ && IsVariablePitch() ? 0 : record_.maxWidth);
  set(PfmField::PixelHeight, BoxHeight());
  set(PfmField::PitchAndFamily,
      record_.pitchAndFamily | (IsVariablePitch() ? PfmVariablePitch : 0));
  set(PfmField::AverageWidth, record_.avgWidth);
  set(PfmField::MaximumWidth, record_.maxWidth);
  set(PfmField::FirstCharacter, record_.firstChar);
  set(PfmField::LastCharacter, record_.lastChar);
  set(PfmField::DefaultCharacter, DefaultCode - record_.firstChar);
  set(PfmField::DeviceNameOffset, offsets_.Get(Section::DeviceName));
  set(PfmField::FaceNameOffset, offsets_.Get(Section::FaceName));
  AddBytes(header);
}

void Assembly::AddExtension() {
  std::array<uint8_t, PfmExtensionSize> extension = {};
  const auto set = [&](PfmExtensionField field, int64_t value) {
    SetPfmValue(extension, field, value);
  };
  set(PfmExtensionField::Size, PfmExtensionSize);
  set(PfmExtensionField::ExtendedMetricsOffset, offsets_.Get(Section::ExtendedMetrics));
  set(PfmExtensionField::WidthTableOffset, offsets_.Get(Section::WidthTable));
  set(PfmExtensionField::KerningTableOffset, offsets_.Get(Section::KerningTable));
  set(PfmExtensionField::DriverInformationOffset, offsets_.Get(Section::DriverInformation));
  AddBytes(extension);
}

void Assembly::AddExtendedMetrics() {
  std::array<uint8_t, PfmMetricsSize> metrics = {};
  const auto set = [&](PfmMetric field, int64_t value) { SetPfmValue(metrics, field, value); };
  const auto box = [&](char character) -> const CharMetrics& {
    return record_.charMetrics[static_cast<uint8_t>(character)];
  };
  const int32_t position = record_.underlinePosition;
  const int32_t thickness = record_.underlineThickness;
  set(PfmMetric::Size, PfmMetricsSize);
  set(PfmMetric::PointSize, 240);
  set(PfmMetric::MasterHeight, UnitsPerEm);
  set(PfmMetric::MinimumScale, 3);
  set(PfmMetric::MaximumScale, UnitsPerEm);
  set(PfmMetric::MasterUnits, UnitsPerEm);
  set(PfmMetric::CapHeight, box('H').top);
  set(PfmMetric::XHeight, box('x').top);
  set(PfmMetric::LowerCaseAscent, box('d').top);
  set(PfmMetric::LowerCaseDescent, -int64_t{box('p').bottom});
  set(PfmMetric::Slant, record_.italicAngle);
  set(PfmMetric::SuperscriptOffset, -500);
  set(PfmMetric::SubscriptOffset, 250);
  set(PfmMetric::SuperscriptSize, 500);
  set(PfmMetric::SubscriptSize, 500);
  set(PfmMetric::UnderlineOffset, position);
  set(PfmMetric::UnderlineWidth, thickness);
  set(PfmMetric::DoubleUpperUnderlineOffset, position / 2);
  set(PfmMetric::DoubleLowerUnderlineOffset, position);
  set(PfmMetric::DoubleUpperUnderlineWidth, thickness / 2);
  set(PfmMetric::DoubleLowerUnderlineWidth, thickness / 2);
  set(PfmMetric::StrikeOutOffset, 500);
  set(PfmMetric::StrikeOutWidth, 100);
  set(PfmMetric::KerningPairs, static_cast<int64_t>(record_.kernPairCount));
  Begin(Section::ExtendedMetrics);
  AddBytes(metrics);
}

void Assembly::AddDeviceName() {
  Begin(Section::DeviceName);
  if (isPsm_) {
    AddField(LaserPrinterDevice, DeviceFieldSize);
  } else {
    AddText(PostScriptDevice);
  }
}

void Assembly::AddFaceName() {
  Begin(Section::FaceName);
  const std::string_view name = FixedText(record_.menuName, sizeof record_.menuName);
  AddField(name, isPsm_ ? FaceFieldSize : name.size() + 1);
}

void Assembly::AddDriverInformation() {
  Begin(Section::DriverInformation);
  const std::string_view name = FixedText(record_.fontName, sizeof record_.fontName);
  if (!isPsm_) {
    AddText(name);
    return;
  }
  AddField(name, PsmFontNameSize);
  bytes_.push_back(static_cast<uint8_t>(record_.firstChar));
  bytes_.push_back(static_cast<uint8_t>(record_.lastChar));
  AddBytes(PsmDriverTail);
}

void Assembly::AddWidthTable() {
  Begin(Section::WidthTable);
  if (isPsm_) {
    ForEachWidth([&](int32_t width) { Add32(width); });
    Add32(0);
  } else {
    ForEachWidth([&](int32_t width) { Add16(width); });
  }
}

void Assembly::AddPixelWidthTable() {
  ForEachWidth([&](int32_t width) { Add32(PixelWidth(width)); });
}

void Assembly::AddKerningTable() {
  Begin(Section::KerningTable);
  Add16(static_cast<int64_t>(record_.kernPairCount));
  for (std::size_t i = 0; i < record_.kernPairCount; ++i) {
    const KernPair& pair = record_.kernPairs[i];
    bytes_.push_back(pair.first);
    bytes_.push_back(pair.second);
    Add16(pair.amount);
  }
}

}  // namespace

std::vector<uint8_t> AssembleMetrics(const FontMetricsRecord& record, MetricsVariant variant) {
  return Assembly(record, variant).Make();
}

void WriteMetricsFile(const FontMetricsRecord& record, const std::string& path,
                      MetricsVariant variant) {
  ReplaceFile(path, AssembleMetrics(record, variant));
}

}  // namespace hv
