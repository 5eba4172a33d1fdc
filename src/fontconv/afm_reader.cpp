#include "fontconv/afm_reader.h"

#include <algorithm>
#include <optional>

#include "api/hvapi.h"
#include "fontconv/afm_keywords.h"
#include "fontconv/ansi_glyph_names.h"
#include "fontconv/metrics_line_reader.h"
#include "support/ascii.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t LongestGlyphName = 31;
constexpr std::string_view SymbolPrefix = "Symbol";

constexpr std::size_t SpaceCode = 32;
constexpr std::size_t HyphenCode = 45;
constexpr std::size_t DefaultCode = 149;  // the bullet
constexpr std::size_t NoBreakSpaceCode = 160;
constexpr std::size_t SoftHyphenCode = 173;
constexpr std::size_t MacronCode = 175;

struct WidthWeight {
  char character;
  uint32_t weight;  // thousandths
};

constexpr WidthWeight WidthWeights[] = {
    {'a', 64}, {'b', 14}, {'c', 27}, {'d', 35}, {'e', 100}, {'f', 20},  {'g', 14},
    {'h', 42}, {'i', 63}, {'j', 3},  {'k', 6},  {'l', 35},  {'m', 20},  {'n', 56},
    {'o', 56}, {'p', 17}, {'q', 4},  {'r', 49}, {'s', 56},  {'t', 71},  {'u', 31},
    {'v', 10}, {'w', 18}, {'x', 3},  {'y', 18}, {'z', 2},   {' ', 166},
};

class AfmReading {
 public:
  AfmReading(MetricsLineReader* lines, FontMetricsRecord* record)
      : lines_(lines), record_(record) {}

  void Read() {
    while (std::optional<MetricsLine> line = lines_->Next()) {
      const AfmKeyword keyword = FindAfmKeyword(line->Word());
      if (keyword == AfmKeyword::EndFontMetrics) break;
      Take(keyword, &*line);
    }
    FillFixedCodes();
  }

 private:
  void Take(AfmKeyword keyword, MetricsLine* line);
  void TakeFontName(std::string_view name);
  void ReadCharMetrics(int32_t count);
  void TakeCharMetrics(MetricsLine line);
  void ReadKernData();
  void FillFixedCodes();

  bool KeepsCodes() const {
    return record_->pitchAndFamily == FamilyDecorative ||
           StartsWith(record_->menuName, SymbolPrefix);
  }

  MetricsLineReader* lines_;
  FontMetricsRecord* record_;
  std::optional<CharMetrics> macron_;
};

void AfmReading::Take(AfmKeyword keyword, MetricsLine* line) {
  switch (keyword) {
    case AfmKeyword::FontName:
      TakeFontName(line->Rest());
      break;
    case AfmKeyword::Weight:
      record_->weight = WeightOfWord(line->Word());
      break;
    case AfmKeyword::ItalicAngle:
      record_->italicAngle = line->Tenths();
      break;
    case AfmKeyword::IsFixedPitch:
      record_->variablePitch = line->Word() == "true" ? 0 : 1;
      break;
    case AfmKeyword::UnderlinePosition:
      record_->underlinePosition = line->Integer();
      break;
    case AfmKeyword::UnderlineThickness:
      record_->underlineThickness = line->Integer();
      break;
    case AfmKeyword::Ascender:
      record_->ascender = line->Integer();
      break;
    case AfmKeyword::FontBBox:
      record_->fontBBox.left = line->Integer();
      record_->fontBBox.bottom = line->Integer();
      record_->fontBBox.right = line->Integer();
      record_->fontBBox.top = line->Integer();
      break;
    case AfmKeyword::StartCharMetrics:
      ReadCharMetrics(line->Integer());
      break;
    case AfmKeyword::StartKernData:
      ReadKernData();
      break;
    default:
      break;
  }
}

void AfmReading::TakeFontName(std::string_view name) {
  SetFixedText(record_->fontName, name);
  const bool symbol = StartsWith(name, SymbolPrefix) || name == "ZapfDingbats";
  record_->charSet = symbol ? CharSetSymbol : CharSetAnsi;
}

// As many lines as were announced belong to the section, whatever they hold.
void AfmReading::ReadCharMetrics(int32_t count) {
  for (CharMetrics& metrics : record_->charMetrics) metrics.width = NoWidth;
  for (int32_t i = 0; i < count; ++i) {
    const std::optional<MetricsLine> line = lines_->Next();
    if (!line) break;
    TakeCharMetrics(*line);
  }
  const CharMetrics standIn = record_->charMetrics[DefaultCode];
  for (CharMetrics& metrics : record_->charMetrics) {
    if (metrics.width == NoWidth) metrics = standIn;
  }
  lines_->Next();  // EndCharMetrics
}

// C code ; WX width ; N name ; B llx lly urx ury ; or CH and a hexadecimal code. The fields are
// known by their position, not by their first words.
void AfmReading::TakeCharMetrics(MetricsLine line) {
  MetricsLine codeField = line.Field();
  const std::string_view codeWord = codeField.Word();
  int32_t code = 0;
  if (codeWord == "C") code = codeField.Integer();
  if (codeWord == "CH") code = codeField.HexInteger();

  CharMetrics metrics;
  MetricsLine widthField = line.Field();
  widthField.Word();
  metrics.width = widthField.Integer();

  MetricsLine nameField = line.Field();
  nameField.Word();
  const std::string_view name = nameField.Word(LongestGlyphName);

  MetricsLine boxField = line.Field();
  boxField.Word();
  metrics.left = boxField.Integer();
  metrics.bottom = boxField.Integer();
  metrics.right = boxField.Integer();
  metrics.top = boxField.Integer();

  if (!KeepsCodes()) {
    code = AnsiCodeOfGlyph(name);
    if (name == "macron") macron_ = metrics;
  }
  if (code > 0 && static_cast<std::size_t>(code) < CodeCount) {
    record_->charMetrics[static_cast<std::size_t>(code)] = metrics;
  }
}

