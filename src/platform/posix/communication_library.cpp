#include "platform/communication_library.h"

#include <dlfcn.h>

#include "platform/posix/environment.h"

namespace hv::platform {

void* LoadCommunicationLibrary() {
  const std::string named = Environment("HVAPI_NBXCHAN");
  return dlopen(named.empty() ? "NBXCHAN.DLL" : named.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void UnloadCommunicationLibrary(void* module) {
  dlclose(module);
}

void* FindFunction(void* module, const char* name) {
  return dlsym(module, name);
}

}  // namespace hv::platform
