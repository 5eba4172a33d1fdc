// A channel that leads into a file which its owner has opened, in place of a printer.
#pragma once

#include "channel/printer_channel.h"
#include "platform/stream.h"

namespace hv {

class FileChannel {
 public:
  FileChannel(platform::Stream* file, int32_t emulation) {
    job_.emulation = emulation;
    channel_.job = &job_;
    channel_.fileMode = FileModeReplace;
    channel_.stream = file;
  }
  FileChannel(const FileChannel&) = delete;
  FileChannel& operator=(const FileChannel&) = delete;

  PrinterChannel* Get() { return &channel_; }

 private:
  HvJobInfo job_ = {};
  PrinterChannel channel_;
};

}  // namespace hv
