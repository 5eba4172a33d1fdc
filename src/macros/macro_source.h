// The print file that a macro is made of, and the parts of a macro that all ways of sending one
// share.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "api/hvapi.h"
#include "channel/printer_channel.h"
#include "platform/stream.h"

namespace hv {

struct MacroSource {
  std::unique_ptr<platform::Stream> file;
  uint32_t size = 0;  // in bytes
  bool isFiltered = false;
  uint32_t filterMask = 0;  // FILTER_DROP_...
};

// Opens the source of a macro that is about to be written to the destination. HV_OK, HV_NOT_FOUND,
// HV_UNUSABLE_FILE (a program or system file), HV_CANNOT_OPEN (also when converting would
// need the source or the destination for itself), HV_READ_FAILED.
uint32_t OpenMacroSource(const char* path, const char* destination, const HvJobInfo& job,
                         HvMacroInfo* info, MacroSource* source);

// Sends what begins a PCL or PPDS macro; other languages send nothing. HV_OK, HV_LIMIT_REACHED (a
// source too large for PPDS), or the channel's status.
uint32_t SendMacroBegin(const MacroSource& source, const HvMacroInfo& info,
                        PrinterChannel* channel);

// What a body is sent with besides.
struct MacroBody {
  std::string textAfterPsHeader;
  std::string streamName;    // PCL XL
  bool executeOnce = false;  // PCL XL
};

// Sends the source, filtered or converted where that is asked for, else as it is.
uint32_t SendMacroBody(const MacroSource& source, const MacroBody& body, PrinterChannel* channel);

// Sends what ends a PCL macro; other languages send nothing. The channel's status.
uint32_t SendMacroEnd(PrinterChannel* channel);

// The name in the record, at most 23 characters.
std::string MacroName(const HvMacroInfo& info);

}  // namespace hv
