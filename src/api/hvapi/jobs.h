/**
 * @file
 * Print jobs.
 */
#pragma once

/** Bits of HvJobInfo.flags; the others are not read. */
enum {
  JOB_FLAG_PJL = 0x08,  /**< frame the job with PJL */
  JOB_FLAG_ESC_K = 0x10 /**< the printer takes no PJL: choose language and storage with ESC [ K */
};

/** Printer languages of HvJobInfo.emulation. */
enum {
  JOB_EMULATION_NONE = 0,
  JOB_EMULATION_DEFAULT = 1,
  JOB_EMULATION_PPDS = 2,
  JOB_EMULATION_POSTSCRIPT = 3,
  JOB_EMULATION_GL = 4,
  JOB_EMULATION_PCL = 5,
  JOB_EMULATION_PCLXL = 6
};

/** The printer class whose download commands begin with a lead-in of their own. */
enum { JOB_CLASS_DOWNLOAD_LEAD_IN = 2 };

/** How the printer of a job is to be addressed. 48 bytes on a 32-bit target. */
typedef struct HvJobInfo {
  uint32_t flags;         /**< 0x00 JOB_FLAG_... */
  uint32_t printerClass;  /**< 0x04 2 adds a lead-in to the command that sets the download device */
  int32_t emulation;      /**< 0x08 JOB_EMULATION_..., 0 to 6 */
  uint32_t fontQueryArg;  /**< 0x0C read by the font download only */
  uint8_t reserved10[4];  /**< 0x10 not read */
  uint16_t copies;        /**< 0x14 number of copies, 0 for none requested */
  uint16_t identifier;    /**< 0x16 font or macro identifier */
  uint16_t fontValue18;   /**< 0x18 read by the font download only */
  uint16_t fontValue1A;   /**< 0x1A read by the font download only */
  uint8_t reserved1C[11]; /**< 0x1C not read */
  uint16_t nbxAddress1;   /**< 0x27 first address word of the communication library */
  uint16_t nbxAddress2;   /**< 0x29 second address word; non-zero selects the library */
  const char* jobName;    /**< 0x2B document name and panel text, or NULL */
  uint8_t personality;    /**< 0x2F (32-bit) byte of the ESC [ K language sequence, 0 for default */
} HvJobInfo;

/** Storage devices of a printer. */
enum {
  STORAGE_DEVICE_RAM = 1,
  STORAGE_DEVICE_FLASH1 = 2,
  STORAGE_DEVICE_FLASH2 = 3,
  STORAGE_DEVICE_DISK1 = 4,
  STORAGE_DEVICE_DISK2 = 5
};

/** Storage commands of HvGenResource. */
enum {
  STORAGE_TARGET_RAM = 1,     /**< downloads go to RAM again */
  STORAGE_TARGET_DEVICE = 2,  /**< downloads go to the device named */
  STORAGE_FORMAT = 3,         /**< format the device named: what it holds is lost */
  STORAGE_PRINT_DIRECTORY = 4 /**< print the directory of the printer's storage */
};

/**
 * Sends a file unchanged.
 *
 * With JOB_FLAG_ESC_K the printer is asked for the copies in PCL, where its language is none, PCL or
 * PCL XL; in other languages it makes one. With JOB_FLAG_PJL alone it is asked in PJL, and with
 * neither the file is sent that many times.
 *
 * @param file         path of the file
 * @param destination  name of a printer queue, else path of a file or port
 * @param job          flags, emulation (0 to 6), copies, jobName, personality and library address
 * @param append       non-zero: a file destination is appended to instead of replaced
 * @return HV_OK, HV_BAD_ARGUMENT, HV_NOT_FOUND (no such file), HV_CANNOT_OPEN (file or
 *   destination), HV_READ_FAILED, HV_WRITE_FAILED (file destination), HV_NO_MEMORY,
 *   HV_PRINTER_REFUSED, HV_CONNECTION_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDatSendFile(const char* file, const char* destination,
                                               const HvJobInfo* job, uint32_t append);

/**
 * Sends a short command string, given in one of three notations.
 *
 * The first character of text tells which:
 *
 * @verbatim
 *   %path  the file of that path, exactly as HvDatSendFile
 *   $text  the text, where \n is a line feed, \xHH a byte in hexadecimal and \c the character c; a
 *          zero byte ends it
 *   else   pairs of hexadecimal digits, one byte a pair
 * @endverbatim
 *
 * No copies and no ESC [ K sequences are sent. The other arguments and the results are those of
 * HvDatSendFile; an odd number of digits or another character among them is HV_BAD_ARGUMENT, and
 * nothing is sent.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvDatSendString(const char* text, const char* destination,
                                                 const HvJobInfo* job, uint32_t append);

/**
 * Sends one storage command as a job of its own.
 * @param operation    STORAGE_TARGET_RAM .. STORAGE_PRINT_DIRECTORY
 * @param destination  at most 259 characters here
 * @param job          framing flags, printerClass, emulation, jobName and library address
 * @param device       STORAGE_DEVICE_..., also needed where the operation names no device
 * @return HV_OK, HV_BAD_ARGUMENT, HV_CANNOT_OPEN, HV_WRITE_FAILED, HV_NO_MEMORY,
 *   HV_PRINTER_REFUSED, HV_CONNECTION_FAILED.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvGenResource(uint32_t operation, const char* destination,
                                               const HvJobInfo* job, uint32_t device);

/**
 * Tells whether a buffer could take a list of adapters. Nothing is read or written.
 * @return HV_OK when buffer is not NULL and size (16 bits) is at least 1024, else HV_BAD_ARGUMENT.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvGenQueryAdapters(uint32_t a, uint32_t b, void* buffer,
                                                    uint32_t size);

/** Tells whether a buffer could take a list of queues, as HvGenQueryAdapters does. */
HVAPI_EXPORT uint32_t HVAPI_CALL HvGenQueryQueues(uint32_t a, uint32_t b, void* buffer,
                                                  uint32_t size);

/**
 * Tells the network type of a printer as the communication library reports it.
 * @param printer  passed to the library unchanged
 * @return 2048, 32, 4 or 2, and 0 when it reports none or there is no library.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvNetGetType(uint32_t printer);
