/**
 * @file
 * Quick setup files.
 *
 * Files of blocks of printer variables behind a header of 74 bytes, numbers low byte first:
 *
 * @verbatim
 *    0  2  'Q', 'S'
 *    2  2  checksum of the whole file, HvFilChecksum with word 2 left out
 *    4  1  file type
 *    5  2  version, major and minor, each 0 or 1
 *   44  4  offset of block 1                48  2  its entry count, not 0 in version 1.0
 *   50  4  offset of block 2                54  2  its entry count
 *   56  4  offset of block 5                60  2  its entry count
 * @endverbatim
 *
 * Block 1 ends where block 2 begins, or with the file when that offset is 0. Block 2 ends where
 * block 5 begins, in version 1.0 with the file. Block 5 ends with the file.
 */
#pragma once

/** An open quick setup file, 90 bytes. Callers read the fields and never write them. */
typedef struct HvQsfHandle {
  uint8_t file[12];   /**<  0 how the file is open */
  uint8_t header[74]; /**< 12 the header of the file */
  uint32_t fileSize;  /**< 86 in bytes */
} HvQsfHandle;

/** The lists of HvQsfIniGetSection. */
enum {
  QSF_LIST_REQUIRED = 1,
  QSF_LIST_OPTIONAL = 2,
  QSF_LIST_EXCLUDE = 3, /**< this and the next: one list for all setups where a setup has none */
  QSF_LIST_ORDER = 4
};

/**
 * Opens a quick setup file and checks it.
 * @param path      the file
 * @param fileType  8 bits; the type that the file must have
 * @param handle    receives the handle, NULL on failure
 * @return HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN (also when it has no whole header),
 *   HV_READ_FAILED, HV_NO_MEMORY, HV_WRONG_LANGUAGE (no quick setup file of version 1.1 or before),
 *   HV_BAD_CHECKSUM, HV_UNKNOWN_MODEL (a file of another type).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvQsfOpen(const char* path, uint32_t fileType,
                                           HvQsfHandle** handle);

/** Closes a quick setup file. NULL is allowed. */
HVAPI_EXPORT void HVAPI_CALL HvQsfClose(HvQsfHandle* handle);

/**
 * Reads a block of variables.
 * @param handle  an open file
 * @param block   1, 2 or 5
 * @param data    receives the bytes of the block, or NULL on failure and when it has no entries; in
 *                files of version 1.1 they follow 6 bytes, the size of the data (32 bits, low byte
 *                first) and its entry count (16 bits, high byte first). Released with HvMemFree
 * @param count   receives the entry count
 * @return HV_OK, HV_BAD_ARGUMENT, HV_READ_FAILED, 8 (the file cannot be positioned), HV_NO_MEMORY,
 *   HV_UNUSABLE_FILE (the block does not lie within the file).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvQsfGetVariables(HvQsfHandle* handle, uint32_t block,
                                                   uint8_t** data, uint16_t* count);

/**
 * Reads a list of printer variables of a setup from an INI file.
 * @param iniHandle    an open INI file
 * @param kind         QSF_LIST_...
 * @param setupNumber  8 bits
 * @param values       receives the numbers of the variables, 2 bytes each, high byte first; NULL on
 *                     failure. Released with HvMemFree
 * @param count        receives how many there are
 * @return HV_OK, HV_BAD_ARGUMENT, HV_NO_MEMORY, HV_UNUSABLE_FILE (the counts that the list gives do
 *   not fit it), HV_KEY_MISSING, HV_SECTION_MISSING.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvQsfIniGetSection(HvIniHandle* iniHandle, uint32_t kind,
                                                    uint32_t setupNumber, uint8_t** values,
                                                    uint16_t* count);
