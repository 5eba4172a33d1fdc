#include "platform/system_facts.h"

#include "platform/windows/windows_calls.h"

namespace hv::platform {

bool ComputerName(char* buffer, uint32_t size) {
  DWORD room = size;
  return GetComputerNameA(buffer, &room) != 0;
}

bool UserName(char* buffer, uint32_t size) {
  DWORD room = size;
  return GetUserNameA(buffer, &room) != 0;
}

uint16_t UserLanguage() {
  return GetUserDefaultLangID();
}

OsVersion SystemVersion() {
  OSVERSIONINFOA information = {};
  information.dwOSVersionInfoSize = sizeof information;
  GetVersionExA(&information);
  return {information.dwMajorVersion, information.dwMinorVersion, information.dwPlatformId};
}

}  // namespace hv::platform
