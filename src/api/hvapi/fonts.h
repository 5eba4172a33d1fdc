/**
 * @file
 * Fonts.
 */
#pragma once

/** Bits of HvFontInfo.flags. */
enum {
  FONT_FLAG_BINARY = 0x01,            /**< every kind but PFA and AFM */
  FONT_FLAG_STANDARD_ENCODING = 0x02, /**< every kind; not a PFB with an encoding of its own */
  FONT_FLAG_PROPORTIONAL = 0x04,      /**< PCL fonts: proportional spacing */
  FONT_FLAG_08 = 0x08,                /**< DLF, FMF, PFM, PSM, PBM, PFA, PFB, AFM, PCL scalable */
  FONT_FLAG_20 = 0x20                 /**< FMF, PFM, PSM, PBM, PFA, PFB, PCL scalable */
};

/** Values of HvFontInfo.fontClass. */
enum {
  FONT_CLASS_METRICS = 2,
  FONT_CLASS_DOWNLOADABLE = 3,
  FONT_CLASS_AFM = 4,
  FONT_CLASS_TRUETYPE = 5
};

/** Values of HvFontInfo.fontType. */
enum {
  FONT_TYPE_TYPE1 = 2,          /**< PFA and PFB; with FONT_CLASS_AFM an AFM */
  FONT_TYPE_DLF = 6,            /**< font of a PPDS printer */
  FONT_TYPE_PCL_RESOLUTION = 8, /**< PCL bitmap with a resolution of its own, format 20 */
  FONT_TYPE_PCL_BITMAP = 9,     /**< PCL bitmap, format 0 */
  FONT_TYPE_PCL_EXTENDED = 11,  /**< PCL bitmap, formats 5, 9 and 12 */
  FONT_TYPE_PCL_BOUND = 17,     /**< PCL scalable, bound, format 10 */
  FONT_TYPE_PCL_UNBOUND = 18,   /**< PCL scalable, unbound, format 11 */
  FONT_TYPE_PCL_TRUETYPE = 20,  /**< PCL scalable, TrueType, format 15 */
  FONT_TYPE_TRUETYPE = 21,      /**< TTF; with FONT_CLASS_METRICS an FOT */
  FONT_TYPE_TFM = 22,           /**< tagged font metrics */
  FONT_TYPE_FMF = 23,           /**< metrics of a DLF font */
  FONT_TYPE_PFM = 25,           /**< PFM, PSM and PBM */
  FONT_TYPE_PCM = 28            /**< cartridge metrics */
};

/** Which companion files HvFonQueryInfo looks for; any other value asks for none. */
enum {
  FONT_COMPANIONS_NONE = 0,
  FONT_COMPANIONS_METRICS = 2, /**< needs the AFM of a Type 1 font, the FMF of a DLF font */
  FONT_COMPANIONS_WINDOWS = 4, /**< needs the PFM of a Type 1 font, or else its INF and AFM; the INF
                                  of an AFM */
  FONT_COMPANIONS_OPTIONAL = 5 /**< as 4, but what is missing is no failure */
};

/** A face of a cartridge. name and the face itself are released with HvMemFree. */
typedef struct HvFontFace {
  char* name;              /**< at most 90 characters; " (It)" and " (Bd)" tell the style */
  struct HvFontFace* next; /**< NULL at the end */
} HvFontFace;

/** What a PCM file holds. The title, each face and the cartridge are released with HvMemFree. */
typedef struct HvFontCartridge {
  char* title;       /**< at most 79 characters */
  HvFontFace* faces; /**< in the order of the file, or NULL */
} HvFontCartridge;

/** A font or font-metrics file. 714 bytes on a 32-bit target. */
typedef struct HvFontInfo {
  uint32_t flags;           /**< 0 FONT_FLAG_... */
  uint32_t fontClass;       /**< 4 FONT_CLASS_... */
  int32_t fontType;         /**< 8 FONT_TYPE_... */
  uint16_t xResolution;     /**< 12 dots per inch, FONT_TYPE_PCL_RESOLUTION only */
  uint16_t yResolution;     /**< 14 dots per inch, FONT_TYPE_PCL_RESOLUTION only */
  uint32_t fileSize;        /**< 16 in bytes */
  uint32_t memoryNeeded;    /**< 20 estimate of the printer memory taken, in bytes */
  char name[80];            /**< 24 display name */
  char description[80];     /**< 104 PCL fonts: vendor, typeface and font number; AFM: menu name */
  char symbolSet[6];        /**< 184 PCL symbol set, such as "8U"; empty for unbound fonts */
  char companionPath1[260]; /**< 190 metrics of a font, font of metrics */
  char companionPath2[260]; /**< 450 Windows metrics of a Type 1 font */
  HvFontCartridge* cartridge; /**< 710 of a PCM file, else NULL; the caller releases it */
} HvFontInfo;

