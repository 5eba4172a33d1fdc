// PCL XL macros: user streams, made of a one-page job by a conversion that works on files in the
// current directory (see pclxl/work_files.h).
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "channel/printer_channel.h"
#include "platform/stream.h"

namespace hv {

// Converts the source, a PCL XL job with or without UEL and PJL lines around it, and sends the
// result, which defines the stream and with `execute` runs it once on a page. HV_OK,
// HV_CANNOT_OPEN (a work file), HV_READ_FAILED, HV_WRITE_FAILED (a work file), HV_BAD_PCLXL (no
// job that can be converted), or the channel's status.
uint32_t SendPclXlMacro(platform::Stream* source, PrinterChannel* channel,
                        const std::string& streamName, bool execute);

// Whether the source already defines a stream, whose name info receives; with MACRO_FLAG_FILTER
// whether it can be converted. Results are those of HvMacValidate.
uint32_t ValidatePclXlMacro(platform::Stream* source, const HvJobInfo& job, HvMacroInfo* info);

// Whether a path leads to a work file of the conversion, which would be emptied.
bool IsPclXlWorkFile(const char* path);

}  // namespace hv
