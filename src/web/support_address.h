// Addresses on the support site. Arguments have been checked by the exports but for the model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "api/hvapi.h"
#include "platform/system_facts.h"

namespace hv {

// The languages of the plain form go from 0 to this one.
constexpr uint32_t LastAddressLanguage = 22;

// The printer number of a model; nothing for a model that has none.
std::optional<int32_t> PrinterOfModel(int32_t model);

// base/area/language[/printer], each part as `ini` redirects it; a part that it makes empty is left
// out with its slash. ini may be NULL; printer is nothing where none is wanted.
std::string PathAddress(std::optional<int32_t> printer, uint32_t topic, uint32_t language,
                        HvIniHandle* ini);

// The query of the dispatch script.
std::string DispatchAddress(uint32_t printerA, uint32_t printerB, uint32_t topic,
                            uint16_t languageId);

// The site's codes of a Windows language identifier and of a system.
uint32_t LanguageCodeOf(uint16_t languageId);
uint32_t SystemCodeOf(const platform::OsVersion& version);

}  // namespace hv
