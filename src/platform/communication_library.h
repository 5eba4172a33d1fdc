// The printer communication library, NBXCHAN.DLL, found and bound at run time.
//
// On POSIX systems it is the shared object that the variable HVAPI_NBXCHAN names, else
// "NBXCHAN.DLL" by the rules of the system's loader.
#pragma once

namespace hv::platform {

// A loaded module, or NULL when it cannot be had. Each successful load needs one unload.
void* LoadCommunicationLibrary();
void UnloadCommunicationLibrary(void* module);

// The address of a function of the module, or NULL.
void* FindFunction(void* module, const char* name);

}  // namespace hv::platform
