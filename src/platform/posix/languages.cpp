#include "platform/posix/languages.h"

namespace hv::platform {
namespace {

struct LocaleLanguage {
  std::string_view language;
  std::string_view territory;
  uint16_t identifier;
};

// The first row of a language is also that of the language alone.
constexpr LocaleLanguage LocaleLanguages[] = {
    {"ar", "SA", 0x0401}, {"ar", "IQ", 0x0801}, {"ar", "EG", 0x0C01}, {"ar", "LY", 0x1001},
    {"ar", "DZ", 0x1401}, {"ar", "MA", 0x1801}, {"ar", "TN", 0x1C01}, {"ar", "OM", 0x2001},
    {"ar", "YE", 0x2401}, {"ar", "SY", 0x2801}, {"ar", "JO", 0x2C01}, {"ar", "LB", 0x3001},
    {"ar", "KW", 0x3401}, {"ar", "AE", 0x3801}, {"ar", "BH", 0x3C01}, {"ar", "QA", 0x4001},
    {"bg", "BG", 0x0402}, {"ca", "ES", 0x0403}, {"zh", "TW", 0x0404}, {"zh", "CN", 0x0804},
    {"zh", "HK", 0x0C04}, {"zh", "SG", 0x1004}, {"zh", "MO", 0x1404}, {"cs", "CZ", 0x0405},
    {"da", "DK", 0x0406}, {"de", "DE", 0x0407}, {"de", "CH", 0x0807}, {"de", "AT", 0x0C07},
    {"de", "LU", 0x1007}, {"de", "LI", 0x1407}, {"el", "GR", 0x0408}, {"en", "US", 0x0409},
    {"en", "GB", 0x0809}, {"en", "AU", 0x0C09}, {"en", "CA", 0x1009}, {"en", "NZ", 0x1409},
    {"en", "IE", 0x1809}, {"en", "ZA", 0x1C09}, {"en", "JM", 0x2009}, {"en", "BZ", 0x2809},
    {"en", "TT", 0x2C09}, {"en", "ZW", 0x3009}, {"en", "PH", 0x3409}, {"en", "IN", 0x4009},
    {"en", "SG", 0x4809}, {"es", "ES", 0x040A}, {"es", "MX", 0x080A}, {"es", "GT", 0x100A},
    {"es", "CR", 0x140A}, {"es", "PA", 0x180A}, {"es", "DO", 0x1C0A}, {"es", "VE", 0x200A},
    {"es", "CO", 0x240A}, {"es", "PE", 0x280A}, {"es", "AR", 0x2C0A}, {"es", "EC", 0x300A},
    {"es", "CL", 0x340A}, {"es", "UY", 0x380A}, {"es", "PY", 0x3C0A}, {"es", "BO", 0x400A},
    {"es", "SV", 0x440A}, {"es", "HN", 0x480A}, {"es", "NI", 0x4C0A}, {"es", "PR", 0x500A},
    {"fi", "FI", 0x040B}, {"fr", "FR", 0x040C}, {"fr", "BE", 0x080C}, {"fr", "CA", 0x0C0C},
    {"fr", "CH", 0x100C}, {"fr", "LU", 0x140C}, {"fr", "MC", 0x180C}, {"he", "IL", 0x040D},
    {"hu", "HU", 0x040E}, {"is", "IS", 0x040F}, {"it", "IT", 0x0410}, {"it", "CH", 0x0810},
    {"ja", "JP", 0x0411}, {"ko", "KR", 0x0412}, {"nl", "NL", 0x0413}, {"nl", "BE", 0x0813},
    {"nb", "NO", 0x0414}, {"nn", "NO", 0x0814}, {"pl", "PL", 0x0415}, {"pt", "BR", 0x0416},
    {"pt", "PT", 0x0816}, {"rm", "CH", 0x0417}, {"ro", "RO", 0x0418}, {"ru", "RU", 0x0419},
    {"hr", "HR", 0x041A}, {"sk", "SK", 0x041B}, {"sq", "AL", 0x041C}, {"sv", "SE", 0x041D},
    {"sv", "FI", 0x081D}, {"th", "TH", 0x041E}, {"tr", "TR", 0x041F}, {"ur", "PK", 0x0420},
    {"id", "ID", 0x0421}, {"uk", "UA", 0x0422}, {"be", "BY", 0x0423}, {"sl", "SI", 0x0424},
    {"et", "EE", 0x0425}, {"lv", "LV", 0x0426}, {"lt", "LT", 0x0427}, {"fa", "IR", 0x0429},
    {"vi", "VN", 0x042A}, {"hy", "AM", 0x042B}, {"eu", "ES", 0x042D}, {"mk", "MK", 0x042F},
    {"af", "ZA", 0x0436}, {"ka", "GE", 0x0437}, {"hi", "IN", 0x0439}, {"ms", "MY", 0x043E},
    {"kk", "KZ", 0x043F}, {"sw", "KE", 0x0441}, {"gl", "ES", 0x0456},
};

constexpr uint16_t EnglishUsa = 0x0409;

}  // namespace

uint16_t LanguageOfLocale(std::string_view locale) {
  locale = locale.substr(0, locale.find_first_of(".@"));
  const std::size_t underscore = locale.find('_');
  const std::string_view language = locale.substr(0, underscore);
  const std::string_view territory =
      underscore == std::string_view::npos ? std::string_view() : locale.substr(underscore + 1);

  uint16_t first = 0;
  for (const LocaleLanguage& row : LocaleLanguages) {
    if (row.language != language) continue;
    if (row.territory == territory) return row.identifier;
    if (first == 0) first = row.identifier;
  }
  // Older locales name Norwegian without its form.
  if (language == "no") return LanguageOfLocale("nb_NO");
  return first != 0 ? first : EnglishUsa;
}

}  // namespace hv::platform
