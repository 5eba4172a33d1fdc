/**
 * @file
 * Macros.
 */
#pragma once

/** Bits of HvMacroInfo.flags. */
enum {
  MACRO_FLAG_DEMO = 0x01,        /**< PostScript: a demonstration page, stored as name + ".demo" */
  MACRO_FLAG_FILTER = 0x02,      /**< job commands are removed; a PCL XL job is converted */
  MACRO_FLAG_CALL_MACRO = 0x04,  /**< PCL: the macro calls macro callMacroId first */
  MACRO_FLAG_FILTER_MASK = 0x08, /**< filterMask counts; sets MACRO_FLAG_FILTER in the record */
  MACRO_FLAG_PS_OVERLAY = 0x10   /**< PostScript: validate as an overlay page */
};

/** Bits of HvMacroInfo.filterMask: the PCL commands that a filter removes, "#" being any value. */
enum {
  FILTER_DROP_RESET = 0x001,            /**< ESC E */
  FILTER_DROP_FORM_FEED = 0x002,        /**< the byte 0x0C */
  FILTER_DROP_PAGE_SIZE = 0x004,        /**< ESC & l # A */
  FILTER_DROP_PAPER_SOURCE = 0x008,     /**< ESC & l # H */
  FILTER_DROP_DUPLEX = 0x010,           /**< ESC & l # S and ESC & a # G */
  FILTER_DROP_ORIENTATION = 0x020,      /**< ESC & l # O */
  FILTER_DROP_JOB_SEPARATION = 0x040,   /**< ESC & l 1 T */
  FILTER_DROP_COPIES = 0x080,           /**< ESC & l # X */
  FILTER_DROP_PERFORATION_SKIP = 0x100, /**< ESC & l # L */
  FILTER_DROP_FLUSH_PAGES = 0x200,      /**< ESC & r # F */
  FILTER_DROP_OUTPUT_BIN = 0x400,       /**< ESC & l # G */
  FILTER_DROP_MACRO_DEFINITION = 0x800, /**< ESC & f 0 X and ESC & f 1 X */
  DEFAULT_FILTER_MASK = 0x33F           /**< where MACRO_FLAG_FILTER_MASK is not set */
};

/** A macro, an overlay or a stored resource. 40 bytes. */
typedef struct HvMacroInfo {
  uint32_t flags;       /**< 0 MACRO_FLAG_... */
  char name[24];        /**< 4 of the macro, overlay, stream or stored file */
  uint16_t callMacroId; /**< 28 with MACRO_FLAG_CALL_MACRO */
  uint32_t target;      /**< 30 STORAGE_DEVICE_... */
  uint16_t macroId;     /**< 34 identifier found by HvMacValidate */
  uint32_t filterMask;  /**< 36 with MACRO_FLAG_FILTER_MASK */
} HvMacroInfo;

/** Modes of HvMacDownload. */
enum {
  MACRO_PRINT_ONCE = 1, /**< a temporary macro, printed once */
  MACRO_STORE = 2,      /**< kept in the printer's memory or on the device */
  MACRO_SEND_RAW = 3    /**< the source unchanged, then made permanent */
};

/** Highest macro identifier of the commands that send one. */
enum { MACRO_MAX_IDENTIFIER = 32767 };

