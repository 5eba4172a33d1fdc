/*
 * hvapi.h - printer support: jobs, fonts, macros, configuration files, printer replies, archives.
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

/* Most characters of a path or a destination, the ending NUL not counted. */
enum { HV_MAX_PATH = 260 };

/* Result codes. */
enum HvResult {
  HV_OK = 0,
  HV_BAD_ARGUMENT = 1,       /* NULL pointer, text too long, number out of range */
  HV_NOT_FOUND = 2,          /* a file or path does not exist */
  HV_CANNOT_OPEN = 3,        /* a file or the printer destination cannot be opened */
  HV_CANNOT_CLOSE = 4,       /* a file cannot be closed */
  HV_ACCESS_DENIED = 5,      /* access denied */
  HV_READ_FAILED = 6,        /* read error on a source file */
  HV_WRITE_FAILED = 7,       /* write error on a file destination */
  HV_ARCHIVE_ENDED = 9,      /* unexpected end of a zip archive */
  HV_NO_MEMORY = 11,         /* out of memory */
  HV_PRINTER_REFUSED = 14,   /* the printer did not take all bytes written */
  HV_NOT_A_VOLUME = 16,      /* the volume is not a valid disk volume */
  HV_DISK_FULL = 20,         /* disk full */
  HV_CONNECTION_FAILED = 26, /* communication library missing or refusing; also a directory path
                                that cannot be made, a temporary file that cannot be had */
  HV_UNUSABLE_FILE = 27,     /* wrong type or format, absent where needed, name too long for the
                                volume, or a directory */
  HV_DRIVE_LOCKED = 28,      /* drive locked */
  HV_WRONG_LANGUAGE = 29,    /* not a macro of the job's printer language, or not a quick-setup
                                file of a known version */
  HV_SHARING_VIOLATION = 31, /* sharing violation; also a zip member's output not creatable */
  HV_NOT_SUPPORTED = 32,     /* request not supported; also a required companion file missing */
  HV_SYSTEM_FAILURE = 36,    /* any other system failure; also a converted file of wrong length */
  HV_LIMIT_REACHED = 37,     /* a size or number limit reached */
  HV_KEY_MISSING = 41,       /* INI key missing and no default given */
  HV_BUFFER_TOO_SMALL = 42,  /* the caller's buffer is too small for the result */
  HV_BAD_CHECKSUM = 43,      /* quick-setup file whose checksum does not match */
  HV_UNKNOWN_MODEL = 44,     /* model number outside the table, or a file of another kind */
  HV_SECTION_MISSING = 45,   /* INI section missing and no default given */
  HV_BAD_PCLXL = 46,         /* PCL XL source not valid, or its conversion failed */
  HV_PCLXL_JOB = 47          /* a PCL XL job where a PCL or PostScript macro is expected */
};

#pragma pack(push, 1)

/* ---------------------------------------------------------------------------------------------
 * Print jobs
 * ------------------------------------------------------------------------------------------ */

/* Bits of HvJobInfo.flags; the others are not read. */
enum {
  JOB_FLAG_PJL = 0x08,  /* frame the job with PJL */
  JOB_FLAG_ESC_K = 0x10 /* the printer takes no PJL: choose language and storage with ESC [ K */
};

/* Printer languages of HvJobInfo.emulation. */
enum {
  JOB_EMULATION_NONE = 0,
  JOB_EMULATION_DEFAULT = 1,
  JOB_EMULATION_PPDS = 2,
  JOB_EMULATION_POSTSCRIPT = 3,
  JOB_EMULATION_GL = 4,
  JOB_EMULATION_PCL = 5,
  JOB_EMULATION_PCLXL = 6
};

/* The printer class whose download commands begin with a lead-in of their own. */
enum { JOB_CLASS_DOWNLOAD_LEAD_IN = 2 };

/* How the printer of a job is to be addressed. 48 bytes on a 32-bit target. */
typedef struct HvJobInfo {
  uint32_t flags;         /* 0x00 JOB_FLAG_... */
  uint32_t printerClass;  /* 0x04 2 adds a lead-in to the command that sets the download device */
  int32_t emulation;      /* 0x08 JOB_EMULATION_..., 0 to 6 */
  uint32_t fontQueryArg;  /* 0x0C read by the font download only */
  uint8_t reserved10[4];  /* 0x10 not read */
  uint16_t copies;        /* 0x14 number of copies, 0 for none requested */
  uint16_t identifier;    /* 0x16 font or macro identifier */
  uint16_t fontValue18;   /* 0x18 read by the font download only */
  uint16_t fontValue1A;   /* 0x1A read by the font download only */
  uint8_t reserved1C[11]; /* 0x1C not read */
  uint16_t nbxAddress1;   /* 0x27 first address word of the communication library */
  uint16_t nbxAddress2;   /* 0x29 second address word; non-zero selects the library */
  const char* jobName;    /* 0x2B document name and panel text, or NULL */
  uint8_t personality;    /* 0x2F (32-bit) byte of the ESC [ K language sequence, 0 for default */
} HvJobInfo;

/* Storage devices of a printer. */
enum {
  STORAGE_DEVICE_RAM = 1,
  STORAGE_DEVICE_FLASH1 = 2,
  STORAGE_DEVICE_FLASH2 = 3,
  STORAGE_DEVICE_DISK1 = 4,
  STORAGE_DEVICE_DISK2 = 5
};

/* Storage commands of HvGenResource. */
enum {
  STORAGE_TARGET_RAM = 1,     /* downloads go to RAM again */
  STORAGE_TARGET_DEVICE = 2,  /* downloads go to the device named */
  STORAGE_FORMAT = 3,         /* format the device named: what it holds is lost */
  STORAGE_PRINT_DIRECTORY = 4 /* print the directory of the printer's storage */
};

/*
 * Sends a file unchanged.
 *   file         path of the file
 *   destination  name of a printer queue, else path of a file or port
 *   job          flags, emulation (0 to 6), copies, jobName, personality and library address
 *   append       non-zero: a file destination is appended to instead of replaced
 * With JOB_FLAG_ESC_K or JOB_FLAG_PJL the printer is asked for the copies; with neither the file is
 * sent that many times.
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_NOT_FOUND (no such file), HV_CANNOT_OPEN (file or
 * destination), HV_READ_FAILED, HV_WRITE_FAILED (file destination), HV_NO_MEMORY,
 * HV_PRINTER_REFUSED, HV_CONNECTION_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDatSendFile(const char* file, const char* destination,
                                               const HvJobInfo* job, uint32_t append);

/*
 * Sends a short command string, given in one of three notations by its first character:
 *   "%path"  the file of that path, exactly as HvDatSendFile
 *   "$text"  the text, where \n is a line feed, \xHH a byte in hexadecimal and \c the character c;
 *            a zero byte ends it
 *   else     pairs of hexadecimal digits, one byte a pair
 * No copies and no ESC [ K sequences are sent. The other arguments and the results are those of
 * HvDatSendFile; an odd number of digits or another character among them is HV_BAD_ARGUMENT, and
 * nothing is sent.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDatSendString(const char* text, const char* destination,
                                                 const HvJobInfo* job, uint32_t append);

/*
 * Sends one storage command as a job of its own.
 *   operation    STORAGE_TARGET_RAM .. STORAGE_PRINT_DIRECTORY
 *   destination  at most 259 characters here
 *   job          framing flags, printerClass, emulation, jobName and library address
 *   device       STORAGE_DEVICE_..., also needed where the operation names no device
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN, HV_WRITE_FAILED, HV_NO_MEMORY,
 * HV_PRINTER_REFUSED, HV_CONNECTION_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvGenResource(uint32_t operation, const char* destination,
                                               const HvJobInfo* job, uint32_t device);

/*
 * Tell whether a buffer could take a list of adapters or of queues: HV_OK when buffer is not NULL
 * and size (16 bits) is at least 1024, else HV_BAD_ARGUMENT. Nothing is read or written.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvGenQueryAdapters(uint32_t a, uint32_t b, void* buffer,
                                                    uint32_t size);
HVAPI_EXPORT uint32_t HVAPI_CALL HvGenQueryQueues(uint32_t a, uint32_t b, void* buffer,
                                                  uint32_t size);

/*
 * The network type of a printer as the communication library reports it: 2048, 32, 4 or 2, and 0
 * when it reports none or there is no library. printer is passed to the library unchanged.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvNetGetType(uint32_t printer);

/* ---------------------------------------------------------------------------------------------
 * Library information, memory, paths
 * ------------------------------------------------------------------------------------------ */

