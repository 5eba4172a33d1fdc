#include "channel/printer_channel.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "platform/files.h"

namespace hv {
namespace {

const char* DocumentName(const HvJobInfo& job) {
  return job.jobName == nullptr ? DefaultJobName : job.jobName;
}

uint32_t OpenLibrary(PrinterChannel* channel) {
  std::unique_ptr<NbxConnection> library = NbxConnection::Open(*channel->job);
  if (library == nullptr || !library->StartDocument(DocumentName(*channel->job))) {
    return HV_CONNECTION_FAILED;
  }
  channel->library = std::move(library);
  return HV_OK;
}

bool OpenSpooler(const char* destination, PrinterChannel* channel) {
  std::unique_ptr<platform::SpoolPrinter> printer = platform::OpenSpoolPrinter(destination);
  if (printer == nullptr || !printer->StartDocument(DocumentName(*channel->job))) return false;
  channel->spoolerHandle = std::move(printer);
  return true;
}

bool OpenFile(const char* destination, PrinterChannel* channel) {
  if (channel->fileMode >= std::size(FileModeTable)) return false;
  if (channel->source != nullptr && platform::NameSameFile(channel->source, destination)) {
    return false;
  }
  channel->openedStream = platform::OpenStream(destination, FileModeTable[channel->fileMode]);
  channel->stream = channel->openedStream.get();
  return channel->stream != nullptr;
}

// The one report that the library prints: what the spooler did not take.
void ReportShortWrite(const platform::SpoolPrinter& printer, const void* bytes, uint32_t length,
                      uint32_t written) {
  constexpr uint32_t LongestText = std::numeric_limits<int>::max();
  std::printf("\nWritePrinter FAILED! %d %.*s %d %d \n", printer.HandleValue(),
              static_cast<int>(std::min(length, LongestText)), static_cast<const char*>(bytes),
              static_cast<int>(length), static_cast<int>(written));
  std::printf("GetLastError: %d\n", static_cast<int>(printer.LastError()));
  std::fflush(stdout);
}

uint32_t WriteToLibrary(const void* bytes, uint32_t length, PrinterChannel* channel) {
  if (channel->library == nullptr) return 0;
  uint32_t taken = 0;
  if (!channel->library->Write(bytes, length, &taken)) channel->status = HV_PRINTER_REFUSED;
  return taken;
}

uint32_t WriteToFile(const void* bytes, uint32_t length, PrinterChannel* channel) {
  const uint32_t written = static_cast<uint32_t>(channel->stream->Write(bytes, length));
  const bool flushed = channel->stream->Flush();
  if (written < length || !flushed) channel->status = HV_WRITE_FAILED;
  return written;
}

uint32_t WriteToSpooler(const void* bytes, uint32_t length, PrinterChannel* channel) {
  if (channel->spoolerHandle == nullptr) return 0;
  uint32_t written = 0;
  channel->spoolerHandle->Write(bytes, length, &written);
  if (written != length) {
    ReportShortWrite(*channel->spoolerHandle, bytes, length, written);
    channel->spoolerHandle.reset();
    channel->status = HV_PRINTER_REFUSED;
  }
  return written;
}

}  // namespace

uint32_t ChannelOpen(const char* destination, PrinterChannel* channel) {
  channel->status = 0;
  channel->stream = nullptr;
  if (channel->job->nbxAddress2 != 0) return OpenLibrary(channel);
  if (OpenSpooler(destination, channel) || OpenFile(destination, channel)) return HV_OK;
  return HV_CANNOT_OPEN;
}

uint32_t ChannelWrite(const void* bytes, uint32_t length, PrinterChannel* channel) {
  if (channel->job->nbxAddress2 != 0) return WriteToLibrary(bytes, length, channel);
  if (channel->stream != nullptr) return WriteToFile(bytes, length, channel);
  return WriteToSpooler(bytes, length, channel);
}

uint32_t ChannelClose(PrinterChannel* channel) {
  channel->library.reset();
  if (channel->spoolerHandle != nullptr) {
    channel->spoolerHandle->EndDocument();
    channel->spoolerHandle.reset();
  }
  channel->stream = nullptr;
  const std::unique_ptr<platform::Stream> file = std::move(channel->openedStream);
  return file == nullptr || file->Close() ? HV_OK : HV_CANNOT_CLOSE;
}

bool ChannelCloseIfFailed(PrinterChannel* channel) {
  if (channel->status == 0) return false;
  ChannelClose(channel);
  return true;
}

}  // namespace hv
