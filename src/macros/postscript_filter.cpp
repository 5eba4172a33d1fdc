// Job commands in PostScript sources.

#include "macros/job_command_filter.h"

namespace hv {
namespace {

constexpr uint8_t EndOfJob = 0x04;
constexpr ByteSet Starts{"\x04\x1B%@"};

}  // namespace

void FilterPostScript(MacroStream* stream, std::string_view textAfterPsHeader) {
  for (int byte = StreamCopyRun(stream, Starts); byte >= 0; byte = StreamCopyRun(stream, Starts)) {
    switch (byte) {
      case EndOfJob:
        break;
      case Escape:
        if (!DropUel(stream) && !DropEscKSequence(stream)) StreamPutByte(stream, Escape);
        break;
      case '%':
        if (!StreamTake(stream, "!PS")) {
          StreamPutByte(stream, '%');
          break;
        }
        StreamWrite(stream, "%!PS");
        StreamCopyLine(stream);
        StreamWrite(stream, textAfterPsHeader);
        break;
      default:
        if (!DropPjlLine(stream)) StreamPutByte(stream, '@');
        break;
    }
  }
}

}  // namespace hv