void AfmReading::ReadKernData() {
  std::optional<MetricsLine> line = lines_->Next();
  if (!line) return;
  line->Word();  // StartKernPairs
  const int32_t count = line->Integer();
  for (int32_t i = 0; i < count; ++i) {
    line = lines_->Next();
    if (!line) break;
    if (FindAfmKeyword(line->Word()) != AfmKeyword::Kpx) {
      lines_->PushBack();
      break;
    }
    KernPair pair;
    pair.first = AnsiCodeOfGlyph(line->Word());
    pair.second = AnsiCodeOfGlyph(line->Word());
    pair.amount = static_cast<int16_t>(line->Integer());
    if (record_->kernPairCount < MostKernPairs) {
      record_->kernPairs[record_->kernPairCount++] = pair;
    }
  }
  lines_->Next();  // EndKernPairs
  std::stable_sort(record_->kernPairs.begin(),
                   record_->kernPairs.begin() + static_cast<std::ptrdiff_t>(record_->kernPairCount),
                   [](const KernPair& a, const KernPair& b) { return a.Key() < b.Key(); });
}

// Codes that AFM files do not name, and the one width of a fixed-pitch font.
void AfmReading::FillFixedCodes() {
  auto& metrics = record_->charMetrics;
  metrics[NoBreakSpaceCode] = metrics[SpaceCode];
  metrics[SoftHyphenCode] = metrics[HyphenCode];
  // Fonts name this glyph macron, which stands in no code of its own; without one it looks like any
  // other code that the font lacks.
  metrics[MacronCode] = macron_.value_or(metrics[0]);
  record_->firstChar = 32;
  record_->lastChar = 255;
  if (record_->variablePitch != 0) return;
  for (std::size_t code = SpaceCode; code < CodeCount; ++code) {
    metrics[code].width = metrics[SpaceCode].width;
  }
}

void SetMaximumWidth(FontMetricsRecord* record) {
  int32_t widest = 0;
  for (int32_t code = record->firstChar; code <= record->lastChar; ++code) {
    widest = std::max(widest, record->charMetrics[static_cast<std::size_t>(code)].width);
  }
  record->maxWidth = static_cast<int16_t>(widest);
}

std::string_view MenuName(std::string_view value) {
  if (value.empty() || value.front() != '(') return value;
  value.remove_prefix(1);
  return value.substr(0, value.find(')'));
}

void SetFlag(std::string_view word, int32_t* flag) {
  if (word == "true") *flag = 1;
  if (word == "false") *flag = 0;
}

uint32_t ReadInf(platform::Stream* file, FontMetricsRecord* record) {
  MetricsLineReader lines;
  const uint32_t loaded = lines.Load(file);
  if (loaded != HV_OK) return loaded;
  while (std::optional<MetricsLine> line = lines.Next()) {
    switch (FindInfKeyword(line->Word())) {
      case InfKeyword::MsMenuName:
        SetFixedText(record->menuName, MenuName(line->Rest()));
        break;
      case InfKeyword::Serif:
        SetFlag(line->Word(), &record->serif);
        break;
      case InfKeyword::Pi:
        SetFlag(line->Word(), &record->pi);
        break;
      default:
        break;
    }
  }
  record->pitchAndFamily = record->serif != 0 ? FamilySerif : FamilySansSerif;
  if (record->pi != 0) record->pitchAndFamily = FamilyDecorative;
  return HV_OK;
}

}  // namespace

uint32_t ReadAfmAndInf(platform::Stream* afm, platform::Stream* inf, FontMetricsRecord* record,
                       WidthRule rule) {
  *record = FontMetricsRecord();
  if (inf != nullptr) {
    const uint32_t read = ReadInf(inf, record);
    if (read != HV_OK) return read;
  }
  MetricsLineReader lines;
  const uint32_t loaded = lines.Load(afm);
  if (loaded != HV_OK) return loaded;
  AfmReading(&lines, record).Read();
  RecomputeAverageWidth(record, rule);
  SetMaximumWidth(record);
  return HV_OK;
}

void RecomputeAverageWidth(FontMetricsRecord* record, WidthRule rule) {
  const auto width = [&](std::size_t code) {
    return static_cast<uint32_t>(record->charMetrics[code].width);
  };
  uint32_t sum = 0;
  if (rule == WidthRule::Weighted) {
    for (const WidthWeight& row : WidthWeights) {
      sum += row.weight * width(static_cast<uint8_t>(row.character));
    }
    record->avgWidth = static_cast<uint16_t>(sum / 1000);
  } else if (record->variablePitch == 0) {
    record->avgWidth = width(static_cast<std::size_t>(record->firstChar));
  } else {
    for (std::size_t code = 0; code < CodeCount; ++code) sum += width(code);
    record->avgWidth = sum / static_cast<uint32_t>(CodeCount);
  }
}

}  // namespace hv
