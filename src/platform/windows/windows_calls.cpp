#include "platform/windows/windows_calls.h"

namespace hv::platform {

bool IsSameFile(HANDLE a, HANDLE b) {
  BY_HANDLE_FILE_INFORMATION first;
  BY_HANDLE_FILE_INFORMATION second;
  return GetFileInformationByHandle(a, &first) != 0 &&
         GetFileInformationByHandle(b, &second) != 0 &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
         first.nFileIndexHigh == second.nFileIndexHigh &&
         first.nFileIndexLow == second.nFileIndexLow;
}

}  // namespace hv::platform
