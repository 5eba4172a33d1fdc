#include "macros/parameterized_escape.h"

#include "macros/filter_list.h"

namespace hv {
namespace {

constexpr bool ContinuesSequence(char letter) {
  return letter >= 0x60 && letter <= 0x7E;
}

// What has been kept of a sequence. A parameter waits until it is known whether it ends it.
class SequenceWriter {
 public:
  SequenceWriter(MacroStream* stream, std::string_view prefix) : stream_(stream), prefix_(prefix) {}

  void Keep(const ParameterText& value, char letter) {
    WriteWaiting();
    waiting_ = value;
    waiting_.bytes[waiting_.length++] = letter;
  }

  // Writes the parameter that waits, with its letter as the last one.
  void End() {
    if (waiting_.length == 0) return;
    char& letter = waiting_.bytes[waiting_.length - 1];
    if (ContinuesSequence(letter)) letter = static_cast<char>(letter - 0x20);
    WriteWaiting();
  }

  // Writes what waits and the beginning of a parameter that the source cuts off. A sequence of
  // which all was dropped leaves no trace.
  void CutOff(const ParameterText& begun, bool dropped) {
    WriteWaiting();
    if (begun.length == 0 && dropped) return;
    WritePrefix();
    StreamWrite(stream_, begun.Text());
  }

 private:
  void WritePrefix() {
    StreamWrite(stream_, prefix_);
    prefix_ = {};
  }

  void WriteWaiting() {
    if (waiting_.length == 0) return;
    WritePrefix();
    StreamWrite(stream_, waiting_.Text());
    waiting_.length = 0;
  }

  MacroStream* stream_;
  std::string_view prefix_;  // until it is written
  ParameterText waiting_;    // a value with its letter, or nothing
};

}  // namespace

void FilterParameterizedEscape(MacroStream* stream, std::string_view prefix,
                               std::string_view filterList) {
  SequenceWriter writer(stream, prefix);
  int64_t dataCount = 0;
  bool dropped = false;
  for (bool goesOn = true; goesOn;) {
    const ParameterText text = StreamReadParameter(stream);
    const int byte = StreamGetByte(stream);
    if (byte < 0) {
      writer.CutOff(text, dropped);
      return;
    }
    const char letter = static_cast<char>(byte);
    goesOn = ContinuesSequence(letter);
    const int32_t value = ParameterValue(text.Text());
    const FilterAction action = MatchFilterList(filterList, letter, value);
    if (action == FilterAction::KeepWithData) dataCount += value;
    if (action == FilterAction::Drop) {
      dropped = true;
    } else {
      writer.Keep(text, letter);
    }
  }
  writer.End();
  if (dataCount > 0) StreamCopy(stream, static_cast<uint64_t>(dataCount));
}

}  // namespace hv
