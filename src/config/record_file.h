// Keyed record files: four process-wide slots, walks by key, counts by key. All calls may overlap.
// Results are the DAT_ codes.
#pragma once

#include <cstdint>
#include <string_view>

#include "api/hvapi.h"

namespace hv {

// A file of command records.
int32_t OpenRecordFile(const char* path);
int32_t CloseRecordFile(int16_t handle);

// The first record whose key begins with keyPrefix.
int32_t GetFirstRecord(int16_t handle, std::string_view keyPrefix, HvCommandRecord* record);
// The record after the current one.
int32_t GetNextRecord(int16_t handle, HvCommandRecord* record);

// Adds to `count` the records, in a row from the first one on, whose keys begin with keyPrefix, and
// reads them into `record`.
int32_t CountRecords(const char* path, std::string_view keyPrefix, HvCommandRecord* record,
                     uint16_t* count);

// Adds all records to `counts`: keys that begin with A, F, G, P, S, T, SA, SF, SG, SP, SS, ST.
int32_t CountRecordsByLetter(const char* path, uint16_t* counts);

}  // namespace hv
