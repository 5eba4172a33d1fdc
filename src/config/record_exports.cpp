// Exports of the keyed record files.

#include <algorithm>
#include <string>

#include "api/arguments.h"
#include "api/file_operations.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "config/record_file.h"
#include "support/fixed_text.h"

using hv::Guarded;

namespace {

constexpr std::size_t LetterCounts = 12;

bool IsRecordFile(const char* path, uint32_t fileType) {
  return hv::IsPathArgument(path) && fileType == DAT_FILE_COMMANDS && hv::FileExists(path);
}

}  // namespace

int32_t HVAPI_CALL HvDatOpenFile(const char* path, uint32_t /*reserved*/, uint32_t fileType) {
  return Guarded(DAT_FAILED, [&]() -> int32_t {
    if (!IsRecordFile(path, fileType)) return DAT_BAD_ARGUMENT;
    return hv::OpenRecordFile(path);
  });
}

int32_t HVAPI_CALL HvDatCloseFile(int32_t handle) {
  return Guarded(DAT_FAILED, [&]() -> int32_t {
    const int16_t slot = static_cast<int16_t>(handle);
    if (slot < 0) return DAT_FAILED;
    return hv::CloseRecordFile(slot);
  });
}

int32_t HVAPI_CALL HvDatGetFirstKey(int32_t handle, HvCommandRecord* record) {
  return Guarded(DAT_FAILED, [&]() -> int32_t {
    if (record == nullptr) return DAT_BAD_HANDLE;
    const std::string prefix(hv::FixedText(record->szKey, sizeof record->szKey));
    return hv::GetFirstRecord(static_cast<int16_t>(handle), prefix, record);
  });
}

int32_t HVAPI_CALL HvDatGetNextKey(int32_t handle, HvCommandRecord* record) {
  return Guarded(DAT_FAILED, [&]() -> int32_t {
    if (record == nullptr) return DAT_BAD_HANDLE;
    return hv::GetNextRecord(static_cast<int16_t>(handle), record);
  });
}

uint32_t HVAPI_CALL HvDatQueryCount(const char* path, char* keyPrefix, uint32_t fileType) {
  return Guarded(static_cast<uint16_t>(DAT_CANNOT_OPEN), [&]() -> uint16_t {
    if (keyPrefix == nullptr) return static_cast<uint16_t>(DAT_BAD_HANDLE);
    if (!IsRecordFile(path, fileType)) return static_cast<uint16_t>(DAT_CANNOT_OPEN);
    const std::string prefix(hv::FixedText(keyPrefix, sizeof(HvCommandRecord::szKey) - 1));
    uint16_t count = 0;
    const int32_t code =
        hv::CountRecords(path, prefix, reinterpret_cast<HvCommandRecord*>(keyPrefix), &count);
    return code == 0 ? count : static_cast<uint16_t>(code);
  });
}

int32_t HVAPI_CALL HvDatQueryCounts(const char* path, uint16_t* counts, uint32_t fileType) {
  return Guarded(DAT_CANNOT_OPEN, [&]() -> int32_t {
    if (counts == nullptr) return DAT_BAD_HANDLE;
    std::fill_n(counts, LetterCounts, uint16_t{0});
    if (!IsRecordFile(path, fileType)) return DAT_CANNOT_OPEN;
    return hv::CountRecordsByLetter(path, counts);
  });
}
