#include "web/support_address.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "config/ini_entries.h"
#include "support/ascii.h"
#include "web/address_tables.h"

namespace hv {
namespace {

static_assert(std::size(SupportTopics) == WEB_TOPIC_PUBLICATIONS);

const SupportTopic& TopicOf(uint32_t topic) {
  return SupportTopics[topic - WEB_TOPIC_DRIVERS];
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), ToUpper);
  return upper;
}

// A part of an address, or what the file puts in its place.
std::string_view Redirected(HvIniHandle* ini, std::string_view section, std::string_view key,
                            std::string_view part) {
  if (ini != nullptr) IniFindValue(ini, section, key, &part);
  return part;
}

void AppendPart(std::string* address, std::string_view part) {
  if (!part.empty()) address->append("/").append(part);
}

}  // namespace

std::optional<int32_t> PrinterOfModel(int32_t model) {
  if (model >= FirstPlainModel) return model;
  const auto* const row = std::find_if(std::begin(ModelPrinters), std::end(ModelPrinters),
                                       [&](const ModelPrinter& m) { return m.model == model; });
  if (row == std::end(ModelPrinters)) return std::nullopt;
  return row->printer;
}

std::string PathAddress(std::optional<int32_t> printer, uint32_t topic, uint32_t language,
                        HvIniHandle* ini) {
  const std::string_view area = TopicOf(topic).pathWord;
  const std::string areaKey = UpperCase(area);
  const std::string languageText = std::to_string(language);
  std::string address(Redirected(ini, "AREA_PREFIX", areaKey, PlainBaseAddress));
  AppendPart(&address, Redirected(ini, "AREA", areaKey, area));
  AppendPart(&address, Redirected(ini, "LANGUAGE", languageText, languageText));
  if (printer) {
    const std::string printerText = std::to_string(*printer);
    AppendPart(&address, Redirected(ini, "PRINTER", printerText, printerText));
  }
  return address;
}

std::string DispatchAddress(uint32_t printerA, uint32_t printerB, uint32_t topic,
                            uint16_t languageId) {
  std::array<char, 160> query;
  std::snprintf(query.data(), query.size(), "func=%s&lang=%u&prtr=B%03u%03u&ctry=%08X&os=%u",
                TopicOf(topic).dispatchWord, LanguageCodeOf(languageId), printerA, printerB,
                platform::UserLanguage(), SystemCodeOf(platform::SystemVersion()));
  return std::string(DispatchBaseAddress).append(query.data());
}

uint32_t LanguageCodeOf(uint16_t languageId) {
  const uint16_t primary = languageId & 0x3FF;
  const auto sublanguage = static_cast<uint16_t>(languageId >> 10);
  if (primary == PrimaryChinese) {
    return sublanguage == SublanguageSimplified ? SimplifiedChineseCode : OtherChineseCode;
  }
  const auto* const row = std::find_if(std::begin(LanguageCodes), std::end(LanguageCodes),
                                       [&](const LanguageCode& c) { return c.primary == primary; });
  return row == std::end(LanguageCodes) ? OtherLanguageCode : row->code;
}

uint32_t SystemCodeOf(const platform::OsVersion& version) {
  constexpr uint32_t PlatformNt = 2;
  if (version.platform < PlatformNt) return SystemCode95;
  if (version.platform > PlatformNt || version.major < 5) return SystemCodeNt4;
  return version.minor == 0 ? SystemCode2000 : SystemCodeXp;
}

}  // namespace hv
