#include "font_kinds.h"

#include <algorithm>
#include <iterator>

#include "program.h"

namespace hvtool {
namespace {

struct KindText {
  uint32_t fontClass;
  int32_t fontType;
  const char* text;
};

constexpr KindText KindTexts[] = {
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_TYPE1, "Type 1 font"},
    {FONT_CLASS_AFM, FONT_TYPE_TYPE1, "AFM metrics"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_DLF, "DLF font"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_PCL_RESOLUTION, "PCL bitmap font with resolution"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_PCL_BITMAP, "PCL bitmap font"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_PCL_EXTENDED, "PCL bitmap font, extended"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_PCL_BOUND, "PCL scalable font, bound"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_PCL_UNBOUND, "PCL scalable font, unbound"},
    {FONT_CLASS_DOWNLOADABLE, FONT_TYPE_PCL_TRUETYPE, "PCL TrueType font"},
    {FONT_CLASS_TRUETYPE, FONT_TYPE_TRUETYPE, "TrueType font"},
    {FONT_CLASS_METRICS, FONT_TYPE_TRUETYPE, "TrueType font reference"},
    {FONT_CLASS_METRICS, FONT_TYPE_TFM, "TFM metrics"},
    {FONT_CLASS_METRICS, FONT_TYPE_FMF, "FMF metrics"},
    {FONT_CLASS_METRICS, FONT_TYPE_PFM, "PFM metrics"},
    {FONT_CLASS_METRICS, FONT_TYPE_PCM, "PCM cartridge"},
};

}  // namespace

std::string FontKindText(const HvFontInfo& info) {
  const auto* row =
      std::find_if(std::begin(KindTexts), std::end(KindTexts), [&](const KindText& kind) {
        return kind.fontClass == info.fontClass && kind.fontType == info.fontType;
      });
  return row == std::end(KindTexts) ? "" : row->text;
}

void AddCompanionsOption(CLI::App* command, int* companions) {
  AddChoice(command, "--companions", companions, "MODE",
            {{"none", FONT_COMPANIONS_NONE},
             {"metrics", FONT_COMPANIONS_METRICS},
             {"windows", FONT_COMPANIONS_WINDOWS},
             {"optional", FONT_COMPANIONS_OPTIONAL}},
            "Companion files to look for");
}

}  // namespace hvtool
