// PostScript, summed up: comments of the document structure one by one, programs as runs of lines.

#include "show/explainer.h"

namespace hvtool {
namespace {

constexpr char EndOfJob = 0x04;

}  // namespace

void Explainer::ExplainPostScript() {
  if (reader_.Peek() == EndOfJob) {
    reader_.Take();
    return reader_.Emit("end of a PostScript job");
  }
  if (reader_.Matches("%%") || reader_.Matches("%!")) {
    reader_.TakeLine();
    return reader_.Emit("PostScript comment", true);
  }
  if (reader_.Peek() == 0x1B) {
    reader_.Take();
    return reader_.Emit("unknown");
  }
  uint64_t lines = 0;
  do {
    const uint64_t before = reader_.Offset();
    reader_.TakeLine();
    // Binary data may hold an ESC that ends no line.
    while (reader_.Peek() == 0x1B && !reader_.Matches("\x1B%-12345X") &&
           !reader_.Matches("\x1B[K")) {
      reader_.Take();
      reader_.TakeLine();
    }
    if (reader_.Offset() == before) break;
    ++lines;
  } while (reader_.Peek() >= 0 && reader_.Peek() != 0x1B && reader_.Peek() != EndOfJob &&
           !reader_.Matches("%%") && !reader_.Matches("%!"));
  reader_.Emit("PostScript, " + std::to_string(lines) + (lines == 1 ? " line" : " lines"), true);
}

}  // namespace hvtool
