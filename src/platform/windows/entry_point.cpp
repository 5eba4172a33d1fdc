#include "platform/windows/windows_calls.h"

// There is nothing to set up when the library is loaded, and nothing to take down.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD /*reason*/, void* /*reserved*/) {
  return TRUE;
}
