// Making macros, switching them and deleting them; macro_download.cpp sends them.

#include "macros/macro_operations.h"

#include "macros/macro_commands.h"
#include "macros/macro_source.h"

namespace hv {
namespace {

// The two commands without a source are the whole of what is sent.
template <typename Command>
uint32_t SendAlone(const char* destination, const HvJobInfo& job, Command command) {
  PrinterChannel channel;
  channel.job = &job;
  channel.fileMode = FileModeReplace;
  const uint32_t opened = ChannelOpen(destination, &channel);
  if (opened != HV_OK) return opened;
  const uint32_t result = command(&channel);
  ChannelClose(&channel);
  return result;
}

}  // namespace

uint32_t CreateMacro(const char* source, const char* destination, const HvJobInfo& job,
                     HvMacroInfo* info) {
  MacroSource opened;
  uint32_t result = OpenMacroSource(source, destination, job, info, &opened);
  if (result != HV_OK) return result;
  PrinterChannel channel;
  channel.job = &job;
  channel.source = source;
  channel.fileMode = FileModeReplace;
  result = ChannelOpen(destination, &channel);
  if (result != HV_OK) return result;

  MacroBody body;
  body.streamName = MacroName(*info);
  body.textAfterPsHeader = PostScriptOverlayComment(body.streamName);
  result = SendMacroBegin(opened, *info, &channel);
  if (result == HV_OK) result = SendMacroBody(opened, body, &channel);
  if (result == HV_OK) result = SendMacroEnd(&channel);
  ChannelClose(&channel);
  return result;
}

uint32_t ActivateMacro(const char* destination, const HvJobInfo& job, bool enable) {
  return SendAlone(destination, job,
                   [enable](PrinterChannel* channel) { return SendMacroControl(channel, enable); });
}

uint32_t DeleteMacro(const char* destination, const HvJobInfo& job) {
  return SendAlone(destination, job, SendMacroDelete);
}

}  // namespace hv
