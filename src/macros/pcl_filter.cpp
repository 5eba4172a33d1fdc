// Job commands in PCL sources.

#include <algorithm>
#include <array>
#include <string>

#include "macros/filter_list.h"
#include "macros/job_command_filter.h"
#include "macros/parameterized_escape.h"

namespace hv {
namespace {

constexpr uint8_t FormFeed = 0x0C;
constexpr ByteSet GraphicsStarts{"\x1B"};

class PclFilter {
 public:
  PclFilter(MacroStream* stream, uint32_t filterMask)
      : stream_(stream), dropsReset_((filterMask & FILTER_DROP_RESET) != 0), lists_(filterMask) {
    if ((filterMask & FILTER_DROP_FORM_FEED) != 0) starts_.Add(FormFeed);
  }

  void Run() {
    for (int byte = NextStart(); byte >= 0; byte = NextStart()) {
      if (byte == '@') {
        if (!DropPjlLine(stream_)) StreamPutByte(stream_, '@');
      } else if (byte == Escape) {
        const bool handled = inGraphics_ ? HandleGraphicsEscape() : HandlePclEscape();
        if (!handled) StreamPutByte(stream_, Escape);
      }
    }
  }

 private:
  // HP-GL/2 has no commands of the job but those that lead back to PCL.
  int NextStart() { return StreamCopyRun(stream_, inGraphics_ ? GraphicsStarts : starts_); }

  // Both see what follows an ESC. False when it is not theirs: it is then read as any other bytes.
  bool HandleGraphicsEscape() {
    if (StreamTake(stream_, "E")) return HandleReset();
    return StreamTake(stream_, "%") && HandleLanguageSwitch('A');
  }

  bool HandlePclEscape() {
    std::array<char, 2> read;
    std::size_t count = 0;
    for (int byte = 0; count < read.size() && (byte = StreamGetByte(stream_)) >= 0;) {
      read[count++] = static_cast<char>(byte);
    }
    const std::string_view next(read.data(), count);
    if (next == "&n") return HandleAlphanumericIdentifier();
    const auto* const family =
        std::find_if(families_.begin(), families_.end(), [&](const Family& f) {
          return count == read.size() && f.prefix[1] == read[0] && f.prefix[2] == read[1];
        });
    if (family != families_.end()) {
      FilterParameterizedEscape(stream_, family->prefix, family->list);
      return true;
    }
    StreamUnread(stream_, next);
    if (DropUel(stream_) || DropEscKSequence(stream_)) return true;
    if (StreamTake(stream_, "E")) return HandleReset();
    return StreamTake(stream_, "%") && HandleLanguageSwitch('B');
  }

  bool HandleReset() {
    inGraphics_ = false;
    if (!dropsReset_) StreamWrite(stream_, "\033E");
    return true;
  }

  // ESC % # A leads from HP-GL/2 to PCL, ESC % # B from PCL to HP-GL/2.
  bool HandleLanguageSwitch(char wanted) {
    const ParameterText parameter = StreamReadParameter(stream_);
    std::string sequence = "%";
    sequence += parameter.Text();
    const int letter = StreamGetByte(stream_);
    if (letter >= 0) sequence += static_cast<char>(letter);
    if (letter != wanted) {
      StreamUnread(stream_, sequence);
      return false;
    }
    inGraphics_ = wanted == 'B';
    StreamPutByte(stream_, Escape);
    StreamWrite(stream_, sequence);
    return true;
  }

  // ESC & n # W and data name fonts and macros, which a macro may not; with no data it is harmless.
  bool HandleAlphanumericIdentifier() {
    // No printer takes a longer count; so many digits are no command.
    constexpr std::size_t MostDigits = 1024;
    std::string digits;
    int byte = StreamGetByte(stream_);
    for (; byte >= '0' && byte <= '9' && digits.size() < MostDigits;
         byte = StreamGetByte(stream_)) {
      digits += static_cast<char>(byte);
    }
    const int32_t count = ParameterValue(digits);
    if (count > 0 && byte == 'W') {
      StreamSkip(stream_, static_cast<uint64_t>(count));
      return true;
    }
    if (byte >= 0) digits += static_cast<char>(byte);
    StreamWrite(stream_, "\x1B&n");
    StreamWrite(stream_, digits);
    return true;
  }

  // What a sequence begins with, and what becomes of its parameters.
  struct Family {
    std::string_view prefix;
    std::string_view list;
  };

  MacroStream* stream_;
  bool dropsReset_;
  bool inGraphics_ = false;
  ByteSet starts_{"\x1B@"};
  MaskedFilterLists lists_;
  std::array<Family, 11> families_ = {{
      {"\x1B*b", "W! V!"},
      {"\x1B*c", "W! F0 F1"},
      {"\x1B(s", "W!"},
      {"\x1B)s", "W!"},
      {"\x1B(f", "W!"},
      {"\x1B&p", "X!"},
      {"\x1B&b", "M#"},
      {"\x1B&l", lists_.ampersandL},
      {"\x1B&a", lists_.ampersandA},
      {"\x1B&f", lists_.ampersandF},
      {"\x1B&r", lists_.ampersandR},
  }};
};

}  // namespace

void FilterPcl(MacroStream* stream, uint32_t filterMask) {
  PclFilter(stream, filterMask).Run();
}

}  // namespace hv
