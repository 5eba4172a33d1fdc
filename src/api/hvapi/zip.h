/**
 * @file
 * Zip archives.
 */
#pragma once

/**
 * Called after each member that was extracted.
 *
 * Its result is not looked at.
 *
 * @param name            its name as stored in the archive
 * @param compressedSize  its compressed size in bytes
 * @param percent         that size in percent of the compressed sizes of all members listed so far,
 *                        rounded; the directory is read 64 members at a time
 */
typedef uint32_t(HVAPI_CALL* HvZipProgress)(const char* name, uint32_t compressedSize,
                                            uint16_t percent);

/**
 * Extracts the members of a zip archive into files below the current directory, with their stored
 * paths and times (as UTC). Directories are made as needed, files of the same name are replaced.
 *
 * Members may be stored, shrunk, reduced, imploded or deflated. Encrypted members and those of
 * other methods or of a version above 2.0 are skipped, which is no error; neither is a wrong
 * CRC-32.
 *
 * A name never leads out of the current directory: leading separators and ".." are dropped, links
 * are not followed. ":" becomes "_", text from "<" to ">" and from "[" to "]" and control
 * characters are dropped, ";" ends the name, and behind a byte 0x16 a character stands for itself.
 *
 * Without progress all members are tried, whatever becomes of others, and the gravest result is
 * returned; with it the first one that fails, also for its CRC-32, ends the call. Of a member that
 * fails the file keeps what could be extracted.
 *
 * @param archive   path of the archive; when there is no such file, ".zip" is appended
 * @param pattern   NULL or "" for all members, else at most 260 characters: only the members whose
 *                  stored name matches. `*` is any run of characters (`/` too), `?` any one,
 *                  `[a-z]` and `[!a-z]` one of a set or not of it, `\c` the character c. Letter
 *                  case counts in sets only
 * @param progress  NULL, or a function to call after each member
 * @return HV_OK, HV_BAD_ARGUMENT, HV_NOT_FOUND (no such archive, or one of several disks),
 *   HV_CANNOT_OPEN, HV_ARCHIVE_ENDED, HV_NO_MEMORY, HV_DISK_FULL, HV_UNUSABLE_FILE (no archive, or
 *   damaged), HV_SHARING_VIOLATION (an output file or directory cannot be made).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvZipExplode(const char* archive, const char* pattern,
                                              HvZipProgress progress);

/**
 * Building archives is not supported: HV_NOT_SUPPORTED, or HV_BAD_ARGUMENT for arguments that
 * HvZipExplode would not take either. Nothing is created or changed.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvZipImplode(const char* archive, const char* pattern,
                                              HvZipProgress progress);
