// Sending macros to printers: printed once, stored, or raw.

#include "channel/job_framing.h"
#include "channel/sending.h"
#include "macros/macro_commands.h"
#include "macros/macro_operations.h"
#include "macros/macro_source.h"
#include "macros/print_file.h"

namespace hv {
namespace {

constexpr std::string_view PrintPage = "\xFF\x0C";

struct Download {
  const MacroSource& source;
  const HvMacroInfo& info;
  bool wraps;
  std::string name;
  PrinterChannel* channel;

  bool IsPostScript() const { return channel->job->emulation == JOB_EMULATION_POSTSCRIPT; }
  bool IsPcl() const { return channel->job->emulation == JOB_EMULATION_PCL; }
  bool IsPclXl() const { return channel->job->emulation == JOB_EMULATION_PCLXL; }
  bool IsDemo() const { return (info.flags & MACRO_FLAG_DEMO) != 0; }
  bool IsStoredInMemory() const { return info.target == STORAGE_DEVICE_RAM; }
};

uint32_t SendBody(const Download& download, bool executeOnce) {
  return SendMacroBody(download.source, {{}, download.name, executeOnce}, download.channel);
}

uint32_t BeginPrinting(const Download& download) {
  if (!download.IsPostScript()) {
    return SendMacroBegin(download.source, download.info, download.channel);
  }
  return download.source.isFiltered ? SendCommand(NeutralizeShowpage, download.channel)
                                    : uint32_t{HV_OK};
}

uint32_t EndPrinting(const Download& download) {
  if (!download.IsPostScript()) return SendMacroEnd(download.channel);
  if (!download.source.isFiltered) return HV_OK;
  SendCommand(RestoreShowpage, download.channel);
  return SendCommand(Showpage, download.channel);
}

uint32_t PrintOnce(const Download& download) {
  uint32_t result = download.wraps ? BeginPrinting(download) : uint32_t{HV_OK};
  if (result == HV_OK) result = SendBody(download, true);
  if (result == HV_OK && download.wraps) result = EndPrinting(download);
  if (result == HV_OK) {
    result = SendMacroControl(download.channel, true);
    if (result == HV_OK && !download.IsPostScript() && !download.IsPclXl()) {
      ChannelWriteText(PrintPage, download.channel);
    }
  }
  // Whatever happened, no page of another job is to have the overlay.
  const uint32_t switchedOff = SendMacroControl(download.channel, false);
  return result == HV_OK ? switchedOff : result;
}

uint32_t BeginStoring(const Download& download) {
  if (!download.IsPostScript()) {
    return SendMacroBegin(download.source, download.info, download.channel);
  }
  std::string text;
  if (download.IsStoredInMemory()) {
    text = PostScriptBeginProcedure(download.name);
  } else if (download.IsDemo()) {
    SendCommand(PostScriptBeginDemo(), download.channel);
    text = PostScriptBeginFile(download.info.target, download.name + DemoExtension);
  } else {
    text = PostScriptBeginFile(download.info.target, download.name);
  }
  if (download.source.isFiltered) text += NeutralizeShowpage;
  return SendCommand(text, download.channel);
}

uint32_t EndStoring(const Download& download) {
  PrinterChannel* const channel = download.channel;
  if (!download.IsPostScript()) return SendMacroEnd(channel);
  if (download.source.isFiltered) {
    SendCommand(RestoreShowpage, channel);
    if (download.IsDemo()) SendCommand(Showpage, channel);
  }
  if (download.IsStoredInMemory()) return SendCommand(PostScriptEndProcedure, channel);
  SendCommand(PostScriptEndFile, channel);
  return download.IsDemo() ? SendCommand(PostScriptEndDemo, channel) : channel->status;
}

void MakePermanent(const Download& download) {
  if (!download.IsPcl()) return;
  SendCommand(PclMakeMacroPermanent(download.channel->job->identifier), download.channel);
}

uint32_t Store(const Download& download) {
  uint32_t result = download.wraps ? BeginStoring(download) : uint32_t{HV_OK};
  if (result == HV_OK) result = SendBody(download, false);
  if (result == HV_OK && download.wraps) result = EndStoring(download);
  MakePermanent(download);
  return result;
}

uint32_t SendRaw(const Download& download) {
  const uint32_t result =
      ChannelSendStream(download.source.file.get(), download.channel, SendEncoding::Raw);
  MakePermanent(download);
  return result;
}

uint32_t SendInMode(const Download& download, uint32_t mode) {
  switch (mode) {
    case MACRO_PRINT_ONCE:
      return PrintOnce(download);
    case MACRO_STORE:
      return Store(download);
    default:
      return SendRaw(download);
  }
}

}  // namespace

uint32_t DownloadMacro(const char* source, const char* destination, const HvJobInfo& job,
                       HvMacroInfo* info, uint32_t mode, bool wraps) {
  MacroSource opened;
  const uint32_t found = OpenMacroSource(source, destination, job, info, &opened);
  if (found != HV_OK) return found;
  PrinterChannel channel;
  channel.job = &job;
  channel.source = source;
  channel.fileMode = FileModeReplace;
  channel.targetDevice = info->target;
  const uint32_t begun = BeginFramedJob(destination, &channel);
  if (begun != HV_OK) return begun;

  const Download download = {opened, *info, wraps, StoredName(info->name, source), &channel};
  const bool stores =
      mode != MACRO_PRINT_ONCE && !download.IsPostScript() && !download.IsStoredInMemory();
  if (stores && !download.IsPclXl()) PjlStorageCommand(STORAGE_TARGET_DEVICE, &channel);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  if (download.IsPclXl()) {
    SendCommand(
        mode == MACRO_PRINT_ONCE ? std::string(PclXlEnterLanguage) : PclXlBeginStore(info->target),
        &channel);
  }
  if (ChannelCloseIfFailed(&channel)) return channel.status;

  const uint32_t result = SendInMode(download, mode);
  if (ChannelCloseIfFailed(&channel)) return result == HV_OK ? channel.status : result;
  if (stores) PjlStorageCommand(STORAGE_TARGET_RAM, &channel);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  if (stores && mode == MACRO_STORE && download.IsPcl() && (job.flags & JOB_FLAG_PJL) != 0) {
    SendCommand(PjlResourceDescription(info->target, job.identifier, download.name), &channel);
  }
  const uint32_t ended = EndFramedJob(&channel);
  return result == HV_OK ? ended : result;
}

}  // namespace hv
