/**
 * @file
 * Keyed record files.
 *
 * Text files of printer command records, one record a line, read through handles 0 to 3: at most
 * four files are open at a time in one process.
 *
 * A line holds nine fields in the order of HvCommandRecord: five texts, three decimal numbers, one
 * text. Texts stand in double quotes, which they cannot hold themselves; what is longer than its
 * field is cut. Fields are separated by any of , ; : blanks, control characters and bytes above
 * 0x7F, but a number ends at , ; or : directly. Lines that begin with # and empty lines are
 * skipped. The last line needs its line feed too.
 */
#pragma once

/** Negative results of this family. */
enum {
  DAT_BAD_ARGUMENT = -1, /**< path NULL or too long, no such file, unknown file type */
  DAT_FAILED = -2,       /**< malformed line; no free handle; no memory; file cannot be closed */
  DAT_BAD_HANDLE = -3,   /**< handle not open, or NULL record */
  DAT_CANNOT_OPEN = -5,  /**< the file cannot be opened */
  DAT_NO_RECORD = -7,    /**< no record matches, or there is no current record */
  DAT_END_OF_FILE = -10  /**< the current record is the last one */
};

/** The file type of files of command records. */
enum { DAT_FILE_COMMANDS = 2 };

/** A printer command, 248 bytes. Texts end with NUL; the numbers are not aligned. */
typedef struct HvCommandRecord {
  char szKey[6];        /**<   0 the key by which records are found */
  char szDescr[102];    /**<   6 description */
  char szEmulation[6];  /**< 108 printer language */
  char szCommand[102];  /**< 114 the command, as HvDatSendString takes it */
  char szVarFormat[6];  /**< 216 format of the variable part */
  double dVarRangeLo;   /**< 222 least value of the variable part */
  double dVarRangeHi;   /**< 230 greatest value */
  double dVarIncrement; /**< 238 step between values */
  char szDuration[2];   /**< 246 */
} HvCommandRecord;

/**
 * Opens a record file.
 * @param path      the file
 * @param reserved  not read
 * @param fileType  DAT_FILE_COMMANDS
 * @return the handle, 0 to 3, or DAT_BAD_ARGUMENT, DAT_FAILED (four files are open, or no memory),
 *   DAT_CANNOT_OPEN.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatOpenFile(const char* path, uint32_t reserved,
                                              uint32_t fileType);

/**
 * Closes a record file; the handle (16 bits) is free again in any case.
 * @return 0, DAT_FAILED (negative handle, or the file could not be closed) or DAT_BAD_HANDLE.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatCloseFile(int32_t handle);

/**
 * Finds the first record whose key begins with the text in record->szKey, letter case counting; the
 * empty text finds the first record of the file. It becomes the current record.
 * @param handle  16 bits
 * @param record  receives the record; untouched on failure
 * @return 0, DAT_BAD_HANDLE, DAT_NO_RECORD, or DAT_FAILED when a malformed line comes first. After
 *   a failure there is no current record.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatGetFirstKey(int32_t handle, HvCommandRecord* record);

/**
 * Gets the record after the current one, whatever its key; it becomes the current record.
 * @return 0, DAT_BAD_HANDLE, DAT_NO_RECORD (no current record), DAT_END_OF_FILE (the current record
 *   stays), or DAT_FAILED (malformed line; there is no current record afterwards).
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatGetNextKey(int32_t handle, HvCommandRecord* record);

/**
 * Counts the records whose keys begin with a text, from the first one on, as far as they follow
 * each other directly. Uses a handle for the time of the call.
 * @param path       the file
 * @param keyPrefix  the text, of which 5 characters count, in a buffer of at least 248 bytes that
 *                   records are read into
 * @param fileType   DAT_FILE_COMMANDS
 * @return the count in 16 bits, or as 16-bit values DAT_BAD_HANDLE (0xFFFD, keyPrefix NULL),
 *   DAT_CANNOT_OPEN (0xFFFB, whatever kept the file from being opened) and the failure of
 *   HvDatCloseFile.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDatQueryCount(const char* path, char* keyPrefix,
                                                 uint32_t fileType);

/**
 * Counts all records up to the first malformed line by the first letters of their keys, whatever
 * the letter case. Uses a handle for the time of the call.
 * @param path      the file
 * @param counts    receives 12 counts: keys that begin with A, F, G, P, S, T, SA, SF, SG, SP, SS,
 *                  ST
 * @param fileType  DAT_FILE_COMMANDS
 * @return 0, DAT_BAD_HANDLE (counts NULL), DAT_CANNOT_OPEN (whatever kept the file from being
 *   opened; the counts are 0), or the failure of HvDatCloseFile.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatQueryCounts(const char* path, uint16_t* counts,
                                                 uint32_t fileType);
