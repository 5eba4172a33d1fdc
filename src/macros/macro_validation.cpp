#include "macros/macro_validation.h"

#include <memory>

#include "macros/macro_analysis.h"
#include "macros/pclxl_macro.h"
#include "macros/print_file.h"
#include "platform/stream.h"

namespace hv {

uint32_t ValidateMacro(const char* source, HvJobInfo* job, HvMacroInfo* info) {
  const uint32_t checked = CheckPrintFile(source);
  if (checked != HV_OK) return checked;
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(source, "rb");
  if (file == nullptr) return HV_CANNOT_OPEN;
  if (job->emulation != JOB_EMULATION_PCLXL) return AnalyzeMacroSource(file.get(), job, info);
  if ((info->flags & MACRO_FLAG_FILTER) != 0 && IsPclXlWorkFile(source)) return HV_CANNOT_OPEN;
  return ValidatePclXlMacro(file.get(), *job, info);
}

}  // namespace hv
