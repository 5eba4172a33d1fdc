// What the program asks of the system itself; the library's business is not repeated here.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace hvtool {

// Whether a person sees standard error as it is written.
bool ErrorsGoToTerminal();

// The folder whose directories are print queues, as the library looks for it; empty where there are
// no such queues.
std::filesystem::path SpoolFolder();

// The queues of the system's spooler, and what that is called.
extern const char* const SystemSpoolerName;
std::vector<std::string> SystemQueues();

}  // namespace hvtool
