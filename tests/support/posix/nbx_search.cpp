#include <dlfcn.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "support/fake_nbx.h"

namespace hvtest {
namespace {

constexpr const char* Variable = "HVAPI_NBXCHAN";

}  // namespace

ScopedNbxFolder::ScopedNbxFolder(const std::string& folder) {
  const char* before = std::getenv(Variable);
  if (before != nullptr) before_ = before;
  SetVariable(Variable, folder + "/NBXCHAN.DLL");
}

ScopedNbxFolder::~ScopedNbxFolder() {
  SetVariable(Variable, before_);
}

bool ScopedNbxFolder::IsLoaded() const {
  void* module = dlopen(std::getenv(Variable), RTLD_NOW | RTLD_NOLOAD);
  if (module != nullptr) dlclose(module);
  return module != nullptr;
}

std::string ComputerNameOfSystem() {
  constexpr std::size_t MostCharacters = 15;
  char name[256] = {};
  if (gethostname(name, sizeof name - 1) != 0) return {};
  const std::string whole = name;
  const std::string host = whole.substr(0, whole.find('.'));
  return host.size() <= MostCharacters ? host : std::string();
}

std::string UserNameOfSystem() {
  constexpr std::size_t MostCharacters = 79;
  const passwd* entry = getpwuid(geteuid());
  const std::string user = entry == nullptr ? "" : entry->pw_name;
  return user.size() <= MostCharacters ? user : std::string();
}

}  // namespace hvtest
