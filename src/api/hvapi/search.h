/**
 * @file
 * Search.
 */
#pragma once

/** Kinds of HvFoundResource. */
enum { RESOURCE_FONT = 1, RESOURCE_DEMO = 2, RESOURCE_MACRO = 3 };

/** A file that a search found, 277 bytes on a 32-bit target. */
typedef struct HvFoundResource {
  char path[260];               /**<   0 the searched directory, "\", and the rest of the path */
  void* details;                /**< 260 fonts: an HvFontInfo; macros: an HvMacroInfo; else NULL */
  struct HvFoundResource* next; /**< 264 the one found before it, NULL at the end */
  uint32_t kind;                /**< 268 RESOURCE_... */
  uint8_t nameOffset;           /**< 272 where the file name begins in path; 0 in fonts, and behind
                                     the 255th character */
  uint32_t size;                /**< 273 of the file, in bytes */
} HvFoundResource;

/**
 * Which fonts HvFonFind looks for: one of these, or a FONT_TYPE_... for that type alone. The PCL
 * types 13 and 15 are those of older libraries, which no file has here.
 */
enum {
  FONT_KIND_PCL = 10,          /**< 8, 9, 11, 13, 15, 17, 18, 20 */
  FONT_KIND_PCL_CONTOUR = 12,  /**< 11, 17 */
  FONT_KIND_PCL_PLAIN = 14,    /**< 9, 13, 17 */
  FONT_KIND_PCL_STANDARD = 16, /**< those of FONT_KIND_PCL but 11 */
  FONT_KIND_ANY = 26,          /**< whatever HvFonQueryInfo accepts */
  FONT_KIND_PCL_WINDOWS = 27   /**< those of FONT_KIND_PCL_STANDARD, PFM (without an SFS file beside
                                  it, and not of a PostScript printer) and PCM */
};

/** Which classes of fonts HvFonFind lists: a FONT_CLASS_... up to 4, or all of them. */
enum { FONT_CLASSES_ALL = 6 };

/**
 * Called by HvFonFind2 with info NULL before each file, and with the description of each font
 * before it is listed; it is gone after the call. percent tells how much of the files has been gone
 * through.
 */
typedef void(HVAPI_CALL* HvFontProgress)(const HvFontInfo* info, uint32_t percent);

/**
 * Searches a directory for fonts and font metrics and describes each with HvFonQueryInfo. Of fonts
 * of one name the first is listed. Names that begin with a dot, and paths of 260 characters and
 * more, are passed over.
 *
 * A scalable PCL font gets its metrics as companion 1 and 2: the file of the same directory named
 * by its first three characters and "0000S.TFM". Without it, FONT_COMPANIONS_METRICS leaves the
 * font out and FONT_COMPANIONS_WINDOWS needs its PFM, as companion 2. For the kinds 10, 12, 14, 16,
 * 17, 18, 20, 26 and 27 the fonts that the index GLUE.TXT of the directory names come first, with
 * the symbol set, memory and metrics file that it gives.
 *
 * @param directory      at most 260 characters; "" is the current one
 * @param count          in: the most entries wanted, 0 for 32767; out: the number of entries
 * @param fontKind       1 to 28, FONT_KIND_... or FONT_TYPE_...
 * @param classFilter    1 to 6: FONT_CLASS_...; FONT_CLASSES_ALL and 5 are all
 * @param companionMode  FONT_COMPANIONS_...
 * @param recurse        other than 0 to search subdirectories too
 * @return the entry found last, or NULL when there is none or an argument is bad. When memory runs
 *   out, the entries found so far. Released with HvFonFindFree.
 */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvFonFind(const char* directory, uint16_t* count,
                                                   uint32_t fontKind, uint32_t classFilter,
                                                   uint32_t companionMode, uint32_t recurse);

/** Searches as HvFonFind does; the files are counted first, and progress (or NULL) is called. */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvFonFind2(const char* directory, uint16_t* count,
                                                    uint32_t fontKind, uint32_t classFilter,
                                                    uint32_t companionMode, uint32_t recurse,
                                                    HvFontProgress progress);

/**
 * Searches a directory for files that HvMacValidate takes for macros, PostScript overlays included.
 * @param directory,count,recurse  as for HvFonFind
 * @param language                 1 to 6, the emulation of HvJobInfo
 * @param jobParameter             goes into fontQueryArg of the job that is validated with
 * @return the entry found last, or NULL: none, a bad argument, no memory.
 */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvMacFind(const char* directory, uint16_t* count,
                                                   uint32_t language, uint32_t jobParameter,
                                                   uint32_t recurse);

/**
 * Lists the files of a directory but for programs and system files (bat, cmd, com, dll, drv, exe,
 * hlp, ini, sys).
 * @param directory,count,recurse  as for HvFonFind
 * @param reserved                 not read
 * @return as of HvMacFind.
 */
HVAPI_EXPORT HvFoundResource* HVAPI_CALL HvDemFind(const char* directory, uint16_t* count,
                                                   uint32_t reserved, uint32_t recurse);

/** Releases the entries from list on, with their details. NULL is allowed. */
HVAPI_EXPORT void HVAPI_CALL HvFonFindFree(HvFoundResource* list);
