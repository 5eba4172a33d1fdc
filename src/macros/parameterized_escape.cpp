#include "macros/parameterized_escape.h"

#include "macros/filter_list.h"

namespace hv {
namespace {

struct Parameter {
  ParameterText value;
  char letter = 0;
};

constexpr bool ContinuesSequence(char letter) {
  return letter >= 0x60 && letter <= 0x7E;
}

// What has been kept of a sequence. A parameter waits until it is known whether it ends it.
class SequenceWriter {
 public:
  SequenceWriter(MacroStream* stream, std::string_view name) : stream_(stream), name_(name) {}

  void Keep(const Parameter& parameter) {
    WriteWaiting();
    waiting_ = parameter;
    isWaiting_ = true;
  }

  // Writes the parameter that waits, with its letter as the last one.
  void End() {
    if (ContinuesSequence(waiting_.letter)) {
      waiting_.letter = static_cast<char>(waiting_.letter - 0x20);
    }
    WriteWaiting();
  }

  // Writes what waits and the beginning of a parameter that the source cuts off. A sequence of
  // which all was dropped leaves no trace.
  void CutOff(const ParameterText& begun, bool dropped) {
    WriteWaiting();
    if (begun.length == 0 && dropped) return;
    WriteStart();
    StreamWrite(stream_, begun.Text());
  }

 private:
  void WriteStart() {
    if (name_.empty()) return;
    StreamPutByte(stream_, Escape);
    StreamWrite(stream_, name_);
    name_ = {};
  }

  void WriteWaiting() {
    if (!isWaiting_) return;
    WriteStart();
    StreamWrite(stream_, waiting_.value.Text());
    StreamPutByte(stream_, static_cast<uint8_t>(waiting_.letter));
    isWaiting_ = false;
  }

  MacroStream* stream_;
  std::string_view name_;  // until it is written
  Parameter waiting_;
  bool isWaiting_ = false;
};

}  // namespace

void FilterParameterizedEscape(MacroStream* stream, std::string_view name,
                               std::string_view filterList) {
  SequenceWriter writer(stream, name);
  int64_t dataCount = 0;
  bool dropped = false;
  for (bool goesOn = true; goesOn;) {
    Parameter parameter;
    parameter.value = StreamReadParameter(stream);
    const int letter = StreamGetByte(stream);
    if (letter < 0) {
      writer.CutOff(parameter.value, dropped);
      return;
    }
    parameter.letter = static_cast<char>(letter);
    goesOn = ContinuesSequence(parameter.letter);
    const int32_t value = ParameterValue(parameter.value.Text());
    const FilterAction action = MatchFilterList(filterList, parameter.letter, value);
    if (action == FilterAction::KeepWithData) dataCount += value;
    if (action == FilterAction::Drop) {
      dropped = true;
    } else {
      writer.Keep(parameter);
    }
  }
  writer.End();
  if (dataCount > 0) StreamCopy(stream, static_cast<uint64_t>(dataCount));
}

}  // namespace hv
