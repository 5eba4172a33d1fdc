// A PCL sequence of several parameters, as ESC & l 1 o 2 A, filtered one by one.
#pragma once

#include <string_view>

#include "macros/macro_stream.h"

namespace hv {

// Copies the sequence whose first three bytes, `prefix`, have been read, without the parameters
// that the list drops (see filter_list.h), and the data behind it. The last parameter that is kept
// ends what is written; when none is, nothing is.
void FilterParameterizedEscape(MacroStream* stream, std::string_view prefix,
                               std::string_view filterList);

}  // namespace hv