/* Library information, 128 bytes. words[0] is the version times 100. */
typedef struct HvApiInfo {
  uint16_t words[64];
} HvApiInfo;

/* Fills record, which must not be NULL. */
HVAPI_EXPORT void HVAPI_CALL HvGenQueryApiInfo(HvApiInfo* record);

/* Releases memory that this library handed out. NULL is allowed and does nothing. */
HVAPI_EXPORT void HVAPI_CALL HvMemFree(void* block);

/*
 * Copy the file name of path (what follows its last "\", "/" or ":") and the directory (what comes
 * before, the separator included) into dest, the letters a to z as A to Z. dest must have room for
 * strlen(path) + 1 bytes. Both return dest. A NULL path gives the empty text; for a NULL dest
 * nothing is written and a constant empty text is returned.
 */
HVAPI_EXPORT char* HVAPI_CALL HvStrCpyFile(char* dest, const char* path);
HVAPI_EXPORT char* HVAPI_CALL HvStrCpyPath(char* dest, const char* path);

/* ---------------------------------------------------------------------------------------------
 * File utilities
 * ------------------------------------------------------------------------------------------ */

/* 1 when path names a file or directory, else 0 (also for NULL and the empty text). */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilExists(const char* path);

/*
 * The size in bytes of the first file that matches path, whose last part may hold the wildcards *
 * and ?; 0 when nothing matches. A file of 4 GiB and more gives 0xFFFFFFFF.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilQuerySize(const char* path);

/*
 * Copies source to target, replacing a target that is there; a failed copy leaves that one as it
 * was. Results: HV_OK, HV_BAD_ARGUMENT, HV_NOT_FOUND, HV_ACCESS_DENIED (also for a directory),
 * HV_NOT_A_VOLUME, HV_DISK_FULL, HV_UNUSABLE_FILE, HV_DRIVE_LOCKED, HV_SHARING_VIOLATION,
 * HV_SYSTEM_FAILURE.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilCopy(const char* source, const char* target);

/*
 * Copies source to the first free name of "base.001" .. "base.998" beside it (base is its name less
 * the extension).
 *   backupName  at least 260 bytes; receives the name of the backup
 * Results: those of HvFilCopy, HV_UNUSABLE_FILE when source does not exist, HV_LIMIT_REACHED when
 * all names are taken, HV_BAD_ARGUMENT when a name does not fit 260 bytes.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilBackup(const char* source, char* backupName);

/* Called with each line, its line feed included, in a buffer of 2048 bytes. It may change the line
   in place; an empty line is dropped from the file. Its result is not looked at. */
typedef uint32_t(HVAPI_CALL* HvLineCallback)(char* line, uintptr_t argument);

/*
 * Rewrites a text file line by line. A line longer than 2047 bytes arrives in pieces. path is
 * replaced only by a complete text.
 *   argument  passed to lineCallback
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN, HV_CANNOT_CLOSE, HV_READ_FAILED,
 * HV_WRITE_FAILED, HV_NO_MEMORY, HV_CONNECTION_FAILED (no temporary file to be had), and those of
 * HvFilCopy.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilModify(const char* path, uintptr_t argument,
                                             HvLineCallback lineCallback);

/*
 * The checksum of a file: the two's complement of the 16-bit sum of its little-endian words. A last
 * single byte is taken with the high byte of the word before it.
 *   path        the file, or NULL or "" to use openHandle
 *   openHandle  a handle opened for reading with _lopen (on POSIX systems a file descriptor), not
 * 0; it stays open skipWord    1-based number of a word to leave out, 0 for none (16 bits) sum
 * receives the checksum; not written when the file cannot be opened Results: HV_OK,
 * HV_BAD_ARGUMENT, HV_CANNOT_OPEN, HV_CANNOT_CLOSE, HV_READ_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilChecksum(const char* path, int32_t openHandle,
                                               uint32_t skipWord, uint16_t* sum);

/*
 * Makes every directory of path, which begins with a drive ("c:\a\b") or is a network path
 * ("\\server\share\a"); its last part counts as a directory too.
 *   created  NULL, or a buffer of at least 260 bytes that receives "\" and the name of each
 *            directory made
 * Results: HV_OK, HV_CONNECTION_FAILED for any failure.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFilMakePath(const char* path, char* created);

/* ---------------------------------------------------------------------------------------------
 * INI files
 * ------------------------------------------------------------------------------------------ */

/* How an INI file is opened. */
enum {
  INI_OPEN_READ = 1,    /* an existing file; comments and empty lines are dropped */
  INI_OPEN_UPDATE = 7,  /* an existing file that may be written */
  INI_OPEN_REPLACE = 8, /* the file is emptied or made */
  INI_OPEN_APPEND = 9   /* the file is made where it is missing */
};

/* Bits of HvIniHandle.flags. */
enum {
  INI_DIRTY = 0x01,    /* changed since opening */
  INI_READ_MODE = 0x02 /* opened with INI_OPEN_READ */
};

/* A line of an INI file, without its line end. */
typedef struct HvIniLine {
  const char* text;
  struct HvIniLine* next; /* NULL behind the last one */
} HvIniLine;

/*
 * An open INI file: its lines, which are read when it is opened and written back when it is closed.
 * Callers read the fields and never write them. 277 bytes on a 32-bit target.
 */
typedef struct HvIniHandle {
  char path[261];         /* 0x000 the name it was opened by */
  uint32_t flags;         /* 0x105 INI_DIRTY, INI_READ_MODE */
  uint32_t maxLineLength; /* 0x109 the largest length + 1 of any line: no value is longer */
  HvIniLine* cursor;      /* 0x10D the line behind the last one that HvIniRead found, or NULL */
  HvIniLine* lines;       /* 0x111 (32-bit) an empty line that is not written, then the file's */
} HvIniHandle;

/*
 * Opens an INI file and reads all of it; the file itself is closed again.
 *   mode  INI_OPEN_...
 * A line of more than 1019 characters, its line feed counted, becomes several. Blanks at the end of
 * a line and before its first '=' are dropped. With INI_OPEN_READ lines without '=' that are empty
 * or begin with ';' are dropped, also from the file that a close rewrites.
 * Returns NULL for another mode, for a path that is missing, too long or a directory, for a file
 * that cannot be opened or read, and when memory runs out. HvIniClose releases the handle.
 */
HVAPI_EXPORT HvIniHandle* HVAPI_CALL HvIniOpen2(const char* path, uint32_t mode);

/* The same with INI_OPEN_READ; a file of which no line is kept gives NULL too. */
HVAPI_EXPORT HvIniHandle* HVAPI_CALL HvIniOpen(const char* path);

/*
 * Writes a changed file back and releases the handle, which must not be NULL. The old file is
 * replaced only by a complete new one.
 * Returns 1, or 0 when the file could not be written: it is as it was, the changes are lost.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniClose(HvIniHandle* handle);

/*
 * Finds a line and remembers the one behind it as the cursor. Letter case does not count.
 *   section, key   the value of the section's first entry of that key
 *   section, NULL  the first line of the section, whole
 *   NULL, key      the value of the first entry of that key from the cursor on
 *   NULL, NULL     the line at the cursor, whole
 * The search ends at the next section header; finding nothing there clears the cursor.
 * Returns a text that stays valid until its line is changed or the handle is closed, or a constant
 * empty text when nothing was found.
 */
HVAPI_EXPORT const char* HVAPI_CALL HvIniRead(HvIniHandle* handle, const char* section,
                                              const char* key);

