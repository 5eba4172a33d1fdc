/**
 * @file
 * File utilities.
 */
#pragma once

/** Tells whether path names a file or directory: 1, else 0 (also for NULL and the empty text). */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilExists(const char* path);

/**
 * Tells the size in bytes of the first file that matches a path.
 * @param path  its last part may hold the wildcards `*` and `?`
 * @return the size, 0xFFFFFFFF for a file of 4 GiB and more; 0 when nothing matches.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilQuerySize(const char* path);

/**
 * Copies source to target, replacing a target that is there; a failed copy leaves that one as it
 * was.
 * @return HV_OK, HV_BAD_ARGUMENT, HV_NOT_FOUND, HV_ACCESS_DENIED (also for a directory),
 *   HV_NO_MEMORY, HV_NOT_A_VOLUME, HV_DISK_FULL, HV_UNUSABLE_FILE, HV_DRIVE_LOCKED,
 *   HV_SHARING_VIOLATION, HV_SYSTEM_FAILURE.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilCopy(const char* source, const char* target);

/**
 * Copies source to the first free name of "base.001" .. "base.998" beside it (base is its name less
 * the extension).
 * @param source      the file
 * @param backupName  at least 260 bytes; receives the name of the backup
 * @return those of HvFilCopy, HV_UNUSABLE_FILE when source does not exist, HV_LIMIT_REACHED when
 *   all names are taken, HV_BAD_ARGUMENT when a name does not fit 260 bytes.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilBackup(const char* source, char* backupName);

/**
 * Called with each line, its line feed included, in a buffer of 2048 bytes. It may change the line
 * in place; an empty line is dropped from the file. Its result is not looked at.
 */
typedef uint32_t(HVAPI_CALL* HvLineCallback)(char* line, uintptr_t argument);

/**
 * Rewrites a text file line by line. A line longer than 2047 bytes arrives in pieces. path is
 * replaced only by a complete text.
 * @param path          the file
 * @param argument      passed to lineCallback
 * @param lineCallback  called with each line
 * @return HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN, HV_CANNOT_CLOSE, HV_READ_FAILED, HV_WRITE_FAILED,
 *   HV_NO_MEMORY, HV_CONNECTION_FAILED (no temporary file to be had), and those of HvFilCopy.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilModify(const char* path, uintptr_t argument,
                                             HvLineCallback lineCallback);

/**
 * Tells the checksum of a file: the two's complement of the 16-bit sum of its little-endian words.
 * A last single byte is taken with the high byte of the word before it.
 * @param path        the file, or NULL or "" to use openHandle
 * @param openHandle  a handle opened for reading with _lopen (on POSIX systems a file descriptor),
 *                    not 0; it stays open
 * @param skipWord    1-based number of a word to leave out, 0 for none (16 bits)
 * @param sum         receives the checksum; not written when the file cannot be opened
 * @return HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN, HV_CANNOT_CLOSE, HV_READ_FAILED, HV_NO_MEMORY.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilChecksum(const char* path, int32_t openHandle,
                                               uint32_t skipWord, uint16_t* sum);

/**
 * Makes every directory of a path.
 * @param path     begins with a drive (`c:\a\b`) or is a network path (`\\server\share\a`); its
 *                 last part counts as a directory too
 * @param created  NULL, or a buffer of at least 260 bytes that receives `\` and the name of each
 *                 directory made
 * @return HV_OK, HV_CONNECTION_FAILED for any failure.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilMakePath(const char* path, char* created);
