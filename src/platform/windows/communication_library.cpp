#include "platform/communication_library.h"

#include "platform/windows/windows_calls.h"

namespace hv::platform {

void* LoadCommunicationLibrary() {
  return LoadLibraryA("NBXCHAN.DLL");
}

void UnloadCommunicationLibrary(void* module) {
  FreeLibrary(static_cast<HMODULE>(module));
}

void* FindFunction(void* module, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

}  // namespace hv::platform
