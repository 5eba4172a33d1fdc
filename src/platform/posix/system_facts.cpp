#include "platform/system_facts.h"

#include <pwd.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/posix/environment.h"
#include "platform/posix/languages.h"

namespace hv::platform {
namespace {

bool CopyName(const std::string& name, char* buffer, uint32_t size) {
  if (name.empty() || name.size() + 1 > size) return false;
  std::memcpy(buffer, name.c_str(), name.size() + 1);
  return true;
}

}  // namespace

bool ComputerName(char* buffer, uint32_t size) {
  char name[256] = {};
  if (gethostname(name, sizeof name - 1) != 0) return false;
  // The computer's own name, without its domain.
  std::string host = name;
  host.resize(std::min(host.find('.'), host.size()));
  return CopyName(host, buffer, size);
}

bool UserName(char* buffer, uint32_t size) {
  passwd entry;
  passwd* found = nullptr;
  std::vector<char> space(16384);
  if (getpwuid_r(geteuid(), &entry, space.data(), space.size(), &found) != 0) return false;
  return found != nullptr && CopyName(found->pw_name, buffer, size);
}

uint16_t UserLanguage() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (const std::string locale = Environment(variable); !locale.empty()) {
      return LanguageOfLocale(locale);
    }
  }
  return LanguageOfLocale("C");
}

OsVersion SystemVersion() {
  return {5, 1, 2};
}

}  // namespace hv::platform