/*
 * Copies the value of the section's first entry of a key, or defaultValue where there is none.
 *   defaultValue  may be NULL
 *   buffer, size  receive the value and, where room is left, its NUL; not touched without a value
 *   count         receives the number of characters copied, the NUL not counted
 * Results: HV_OK, HV_BAD_ARGUMENT (defaultValue alone may be NULL, size not 0), HV_KEY_MISSING,
 * HV_SECTION_MISSING, HV_BUFFER_TOO_SMALL (the first size characters are in buffer, without a NUL).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniRead2(HvIniHandle* handle, const char* section,
                                            const char* key, const char* defaultValue, char* buffer,
                                            uint32_t size, uint32_t* count);

/*
 * Sets the value of a key in the first block of lines of a section, up to its first empty line: the
 * first entry of the key is replaced, or one is added at the end of that block. A missing section
 * is added at the end of the file.
 * Returns 1, or 0 when memory runs out, an argument is NULL, or "[section]" or "key=value" is
 * longer than 1021 characters; in the last two cases nothing is changed.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniWrite(HvIniHandle* handle, const char* section,
                                            const char* key, const char* value);

/* Adds an entry as HvIniWrite does, beside others of its key, unless the section has one with the
   same key and value, letter case not counted. Results as HvIniWrite. */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniWriteAll(HvIniHandle* handle, const char* section,
                                               const char* key, const char* value);

/*
 * Removes the first line of a section whose text before its first '=' (or whole text) equals key.
 *   key    NULL removes the header of the section alone: its lines then belong to the section
 *          before it
 *   value  NULL, or what the line must have between its first '=' and the next one
 * Returns 1, also when there was no such line, or 0 for a NULL section.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvIniDelete(HvIniHandle* handle, const char* section,
                                             const char* key, const char* value);

/* ---------------------------------------------------------------------------------------------
 * Keyed record files
 * ------------------------------------------------------------------------------------------ */

/*
 * Text files of printer command records, one record a line, read through handles 0 to 3: at most
 * four files are open at a time in one process.
 *
 * A line holds nine fields in the order of HvCommandRecord: five texts, three decimal numbers, one
 * text. Texts stand in double quotes, which they cannot hold themselves; what is longer than its
 * field is cut. Fields are separated by any of , ; : blanks, control characters and bytes above
 * 0x7F, but a number ends at , ; or : directly. Lines that begin with # and empty lines are
 * skipped. The last line needs its line feed too.
 */

/* Negative results of this family. */
enum {
  DAT_BAD_ARGUMENT = -1, /* path NULL or too long, no such file, unknown file type */
  DAT_FAILED = -2,       /* malformed line; no free handle; no memory; file cannot be closed */
  DAT_BAD_HANDLE = -3,   /* handle not open, or NULL record */
  DAT_CANNOT_OPEN = -5,  /* the file cannot be opened */
  DAT_NO_RECORD = -7,    /* no record matches, or there is no current record */
  DAT_END_OF_FILE = -10  /* the current record is the last one */
};

/* The file type of files of command records. */
enum { DAT_FILE_COMMANDS = 2 };

/* A printer command, 248 bytes. Texts end with NUL; the numbers are not aligned. */
typedef struct HvCommandRecord {
  char szKey[6];        /*   0 the key by which records are found */
  char szDescr[102];    /*   6 description */
  char szEmulation[6];  /* 108 printer language */
  char szCommand[102];  /* 114 the command, as HvDatSendString takes it */
  char szVarFormat[6];  /* 216 format of the variable part */
  double dVarRangeLo;   /* 222 least value of the variable part */
  double dVarRangeHi;   /* 230 greatest value */
  double dVarIncrement; /* 238 step between values */
  char szDuration[2];   /* 246 */
} HvCommandRecord;

/*
 * Opens a record file.
 *   reserved  not read
 *   fileType  DAT_FILE_COMMANDS
 * Returns the handle, 0 to 3, or DAT_BAD_ARGUMENT, DAT_FAILED (four files are open, or no memory),
 * DAT_CANNOT_OPEN.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatOpenFile(const char* path, uint32_t reserved,
                                              uint32_t fileType);

/*
 * Closes a record file; the handle (16 bits) is free again in any case. Returns 0, DAT_FAILED
 * (negative handle, or the file could not be closed) or DAT_BAD_HANDLE.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatCloseFile(int32_t handle);

/*
 * Finds the first record whose key begins with the text in record->szKey, letter case counting; the
 * empty text finds the first record of the file. It becomes the current record.
 *   handle  16 bits
 *   record  receives the record; untouched on failure
 * Returns 0, DAT_BAD_HANDLE, DAT_NO_RECORD, or DAT_FAILED when a malformed line comes first. After
 * a failure there is no current record.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatGetFirstKey(int32_t handle, HvCommandRecord* record);

/*
 * The record after the current one, whatever its key; it becomes the current record. Returns 0,
 * DAT_BAD_HANDLE, DAT_NO_RECORD (no current record), DAT_END_OF_FILE (the current record stays), or
 * DAT_FAILED (malformed line; there is no current record afterwards).
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatGetNextKey(int32_t handle, HvCommandRecord* record);

/*
 * Counts the records whose keys begin with a text, from the first one on, as far as they follow
 * each other directly. Uses a handle for the time of the call.
 *   keyPrefix  the text, of which 5 characters count, in a buffer of at least 248 bytes that
 *              records are read into
 * Returns the count in 16 bits, or as 16-bit values DAT_BAD_HANDLE (0xFFFD, keyPrefix NULL),
 * DAT_CANNOT_OPEN (0xFFFB, whatever kept the file from being opened) and the failure of
 * HvDatCloseFile.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDatQueryCount(const char* path, char* keyPrefix,
                                                 uint32_t fileType);

/*
 * Counts all records up to the first malformed line by the first letters of their keys, whatever
 * the letter case. Uses a handle for the time of the call.
 *   counts  receives 12 counts: keys that begin with A, F, G, P, S, T, SA, SF, SG, SP, SS, ST
 * Returns 0, DAT_BAD_HANDLE (counts NULL), DAT_CANNOT_OPEN (whatever kept the file from being
 * opened; the counts are 0), or the failure of HvDatCloseFile.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvDatQueryCounts(const char* path, uint16_t* counts,
                                                 uint32_t fileType);

/* ---------------------------------------------------------------------------------------------
 * Operator panel files
 * ------------------------------------------------------------------------------------------ */

/*
 * What a panel for one printer model shows: INI files named by a configuration number, opened by
 * registering the number. Each number has one handle, which counts its registrations; at most five
 * numbers are registered at a time in one process. The handle reads as one of HvIniOpen2 does.
 *
 * Control identifiers are signed 16-bit numbers. Numbers outside 0 to 32767 are written into names
 * and keys by their sign-extended value.
 */

/* Negative results of this family. */
enum {
  OPC_TOO_SMALL =
      -1,           /* the bytes needed stand in the first 16 bits of the buffer, if it has them */
  OPC_MISSING = -2, /* no such list or page; also no memory to read a page */
  OPC_NO_MEMORY = -3
};

/* The default of a control of a page, 6 bytes. */
typedef struct HvPageDefault {
  uint16_t controlId; /* 0 */
  uint32_t value;     /* 2 */
} HvPageDefault;

/*
 * Opens the file of a configuration number, or takes part in the handle that the number has.
 *   configNumber  16 bits, not 0
 *   directory     the directory of the file, or NULL for the current one
 * Returns the handle, or NULL: no such file, a bad argument, or five other numbers are held. A
 * number whose file could not be opened is held too, until its file was registered and
 * unregistered.
 */
HVAPI_EXPORT HvIniHandle* HVAPI_CALL HvOpcRegisterCfg(uint32_t configNumber, const char* directory);

/*
 * Ends one registration of a handle; the last one closes it. Returns 1, also as long as
 * registrations remain, or 0 when the handle is not registered or its changes could not be written.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvOpcUnregisterCfg(HvIniHandle* handle);

/*
 * The name of the file of a configuration number: "opc", at least three digits, ".cfg".
 *   configNumber  16 bits
 *   buffer        at least 13 bytes, 18 for numbers above 32767
 * Returns 1, or 0 when buffer is NULL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvOpcGetFileName(uint32_t configNumber, char* buffer);

/*
 * The limits of a spin control. minimum and maximum become 0 where nothing is known, step is left
 * as it is then; none may be NULL. A minimum of -1 has no maximum, which stays 0.
 */
HVAPI_EXPORT void HVAPI_CALL HvOpcGetSpinControlLimits(HvIniHandle* handle, int32_t controlId,
                                                       int32_t* minimum, int32_t* maximum,
                                                       int32_t* step);

