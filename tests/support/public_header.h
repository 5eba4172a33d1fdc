// The public headers as text.
#pragma once

#include <set>
#include <string>

namespace hvtest {

// The functions that hvapi.h declares, by the headers of its families in a folder of the sources.
std::set<std::string> DeclaredFunctions(const std::string& sourceFolder);

}  // namespace hvtest
