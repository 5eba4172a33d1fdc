/**
 * @file
 * Library information, memory, paths.
 */
#pragma once

/** Library information, 128 bytes. */
typedef struct HvApiInfo {
  uint16_t words[64]; /**< words[0] is the version times 100 */
} HvApiInfo;

/** Fills record, which must not be NULL, with the version of the library. */
HVAPI_EXPORT void HVAPI_CALL HvGenQueryApiInfo(HvApiInfo* record);

/** Releases memory that this library handed out. NULL is allowed and does nothing. */
HVAPI_EXPORT void HVAPI_CALL HvMemFree(void* block);

/**
 * Copies the file name of path into dest, the letters a to z as A to Z.
 *
 * It is what follows the last `\`, `/` or `:`. A NULL path gives the empty text; for a NULL dest
 * nothing is written and a constant empty text is returned.
 *
 * @param dest  room for strlen(path) + 1 bytes
 * @param path  the path
 * @return dest.
 */
HVAPI_EXPORT char* HVAPI_CALL HvStrCpyFile(char* dest, const char* path);

/**
 * Copies the directory of path into dest: what comes before the file name, the separator included.
 * All else is as with HvStrCpyFile.
 */
HVAPI_EXPORT char* HVAPI_CALL HvStrCpyPath(char* dest, const char* path);
