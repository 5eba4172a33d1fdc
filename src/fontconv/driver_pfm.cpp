#include "fontconv/driver_pfm.h"

#include <span>
#include <string_view>

#include "support/byte_order.h"
#include "support/field_table.h"

namespace hv {
namespace {

constexpr PackedField DriverInformationTable[] = {
    {0, 2, ByteOrder::Little, Sign::Unsigned, "size"},
    {2, 2, ByteOrder::Little, Sign::Unsigned, "version"},
    {4, 4, ByteOrder::Little, Sign::Unsigned, "memory usage"},
    {8, 4, ByteOrder::Little, Sign::Unsigned, "selection escape offset"},
    {12, 2, ByteOrder::Little, Sign::Unsigned, "translation table"},
    {14, 4, ByteOrder::Little, Sign::Unsigned, "reserved"},
    {18, 2, ByteOrder::Little, Sign::Unsigned, "reserved"},
    {20, 1, ByteOrder::Little, Sign::Unsigned, "reserved"},
    {21, 1, ByteOrder::Little, Sign::Unsigned, "reserved"},
};
constexpr std::size_t DriverInformationSize = 22;
static_assert(IsGapless(DriverInformationTable) &&
              RecordSize(DriverInformationTable) == DriverInformationSize);

// Rows of the table.
enum class DriverField : uint8_t { Size, Version, MemoryUsage, SelectionOffset, TranslationTable };

// Three records, each of a kind, its length and its data.
constexpr PackedField DescribedInformationTable[] = {
    {0, 2, ByteOrder::Little, Sign::Unsigned, "size"},
    {2, 2, ByteOrder::Little, Sign::Unsigned, "version"},
    {4, 2, ByteOrder::Little, Sign::Unsigned, "first kind"},
    {6, 2, ByteOrder::Little, Sign::Unsigned, "first length"},
    {8, 4, ByteOrder::Little, Sign::Unsigned, "reserved"},
    {12, 2, ByteOrder::Little, Sign::Unsigned, "second kind"},
    {14, 2, ByteOrder::Little, Sign::Unsigned, "second length"},
    {16, 4, ByteOrder::Little, Sign::Unsigned, "description offset"},
    {20, 2, ByteOrder::Little, Sign::Unsigned, "symbol set"},
    {22, 2, ByteOrder::Little, Sign::Unsigned, "third kind"},
    {24, 2, ByteOrder::Little, Sign::Unsigned, "third length"},
    {26, 4, ByteOrder::Little, Sign::Unsigned, "memory usage"},
    {30, 4, ByteOrder::Little, Sign::Unsigned, "selection escape offset"},
};
constexpr std::size_t DescribedInformationSize = 34;
static_assert(IsGapless(DescribedInformationTable) &&
              RecordSize(DescribedInformationTable) == DescribedInformationSize);

// Rows of the table.
enum class DescribedField : uint8_t {
  Size,
  Version,
  FirstKind,
  FirstLength,
  Reserved,
  SecondKind,
  SecondLength,
  DescriptionOffset,
  SymbolSet,
  ThirdKind,
  ThirdLength,
  MemoryUsage,
  SelectionOffset,
};

using FileBytes = std::vector<uint8_t>;

void Append(FileBytes* file, std::span<const uint8_t> bytes) {
  file->insert(file->end(), bytes.begin(), bytes.end());
}

void AppendText(FileBytes* file, std::string_view text) {
  file->insert(file->end(), text.begin(), text.end());
  file->push_back(0);
}

void Append16(FileBytes* file, uint16_t value) {
  uint8_t bytes[2];
  StoreLe16(bytes, value);
  Append(file, bytes);
}

// Adds zeros for a record that is filled once the file is long enough, and returns its place.
std::size_t Reserve(FileBytes* file, std::size_t size) {
  const std::size_t place = file->size();
  file->resize(place + size);
  return place;
}

template <typename Field>
void Set(std::span<uint8_t> record, std::span<const PackedField> table, Field field,
         std::size_t value) {
  WriteField(record, table[static_cast<std::size_t>(field)], static_cast<int64_t>(value));
}

// The shorter driver information and the selection escape.
void AppendDriverInformation(FileBytes* file, const DriverPfm& pfm) {
  const std::size_t place = Reserve(file, DriverInformationSize);
  const std::size_t selection = file->size();
  if (!pfm.selection.empty()) AppendText(file, pfm.selection);
  const auto set = [&](DriverField field, std::size_t value) {
    Set(std::span(*file).subspan(place), DriverInformationTable, field, value);
  };
  set(DriverField::Size, DriverInformationSize);
  set(DriverField::Version, 1);
  set(DriverField::MemoryUsage, pfm.memoryUsage);
  set(DriverField::SelectionOffset, pfm.selection.empty() ? 0 : selection);
  set(DriverField::TranslationTable, pfm.translationTable);
}

// The longer one, the description and the selection escape.
void AppendDescribedInformation(FileBytes* file, const DriverPfm& pfm) {
  const std::size_t place = Reserve(file, DescribedInformationSize);
  const std::size_t description = file->size();
  AppendText(file, *pfm.description);
  const std::size_t selection = file->size();
  if (!pfm.selection.empty()) AppendText(file, pfm.selection);
  const auto set = [&](DescribedField field, std::size_t value) {
    Set(std::span(*file).subspan(place), DescribedInformationTable, field, value);
  };
  set(DescribedField::Size, DescribedInformationSize);
  set(DescribedField::Version, 2);
  set(DescribedField::FirstKind, 2);
  set(DescribedField::FirstLength, 8);
  set(DescribedField::SecondKind, 3);
  set(DescribedField::SecondLength, 10);
  set(DescribedField::DescriptionOffset, description);
  set(DescribedField::SymbolSet, pfm.symbolSet);
  set(DescribedField::ThirdKind, 1);
  set(DescribedField::ThirdLength, 12);
  set(DescribedField::MemoryUsage, pfm.memoryUsage);
  set(DescribedField::SelectionOffset, pfm.selection.empty() ? 0 : selection);
}

}  // namespace

std::vector<uint8_t> AssembleDriverPfm(const DriverPfm& pfm) {
  FileBytes file;
  Append(&file, pfm.header);
  const std::size_t widths = file.size();
  for (const uint16_t width : pfm.widths) Append16(&file, width);
  const std::size_t extension = Reserve(&file, PfmExtensionSize);
  const std::size_t face = file.size();
  AppendText(&file, pfm.faceName);
  const std::size_t device = file.size();
  AppendText(&file, pfm.deviceName);
  const std::size_t metrics = file.size();
  Append(&file, pfm.metrics);
  const std::size_t kerning = file.size();
  const bool hasKerning = pfm.leadsToTables && !pfm.kerning.empty();
  if (hasKerning) {
    Append16(&file, static_cast<uint16_t>(pfm.kerning.size()));
    for (const KernPair& pair : pfm.kerning) {
      Append16(&file, pair.Key());
      Append16(&file, static_cast<uint16_t>(pair.amount));
    }
  }
  const std::size_t driver = file.size();
  if (pfm.description) {
    AppendDescribedInformation(&file, pfm);
  } else {
    AppendDriverInformation(&file, pfm);
  }

  const auto set = [&](auto field, std::size_t place, std::size_t value) {
    SetPfmValue(std::span(file).subspan(place), field, static_cast<int64_t>(value));
  };
  set(PfmField::Size, 0, file.size());
  set(PfmField::FaceNameOffset, 0, face);
  set(PfmField::DeviceNameOffset, 0, device);
  set(PfmExtensionField::Size, extension, PfmExtensionSize);
  set(PfmExtensionField::ExtendedMetricsOffset, extension, metrics);
  set(PfmExtensionField::DriverInformationOffset, extension, driver);
  if (pfm.leadsToTables && !pfm.widths.empty()) {
    set(PfmExtensionField::WidthTableOffset, extension, widths);
  }
  if (hasKerning) set(PfmExtensionField::KerningTableOffset, extension, kerning);
  return file;
}

}  // namespace hv
