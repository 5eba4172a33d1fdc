/**
 * @file
 * Demonstration files.
 */
#pragma once

/** Ways to store a demonstration file: values of HvDemoInfo.method. */
enum {
  DEMO_METHOD_POSTSCRIPT = 1,    /**< a PostScript program that writes the file to the device */
  DEMO_METHOD_PJL_FILE = 2,      /**< the PJL file-system commands */
  DEMO_METHOD_ESC_D = 3,         /**< behind an ESC [ D header */
  DEMO_METHOD_PJL_DEMO_FILE = 4, /**< the PJL commands for demonstration files */
  DEMO_METHOD_NOTHING = 5        /**< only the framing of the job is sent */
};

/** The bit of HvDemoInfo.flags that the ESC [ D header carries; the others are not read. */
enum { DEMO_FLAG_ESC_D = 0x01 };

/** How a demonstration file is to be stored. 37 bytes. */
typedef struct HvDemoInfo {
  uint32_t flags;     /**< 0 DEMO_FLAG_ESC_D */
  int32_t method;     /**< 4 DEMO_METHOD_... */
  char name[24];      /**< 8 to store the file under; empty: the file name of the source */
  uint8_t headerByte; /**< 32 a byte of the ESC [ D header */
  uint32_t target;    /**< 33 STORAGE_DEVICE_..., not RAM */
} HvDemoInfo;

/**
 * Stores a print file in the printer, which then prints it from its own panel.
 * @param source       the print file; its bytes are not looked at
 * @param destination  a file, which is replaced, or a printer queue
 * @param job          flags for the framing, identifier (its low byte goes into the ESC [ D
 *                     header), printerClass, jobName, personality; emulation is set to that of the
 *                     method: PostScript for DEMO_METHOD_POSTSCRIPT, PCL for the others, unchanged
 *                     for DEMO_METHOD_NOTHING
 * @param info         see there. PostScript and PJL store the file as name + ".demo"; the ESC [ D
 *                     header takes 12 characters of the name. A name taken from source is in upper
 *                     case.
 * @return HV_OK, HV_BAD_ARGUMENT (also for a source that is the destination, and for the printer's
 *   memory as target), HV_NOT_FOUND, HV_CANNOT_OPEN (source or destination), HV_READ_FAILED,
 *   HV_WRITE_FAILED, HV_NO_MEMORY, HV_PRINTER_REFUSED, HV_CONNECTION_FAILED, HV_UNUSABLE_FILE (the
 *   extension of a program or system file).
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDemDownload(const char* source, const char* destination,
                                               HvJobInfo* job, const HvDemoInfo* info);
