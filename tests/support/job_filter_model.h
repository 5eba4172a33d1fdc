// The filter of macro sources, as one that has the whole source before it: the reference that the
// real one is held to.
#pragma once

#include <cstdint>
#include <string>

namespace hvtest {

std::string FilterPostScriptModel(const std::string& source, const std::string& textAfterPsHeader);
std::string FilterPclModel(const std::string& source, uint32_t mask);

}  // namespace hvtest
