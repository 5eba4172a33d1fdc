/**
 * @file
 * Operator panel files.
 *
 * What a panel for one printer model shows: INI files named by a configuration number, opened by
 * registering the number. Each number has one handle, which counts its registrations; at most five
 * numbers are registered at a time in one process. The handle reads as one of HvIniOpen2 does.
 *
 * Control identifiers are signed 16-bit numbers. Numbers outside 0 to 32767 are written into names
 * and keys by their sign-extended value.
 */
#pragma once

/** Negative results of this family. */
enum {
  OPC_TOO_SMALL = -1, /**< the first 16 bits of the buffer, if it has them, are the bytes needed */
  OPC_MISSING = -2,   /**< no such list or page; also no memory to read a page */
  OPC_NO_MEMORY = -3  /**< out of memory */
};

/** The default of a control of a page, 6 bytes. */
typedef struct HvPageDefault {
  uint16_t controlId; /**< 0 */
  uint32_t value;     /**< 2 */
} HvPageDefault;

/**
 * Opens the file of a configuration number, or takes part in the handle that the number has.
 * @param configNumber  16 bits, not 0
 * @param directory     the directory of the file, or NULL for the current one
 * @return the handle, or NULL: no such file, a bad argument, or five other numbers are held. A
 *   number whose file could not be opened is held too, until its file was registered and
 *   unregistered.
 */
HVAPI_EXPORT HvIniHandle* HVAPI_CALL HvOpcRegisterCfg(uint32_t configNumber, const char* directory);

/**
 * Ends one registration of a handle; the last one closes it.
 * @return 1, also as long as registrations remain, or 0 when the handle is not registered or its
 *   changes could not be written.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvOpcUnregisterCfg(HvIniHandle* handle);

/**
 * Tells the name of the file of a configuration number: "opc", at least three digits, ".cfg".
 * @param configNumber  16 bits
 * @param buffer        at least 13 bytes, 18 for numbers above 32767
 * @return 1, or 0 when buffer is NULL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvOpcGetFileName(uint32_t configNumber, char* buffer);

/**
 * Gets the limits of a spin control. minimum and maximum become 0 where nothing is known, step is
 * left as it is then; none may be NULL. A minimum of -1 has no maximum, which stays 0.
 */
HVAPI_EXPORT void HVAPI_CALL HvOpcGetSpinControlLimits(HvIniHandle* handle, int32_t controlId,
                                                       int32_t* minimum, int32_t* maximum,
                                                       int32_t* step);

/**
 * Gets the values of a combo box.
 * @param handle      a registered file
 * @param controlId   16 bits
 * @param subIndex    which list of the control, 0 for the one without an index
 * @param values      receives the values, or NULL to ask for the bytes needed
 * @param valuesSize  in bytes
 * @return the number of values, or with NULL the bytes needed; OPC_TOO_SMALL (what fits is stored
 *   all the same), OPC_MISSING, OPC_NO_MEMORY.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetTextListing(HvIniHandle* handle, int32_t controlId,
                                                    uint32_t subIndex, uint16_t* values,
                                                    uint32_t valuesSize);

/**
 * Tells the most characters of an edit field as the file has them, -32768 to 32767, and 0 where
 * nothing is known.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetMaxEditLength(HvIniHandle* handle, int32_t controlId);

/**
 * Gets the defaults of the controls of a page.
 * @param handle       a registered file
 * @param pageNumber   the page
 * @param entries      receives the defaults, or NULL to ask for the bytes needed; an entry for
 *                     which the file has no value is left as it is
 * @param entriesSize  in bytes
 * @return the number of controls that the file gives, or with NULL the bytes needed (both at most
 *   32767); OPC_TOO_SMALL, OPC_MISSING.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetPageDefaults(HvIniHandle* handle, uint32_t pageNumber,
                                                     HvPageDefault* entries, uint32_t entriesSize);

/**
 * Gets the printer variables of a page, 2 bytes each, high byte first.
 * @param handle         a registered file
 * @param pageNumber     the page
 * @param variables      receives the variables, or NULL to ask for the bytes needed
 * @param variablesSize  in bytes
 * @return the number stored, or with NULL the bytes needed (both at most 32767); OPC_TOO_SMALL,
 *   OPC_MISSING.
 */
HVAPI_EXPORT int32_t HVAPI_CALL HvOpcGetPageOmVars(HvIniHandle* handle, uint32_t pageNumber,
                                                   uint8_t* variables, uint32_t variablesSize);
