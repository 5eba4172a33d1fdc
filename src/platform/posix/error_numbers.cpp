#include "platform/posix/error_numbers.h"

#include <errno.h>

namespace hv::platform {

SystemError ErrorOfErrno(int number) {
  switch (number) {
    case 0:
      return ErrorNone;
    case ENOENT:
      return ErrorFileNotFound;
    case ENOTDIR:
    case ELOOP:
      return ErrorPathNotFound;
    case EMFILE:
    case ENFILE:
      return ErrorTooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
      return ErrorAccessDenied;
    case EBADF:
      return ErrorInvalidHandle;
    case ENOMEM:
      return ErrorNotEnoughMemory;
    case EBUSY:
      return ErrorSharingViolation;
    case EINVAL:
      return ErrorInvalidParameter;
    case EPIPE:
    case ECONNRESET:
    case ECONNABORTED:
      return ErrorBrokenPipe;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return ErrorDiskFull;
    case EEXIST:
      return ErrorAlreadyExists;
    case ENAMETOOLONG:
      return ErrorFilenameExceedsRange;
    case ETIMEDOUT:
    case EAGAIN:  // what a wait with a limit leaves
      return ErrorTimeout;
    default:
      return ErrorGeneralFailure;
  }
}

}  // namespace hv::platform
