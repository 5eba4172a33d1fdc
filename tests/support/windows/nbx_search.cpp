#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "support/fake_nbx.h"

namespace hvtest {

ScopedNbxFolder::ScopedNbxFolder(const std::string& folder) {
  char before[MAX_PATH] = "";
  GetDllDirectoryA(sizeof before, before);
  before_ = before;
  SetDllDirectoryA(folder.c_str());
}

ScopedNbxFolder::~ScopedNbxFolder() {
  SetDllDirectoryA(before_.empty() ? nullptr : before_.c_str());
}

bool ScopedNbxFolder::IsLoaded() const {
  return GetModuleHandleA("NBXCHAN.DLL") != nullptr;
}

std::string ComputerNameOfSystem() {
  constexpr std::size_t MostCharacters = 15;
  char name[256] = "";
  DWORD size = sizeof name;
  GetComputerNameExA(ComputerNameNetBIOS, name, &size);
  const std::string computer = name;
  return computer.size() <= MostCharacters ? computer : std::string();
}

std::string UserNameOfSystem() {
  constexpr std::size_t MostCharacters = 79;
  char name[1024] = "";
  DWORD size = sizeof name;
  GetUserNameA(name, &size);
  const std::string user = name;
  return user.size() <= MostCharacters ? user : std::string();
}

}  // namespace hvtest
