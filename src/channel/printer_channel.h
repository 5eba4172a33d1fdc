// The one way by which bytes reach a printer.
//
// A channel is filled by its export (job, source, fileMode, targetDevice), opened, written any number
// of times and closed. Closing is idempotent: framing steps close a channel that failed and the
// export tests it again, but one close reaches the system. A closed channel takes no bytes. A channel
// that is destroyed open gives its destination up: an unfinished spooler document leaves nothing.
//
//   function               result
//   ChannelOpen            HV_OK, HV_CANNOT_OPEN, HV_NO_MEMORY, HV_CONNECTION_FAILED
//   ChannelWrite           bytes that reached the destination; a shortfall sets `status`
//   ChannelClose           HV_OK, or HV_CANNOT_CLOSE for a file
//   ChannelCloseIfFailed   true after closing a channel whose `status` is not 0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "api/hvapi.h"
#include "channel/nbx_connection.h"
#include "platform/spooler.h"
#include "platform/stream.h"
#include "support/file_modes.h"

namespace hv {

// Storage devices of a printer by STORAGE_DEVICE_... number.
constexpr const char* TargetDeviceTable[] = {"", "ram", "flash1", "flash2", "disk1", "disk2", ""};

// The document name of a job without one.
constexpr const char* DefaultJobName = "Pallado Job";

struct PrinterChannel {
  const HvJobInfo* job = nullptr;  // borrowed
  // The file that the job is made of, or NULL. A destination that is this very file is not opened:
  // it would be emptied first, or grow without end.
  const char* source = nullptr;
  uint32_t fileMode = 0;  // index into FileModeTable, for a destination that is a file
  // Where bytes go when the destination is a file. A caller may set this to a stream of its own
  // instead of opening the channel (in a job without library address), and closes that itself.
  platform::Stream* stream = nullptr;
  uint32_t targetDevice = 0;  // index into TargetDeviceTable
  // 0 while all writes succeeded; HV_WRITE_FAILED after a failed write to a file,
  // HV_PRINTER_REFUSED after one to a printer. Nothing sets it back.
  uint32_t status = 0;
  std::unique_ptr<platform::SpoolPrinter> spoolerHandle;

  // What ChannelOpen opened besides.
  std::unique_ptr<NbxConnection> library;
  std::unique_ptr<platform::Stream> openedStream;
};

uint32_t ChannelOpen(const char* destination, PrinterChannel* channel);
uint32_t ChannelWrite(const void* bytes, uint32_t length, PrinterChannel* channel);
uint32_t ChannelClose(PrinterChannel* channel);
bool ChannelCloseIfFailed(PrinterChannel* channel);

// A text without its ending NUL.
inline uint32_t ChannelWriteText(std::string_view text, PrinterChannel* channel) {
  return ChannelWrite(text.data(), static_cast<uint32_t>(text.size()), channel);
}

}  // namespace hv