/*
 * The values of a combo box.
 *   subIndex    which list of the control, 0 for the one without an index
 *   values      receives the values, or NULL to ask for the bytes needed
 *   valuesSize  in bytes
 * Returns the number of values, or with NULL the bytes needed; OPC_TOO_SMALL (what fits is stored
 * all the same), OPC_MISSING, OPC_NO_MEMORY.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetTextListing(HvIniHandle* handle, int32_t controlId,
                                                    uint32_t subIndex, uint16_t* values,
                                                    uint32_t valuesSize);

/* The most characters of an edit field, 0 where nothing is known, at most 32767. */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetMaxEditLength(HvIniHandle* handle, int32_t controlId);

/*
 * The defaults of the controls of a page.
 *   entries      receives the defaults, or NULL to ask for the bytes needed; an entry for which the
 *                file has no value is left as it is
 *   entriesSize  in bytes
 * Returns the number of controls that the file gives, or with NULL the bytes needed (both at most
 * 32767); OPC_TOO_SMALL, OPC_MISSING.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetPageDefaults(HvIniHandle* handle, uint32_t pageNumber,
                                                     HvPageDefault* entries, uint32_t entriesSize);

/*
 * The printer variables of a page, 2 bytes each, high byte first.
 *   variables      receives the variables, or NULL to ask for the bytes needed
 *   variablesSize  in bytes
 * Returns the number stored, or with NULL the bytes needed (both at most 32767); OPC_TOO_SMALL,
 * OPC_MISSING.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetPageOmVars(HvIniHandle* handle, uint32_t pageNumber,
                                                   uint8_t* variables, uint32_t variablesSize);

/* ---------------------------------------------------------------------------------------------
 * Quick setup files
 * ------------------------------------------------------------------------------------------ */

/*
 * Files of blocks of printer variables behind a header of 74 bytes, numbers low byte first:
 *
 *    0  2  'Q', 'S'
 *    2  2  checksum of the whole file, HvFilChecksum with word 2 left out
 *    4  1  file type
 *    5  2  version, major and minor, each 0 or 1
 *   44  4  offset of block 1                48  2  its entry count, not 0 in version 1.0
 *   50  4  offset of block 2                54  2  its entry count
 *   56  4  offset of block 5                60  2  its entry count
 *
 * Block 1 ends where block 2 begins, or with the file when that offset is 0. Block 2 ends where
 * block 5 begins, in version 1.0 with the file. Block 5 ends with the file.
 */

/* An open quick setup file, 90 bytes. Callers read the fields and never write them. */
typedef struct HvQsfHandle {
  uint8_t file[12];   /*  0 how the file is open */
  uint8_t header[74]; /* 12 the header of the file */
  uint32_t fileSize;  /* 86 in bytes */
} HvQsfHandle;

/* The lists of HvQsfIniGetSection. */
enum {
  QSF_LIST_REQUIRED = 1,
  QSF_LIST_OPTIONAL = 2,
  QSF_LIST_EXCLUDE = 3, /* this and the next: one list for all setups where a setup has none */
  QSF_LIST_ORDER = 4
};

/*
 * Opens a quick setup file and checks it.
 *   fileType  8 bits; the type that the file must have
 *   handle    receives the handle, NULL on failure
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN (also when it has no whole header),
 * HV_READ_FAILED, HV_NO_MEMORY, HV_WRONG_LANGUAGE (no quick setup file of version 1.1 or before),
 * HV_BAD_CHECKSUM, HV_UNKNOWN_MODEL (a file of another type).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvQsfOpen(const char* path, uint32_t fileType,
                                           HvQsfHandle** handle);

/* Closes a quick setup file. NULL is allowed. */
HVAPI_EXPORT void HVAPI_CALL HvQsfClose(HvQsfHandle* handle);

/*
 * Reads a block of variables.
 *   block  1, 2 or 5
 *   data   receives the bytes of the block, or NULL on failure and when it has no entries; in files
 *          of version 1.1 they follow 6 bytes, the size of the data (32 bits, low byte first) and
 *          its entry count (16 bits, high byte first). Released with HvMemFree
 *   count  receives the entry count
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_READ_FAILED, 8 (the file cannot be positioned), HV_NO_MEMORY,
 * HV_UNUSABLE_FILE (the block does not lie within the file).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvQsfGetVariables(HvQsfHandle* handle, uint32_t block,
                                                   uint8_t** data, uint16_t* count);

/*
 * Reads a list of printer variables of a setup from an INI file.
 *   kind         QSF_LIST_...
 *   setupNumber  8 bits
 *   values       receives the numbers of the variables, 2 bytes each, high byte first; NULL on
 *                failure. Released with HvMemFree
 *   count        receives how many there are
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_NO_MEMORY, HV_UNUSABLE_FILE (the counts that the list gives
 * do not fit it), HV_KEY_MISSING, HV_SECTION_MISSING.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvQsfIniGetSection(HvIniHandle* iniHandle, uint32_t kind,
                                                    uint32_t setupNumber, uint8_t** values,
                                                    uint16_t* count);

/* ---------------------------------------------------------------------------------------------
 * Configuration listing
 * ------------------------------------------------------------------------------------------ */

/* File kinds of HvDatQueryFiles; any other value lists files of every name. */
enum {
  DAT_KIND_CFG = 1, /* "*.CFG" */
  DAT_KIND_PSS = 2  /* "*.PSS" */
};

/* A configuration file, 312 bytes on a 32-bit target. */
typedef struct HvConfigFileEntry {
  char path[260];                 /*   0 the directory, its last character a "\", and the name */
  char description[48];           /* 260 */
  struct HvConfigFileEntry* next; /* 308 NULL at the end */
} HvConfigFileEntry;

/*
 * Lists the files of a directory that describe themselves: their first line holds "#!" and after it
 * a text, which is the description. A file whose path does not fit is left out, as are names that
 * begin with a dot.
 *   directory  the directory, or "" for the current one
 *   fileKind   DAT_KIND_...
 *   count      receives the number of entries (at most 65535 are listed)
 * Returns the first entry, or NULL when there is none or an argument is bad. When memory runs out,
 * the entries found so far. Released with HvDatQueryFilesFree.
 */
HVAPI_EXPORT HvConfigFileEntry* HVAPI_CALL HvDatQueryFiles(const char* directory, uint32_t fileKind,
                                                           uint16_t* count);

/* Releases the entries from list on. NULL is allowed. */
HVAPI_EXPORT void HVAPI_CALL HvDatQueryFilesFree(HvConfigFileEntry* list);

/* ---------------------------------------------------------------------------------------------
 * Support addresses
 * ------------------------------------------------------------------------------------------ */

/* Topics of support addresses. */
enum {
  WEB_TOPIC_DRIVERS = 1,
  WEB_TOPIC_FIRMWARE = 2,
  WEB_TOPIC_HOMEPAGE = 3,
  WEB_TOPIC_FLEETDESK = 4, /* the device-management software */
  WEB_TOPIC_REGISTRATION = 5,
  WEB_TOPIC_SUPPLIES = 6,
  WEB_TOPIC_TECHSUPPORT = 7,
  WEB_TOPIC_PUBLICATIONS = 8
};

/* The model number that leaves the printer out of an address. */
enum { WEB_NO_MODEL = -1 };

/*
 * Builds the address base/area/language/printer of a topic.
 *   model         model number, or WEB_NO_MODEL
 *   topic         WEB_TOPIC_...
 *   language      0 to 22
 *   buffer, size  receive the address and its NUL; the empty text on failure
 *   ini           NULL, or an open file that redirects parts: section AREA_PREFIX the base and AREA
 *                 the area, both by the topic's word in upper case, LANGUAGE the language and
 *                 PRINTER the printer, both by their number. A part made empty is left out.
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_NO_MEMORY, HV_BUFFER_TOO_SMALL, HV_UNKNOWN_MODEL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvWebGetURL(int32_t model, uint32_t topic, uint32_t language,
                                             char* buffer, uint32_t size, HvIniHandle* ini);

/*
 * Builds the address of a topic for the site's dispatch script, which is also told the user's
 * country and the operating system.
 *   printerA, printerB  the two numbers of the printer, printed with three digits or more
 *   topic               WEB_TOPIC_...
 *   languageId          Windows language identifier, 16 bits
 *   buffer, size        receive the address and its NUL and must have room for one byte more; the
 *                       empty text on failure, written also when size is 0
 *   reserved            not read
 * Results: HV_OK, HV_BAD_ARGUMENT (also for size 0), HV_NO_MEMORY, HV_BUFFER_TOO_SMALL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvWebGetCGIURL(uint32_t printerA, uint32_t printerB,
                                                uint32_t topic, uint32_t languageId, char* buffer,
                                                uint32_t size, uint32_t reserved);

/* ---------------------------------------------------------------------------------------------
 * Fonts
 * ------------------------------------------------------------------------------------------ */

