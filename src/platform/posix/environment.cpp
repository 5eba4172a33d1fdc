#include "platform/posix/environment.h"

#include <stdlib.h>

namespace hv::platform {

std::string Environment(const char* name) {
  const char* value = secure_getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

int TimeoutSeconds() {
  const std::string text = Environment("HVAPI_TIMEOUT");
  char* end = nullptr;
  const long seconds = strtol(text.c_str(), &end, 10);
  const bool whole = !text.empty() && *end == '\0';
  return whole && seconds >= 1 && seconds <= 86400 ? static_cast<int>(seconds) : 30;
}

std::string SpoolFolder() {
  if (std::string folder = Environment("HVAPI_SPOOL"); !folder.empty()) return folder;
  if (const std::string state = Environment("XDG_STATE_HOME"); !state.empty()) {
    return state + "/hvapi/spool";
  }
  if (const std::string home = Environment("HOME"); !home.empty()) {
    return home + "/.local/state/hvapi/spool";
  }
  return {};
}

}  // namespace hv::platform
