// Sending whole files and command strings, and the stream sender that nearly every download uses.
// Arguments have been checked by the exports; results are the codes of HvResult.
#pragma once

#include <cstddef>
#include <cstdint>

#include "channel/printer_channel.h"
#include "platform/stream.h"

namespace hv {

enum class SendEncoding : uint8_t {
  Raw = 0,
  Hex = 1,  // each byte as two upper-case hexadecimal digits, without line breaks
};

uint32_t SendFile(const char* file, const char* destination, const HvJobInfo& job, bool append);

// The notation of text is chosen by its first character: "$" literal, else hexadecimal.
uint32_t SendString(const char* text, const char* destination, const HvJobInfo& job, bool append);

// Copies a stream to a channel from where it stands to its end, in chunks of 2048 bytes. HV_OK,
// HV_READ_FAILED, or the channel's status.
uint32_t ChannelSendStream(platform::Stream* stream, PrinterChannel* channel,
                           SendEncoding encoding);

// Turns the literal notation into bytes and ends them with NUL: \n is a line feed, \x and the next
// two characters a byte in hexadecimal (as far as they are digits), \c the character c. dest has
// room for strlen(text) + 1 bytes.
void ExpandEscapes(char* dest, const char* text);

// "0" to "9", "A" to "F" for 0 to 15.
char HexDigitChar(unsigned value);

// Turns each byte into two digits in place; the buffer has room for twice the bytes.
void ExpandToHex(uint8_t* bytes, std::size_t count);

}  // namespace hv