/* Bits of HvFontInfo.flags. */
enum {
  FONT_FLAG_BINARY = 0x01,            /* every kind but PFA and AFM */
  FONT_FLAG_STANDARD_ENCODING = 0x02, /* every kind; not a PFB with an encoding of its own */
  FONT_FLAG_PROPORTIONAL = 0x04,      /* PCL fonts: proportional spacing */
  FONT_FLAG_08 = 0x08,                /* DLF, FMF, PFM, PSM, PBM, PFA, PFB, AFM, PCL scalable */
  FONT_FLAG_20 = 0x20                 /* FMF, PFM, PSM, PBM, PFA, PFB, PCL scalable */
};

/* Values of HvFontInfo.fontClass. */
enum {
  FONT_CLASS_METRICS = 2,
  FONT_CLASS_DOWNLOADABLE = 3,
  FONT_CLASS_AFM = 4,
  FONT_CLASS_TRUETYPE = 5
};

/* Values of HvFontInfo.fontType. */
enum {
  FONT_TYPE_TYPE1 = 2,          /* PFA and PFB; with FONT_CLASS_AFM an AFM */
  FONT_TYPE_DLF = 6,            /* font of a PPDS printer */
  FONT_TYPE_PCL_RESOLUTION = 8, /* PCL bitmap with a resolution of its own, format 20 */
  FONT_TYPE_PCL_BITMAP = 9,     /* PCL bitmap, format 0 */
  FONT_TYPE_PCL_EXTENDED = 11,  /* PCL bitmap, formats 5, 9 and 12 */
  FONT_TYPE_PCL_BOUND = 17,     /* PCL scalable, bound, format 10 */
  FONT_TYPE_PCL_UNBOUND = 18,   /* PCL scalable, unbound, format 11 */
  FONT_TYPE_PCL_TRUETYPE = 20,  /* PCL scalable, TrueType, format 15 */
  FONT_TYPE_TRUETYPE = 21,      /* TTF; with FONT_CLASS_METRICS an FOT */
  FONT_TYPE_TFM = 22,           /* tagged font metrics */
  FONT_TYPE_FMF = 23,           /* metrics of a DLF font */
  FONT_TYPE_PFM = 25,           /* PFM, PSM and PBM */
  FONT_TYPE_PCM = 28            /* cartridge metrics */
};

/* Which companion files HvFonQueryInfo looks for; any other value asks for none. */
enum {
  FONT_COMPANIONS_NONE = 0,
  FONT_COMPANIONS_METRICS = 2, /* needs the AFM of a Type 1 font, the FMF of a DLF font */
  FONT_COMPANIONS_WINDOWS = 4, /* needs the PFM of a Type 1 font, or else its INF and AFM; the INF
                                  of an AFM */
  FONT_COMPANIONS_OPTIONAL = 5 /* as 4, but what is missing is no failure */
};

/* A face of a cartridge. name and the face itself are released with HvMemFree. */
typedef struct HvFontFace {
  char* name;              /* at most 90 characters; " (It)" and " (Bd)" tell the style */
  struct HvFontFace* next; /* NULL at the end */
} HvFontFace;

/* What a PCM file holds. The title, each face and the cartridge are released with HvMemFree. */
typedef struct HvFontCartridge {
  char* title;       /* at most 79 characters */
  HvFontFace* faces; /* in the order of the file, or NULL */
} HvFontCartridge;

/* A font or font-metrics file. 714 bytes on a 32-bit target. */
typedef struct HvFontInfo {
  uint32_t flags;             /* 0 FONT_FLAG_... */
  uint32_t fontClass;         /* 4 FONT_CLASS_... */
  int32_t fontType;           /* 8 FONT_TYPE_... */
  uint16_t xResolution;       /* 12 dots per inch, FONT_TYPE_PCL_RESOLUTION only */
  uint16_t yResolution;       /* 14 dots per inch, FONT_TYPE_PCL_RESOLUTION only */
  uint32_t fileSize;          /* 16 in bytes */
  uint32_t memoryNeeded;      /* 20 estimate of the printer memory that the font takes, in bytes */
  char name[80];              /* 24 display name */
  char description[80];       /* 104 PCL fonts: vendor, typeface and font number; AFM: menu name */
  char symbolSet[6];          /* 184 PCL symbol set, such as "8U"; empty for unbound fonts */
  char companionPath1[260];   /* 190 metrics of a font, font of metrics */
  char companionPath2[260];   /* 450 Windows metrics of a Type 1 font */
  HvFontCartridge* cartridge; /* 710 of a PCM file, else NULL; the caller releases it */
} HvFontInfo;

/*
 * Tells what a font or font-metrics file is. The kind follows from the extension (AFM, PFA, PFB,
 * DLF, FMF, PFM, PSM, PBM, PCM, TFM, FOT, TTF; a file with any other is a PCL soft font) and is
 * confirmed by reading the file, except for TFM, FOT and TTF, which are described by name alone.
 *   fontPath          the file
 *   info              cleared first and filled as far as the file allows, also on failure
 *   companionMode     FONT_COMPANIONS_...
 *   allowMetricFiles  0 to refuse AFM, FMF, PFM, PSM, PBM, PCM and TFM as unusable
 * Results: HV_OK, HV_BAD_ARGUMENT (also for a path without extension), HV_NOT_FOUND,
 * HV_CANNOT_OPEN, HV_NO_MEMORY, HV_UNUSABLE_FILE, HV_NOT_SUPPORTED (a companion is missing; all
 * else is filled), HV_LIMIT_REACHED (an AFM or INF of more than 65,534 bytes).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFonQueryInfo(const char* fontPath, HvFontInfo* info,
                                                uint32_t companionMode, uint32_t allowMetricFiles);

/*
 * Downloads a font to a printer, where it stays as a permanent soft font.
 *   fontPath      a PCL soft font, PFA, PFB or DLF file
 *   destination   a file destination is appended to
 *   job           flags, emulation (1 to 6), identifier (the font number), jobName, personality,
 *                 printerClass and library address; fontQueryArg is the companion mode (a missing
 *                 companion does not stop the download); a Type 1 font for a PPDS printer also
 *                 sends fontValue18 - 256 and fontValue1A
 *   targetDevice  STORAGE_DEVICE_...
 * With emulation 6 a PCL font is sent under a name made up of its name, size, style and symbol set.
 * Results: those of HvFonQueryInfo without metric files, HV_BAD_ARGUMENT, HV_NOT_FOUND (also a font
 * that cannot be opened, for some kinds), HV_CANNOT_OPEN (font or destination), HV_READ_FAILED,
 * HV_WRITE_FAILED (file destination), HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE (a
 * TrueType font: an empty job is sent).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFonDownload(const char* fontPath, const char* destination,
                                               const HvJobInfo* job, uint32_t targetDevice);

/* Conversions of HvFonConvert, with the output that they have when none is named. */
enum {
  FONT_CONVERT_AFM_TO_PFM = 1,            /* AFM and INF to PFM for the PostScript driver */
  FONT_CONVERT_AFM_TO_PFM_PSM = 2,        /* the same, and a PSM for "IBM LaserPrinter" */
  FONT_CONVERT_PFM_TO_AFM = 3,            /* source with extension AFM */
  FONT_CONVERT_DLF_TO_PBM = 4,            /* DLF font; source with extension PBM */
  FONT_CONVERT_PCL_TO_PFM = 5,            /* PCL soft font; source with extension PFM */
  FONT_CONVERT_TFM_TO_PFM = 6,            /* tagged font metrics; source with extension PFM */
  FONT_CONVERT_TFM_TO_PFM_BY_HEADER = 16, /* 6, selected as the soft font that is the source */
  FONT_CONVERT_PCL_TO_PFM_DESCRIBED = 17  /* 5, with a description of the font */
};

