// File utilities: existence, size, copy, numbered backup, line-by-line rewrite, checksum, directory
// paths. Arguments have been checked by the exports; results are the codes of HvResult.
#pragma once

#include "api/hvapi.h"
#include "platform/stream.h"

namespace hv {

bool FileExists(const char* path);

// The size of the first file that matches path; 0 when there is none.
uint32_t FileSize(const char* path);

// The size of a file that is open, and at its start, as `file`. False when the system does not tell
// it: a file that holds something never passes for an empty one.
bool SizeOfOpenFile(const char* path, platform::Stream* file, uint32_t* size);

uint32_t CopyFileMapped(const char* source, const char* target);

// backupName has room for 260 bytes.
uint32_t BackUpFile(const char* source, char* backupName);

uint32_t ModifyFile(const char* path, uintptr_t argument, HvLineCallback lineCallback);

// path NULL or empty: the file of openHandle, which stays open.
uint32_t ChecksumFile(const char* path, int32_t openHandle, uint16_t skipWord, uint16_t* sum);

// created may be NULL, else it has room for 260 bytes and holds the empty text.
uint32_t MakePath(const char* path, char* created);

}  // namespace hv
