/**
 * @file
 * Support addresses.
 */
#pragma once

/** Topics of support addresses. */
enum {
  WEB_TOPIC_DRIVERS = 1,
  WEB_TOPIC_FIRMWARE = 2,
  WEB_TOPIC_HOMEPAGE = 3,
  WEB_TOPIC_FLEETDESK = 4, /**< the device-management software */
  WEB_TOPIC_REGISTRATION = 5,
  WEB_TOPIC_SUPPLIES = 6,
  WEB_TOPIC_TECHSUPPORT = 7,
  WEB_TOPIC_PUBLICATIONS = 8
};

/** The model number that leaves the printer out of an address. */
enum { WEB_NO_MODEL = -1 };

/**
 * Builds the address base/area/language/printer of a topic.
 * @param model        model number, or WEB_NO_MODEL
 * @param topic        WEB_TOPIC_...
 * @param language     0 to 22
 * @param buffer,size  receive the address and its NUL; the empty text on failure
 * @param ini          NULL, or an open file that redirects parts: section AREA_PREFIX the base and
 *                     AREA the area, both by the topic's word in upper case, LANGUAGE the language
 *                     and PRINTER the printer, both by their number. A part made empty is left out.
 * @return HV_OK, HV_BAD_ARGUMENT, HV_NO_MEMORY, HV_BUFFER_TOO_SMALL, HV_UNKNOWN_MODEL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvWebGetURL(int32_t model, uint32_t topic, uint32_t language,
                                             char* buffer, uint32_t size, HvIniHandle* ini);

/**
 * Builds the address of a topic for the site's dispatch script, which is also told the user's
 * country and the operating system.
 * @param printerA,printerB  the two numbers of the printer, printed with three digits or more
 * @param topic              WEB_TOPIC_...
 * @param languageId         Windows language identifier, 16 bits
 * @param buffer,size        receive the address and its NUL and must have room for one byte more;
 *                           the empty text on failure, written also when size is 0
 * @param reserved           not read
 * @return HV_OK, HV_BAD_ARGUMENT (also for size 0), HV_NO_MEMORY, HV_BUFFER_TOO_SMALL.
 */
HVAPI_EXPORT uint32_t HVAPI_CALL HvWebGetCGIURL(uint32_t printerA, uint32_t printerB,
                                                uint32_t topic, uint32_t languageId, char* buffer,
                                                uint32_t size, uint32_t reserved);