/*
 * Turns a font or font-metrics file into the metrics file of a Windows driver, or a PFM into an
 * AFM.
 *   source        the file to convert. The INF beside an AFM must be there: it has the AFM's name
 *                 with the extension INF.
 *   destination   the file to write; NULL or the empty text for the name given with each type. Type
 *                 1: without any "." it is a directory, in which the output has the source's name
 *                 in upper case with the extension PFM; when it is not given, the output is the
 *                 source with that extension. Type 2: must be given; the outputs are its name with
 *                 the extensions PFM and PSM.
 *   fontInfo      types 6 and 16: what HvFonQueryInfo said of the font; its companion path names
 *                 the tagged font metrics. Not read by others.
 *   pathSelector  types 6 and 16: FONT_COMPANIONS_METRICS for companionPath1,
 *                 FONT_COMPANIONS_WINDOWS for companionPath2
 *   type          FONT_CONVERT_...
 * An extension replaces what stands behind the last dot of the file name; a name without a dot gets
 * the three letters appended. An output that is there is replaced.
 * Types 5 and 17 take the layout of the characters to be that of the soft font that
 * HvFonQueryInfo described last, so that it should be called for the source before.
 * Results: HV_OK (types 1 and 2: also when the output cannot be written), HV_BAD_ARGUMENT (also an
 * unknown type, a missing destination or record, another pathSelector, an output name that is too
 * long), HV_NOT_FOUND (source or INF), HV_CANNOT_OPEN (an input, or an output of types 3 to 17 that
 * cannot be created), HV_WRITE_FAILED (type 3), HV_NO_MEMORY, HV_UNUSABLE_FILE (the source is not
 * of the kind that the type takes; tagged font metrics that cannot be read), HV_SYSTEM_FAILURE
 * (types 4 to 17: not all bytes could be written), HV_LIMIT_REACHED (an AFM or INF of more than
 * 65,534 bytes). After HV_WRITE_FAILED and HV_SYSTEM_FAILURE the output is left as far as it was
 * written; other failures touch no output.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvFonConvert(const char* source, const char* destination,
                                             const HvFontInfo* fontInfo, uint32_t pathSelector,
                                             int32_t type);

/* ---------------------------------------------------------------------------------------------
 * Macros
 * ------------------------------------------------------------------------------------------ */

/* Bits of HvMacroInfo.flags. */
enum {
  MACRO_FLAG_DEMO = 0x01,        /* PostScript: a demonstration page, stored as name + ".demo" */
  MACRO_FLAG_FILTER = 0x02,      /* job commands are removed; a PCL XL job is converted */
  MACRO_FLAG_CALL_MACRO = 0x04,  /* PCL: the macro calls macro callMacroId first */
  MACRO_FLAG_FILTER_MASK = 0x08, /* filterMask counts; sets MACRO_FLAG_FILTER in the record */
  MACRO_FLAG_PS_OVERLAY = 0x10   /* PostScript: validate as an overlay page */
};

/* Bits of HvMacroInfo.filterMask: the PCL commands that a filter removes, "#" being any value. */
enum {
  FILTER_DROP_RESET = 0x001,            /* ESC E */
  FILTER_DROP_FORM_FEED = 0x002,        /* the byte 0x0C */
  FILTER_DROP_PAGE_SIZE = 0x004,        /* ESC & l # A */
  FILTER_DROP_PAPER_SOURCE = 0x008,     /* ESC & l # H */
  FILTER_DROP_DUPLEX = 0x010,           /* ESC & l # S and ESC & a # G */
  FILTER_DROP_ORIENTATION = 0x020,      /* ESC & l # O */
  FILTER_DROP_JOB_SEPARATION = 0x040,   /* ESC & l 1 T */
  FILTER_DROP_COPIES = 0x080,           /* ESC & l # X */
  FILTER_DROP_PERFORATION_SKIP = 0x100, /* ESC & l # L */
  FILTER_DROP_FLUSH_PAGES = 0x200,      /* ESC & r # F */
  FILTER_DROP_OUTPUT_BIN = 0x400,       /* ESC & l # G */
  FILTER_DROP_MACRO_DEFINITION = 0x800, /* ESC & f 0 X and ESC & f 1 X */
  DEFAULT_FILTER_MASK = 0x33F           /* where MACRO_FLAG_FILTER_MASK is not set */
};

/* A macro, an overlay or a stored resource. 40 bytes. */
typedef struct HvMacroInfo {
  uint32_t flags;       /* 0 MACRO_FLAG_... */
  char name[24];        /* 4 of the macro, overlay, stream or stored file */
  uint16_t callMacroId; /* 28 with MACRO_FLAG_CALL_MACRO */
  uint32_t target;      /* 30 STORAGE_DEVICE_... */
  uint16_t macroId;     /* 34 identifier found by HvMacValidate */
  uint32_t filterMask;  /* 36 with MACRO_FLAG_FILTER_MASK */
} HvMacroInfo;

/* Modes of HvMacDownload. */
enum {
  MACRO_PRINT_ONCE = 1, /* a temporary macro, printed once */
  MACRO_STORE = 2,      /* kept in the printer's memory or on the device */
  MACRO_SEND_RAW = 3    /* the source unchanged, then made permanent */
};

/* Highest macro identifier of the commands that send one. */
enum { MACRO_MAX_IDENTIFIER = 32767 };

/*
 * Makes a macro of a print file. In PCL the file becomes a macro definition, in PPDS a macro block;
 * PCL XL (with MACRO_FLAG_FILTER) a job that defines a user stream of the page; a PostScript source
 * (with MACRO_FLAG_FILTER) gets a comment with the name behind each "%!PS" line. Other languages
 * are copied.
 *   source       the print file; without MACRO_FLAG_FILTER its bytes stay as they are
 *   destination  a file, which is replaced, or a printer queue; no framing is sent
 *   job          emulation (1 to 6), identifier (0 to 32767), jobName and library address
 *   info         flags, name, callMacroId, filterMask
 * A filter always removes the UEL, PJL lines and ESC [ K sequences of a PCL or PostScript source;
 * of PCL also font and macro deletions, page lengths, ESC & l # F, ESC & b # M and alphanumeric
 * identifiers with data, and what the mask says; of PostScript the byte 0x04. A PCL XL conversion
 * uses the files "in.str", "temp.str" and "out.str" of the current directory.
 * Results: HV_OK, HV_BAD_ARGUMENT (also for a source that is the destination), HV_NOT_FOUND,
 * HV_CANNOT_OPEN (source, destination or work file), HV_READ_FAILED, HV_WRITE_FAILED,
 * HV_NO_MEMORY, HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE (the extension of a
 * program or system file), HV_LIMIT_REACHED (a PPDS source of more than 65,532 bytes),
 * HV_BAD_PCLXL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacCreate(const char* source, const char* destination,
                                             const HvJobInfo* job, HvMacroInfo* info);

/*
 * Tells whether a file already is a macro of the job's language, and which.
 *   source  the file
 *   job     emulation; receives the identifier
 *   info    flags, name, target and filterMask as HvMacCreate takes them; receives what is found:
 *           macroId, name, target, MACRO_FLAG_DEMO. Of PCL XL only the name is found, and with
 *           MACRO_FLAG_FILTER nothing: the result then tells whether the source can be converted.
 * Both are written on success only (MACRO_FLAG_FILTER apart) and must be given.
 * Results: HV_OK, HV_BAD_ARGUMENT (also for languages without macros), HV_NOT_FOUND,
 * HV_CANNOT_OPEN, HV_READ_FAILED (also a PCL XL source of less than 17 bytes), HV_WRITE_FAILED,
 * HV_NO_MEMORY, HV_UNUSABLE_FILE, HV_WRONG_LANGUAGE (no macro), HV_BAD_PCLXL, HV_PCLXL_JOB (the
 * source is a PCL XL job, the job's language is another).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacValidate(const char* source, HvJobInfo* job,
                                               HvMacroInfo* info);

/*
 * Sends a macro to a printer, framed as the job says.
 *   source, destination, job, info  as for HvMacCreate; identifiers above 32767 pass with
 *                                   MACRO_SEND_RAW; an empty name is replaced by the file name of
 *                                   source in upper case
 *   info->target      STORAGE_DEVICE_... that MACRO_STORE and MACRO_SEND_RAW store on
 *   mode              MACRO_PRINT_ONCE .. MACRO_SEND_RAW
 *   validationResult  HV_OK when the source already is a macro, HV_WRONG_LANGUAGE to make one of
 *                     it on the way (not for PCL XL, where MACRO_FLAG_FILTER converts)
 * Results: those of HvMacCreate, HV_BAD_ARGUMENT also when a macro of the language cannot be
 * switched on to print it.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacDownload(const char* source, const char* destination,
                                               const HvJobInfo* job, HvMacroInfo* info,
                                               uint32_t mode, uint32_t validationResult);

/*
 * Switches the stored macro job->identifier (0 to 32767) on as overlay of every page, or off. No
 * framing is sent; PostScript and PCL XL have no such command and send nothing.
 *   enable  0 for off
 * Results: HV_OK (whatever became of the write), HV_BAD_ARGUMENT (also for a language without
 * macros), HV_CANNOT_OPEN, HV_NO_MEMORY, HV_CONNECTION_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacActivate(const char* destination, const HvJobInfo* job,
                                               uint32_t enable);

/*
 * Deletes the stored macro job->identifier (0 to 32767). PPDS and PostScript send nothing. Results:
 * those of HvMacActivate; HV_BAD_ARGUMENT also for PCL XL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacDelete(const char* destination, const HvJobInfo* job);

/* ---------------------------------------------------------------------------------------------
 * Demonstration files
 * ------------------------------------------------------------------------------------------ */