/**
 * Makes a macro of a print file. In PCL the file becomes a macro definition, in PPDS a macro block;
 * PCL XL (with MACRO_FLAG_FILTER) a job that defines a user stream of the page; a PostScript source
 * (with MACRO_FLAG_FILTER) gets a comment with the name behind each "%!PS" line. Other languages
 * are copied.
 *
 * A filter always removes the UEL, PJL lines and ESC [ K sequences of a PCL or PostScript source;
 * of PCL also font and macro deletions, page lengths, ESC & l # F, ESC & b # M and alphanumeric
 * identifiers with data, and what the mask says; of PostScript the byte 0x04. A PCL XL conversion
 * uses the files "in.str", "temp.str" and "out.str" of the current directory.
 *
 * @param source       the print file; without MACRO_FLAG_FILTER its bytes stay as they are
 * @param destination  a file, which is replaced, or a printer queue; no framing is sent
 * @param job          emulation (1 to 6), identifier (0 to 32767), jobName and library address
 * @param info         flags, name, callMacroId, filterMask
 * @return HV_OK, HV_BAD_ARGUMENT (also for a source that is the destination), HV_NOT_FOUND,
 *   HV_CANNOT_OPEN (source, destination or work file), HV_READ_FAILED, HV_WRITE_FAILED,
 *   HV_NO_MEMORY, HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE (the extension of a
 *   program or system file), HV_LIMIT_REACHED (a PPDS source of more than 65,532 bytes),
 *   HV_BAD_PCLXL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacCreate(const char* source, const char* destination,
                                             const HvJobInfo* job, HvMacroInfo* info);

/**
 * Tells whether a file already is a macro of the job's language, and which.
 *
 * job and info are written on success only (MACRO_FLAG_FILTER apart) and must be given.
 *
 * @param source  the file
 * @param job     emulation; receives the identifier
 * @param info    flags, name, target and filterMask as HvMacCreate takes them; receives what is
 *                found: macroId, name, target, MACRO_FLAG_DEMO. Of PCL XL only the name is found,
 *                and with MACRO_FLAG_FILTER nothing: the result then tells whether the source can
 *                be converted.
 * @return HV_OK, HV_BAD_ARGUMENT (also for languages without macros), HV_NOT_FOUND, HV_CANNOT_OPEN,
 *   HV_READ_FAILED (also a PCL XL source of less than 17 bytes), HV_WRITE_FAILED, HV_NO_MEMORY,
 *   HV_UNUSABLE_FILE, HV_WRONG_LANGUAGE (no macro), HV_BAD_PCLXL, HV_PCLXL_JOB (the source is a PCL
 *   XL job, the job's language is another).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacValidate(const char* source, HvJobInfo* job,
                                               HvMacroInfo* info);

/**
 * Sends a macro to a printer, framed as the job says.
 * @param source,destination,job,info  as for HvMacCreate; identifiers above 32767 pass with
 *                                     MACRO_SEND_RAW; an empty name is replaced by the file name of
 *                                     source in upper case; info->target is the STORAGE_DEVICE_...
 *                                     that MACRO_STORE and MACRO_SEND_RAW store on
 * @param mode                         MACRO_PRINT_ONCE .. MACRO_SEND_RAW
 * @param validationResult             HV_OK when the source already is a macro, HV_WRONG_LANGUAGE
 *                                     to make one of it on the way (not for PCL XL, where
 *                                     MACRO_FLAG_FILTER converts)
 * @return those of HvMacCreate, HV_BAD_ARGUMENT also when a macro of the language cannot be
 *   switched on to print it.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacDownload(const char* source, const char* destination,
                                               const HvJobInfo* job, HvMacroInfo* info,
                                               uint32_t mode, uint32_t validationResult);

/**
 * Switches the stored macro job->identifier (0 to 32767) on as overlay of every page, or off. No
 * framing is sent; PostScript and PCL XL have no such command and send nothing.
 * @param destination  a file or a printer queue
 * @param job          emulation, identifier, jobName and library address
 * @param enable       0 for off
 * @return HV_OK (whatever became of the write), HV_BAD_ARGUMENT (also for a language without
 *   macros), HV_CANNOT_OPEN, HV_NO_MEMORY, HV_CONNECTION_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacActivate(const char* destination, const HvJobInfo* job,
                                               uint32_t enable);

/**
 * Deletes the stored macro job->identifier (0 to 32767). PPDS and PostScript send nothing.
 * @return those of HvMacActivate; HV_BAD_ARGUMENT also for PCL XL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvMacDelete(const char* destination, const HvJobInfo* job);
