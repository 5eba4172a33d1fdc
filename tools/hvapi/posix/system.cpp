#include "system.h"

#include <dlfcn.h>
#include <stdlib.h>
#include <unistd.h>

#include <memory>

namespace hvtool {
namespace {

// A destination as the CUPS client library describes it.
struct CupsDestination {
  char* name;
  char* instance;
  int isDefault;
  int optionCount;
  void* options;
};

std::string Variable(const char* name) {
  const char* value = secure_getenv(name);
  return value == nullptr ? std::string() : value;
}

}  // namespace

const char* const SystemSpoolerName = "CUPS";

bool ErrorsGoToTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

std::filesystem::path SpoolFolder() {
  if (const std::string folder = Variable("HVAPI_SPOOL"); !folder.empty()) return folder;
  if (const std::string state = Variable("XDG_STATE_HOME"); !state.empty()) {
    return std::filesystem::path(state) / "hvapi/spool";
  }
  if (const std::string home = Variable("HOME"); !home.empty()) {
    return std::filesystem::path(home) / ".local/state/hvapi/spool";
  }
  return {};
}

// The client library is looked for at run time: a machine without CUPS has no such queues.
std::vector<std::string> SystemQueues() {
  std::vector<std::string> names;
  const std::unique_ptr<void, int (*)(void*)> cups(dlopen("libcups.so.2", RTLD_NOW | RTLD_LOCAL),
                                                   [](void* module) { return dlclose(module); });
  if (cups == nullptr) return names;
  const auto getDestinations =
      reinterpret_cast<int (*)(CupsDestination**)>(dlsym(cups.get(), "cupsGetDests"));
  const auto freeDestinations =
      reinterpret_cast<void (*)(int, CupsDestination*)>(dlsym(cups.get(), "cupsFreeDests"));
  if (getDestinations == nullptr || freeDestinations == nullptr) return names;
  CupsDestination* destinations = nullptr;
  const int count = getDestinations(&destinations);
  for (int i = 0; i < count; ++i) {
    // An instance is the same queue with other default options.
    if (destinations[i].instance == nullptr) names.emplace_back(destinations[i].name);
  }
  freeDestinations(count, destinations);
  return names;
}

}  // namespace hvtool
