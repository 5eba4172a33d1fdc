// Framing of jobs: PJL headers and trailers, the ESC [ K sequences of printers without PJL, and the
// commands that direct downloads to a storage device.
//
// The pieces write to an open channel and report nothing: the caller tests the channel with
// ChannelCloseIfFailed after each. What begins, ends or sends a whole job gives a result code.
// Public source of the PJL commands: the PJL Technical Reference Manual; the commands with a leading
// Q and the ESC [ K sequences are the printers' own.
#pragma once

#include <cstdint>
#include <string_view>

#include "channel/printer_channel.h"

namespace hv {

// Universal Exit Language.
constexpr std::string_view Uel = "\x1B%-12345X";

// Ends a job of a printer without PJL.
constexpr std::string_view EscKJobEnd{"\x1B[K\x01\x00\x06", 6};

// UEL, panel message, language switch and, when asked for, the number of copies.
void PjlBeginJob(PrinterChannel* channel, bool withCopies);

// UEL, empty panel message, reset when asked for, UEL.
void PjlEndJob(PrinterChannel* channel, bool withReset);

// A storage command, STORAGE_...; any other operation sends only the UEL of a PJL job.
void PjlStorageCommand(uint32_t operation, PrinterChannel* channel);

// Language and copies for a printer without PJL.
void SendPersonalitySelect(PrinterChannel* channel);

// The begin of a job with a payload: opens the channel, whose job and fileMode are set, and sends
// the framing. HV_OK, or the code to return, with the channel closed.
uint32_t BeginFramedJob(const char* destination, PrinterChannel* channel);

// The end of such a job, and close. HV_OK, or the channel's status.
uint32_t EndFramedJob(PrinterChannel* channel);

// The same for a download, which is directed to the channel's targetDevice when that is not RAM.
uint32_t BeginDownload(const char* destination, PrinterChannel* channel);

// Back to RAM, and the end of the job.
uint32_t EndDownload(PrinterChannel* channel);

// A whole job of one storage command; device is a STORAGE_DEVICE_... Returns a result code.
uint32_t SendStorageJob(uint32_t operation, const char* destination, const HvJobInfo& job,
                        uint32_t device);

}  // namespace hv