/* Ways to store a demonstration file: values of HvDemoInfo.method. */
enum {
  DEMO_METHOD_POSTSCRIPT = 1,    /* a PostScript program that writes the file to the device */
  DEMO_METHOD_PJL_FILE = 2,      /* the PJL file-system commands */
  DEMO_METHOD_ESC_D = 3,         /* behind an ESC [ D header */
  DEMO_METHOD_PJL_DEMO_FILE = 4, /* the PJL commands for demonstration files */
  DEMO_METHOD_NOTHING = 5        /* only the framing of the job is sent */
};

/* The bit of HvDemoInfo.flags that the ESC [ D header carries; the others are not read. */
enum { DEMO_FLAG_ESC_D = 0x01 };

/* How a demonstration file is to be stored. 37 bytes. */
typedef struct HvDemoInfo {
  uint32_t flags;     /* 0 DEMO_FLAG_ESC_D */
  int32_t method;     /* 4 DEMO_METHOD_... */
  char name[24];      /* 8 to store the file under; empty: the file name of the source */
  uint8_t headerByte; /* 32 a byte of the ESC [ D header */
  uint32_t target;    /* 33 STORAGE_DEVICE_..., not RAM */
} HvDemoInfo;

/*
 * Stores a print file in the printer, which then prints it from its own panel.
 *   source       the print file; its bytes are not looked at
 *   destination  a file, which is replaced, or a printer queue
 *   job          flags for the framing, identifier (its low byte goes into the ESC [ D header),
 *                printerClass, jobName, personality; emulation is set to that of the method:
 *                PostScript for DEMO_METHOD_POSTSCRIPT, PCL for the others, unchanged for
 *                DEMO_METHOD_NOTHING
 *   info         see there. PostScript and PJL store the file as name + ".demo"; the ESC [ D header
 *                takes 12 characters of the name. A name taken from source is in upper case.
 * Results: HV_OK, HV_BAD_ARGUMENT (also for a source that is the destination, and for the printer's
 * memory as target), HV_NOT_FOUND, HV_CANNOT_OPEN (source or destination), HV_READ_FAILED,
 * HV_WRITE_FAILED, HV_NO_MEMORY, HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE (the
 * extension of a program or system file).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDemDownload(const char* source, const char* destination,
                                               HvJobInfo* job, const HvDemoInfo* info);

/* ---------------------------------------------------------------------------------------------
 * Search
 * ------------------------------------------------------------------------------------------ */

/* Kinds of HvFoundResource. */
enum { RESOURCE_FONT = 1, RESOURCE_DEMO = 2, RESOURCE_MACRO = 3 };

/* A file that a search found, 277 bytes on a 32-bit target. */
typedef struct HvFoundResource {
  char path[260];               /*   0 the searched directory, "\", and the rest of the path */
  void* details;                /* 260 fonts: an HvFontInfo; macros: an HvMacroInfo; else NULL */
  struct HvFoundResource* next; /* 264 the one found before it, NULL at the end */
  uint32_t kind;                /* 268 RESOURCE_... */
  uint8_t nameOffset;           /* 272 where the file name begins in path; 0 in fonts, and where it
                                       begins behind the 255th character */
  uint32_t size;                /* 273 of the file, in bytes */
} HvFoundResource;

/*
 * Which fonts HvFonFind looks for: one of these, or a FONT_TYPE_... for that type alone. The PCL
 * types 13 and 15 are those of older libraries, which no file has here.
 */
enum {
  FONT_KIND_PCL = 10,          /* 8, 9, 11, 13, 15, 17, 18, 20 */
  FONT_KIND_PCL_CONTOUR = 12,  /* 11, 17 */
  FONT_KIND_PCL_PLAIN = 14,    /* 9, 13, 17 */
  FONT_KIND_PCL_STANDARD = 16, /* those of FONT_KIND_PCL but 11 */
  FONT_KIND_ANY = 26,          /* whatever HvFonQueryInfo accepts */
  FONT_KIND_PCL_WINDOWS = 27   /* those of FONT_KIND_PCL_STANDARD, PFM (without an SFS file beside
                                  it, and not of a PostScript printer) and PCM */
};

/* Which classes of fonts HvFonFind lists: a FONT_CLASS_... up to 4, or all of them. */
enum { FONT_CLASSES_ALL = 6 };

/*
 * Called by HvFonFind2 with info NULL before each file, and with the description of each font
 * before it is listed; it is gone after the call. percent tells how much of the files has been gone
 * through.
 */
typedef void(HVAPI_CALL* HvFontProgress)(const HvFontInfo* info, uint32_t percent);

/*
 * Searches a directory for fonts and font metrics and describes each with HvFonQueryInfo. Of fonts
 * of one name the first is listed. Names that begin with a dot, and paths of 260 characters and
 * more, are passed over. directory      at most 260 characters; "" is the current one count in: the
 * most entries wanted, 0 for 32767; out: the number of entries fontKind       1 to 28, see above
 *   classFilter    1 to 6: FONT_CLASS_...; FONT_CLASSES_ALL and 5 are all
 *   companionMode  FONT_COMPANIONS_...
 *   recurse        other than 0 to search subdirectories too
 * A scalable PCL font gets its metrics as companion 1 and 2: the file of the same directory named
 * by its first three characters and "0000S.TFM". Without it, FONT_COMPANIONS_METRICS leaves the
 * font out and FONT_COMPANIONS_WINDOWS needs its PFM, as companion 2. For the kinds 10, 12, 14, 16,
 * 17, 18, 20, 26 and 27 the fonts that the index GLUE.TXT of the directory names come first, with
 * the symbol set, memory and metrics file that it gives. Returns the entry found last, or NULL when
 * there is none or an argument is bad. When memory runs out, the entries found so far. Released
 * with HvFonFindFree.
 */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvFonFind(const char* directory, uint16_t* count,
                                                   uint32_t fontKind, uint32_t classFilter,
                                                   uint32_t companionMode, uint32_t recurse);

/* The same; the files are counted first, and progress (or NULL) is called. */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvFonFind2(const char* directory, uint16_t* count,
                                                    uint32_t fontKind, uint32_t classFilter,
                                                    uint32_t companionMode, uint32_t recurse,
                                                    HvFontProgress progress);

/*
 * Searches a directory for files that HvMacValidate takes for macros, PostScript overlays included.
 *   directory, count, recurse  as for HvFonFind
 *   language      1 to 6, the emulation of HvJobInfo
 *   jobParameter  goes into fontQueryArg of the job that is validated with
 * Returns the entry found last, or NULL: none, a bad argument, no memory.
 */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvMacFind(const char* directory, uint16_t* count,
                                                   uint32_t language, uint32_t jobParameter,
                                                   uint32_t recurse);

