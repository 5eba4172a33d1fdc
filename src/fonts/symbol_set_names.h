// Names of PCL symbol sets by the text of their code, as font lists show them.
#pragma once

#include <string_view>

namespace hv {

// The display name of a symbol set such as "8U"; empty when it has none.
std::string_view SymbolSetName(std::string_view symbolSet);

}  // namespace hv