/**
 * Tells what a font or font-metrics file is. The kind follows from the extension (AFM, PFA, PFB,
 * DLF, FMF, PFM, PSM, PBM, PCM, TFM, FOT, TTF; a file with any other is a PCL soft font) and is
 * confirmed by reading the file, except for TFM, FOT and TTF, which are described by name alone.
 * @param fontPath          the file
 * @param info              cleared first and filled as far as the file allows, also on failure
 * @param companionMode     FONT_COMPANIONS_...
 * @param allowMetricFiles  0 to refuse AFM, FMF, PFM, PSM, PBM, PCM and TFM as unusable
 * @return HV_OK, HV_BAD_ARGUMENT (also for a path without extension), HV_NOT_FOUND, HV_CANNOT_OPEN,
 *   HV_NO_MEMORY, HV_UNUSABLE_FILE, HV_NOT_SUPPORTED (a companion is missing; all else is filled),
 *   HV_LIMIT_REACHED (an AFM or INF of more than 65,534 bytes).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFonQueryInfo(const char* fontPath, HvFontInfo* info,
                                                uint32_t companionMode, uint32_t allowMetricFiles);

/**
 * Downloads a font to a printer, where it stays as a permanent soft font.
 *
 * With emulation 6 a PCL font is sent under a name made up of its name, size, style and symbol set.
 *
 * @param fontPath      a PCL soft font, PFA, PFB or DLF file
 * @param destination   a file destination is appended to
 * @param job           flags, emulation (1 to 6), identifier (the font number), jobName,
 *                      personality, printerClass and library address; fontQueryArg is the companion
 *                      mode (a missing companion does not stop the download); a Type 1 font for a
 *                      PPDS printer also sends fontValue18 - 256 and fontValue1A
 * @param targetDevice  STORAGE_DEVICE_...
 * @return those of HvFonQueryInfo without metric files, HV_BAD_ARGUMENT, HV_NOT_FOUND (also a font
 *   that cannot be opened, for some kinds), HV_CANNOT_OPEN (font or destination), HV_READ_FAILED,
 *   HV_WRITE_FAILED (file destination), HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE
 *   (a TrueType font: an empty job is sent).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvFonDownload(const char* fontPath, const char* destination,
                                               const HvJobInfo* job, uint32_t targetDevice);

/** Conversions of HvFonConvert, with the output that they have when none is named. */
enum {
  FONT_CONVERT_AFM_TO_PFM = 1,            /**< AFM and INF to PFM for the PostScript driver */
  FONT_CONVERT_AFM_TO_PFM_PSM = 2,        /**< the same, and a PSM for "IBM LaserPrinter" */
  FONT_CONVERT_PFM_TO_AFM = 3,            /**< source with extension AFM */
  FONT_CONVERT_DLF_TO_PBM = 4,            /**< DLF font; source with extension PBM */
  FONT_CONVERT_PCL_TO_PFM = 5,            /**< PCL soft font; source with extension PFM */
  FONT_CONVERT_TFM_TO_PFM = 6,            /**< tagged font metrics; source with extension PFM */
  FONT_CONVERT_TFM_TO_PFM_BY_HEADER = 16, /**< 6, selected as the soft font that is the source */
  FONT_CONVERT_PCL_TO_PFM_DESCRIBED = 17  /**< 5, with a description of the font */
};

/**
 * Turns a font or font-metrics file into the metrics file of a Windows driver, or a PFM into an
 * AFM.
 *
 * An extension replaces what stands behind the last dot of the file name; a name without a dot gets
 * the three letters appended. An output that is there is replaced. Types 5 and 17 take the layout
 * of the characters to be that of the soft font that HvFonQueryInfo described last, so that it
 * should be called for the source before.
 *
 * @param source        the file to convert. The INF beside an AFM must be there: it has the AFM's
 *                      name with the extension INF.
 * @param destination   the file to write; NULL or the empty text for the name given with each type.
 *                      Type 1: without any "." it is a directory, in which the output has the
 *                      source's name in upper case with the extension PFM; when it is not given,
 *                      the output is the source with that extension. Type 2: must be given; the
 *                      outputs are its name with the extensions PFM and PSM.
 * @param fontInfo      types 6 and 16: what HvFonQueryInfo said of the font; its companion path
 *                      names the tagged font metrics. Not read by others.
 * @param pathSelector  types 6 and 16: FONT_COMPANIONS_METRICS for companionPath1,
 *                      FONT_COMPANIONS_WINDOWS for companionPath2
 * @param type          FONT_CONVERT_...
 * @return HV_OK (types 1 and 2: also when the output cannot be written), HV_BAD_ARGUMENT (also an
 *   unknown type, a missing destination or record, another pathSelector, an output name that is too
 *   long), HV_NOT_FOUND (source or INF), HV_CANNOT_OPEN (an input, or an output of types 3 to 17
 *   that cannot be created), HV_WRITE_FAILED (type 3), HV_NO_MEMORY, HV_UNUSABLE_FILE (the source
 *   is not of the kind that the type takes; an input that cannot be read to its end),
 *   HV_SYSTEM_FAILURE (types 4 to 17: not all bytes could be written), HV_LIMIT_REACHED (an AFM or
 *   INF of more than 65,534 bytes). After HV_WRITE_FAILED and HV_SYSTEM_FAILURE the output is left
 *   as far as it was written; other failures touch no output.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvFonConvert(const char* source, const char* destination,
                                             const HvFontInfo* fontInfo, uint32_t pathSelector,
                                             int32_t type);
