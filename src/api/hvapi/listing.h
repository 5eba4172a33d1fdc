/**
 * @file
 * Configuration listing.
 */
#pragma once

/** File kinds of HvDatQueryFiles; any other value lists files of every name. */
enum {
  DAT_KIND_CFG = 1, /**< "*.CFG" */
  DAT_KIND_PSS = 2  /**< "*.PSS" */
};

/** A configuration file, 312 bytes on a 32-bit target. */
typedef struct HvConfigFileEntry {
  char path[260];                 /**<   0 the directory, its last character a "\", and the name */
  char description[48];           /**< 260 */
  struct HvConfigFileEntry* next; /**< 308 NULL at the end */
} HvConfigFileEntry;

/**
 * Lists the files of a directory that describe themselves. Their first line holds "#!" and after it
 * a text, which is the description. A file whose path does not fit is left out, as are names that
 * begin with a dot.
 * @param directory  the directory, or "" for the current one
 * @param fileKind   DAT_KIND_...
 * @param count      receives the number of entries (at most 65535 are listed)
 * @return the first entry, or NULL when there is none or an argument is bad. When memory runs out,
 *   the entries found so far. Released with HvDatQueryFilesFree.
 */
HVAPI_EXPORT HvConfigFileEntry* HVAPI_CALL HvDatQueryFiles(const char* directory, uint32_t fileKind,
                                                           uint16_t* count);

/** Releases the entries from list on. NULL is allowed. */
HVAPI_EXPORT void HVAPI_CALL HvDatQueryFilesFree(HvConfigFileEntry* list);
