// The Type 1 fonts and metrics of this system.
#pragma once

#include <string>
#include <vector>

namespace hvtest {

// The files of an extension, ".afm", each once however many links lead to it, sorted.
std::vector<std::string> InstalledFonts(const std::string& extension);

}  // namespace hvtest
