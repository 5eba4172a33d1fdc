#include "macros/job_command_filter.h"

#include <array>

#include "channel/job_framing.h"
#include "support/byte_order.h"

namespace hv {
namespace {

constexpr ByteSet NoBytes{""};

}  // namespace

bool DropUel(MacroStream* stream) {
  return StreamTake(stream, Uel.substr(1));
}

bool DropEscKSequence(MacroStream* stream) {
  if (!StreamTake(stream, "[K")) return false;
  std::array<uint8_t, 2> count = {};
  if (StreamRead(stream, count.data(), count.size()) == count.size()) {
    StreamSkip(stream, LoadLe16(count.data()));
  }
  return true;
}

bool DropPjlLine(MacroStream* stream) {
  if (!StreamTake(stream, "PJL")) return false;
  StreamSkipLine(stream);
  return true;
}

uint32_t FilterJobCommands(platform::Stream* source, PrinterChannel* channel, uint32_t filterMask,
                           std::string_view textAfterPsHeader) {
  if (!source->Seek(0)) return HV_READ_FAILED;
  MacroStream stream;
  StreamOpenReader(&stream, source);
  StreamOpenWriter(&stream, channel);
  switch (channel->job->emulation) {
    case JOB_EMULATION_POSTSCRIPT:
      FilterPostScript(&stream, textAfterPsHeader);
      break;
    case JOB_EMULATION_PCL:
      FilterPcl(&stream, filterMask);
      break;
    default:
      StreamCopyRun(&stream, NoBytes);
      break;
  }
  StreamCloseWriter(&stream);
  if (channel->status != 0) return channel->status;
  // A source that could be read in part only makes no macro.
  return source->HasError() ? uint32_t{HV_READ_FAILED} : uint32_t{HV_OK};
}

}  // namespace hv
