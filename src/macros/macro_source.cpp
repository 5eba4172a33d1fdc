#include "macros/macro_source.h"

#include "api/file_operations.h"
#include "channel/sending.h"
#include "macros/job_command_filter.h"
#include "macros/macro_analysis.h"
#include "macros/macro_commands.h"
#include "macros/pclxl_macro.h"
#include "macros/print_file.h"
#include "support/fixed_text.h"

namespace hv {

uint32_t OpenMacroSource(const char* path, const char* destination, const HvJobInfo& job,
                         HvMacroInfo* info, MacroSource* source) {
  const uint32_t checked = CheckPrintFile(path);
  if (checked != HV_OK) return checked;
  source->filterMask = ChooseFilterMask(info);
  source->isFiltered = (info->flags & MACRO_FLAG_FILTER) != 0;
  source->file = platform::OpenStream(path, "rb");
  if (source->file == nullptr) return HV_CANNOT_OPEN;
  const bool converts = source->isFiltered && job.emulation == JOB_EMULATION_PCLXL;
  if (converts && (IsPclXlWorkFile(path) || IsPclXlWorkFile(destination))) return HV_CANNOT_OPEN;
  return SizeOfOpenFile(path, source->file.get(), &source->size) ? HV_OK : HV_READ_FAILED;
}

uint32_t SendMacroBegin(const MacroSource& source, const HvMacroInfo& info,
                        PrinterChannel* channel) {
  const uint16_t identifier = channel->job->identifier;
  switch (channel->job->emulation) {
    case JOB_EMULATION_PPDS:
      if (source.size > LargestPpdsMacro) return HV_LIMIT_REACHED;
      return SendCommand(PpdsBeginMacro(identifier, source.size), channel);
    case JOB_EMULATION_PCL:
      return SendCommand(PclBeginMacro(identifier, info), channel);
    default:
      return HV_OK;
  }
}

uint32_t SendMacroBody(const MacroSource& source, const MacroBody& body, PrinterChannel* channel) {
  if (!source.isFiltered) return ChannelSendStream(source.file.get(), channel, SendEncoding::Raw);
  if (channel->job->emulation == JOB_EMULATION_PCLXL) {
    return SendPclXlMacro(source.file.get(), channel, body.streamName, body.executeOnce);
  }
  return FilterJobCommands(source.file.get(), channel, source.filterMask, body.textAfterPsHeader);
}

uint32_t SendMacroEnd(PrinterChannel* channel) {
  if (channel->job->emulation != JOB_EMULATION_PCL) return channel->status;
  return SendCommand(PclEndMacro, channel);
}

std::string MacroName(const HvMacroInfo& info) {
  return std::string(FixedText(info.name, MostMacroNameBytes));
}

}  // namespace hv
