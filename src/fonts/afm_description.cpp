#include "fonts/afm_description.h"

#include <memory>

#include "fontconv/afm_reader.h"
#include "support/ascii.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr std::size_t InfLineBuffer = 128;
constexpr std::string_view MenuNameKey = "MSMenuName ";
constexpr std::string_view StyleKey = "VPStyle ";

struct StyleRow {
  char letter;
  std::string_view suffix;
};
constexpr StyleRow Styles[] = {{'B', ",BOLD"}, {'I', ",ITALIC"}, {'T', ",BOLDITALIC"}};

std::string_view StyleSuffix(char letter) {
  for (const StyleRow& style : Styles) {
    if (style.letter == letter) return style.suffix;
  }
  return {};
}

// What stands behind the first "(" of a line, up to its end.
std::string_view BehindParenthesis(std::string_view line) {
  const std::size_t parenthesis = line.find('(');
  return parenthesis == std::string_view::npos ? std::string_view() : line.substr(parenthesis + 1);
}

using OpenedStream = std::unique_ptr<platform::Stream>;

// Reads the metrics for the sake of the font name. inf may be NULL.
uint32_t ReadFontName(platform::Stream* afm, platform::Stream* inf, HvFontInfo* info) {
  const auto record = std::make_unique<FontMetricsRecord>();
  const uint32_t read = ReadAfmAndInf(afm, inf, record.get(), WidthRule::Plain);
  if (read != HV_OK) return read;
  SetFixedText(info->name, record->fontName);
  return *info->name == '\0' ? HV_UNUSABLE_FILE : HV_OK;
}

}  // namespace

std::string InfMenuName(platform::Stream* file) {
  std::string name;
  std::string_view suffix;
  char buffer[InfLineBuffer];
  while (file->ReadLine(buffer, sizeof buffer) > 0) {
    const std::string_view line(buffer);
    const std::string_view value = BehindParenthesis(line);
    if (StartsWith(line, MenuNameKey)) {
      name = value.substr(0, value.find_first_of(")\n"));
    } else if (StartsWith(line, StyleKey)) {
      suffix = value.empty() ? std::string_view() : StyleSuffix(value.front());
    }
  }
  if (!name.empty()) name += suffix;
  return name;
}

uint32_t DescribeAfm(const FontFile& file, HvFontInfo* info) {
  const bool wantsInf = file.companionMode == FONT_COMPANIONS_WINDOWS ||
                        file.companionMode == FONT_COMPANIONS_OPTIONAL;
  const bool optional = file.companionMode == FONT_COMPANIONS_OPTIONAL;
  const bool hasInf = CompanionExists(file, "INF");
  if (wantsInf && !hasInf) return optional ? HV_OK : HV_NOT_SUPPORTED;

  const OpenedStream afm = platform::OpenStream(file.path, "rb");
  if (afm == nullptr) return HV_CANNOT_OPEN;
  const std::string infPath = hasInf ? CompanionPath(file, "INF") : std::string();
  const OpenedStream inf = platform::OpenStream(infPath.c_str(), "rb");
  if (wantsInf && inf == nullptr) return optional ? HV_OK : HV_CANNOT_OPEN;
  const uint32_t read = ReadFontName(afm.get(), inf.get(), info);
  if (read != HV_OK) return read;

  const OpenedStream infText = platform::OpenStream(infPath.c_str(), "r");
  if (infText != nullptr) SetFixedText(info->description, InfMenuName(infText.get()));
  info->fontClass = FONT_CLASS_AFM;
  info->fontType = FONT_TYPE_TYPE1;
  info->flags |= FONT_FLAG_08;
  return FindCompanion(file, "PFB", info->companionPath1) ? HV_OK : HV_NOT_SUPPORTED;
}

}  // namespace hv
