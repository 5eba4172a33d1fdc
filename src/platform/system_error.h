// System errors, by the numbers of Windows on every system.
#pragma once

#include <cstdint>

namespace hv::platform {

enum SystemError : uint32_t {
  ErrorNone = 0,
  ErrorFileNotFound = 2,
  ErrorPathNotFound = 3,
  ErrorTooManyOpenFiles = 4,
  ErrorAccessDenied = 5,
  ErrorInvalidHandle = 6,
  ErrorNotEnoughMemory = 8,
  ErrorNotDosDisk = 26,
  ErrorWriteFault = 29,
  ErrorReadFault = 30,
  ErrorGeneralFailure = 31,
  ErrorSharingViolation = 32,
  ErrorSharingBufferExceeded = 36,
  ErrorInvalidParameter = 87,
  ErrorDriveLocked = 108,
  ErrorBrokenPipe = 109,
  ErrorDiskFull = 112,
  ErrorAlreadyExists = 183,
  ErrorFilenameExceedsRange = 206,
  ErrorDirectory = 267,
  ErrorMountPointUnusable = 282,
  ErrorTimeout = 1460
};

}  // namespace hv::platform
