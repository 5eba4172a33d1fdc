#include "macros/macro_analysis.h"

#include <array>
#include <memory>

#include "macros/file_channel.h"
#include "macros/job_command_filter.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

// Whether a PCL XL job is announced anywhere in the rest of the source.
bool AnnouncesPclXl(MacroStream* stream) {
  while (StreamSkipTo(stream, '=')) {
    if (StreamTake(stream, "PCLXL") || StreamTake(stream, " PCLXL")) return true;
  }
  return false;
}

uint32_t AnalyzePpdsMacro(MacroStream* stream) {
  constexpr std::string_view Start = "\x1B[l";
  std::array<char, Start.size()> read;
  const std::size_t count = StreamRead(stream, read.data(), read.size());
  // Too little to tell is let pass.
  if (count < read.size()) return HV_OK;
  return std::string_view(read.data(), count) == Start ? HV_OK : HV_WRONG_LANGUAGE;
}

uint32_t AnalyzeLanguage(MacroStream* stream, const HvJobInfo& job, bool isOverlay, int64_t size,
                         MacroFindings* findings) {
  switch (job.emulation) {
    case JOB_EMULATION_PPDS:
      return AnalyzePpdsMacro(stream);
    case JOB_EMULATION_POSTSCRIPT:
      return isOverlay ? AnalyzePostScriptOverlay(stream, findings)
                       : AnalyzePostScriptMacro(stream, findings);
    case JOB_EMULATION_PCL:
      return AnalyzePclMacro(stream, size, findings);
    default:
      return HV_BAD_ARGUMENT;
  }
}

}  // namespace

uint32_t ChooseFilterMask(HvMacroInfo* info) {
  if ((info->flags & MACRO_FLAG_FILTER_MASK) == 0) return DEFAULT_FILTER_MASK;
  info->flags |= MACRO_FLAG_FILTER;
  return info->filterMask;
}

uint32_t AnalyzeMacroSource(platform::Stream* source, HvJobInfo* job, HvMacroInfo* info) {
  const uint32_t mask = ChooseFilterMask(info);
  MacroFindings findings;
  findings.isDemo = (info->flags & MACRO_FLAG_DEMO) != 0;
  findings.target = info->target;
  findings.name = FixedText(info->name, MostMacroNameBytes);
  findings.identifier = job->identifier;

  std::unique_ptr<platform::Stream> filtered;
  if ((info->flags & MACRO_FLAG_FILTER) != 0) {
    filtered = platform::OpenScratchStream();
    if (filtered == nullptr) return HV_CANNOT_OPEN;
    FileChannel channel(filtered.get(), job->emulation);
    const uint32_t result = FilterJobCommands(source, channel.Get(), mask, {});
    if (result != HV_OK) return result;
    source = filtered.get();
  }

  if (!source->Seek(0)) return HV_READ_FAILED;
  MacroStream stream;
  StreamOpenReader(&stream, source);
  if (AnnouncesPclXl(&stream)) return HV_PCLXL_JOB;
  const int64_t size = source->Position();
  if (source->HasError() || !StreamSeek(&stream, 0)) return HV_READ_FAILED;

  const bool isOverlay = (info->flags & MACRO_FLAG_PS_OVERLAY) != 0;
  const uint32_t result = AnalyzeLanguage(&stream, *job, isOverlay, size, &findings);
  if (source->HasError()) return HV_READ_FAILED;
  if (result != HV_OK) return result;

  info->flags &= ~uint32_t{MACRO_FLAG_DEMO};
  if (findings.isDemo) info->flags |= MACRO_FLAG_DEMO;
  info->target = findings.target;
  SetFixedText(info->name, findings.name);
  info->macroId = findings.identifier;
  job->identifier = findings.identifier;
  return HV_OK;
}

}  // namespace hv
