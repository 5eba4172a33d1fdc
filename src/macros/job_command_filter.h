// Takes the commands of a job out of a print file, so that a macro can be made of it: the switch of
// the language, PJL lines, ESC [ K sequences, and what the language itself has of them.
//
//   PostScript  the byte 0x04; a text can be put behind each "%!PS" line
//   PCL         printer commands chosen by a mask of FILTER_DROP_... bits, and always font and
//               macro deletions, page lengths and alphanumeric identifiers with data
//   other       nothing; the bytes are copied
//
// Memory is bounded whatever the source is. Public source of the PCL commands: the PCL 5 Printer
// Language Technical Reference Manual.
#pragma once

#include <cstdint>
#include <string_view>

#include "channel/printer_channel.h"
#include "macros/macro_stream.h"
#include "platform/stream.h"

namespace hv {

// Copies the source, from its start, to the channel. The language is that of the channel's job.
// A sequence that the source cuts off is written as far as it goes, a command to be dropped is
// dropped as far as it goes. HV_OK, HV_READ_FAILED, or the channel's status.
uint32_t FilterJobCommands(platform::Stream* source, PrinterChannel* channel, uint32_t filterMask,
                           std::string_view textAfterPsHeader);

// The filter of each language, from where the stream stands to its end.
void FilterPostScript(MacroStream* stream, std::string_view textAfterPsHeader);
void FilterPcl(MacroStream* stream, uint32_t filterMask);

// Take a command that comes next, the first bytes of which have been read, where there is one.
bool DropUel(MacroStream* stream);           // behind ESC
bool DropEscKSequence(MacroStream* stream);  // behind ESC
bool DropPjlLine(MacroStream* stream);       // behind @

}  // namespace hv
