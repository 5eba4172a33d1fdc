#include "fonts/font_information.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "api/file_operations.h"
#include "fonts/afm_description.h"
#include "fonts/dlf_reader.h"
#include "fonts/fmf_reader.h"
#include "fonts/font_file.h"
#include "fonts/font_paths.h"
#include "fonts/pcm_reader.h"
#include "fonts/pfm_reader.h"
#include "fonts/soft_font_descriptor.h"
#include "fonts/type1_reader.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

// Files of these kinds are described by their names alone.
void DescribeByName(const FontFile& file, uint32_t fontClass, int32_t fontType, HvFontInfo* info) {
  SetFixedText(info->name, file.baseName);
  info->fontClass = fontClass;
  info->fontType = fontType;
  info->flags |= FONT_FLAG_BINARY;
}

uint32_t DescribeTfm(const FontFile& file, HvFontInfo* info) {
  DescribeByName(file, FONT_CLASS_METRICS, FONT_TYPE_TFM, info);
  return HV_OK;
}

// An FOT only names the TTF that is the font.
uint32_t DescribeFot(const FontFile& file, HvFontInfo* info) {
  DescribeByName(file, FONT_CLASS_METRICS, FONT_TYPE_TRUETYPE, info);
  return HV_UNUSABLE_FILE;
}

uint32_t DescribeTtf(const FontFile& file, HvFontInfo* info) {
  DescribeByName(file, FONT_CLASS_TRUETYPE, FONT_TYPE_TRUETYPE, info);
  return HV_OK;
}

struct KindRow {
  std::string_view extension;
  bool metricsOnly;
  uint32_t (*describe)(const FontFile& file, HvFontInfo* info);
  FontPossibility possible;
};

constexpr FontPossibility Only(uint32_t fontClass, int32_t fontType) {
  return {fontClass, FontTypeBit(fontType)};
}

// A file of any other kind is read as a PCL soft font. An FOT is never accepted.
constexpr KindRow Kinds[] = {
    {"AFM", true, DescribeAfm, Only(FONT_CLASS_AFM, FONT_TYPE_TYPE1)},
    {"PFA", false, DescribePfa, Only(FONT_CLASS_DOWNLOADABLE, FONT_TYPE_TYPE1)},
    {"PFB", false, DescribePfb, Only(FONT_CLASS_DOWNLOADABLE, FONT_TYPE_TYPE1)},
    {"DLF", false, DescribeDlf, Only(FONT_CLASS_DOWNLOADABLE, FONT_TYPE_DLF)},
    {"FMF", true, DescribeFmf, Only(FONT_CLASS_METRICS, FONT_TYPE_FMF)},
    {"PFM", true, DescribePfm, Only(FONT_CLASS_METRICS, FONT_TYPE_PFM)},
    {"PSM", true, DescribePfm, Only(FONT_CLASS_METRICS, FONT_TYPE_PFM)},
    {"PBM", true, DescribePfm, Only(FONT_CLASS_METRICS, FONT_TYPE_PFM)},
    {"PCM", true, DescribePcm, Only(FONT_CLASS_METRICS, FONT_TYPE_PCM)},
    {"TFM", true, DescribeTfm, Only(FONT_CLASS_METRICS, FONT_TYPE_TFM)},
    {"FOT", false, DescribeFot, {FONT_CLASS_METRICS, 0}},
    {"TTF", false, DescribeTtf, Only(FONT_CLASS_TRUETYPE, FONT_TYPE_TRUETYPE)},
};
constexpr KindRow SoftFontKind = {
    "",
    false,
    DescribePclFont,
    {FONT_CLASS_DOWNLOADABLE,
     FontTypeBit(FONT_TYPE_PCL_RESOLUTION) | FontTypeBit(FONT_TYPE_PCL_BITMAP) |
         FontTypeBit(FONT_TYPE_PCL_EXTENDED) | FontTypeBit(FONT_TYPE_PCL_BOUND) |
         FontTypeBit(FONT_TYPE_PCL_UNBOUND) | FontTypeBit(FONT_TYPE_PCL_TRUETYPE)}};

// Files that lie beside fonts and are never fonts.
constexpr std::string_view NoFontExtensions[] = {"CFG", "FF",  "TYP", "TXT", "ME",
                                                 "BAT", "CMD", "COM", "EXE"};

const KindRow& KindOfExtension(std::string_view extension) {
  const auto* row = std::find_if(std::begin(Kinds), std::end(Kinds),
                                 [&](const KindRow& kind) { return kind.extension == extension; });
  return row == std::end(Kinds) ? SoftFontKind : *row;
}

bool IsNoFont(std::string_view extension) {
  return std::find(std::begin(NoFontExtensions), std::end(NoFontExtensions), extension) !=
         std::end(NoFontExtensions);
}

}  // namespace

uint32_t QueryFontInformation(const char* fontPath, HvFontInfo* info, uint32_t companionMode,
                              bool allowMetricFiles, const FoundFile* listed) {
  if (listed == nullptr && !FileExists(fontPath)) return HV_NOT_FOUND;
  const std::string extension = FontExtension(fontPath);
  if (extension.empty()) return HV_BAD_ARGUMENT;
  if (IsNoFont(extension)) return HV_UNUSABLE_FILE;
  info->flags = FONT_FLAG_STANDARD_ENCODING;
  info->fileSize = listed != nullptr ? listed->size : FileSize(fontPath);
  const KindRow& kind = KindOfExtension(extension);
  if (kind.metricsOnly && !allowMetricFiles) return HV_UNUSABLE_FILE;
  const FolderListing* const folder = listed != nullptr ? listed->folder : nullptr;
  return kind.describe({fontPath, FontBaseName(fontPath), companionMode, folder}, info);
}

FontPossibility PossibilityOf(std::string_view fontPath) {
  const std::string extension = FontExtension(fontPath);
  if (extension.empty() || IsNoFont(extension)) return {0, 0};
  return KindOfExtension(extension).possible;
}

}  // namespace hv
