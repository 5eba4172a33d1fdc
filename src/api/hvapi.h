/**
 * @file
 * Printer support: jobs, fonts, macros, configuration files, printer replies, archives.
 *
 * Conventions that every function here keeps:
 *
 *  1. Calls are synchronous and run on the caller's thread. Nothing has to be initialised first and
 *     nothing has to be shut down.
 *  2. Strings are 8-bit texts ended by NUL, in the system's ANSI code page. A path or a destination
 *     holds at most HV_MAX_PATH characters; a longer one is a bad argument.
 *  3. Arguments are checked before anything else: a NULL pointer that is needed, a text that is too
 *     long or a number out of range gives HV_BAD_ARGUMENT (or the function's own value for it)
 *     before a file is opened or a printer is reached.
 *  4. Results are the codes of HvResult, 0 for success, unless a function says otherwise.
 *  5. The caller owns what it passes. Memory that a function hands out is released with HvMemFree,
 *     or with the release function that the family names, and with nothing else.
 *  6. A failure leaves nothing behind: no open file, no half-open printer, no allocated memory.
 *  7. 16-bit arguments travel in 32-bit slots; only their low 16 bits are read.
 *  8. Calls of different threads do not disturb each other as long as no handle is shared; a handle
 *     belongs to one thread at a time.
 *
 * Records are byte-packed. On a 32-bit target every offset is the one given beside its field; where
 * pointers take 8 bytes, what follows a pointer moves.
 */
#ifndef HVAPI_H
#define HVAPI_H

#include <stddef.h>
#include <stdint.h>

/** @def HVAPI_CALL
 * How a function is called. */
/** @def HVAPI_EXPORT
 * What makes a function visible. */
#ifdef _WIN32
#define HVAPI_CALL __stdcall
#define HVAPI_EXPORT
#else
#define HVAPI_CALL
#define HVAPI_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Most characters of a path or a destination, the ending NUL not counted. */
enum { HV_MAX_PATH = 260 };

/** Result codes. */
enum HvResult {
  HV_OK = 0,
  HV_BAD_ARGUMENT = 1,       /**< NULL pointer, text too long, number out of range */
  HV_NOT_FOUND = 2,          /**< a file or path does not exist */
  HV_CANNOT_OPEN = 3,        /**< a file or the printer destination cannot be opened */
  HV_CANNOT_CLOSE = 4,       /**< a file cannot be closed */
  HV_ACCESS_DENIED = 5,      /**< access denied */
  HV_READ_FAILED = 6,        /**< read error on a source file */
  HV_WRITE_FAILED = 7,       /**< write error on a file destination */
  HV_ARCHIVE_ENDED = 9,      /**< unexpected end of a zip archive */
  HV_NO_MEMORY = 11,         /**< out of memory */
  HV_PRINTER_REFUSED = 14,   /**< the printer did not take all bytes written */
  HV_NOT_A_VOLUME = 16,      /**< the volume is not a valid disk volume */
  HV_DISK_FULL = 20,         /**< disk full */
  HV_CONNECTION_FAILED = 26, /**< communication library missing or refusing; also a directory path
                                that cannot be made, a temporary file that cannot be had */
  HV_UNUSABLE_FILE = 27,     /**< wrong type or format, absent where needed, name too long for the
                                volume, or a directory */
  HV_DRIVE_LOCKED = 28,      /**< drive locked */
  HV_WRONG_LANGUAGE = 29,    /**< not a macro of the job's printer language, or not a quick-setup
                                file of a known version */
  HV_SHARING_VIOLATION = 31, /**< sharing violation; also a zip member's output not creatable */
  HV_NOT_SUPPORTED = 32,     /**< request not supported; also a required companion file missing */
  HV_SYSTEM_FAILURE = 36,    /**< any other system failure; also a converted file of wrong length */
  HV_LIMIT_REACHED = 37,     /**< a size or number limit reached */
  HV_KEY_MISSING = 41,       /**< INI key missing and no default given */
  HV_BUFFER_TOO_SMALL = 42,  /**< the caller's buffer is too small for the result */
  HV_BAD_CHECKSUM = 43,      /**< quick-setup file whose checksum does not match */
  HV_UNKNOWN_MODEL = 44,     /**< model number outside the table, or a file of another kind */
  HV_SECTION_MISSING = 45,   /**< INI section missing and no default given */
  HV_BAD_PCLXL = 46,         /**< PCL XL source not valid, or its conversion failed */
  HV_PCLXL_JOB = 47          /**< a PCL XL job where a PCL or PostScript macro is expected */
};

#pragma pack(push, 1)

/* The families, in headers of their own that are nothing without this one: it gives them what is
   above, the packing of their records and the linkage of their functions. */

/* Print jobs. */
#include "hvapi/jobs.h"
/* Library information, memory, paths. */
#include "hvapi/general.h"
/* File utilities. */
#include "hvapi/files.h"
/* INI files. */
#include "hvapi/ini.h"
/* Keyed record files. */
#include "hvapi/records.h"
/* Operator panel files. */
#include "hvapi/panels.h"
/* Quick setup files. */
#include "hvapi/quick_setup.h"
/* Configuration listing. */
#include "hvapi/listing.h"
/* Support addresses. */
#include "hvapi/web.h"
/* Fonts. */
#include "hvapi/fonts.h"
/* Macros. */
#include "hvapi/macros.h"
/* Demonstration files. */
#include "hvapi/demos.h"
/* Search. */
#include "hvapi/search.h"
/* Printer replies. */
#include "hvapi/replies.h"
/* Zip archives. */
#include "hvapi/zip.h"

#pragma pack(pop)

#ifdef __cplusplus
}
#endif

#endif /* HVAPI_H */
