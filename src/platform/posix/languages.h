// Language identifiers of POSIX locales.
#pragma once

#include <cstdint>
#include <string_view>

namespace hv::platform {

// The identifier of a locale name such as "de_CH.UTF-8": primary language in bits 0 to 9,
// sublanguage above. A language without the territory, or with one that the table does not have,
// gives its first sublanguage; "C", "POSIX" and unknown languages give 0x0409, English of the USA.
// Source of the numbers: the published table of Windows language identifiers.
uint16_t LanguageOfLocale(std::string_view locale);

}  // namespace hv::platform
