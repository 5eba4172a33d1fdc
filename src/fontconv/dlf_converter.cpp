#include "fontconv/dlf_converter.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "api/hvapi.h"
#include "fontconv/output_file.h"
#include "fontconv/pfm_writer.h"
#include "fonts/dlf_reader.h"
#include "fonts/font_paths.h"
#include "fonts/pfm_header.h"
#include "platform/stream.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr int32_t FamilyFixedPitch = 48;
// Code pages of Windows' own character set.
constexpr uint32_t WindowsCodePages[] = {1004, 1252};
// A fixed-pitch font that is referenced tells its pitch alone. Its characters are taken for six
// tenths of its size, as those of typewriter faces are.
constexpr uint64_t TypewriterWidth = 600;

struct PitchAndSize {
  uint64_t pointSize;  // hundredths of a point
  uint64_t width;      // thousandths of the em; 0 for a proportional font
};

PitchAndSize MeasureFont(const DlfMetrics& font) {
  if (!font.fixedPitch) return {font.pointSize, 0};
  if (font.isReferenced)
    return {uint64_t{font.pitchWidth} * 100 / TypewriterWidth, TypewriterWidth};
  const uint64_t size = std::max<uint64_t>(font.pointSize, 1);
  return {font.pointSize, std::min<uint64_t>(uint64_t{font.pitchWidth} * 100 / size, 0xFFFF)};
}

bool IsWindowsCodePage(uint32_t codePage) {
  return std::find(std::begin(WindowsCodePages), std::end(WindowsCodePages), codePage) !=
         std::end(WindowsCodePages);
}

}  // namespace

uint32_t ConvertDlf(const char* source, const std::string& output) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(source, "rb");
  if (file == nullptr) return HV_CANNOT_OPEN;
  const std::optional<DlfMetrics> font = ReadDlf(file.get());
  if (!font) return HV_UNUSABLE_FILE;
  file->Close();

  std::string name = font->name;
  name.erase(name.find_last_not_of(' ') + 1);
  if (name.empty()) name = FontBaseName(source);
  std::string codePage = std::to_string(font->codePage);
  if (font->codePageLetter != ' ') codePage += font->codePageLetter;
  const PitchAndSize size = MeasureFont(*font);

  const auto record = std::make_unique<FontMetricsRecord>();
  SetFixedText(record->fontName, name);
  SetFixedText(record->menuName, name + " (" + codePage + ")");
  record->pitchAndFamily = font->fixedPitch ? FamilyFixedPitch : 0;
  record->fontBBox.top = UnitsPerEm;
  record->avgWidth = static_cast<uint32_t>(size.width);
  record->maxWidth = static_cast<int32_t>(size.width);
  std::vector<uint8_t> bytes = AssembleMetrics(*record, MetricsVariant::LaserPrinterPsm);
  SetPfmValue(bytes, PfmField::Points, static_cast<int64_t>((size.pointSize + 50) / 100));
  SetPfmValue(bytes, PfmField::CharacterSet,
              IsWindowsCodePage(font->codePage) ? CharSetAnsi : int32_t{PfmCharSetOem});
  if (!font->fixedPitch) {
    SetPfmValue(bytes, PfmField::PitchAndFamily, record->pitchAndFamily | PfmVariablePitch);
  }
  return WriteConverted(output, bytes);
}

}  // namespace hv
