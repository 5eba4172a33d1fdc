// Exports of the file utilities.

#include "api/arguments.h"
#include "api/file_operations.h"
#include "api/guard.h"
#include "api/hvapi.h"

using hv::Guarded;
using hv::IsNonEmptyPath;
using hv::IsPathArgument;

uint32_t HVAPI_CALL HvFilExists(const char* path) {
  return Guarded(0, [&]() -> uint32_t { return IsNonEmptyPath(path) && hv::FileExists(path); });
}

uint32_t HVAPI_CALL HvFilQuerySize(const char* path) {
  return Guarded(0, [&]() -> uint32_t { return IsNonEmptyPath(path) ? hv::FileSize(path) : 0; });
}

uint32_t HVAPI_CALL HvFilCopy(const char* source, const char* target) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!IsPathArgument(source) || !IsPathArgument(target)) return HV_BAD_ARGUMENT;
    return hv::CopyFileMapped(source, target);
  });
}

uint32_t HVAPI_CALL HvFilBackup(const char* source, char* backupName) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!IsPathArgument(source) || backupName == nullptr) return HV_BAD_ARGUMENT;
    return hv::BackUpFile(source, backupName);
  });
}

uint32_t HVAPI_CALL HvFilModify(const char* path, uintptr_t argument, HvLineCallback lineCallback) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!IsPathArgument(path) || lineCallback == nullptr) return HV_BAD_ARGUMENT;
    return hv::ModifyFile(path, argument, lineCallback);
  });
}

uint32_t HVAPI_CALL HvFilChecksum(const char* path, int32_t openHandle, uint32_t skipWord,
                                  uint16_t* sum) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (sum == nullptr || (path != nullptr && !IsPathArgument(path))) return HV_BAD_ARGUMENT;
    return hv::ChecksumFile(path, openHandle, static_cast<uint16_t>(skipWord), sum);
  });
}

uint32_t HVAPI_CALL HvFilMakePath(const char* path, char* created) {
  return Guarded(HV_CONNECTION_FAILED, [&]() -> uint32_t {
    if (created != nullptr) *created = '\0';
    if (!IsNonEmptyPath(path)) return HV_CONNECTION_FAILED;
    return hv::MakePath(path, created);
  });
}