/*
 * Lists the files of a directory but for programs and system files (bat, cmd, com, dll, drv, exe,
 * hlp, ini, sys). directory, count, recurse and the result are those of HvMacFind; reserved is not
 * read.
 */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvDemFind(const char* directory, uint16_t* count,
                                                   uint32_t reserved, uint32_t recurse);

/* Releases the entries from list on, with their details. NULL is allowed. */
HVAPI_EXPORT void HVAPI_CALL HvFonFindFree(HvFoundResource* list);

/* ---------------------------------------------------------------------------------------------
 * Printer replies
 * ------------------------------------------------------------------------------------------ */

/*
 * Replies of printers to queries, and alerts that they send, in their self-describing form:
 *
 *   bytes 0-1  big-endian length of what follows; a reply is that many bytes and 2 long
 *   bytes 2-3  format word, not read
 *   then       the layout, three sections of text as in "P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}":
 *              the fields and their widths in bytes of every item, of a container, of a data item
 *   then       the items: containers of further items, integers and texts, each with an identifier
 *
 * The functions read no byte beyond that length. Items that they do not know are passed over. A
 * reply that breaks its own bounds gives what was read up to there: a record in which every count
 * is that of the array beside it, to be released like any other. An integer of 1 byte is signed
 * (0xFF gives 0xFFFFFFFF), one of 2 bytes is not, one of 4 bytes is taken as it is, and one of any
 * other length gives 0.
 */

/* One option. 12 bytes on a 32-bit target. */
typedef struct HvOptionEntry {
  uint32_t value1; /* 0x00 item 1 */
  uint32_t value5; /* 0x04 item 5 */
  char* text;      /* 0x08 item 6, "" when it is empty; NULL when there is none */
} HvOptionEntry;

/* One group of values. 16 bytes on a 32-bit target. */
typedef struct HvOptionGroup {
  char* name;          /* 0x00 item 1, NULL when it is empty */
  char* description;   /* 0x04 item 2, NULL when it is empty */
  uint32_t valueCount; /* 0x08 number of values */
  uint32_t* values;    /* 0x0C item 3, NULL when valueCount is 0 */
} HvOptionGroup;

/* The options of a printer. 16 bytes on a 32-bit target. */
typedef struct HvOptionInfo {
  uint32_t entryCount;    /* 0x00 number of entries */
  HvOptionEntry* entries; /* 0x04 NULL when entryCount is 0 */
  uint32_t groupCount;    /* 0x08 number of groups */
  HvOptionGroup* groups;  /* 0x0C NULL when groupCount is 0 */
} HvOptionInfo;

/*
 * Parses an option-information reply. Returns a record to be released with HvFreeOptionInfo, both
 * counts 0 when the reply holds no option information; NULL when reply is NULL or memory ran out.
 */
HVAPI_EXPORT HvOptionInfo* HVAPI_CALL HvParseOptionInfo(const void* reply);

/* Releases a record of HvParseOptionInfo with all that it holds. NULL does nothing. */
HVAPI_EXPORT void HVAPI_CALL HvFreeOptionInfo(HvOptionInfo* info);

/*
 * The job of a job-accounting alert, 173 bytes: items of the groups 1 (j1) and 2 (j2) of its job
 * container. What an alert leaves out is 0 or empty; a text too long is cut.
 */
typedef struct HvJobAccountJob {
  uint32_t j1Item1;  /* 0x00 */
  uint32_t j1Item2;  /* 0x04 */
  uint32_t j1Item3;  /* 0x08 */
  uint32_t j1Item4;  /* 0x0C */
  uint32_t j1Item5;  /* 0x10 */
  uint32_t j1Item6;  /* 0x14 */
  char j1Item7[10];  /* 0x18 */
  uint32_t j1Item8;  /* 0x22 */
  uint32_t j1Item9;  /* 0x26 */
  uint32_t j1Item10; /* 0x2A */
  char j1Item11[16]; /* 0x2E */
  char j2Item1[41];  /* 0x3E */
  char j2Item2[21];  /* 0x67 */
  char j2Item3[21];  /* 0x7C */
  uint32_t j2Item4;  /* 0x91 */
  uint32_t j2Item5;  /* 0x95 */
  uint32_t j2Item6;  /* 0x99 */
  uint32_t j2Item7;  /* 0x9D */
  uint32_t j2Item8;  /* 0xA1 */
  uint32_t j2Item9;  /* 0xA5 */
  uint32_t j2Item10; /* 0xA9 */
} HvJobAccountJob;

/* The device of a job-accounting alert, 74 bytes: groups 1 to 3 of its device container. */
typedef struct HvJobAccountDevice {
  uint32_t d1Item1; /* 0x00 */
  uint32_t d2Item1; /* 0x04 */
  uint32_t d2Item2; /* 0x08 */
  uint32_t d2Item3; /* 0x0C */
  uint32_t d2Item4; /* 0x10 */
  uint32_t d2Item5; /* 0x14 */
  char d2Item6[16]; /* 0x18 */
  uint32_t d2Item7; /* 0x28 */
  char d2Item8[10]; /* 0x2C */
  uint32_t d3Item1; /* 0x36 */
  uint32_t d3Item2; /* 0x3A */
  uint32_t d3Item3; /* 0x3E */
  uint32_t d3Item4; /* 0x42 */
  uint32_t d3Item5; /* 0x46 */
} HvJobAccountDevice;

/* A job-accounting alert. 8 bytes on a 32-bit target. */
typedef struct HvJobAccount {
  HvJobAccountJob* jobBlock;       /* 0x00 NULL when the alert holds none */
  HvJobAccountDevice* deviceBlock; /* 0x04 NULL when the alert holds none */
} HvJobAccount;

/*
 * Parses a job-accounting alert. When it holds several job or device containers, the last ones
 * count. Returns a record to be released with HvFreeJobAccount; NULL when reply is NULL or memory
 * ran out.
 */
HVAPI_EXPORT HvJobAccount* HVAPI_CALL HvParseJobAccountingAlert(const void* reply);

/* Releases a record of HvParseJobAccountingAlert with its blocks. NULL does nothing. */
HVAPI_EXPORT void HVAPI_CALL HvFreeJobAccount(HvJobAccount* record);

/* ---------------------------------------------------------------------------------------------
 * Zip archives
 * ------------------------------------------------------------------------------------------ */

/*
 * Called after each member that was extracted.
 *   name            its name as stored in the archive
 *   compressedSize  its compressed size in bytes
 *   percent         that size in percent of the compressed sizes of all members listed so far,
 *                   rounded; the directory is read 64 members at a time
 * Its result is not looked at.
 */
typedef uint32_t(HVAPI_CALL* HvZipProgress)(const char* name, uint32_t compressedSize,
                                            uint16_t percent);

/*
 * Extracts the members of a zip archive into files below the current directory, with their stored
 * paths and times (as UTC). Directories are made as needed, files of the same name are replaced.
 *   archive   path of the archive; when there is no such file, ".zip" is appended
 *   pattern   NULL or "" for all members, else at most 260 characters: only the members whose
 *             stored name matches. * is any run of characters ("/" too), ? any one, [a-z] and
 *             [!a-z] one of a set or not of it, \c the character c. Letter case counts in sets only
 *   progress  NULL, or a function to call after each member
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
 * Results: HV_OK, HV_BAD_ARGUMENT, HV_NOT_FOUND (no such archive, or one of several disks),
 * HV_CANNOT_OPEN, HV_ARCHIVE_ENDED, HV_NO_MEMORY, HV_DISK_FULL, HV_UNUSABLE_FILE (no archive, or
 * damaged), HV_SHARING_VIOLATION (an output file or directory cannot be made).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvZipExplode(const char* archive, const char* pattern,
                                              HvZipProgress progress);

/*
 * Building archives is not supported: HV_NOT_SUPPORTED, or HV_BAD_ARGUMENT for arguments that
 * HvZipExplode would not take either. Nothing is created or changed.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvZipImplode(const char* archive, const char* pattern,
                                              HvZipProgress progress);

#pragma pack(pop)

#ifdef __cplusplus
}
#endif

#endif /* HVAPI_H */
