/**
 * @file
 * INI files.
 */
#pragma once

/** How an INI file is opened. */
enum {
  INI_OPEN_READ = 1,    /**< an existing file; comments and empty lines are dropped */
  INI_OPEN_UPDATE = 7,  /**< an existing file that may be written */
  INI_OPEN_REPLACE = 8, /**< the file is emptied or made */
  INI_OPEN_APPEND = 9   /**< the file is made where it is missing */
};

/** Bits of HvIniHandle.flags. */
enum {
  INI_DIRTY = 0x01,    /**< changed since opening */
  INI_READ_MODE = 0x02 /**< opened with INI_OPEN_READ */
};

/** A line of an INI file, without its line end. */
typedef struct HvIniLine {
  const char* text;       /**< ended by NUL */
  struct HvIniLine* next; /**< NULL behind the last one */
} HvIniLine;

/**
 * An open INI file: its lines, which are read when it is opened and written back when it is closed.
 * Callers read the fields and never write them. 277 bytes on a 32-bit target.
 */
typedef struct HvIniHandle {
  char path[261];         /**< 0x000 the name it was opened by */
  uint32_t flags;         /**< 0x105 INI_DIRTY, INI_READ_MODE */
  uint32_t maxLineLength; /**< 0x109 the largest length + 1 of any line: no value is longer */
  HvIniLine* cursor;      /**< 0x10D the line behind the last one that HvIniRead found, or NULL */
  HvIniLine* lines;       /**< 0x111 (32-bit) an empty line that is not written, then the file's */
} HvIniHandle;

/**
 * Opens an INI file and reads all of it; the file itself is closed again.
 *
 * A line of more than 1019 characters, its line feed counted, becomes several. Blanks at the end of
 * a line and before its first '=' are dropped. With INI_OPEN_READ lines without '=' that are empty
 * or begin with ';' are dropped, also from the file that a close rewrites.
 *
 * @param path  the file
 * @param mode  INI_OPEN_...
 * @return NULL for another mode, for a path that is missing, too long or a directory, for a file
 *   that cannot be opened or read, and when memory runs out. HvIniClose releases the handle.
 */
HVAPI_EXPORT HvIniHandle* HVAPI_CALL HvIniOpen2(const char* path, uint32_t mode);

/**
 * Opens an INI file as HvIniOpen2 does with INI_OPEN_READ; a file of which no line is kept gives
 * NULL too.
 */
HVAPI_EXPORT HvIniHandle* HVAPI_CALL HvIniOpen(const char* path);

/**
 * Writes a changed file back and releases the handle, which must not be NULL. The old file is
 * replaced only by a complete new one. One that holds NUL bytes, as a file of 16-bit characters
 * does, is not replaced: its lines were read to their first NUL alone.
 * @return 1, or 0 when the file could not be written: it is as it was, the changes are lost.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniClose(HvIniHandle* handle);

/**
 * Finds a line and remembers the one behind it as the cursor. Letter case does not count.
 *
 * @verbatim
 *   section, key   the value of the section's first entry of that key
 *   section, NULL  the first line of the section, whole
 *   NULL, key      the value of the first entry of that key from the cursor on
 *   NULL, NULL     the line at the cursor, whole
 * @endverbatim
 *
 * The search ends at the next section header; finding nothing there clears the cursor.
 *
 * @return a text that stays valid until its line is changed or the handle is closed, or a constant
 *   empty text when nothing was found.
 */
HVAPI_EXPORT const char* HVAPI_CALL HvIniRead(HvIniHandle* handle, const char* section,
                                              const char* key);

/**
 * Copies the value of the section's first entry of a key, or defaultValue where there is none.
 * @param handle        an open file
 * @param section,key   name the entry
 * @param defaultValue  may be NULL
 * @param buffer,size   receive the value and, where room is left, its NUL; not touched without a
 *                      value
 * @param count         receives the number of characters copied, the NUL not counted
 * @return HV_OK, HV_BAD_ARGUMENT (defaultValue alone may be NULL, size not 0), HV_KEY_MISSING,
 *   HV_SECTION_MISSING, HV_BUFFER_TOO_SMALL (the first size characters are in buffer, without a
 *   NUL).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniRead2(HvIniHandle* handle, const char* section,
                                            const char* key, const char* defaultValue, char* buffer,
                                            uint32_t size, uint32_t* count);

/**
 * Sets the value of a key in the first block of lines of a section, up to its first empty line: the
 * first entry of the key is replaced, or one is added at the end of that block. A missing section
 * is added at the end of the file.
 * @return 1, or 0 when memory runs out, an argument is NULL, or "[section]" or "key=value" is
 *   longer than 1021 characters; in the last two cases nothing is changed.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniWrite(HvIniHandle* handle, const char* section,
                                            const char* key, const char* value);

/**
 * Adds an entry as HvIniWrite does, beside others of its key, unless the section has one with the
 * same key and value, letter case not counted. Results as HvIniWrite.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniWriteAll(HvIniHandle* handle, const char* section,
                                               const char* key, const char* value);

/**
 * Removes the first line of a section whose text before its first '=' (or whole text) equals key.
 * @param handle   an open file
 * @param section  name of the section
 * @param key      NULL removes the header of the section alone: its lines then belong to the
 *                 section before it
 * @param value    NULL, or what the line must have between its first '=' and the next one
 * @return 1, also when there was no such line, or 0 for a NULL section.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniDelete(HvIniHandle* handle, const char* section,
                                             const char* key, const char* value);
