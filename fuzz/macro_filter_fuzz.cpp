// Any bytes as a macro source, filtered in each language, beside the model of the tests; the source
// arrives in pieces of a few bytes or as a whole. The first two bytes choose the mask.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "macros/file_channel.h"
#include "macros/job_command_filter.h"
#include "support/job_filter_model.h"
#include "support/memory_stream.h"

namespace {

void Check(int32_t emulation, const std::string& source, uint32_t mask,
           const std::string& expected) {
  for (const std::size_t piece : {std::size_t{1}, std::size_t{5}, source.size() + 1}) {
    hvtest::MemoryStream from(source, piece);
    hvtest::MemoryStream to;
    hv::FileChannel channel(&to, emulation);
    if (hv::FilterJobCommands(&from, channel.Get(), mask, "%%text\n") != HV_OK) std::abort();
    if (to.Content() != expected) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const uint32_t mask = data[0] | uint32_t{data[1]} << 8;
  const std::string source(reinterpret_cast<const char*>(data) + 2, size - 2);
  Check(JOB_EMULATION_PCL, source, mask, hvtest::FilterPclModel(source, mask));
  Check(JOB_EMULATION_POSTSCRIPT, source, mask, hvtest::FilterPostScriptModel(source, "%%text\n"));
  Check(JOB_EMULATION_PPDS, source, mask, source);
  return 0;
}
