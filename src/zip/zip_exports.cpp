// Exports of the zip archives.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "zip/extraction.h"

using hv::Guarded;
using hv::IsPathArgument;

namespace {

bool AreArguments(const char* archive, const char* pattern) {
  return IsPathArgument(archive) && (pattern == nullptr || IsPathArgument(pattern));
}

}  // namespace

uint32_t HVAPI_CALL HvZipExplode(const char* archive, const char* pattern, HvZipProgress progress) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!AreArguments(archive, pattern)) return HV_BAD_ARGUMENT;
    return hv::ExplodeArchive(archive, pattern == nullptr ? "" : pattern, progress);
  });
}

uint32_t HVAPI_CALL HvZipImplode(const char* archive, const char* pattern, HvZipProgress) {
  return AreArguments(archive, pattern) ? HV_NOT_SUPPORTED : HV_BAD_ARGUMENT;
}
