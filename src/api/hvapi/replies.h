/**
 * @file
 * Printer replies.
 *
 * Replies of printers to queries, and alerts that they send, in their self-describing form:
 *
 * @verbatim
 *   bytes 0-1  big-endian length of what follows; a reply is that many bytes and 2 long
 *   bytes 2-3  format word, not read
 *   then       the layout, three sections of text as in "P{ID:1,DT:1}C{NE:2,LD:2}D{LD:1,DA:0}":
 *              the fields and their widths in bytes of every item, of a container, of a data item
 *   then       the items: containers of further items, integers and texts, each with an identifier
 * @endverbatim
 *
 * The functions read no byte beyond that length. Items that they do not know are passed over. A
 * reply that breaks its own bounds gives what was read up to there: a record in which every count
 * is that of the array beside it, to be released like any other. An integer of 1 byte is signed
 * (0xFF gives 0xFFFFFFFF), one of 2 bytes is not, one of 4 bytes is taken as it is, and one of any
 * other length gives 0.
 */
#pragma once

/** One option. 12 bytes on a 32-bit target. */
typedef struct HvOptionEntry {
  uint32_t value1; /**< 0x00 item 1 */
  uint32_t value5; /**< 0x04 item 5 */
  char* text;      /**< 0x08 item 6, "" when it is empty; NULL when there is none */
} HvOptionEntry;

/** One group of values. 16 bytes on a 32-bit target. */
typedef struct HvOptionGroup {
  char* name;          /**< 0x00 item 1, NULL when it is empty */
  char* description;   /**< 0x04 item 2, NULL when it is empty */
  uint32_t valueCount; /**< 0x08 number of values */
  uint32_t* values;    /**< 0x0C item 3, NULL when valueCount is 0 */
} HvOptionGroup;

/** The options of a printer. 16 bytes on a 32-bit target. */
typedef struct HvOptionInfo {
  uint32_t entryCount;    /**< 0x00 number of entries */
  HvOptionEntry* entries; /**< 0x04 NULL when entryCount is 0 */
  uint32_t groupCount;    /**< 0x08 number of groups */
  HvOptionGroup* groups;  /**< 0x0C NULL when groupCount is 0 */
} HvOptionInfo;

/**
 * Parses an option-information reply.
 * @return a record to be released with HvFreeOptionInfo, both counts 0 when the reply holds no
 *   option information; NULL when reply is NULL or memory ran out.
 */
HVAPI_EXPORT HvOptionInfo* HVAPI_CALL HvParseOptionInfo(const void* reply);

/** Releases a record of HvParseOptionInfo with all that it holds. NULL does nothing. */
HVAPI_EXPORT void HVAPI_CALL HvFreeOptionInfo(HvOptionInfo* info);

/**
 * The job of a job-accounting alert, 173 bytes: items of the groups 1 (j1) and 2 (j2) of its job
 * container. What an alert leaves out is 0 or empty; a text too long is cut.
 */
typedef struct HvJobAccountJob {
  uint32_t j1Item1;  /**< 0x00 */
  uint32_t j1Item2;  /**< 0x04 */
  uint32_t j1Item3;  /**< 0x08 */
  uint32_t j1Item4;  /**< 0x0C */
  uint32_t j1Item5;  /**< 0x10 */
  uint32_t j1Item6;  /**< 0x14 */
  char j1Item7[10];  /**< 0x18 */
  uint32_t j1Item8;  /**< 0x22 */
  uint32_t j1Item9;  /**< 0x26 */
  uint32_t j1Item10; /**< 0x2A */
  char j1Item11[16]; /**< 0x2E */
  char j2Item1[41];  /**< 0x3E */
  char j2Item2[21];  /**< 0x67 */
  char j2Item3[21];  /**< 0x7C */
  uint32_t j2Item4;  /**< 0x91 */
  uint32_t j2Item5;  /**< 0x95 */
  uint32_t j2Item6;  /**< 0x99 */
  uint32_t j2Item7;  /**< 0x9D */
  uint32_t j2Item8;  /**< 0xA1 */
  uint32_t j2Item9;  /**< 0xA5 */
  uint32_t j2Item10; /**< 0xA9 */
} HvJobAccountJob;

/** The device of a job-accounting alert, 74 bytes: groups 1 to 3 of its device container. */
typedef struct HvJobAccountDevice {
  uint32_t d1Item1; /**< 0x00 */
  uint32_t d2Item1; /**< 0x04 */
  uint32_t d2Item2; /**< 0x08 */
  uint32_t d2Item3; /**< 0x0C */
  uint32_t d2Item4; /**< 0x10 */
  uint32_t d2Item5; /**< 0x14 */
  char d2Item6[16]; /**< 0x18 */
  uint32_t d2Item7; /**< 0x28 */
  char d2Item8[10]; /**< 0x2C */
  uint32_t d3Item1; /**< 0x36 */
  uint32_t d3Item2; /**< 0x3A */
  uint32_t d3Item3; /**< 0x3E */
  uint32_t d3Item4; /**< 0x42 */
  uint32_t d3Item5; /**< 0x46 */
} HvJobAccountDevice;

/** A job-accounting alert. 8 bytes on a 32-bit target. */
typedef struct HvJobAccount {
  HvJobAccountJob* jobBlock;       /**< 0x00 NULL when the alert holds none */
  HvJobAccountDevice* deviceBlock; /**< 0x04 NULL when the alert holds none */
} HvJobAccount;

/**
 * Parses a job-accounting alert. When it holds several job or device containers, the last ones
 * count.
 * @return a record to be released with HvFreeJobAccount; NULL when reply is NULL or memory ran out.
 */
HVAPI_EXPORT HvJobAccount* HVAPI_CALL HvParseJobAccountingAlert(const void* reply);

/** Releases a record of HvParseJobAccountingAlert with its blocks. NULL does nothing. */
HVAPI_EXPORT void HVAPI_CALL HvFreeJobAccount(HvJobAccount* record);
