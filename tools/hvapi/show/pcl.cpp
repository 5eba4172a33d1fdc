// PCL, and the languages that share its escape sequences.

#include <algorithm>
#include <charconv>
#include <string>

#include "show/explainer.h"
#include "show/pcl_commands.h"

namespace hvtool {
namespace {

constexpr char Escape = 0x1B;
// Longer values are those of no command.
constexpr std::size_t MaxValue = 32;

bool IsValueByte(int c) {
  return (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.' || c == ' ';
}
bool IsLetter(int c) {
  return c >= 0x40 && c <= 0x7E && c != 0x5F;
}
bool IsLowerLetter(int c) {
  return c >= 0x60;
}

// The digits that a value begins with, its sign in front.
int64_t Number(const std::string& value) {
  const std::size_t at = value.find_first_not_of(" +");
  int64_t number = 0;
  if (at != std::string::npos) {
    std::from_chars(value.data() + at, value.data() + value.size(), number);
  }
  return number;
}

const char* ControlName(int c) {
  switch (c) {
    case 0x00:
      return "NUL";
    case 0x07:
      return "bell";
    case 0x08:
      return "backspace";
    case 0x09:
      return "tab";
    case 0x0A:
      return "line feed";
    case 0x0B:
      return "vertical tab";
    case 0x0C:
      return "form feed: print the page";
    case 0x0D:
      return "carriage return";
    case 0x0E:
      return "second font";
    case 0x0F:
      return "first font";
    default:
      return "control character";
  }
}

}  // namespace

void Explainer::ExplainPcl() {
  if (reader_.Peek() == Escape) {
    ExplainPclEscape();
  } else {
    ExplainPlainBytes();
  }
}

// Text, or one and the same control character.
void Explainer::ExplainPlainBytes() {
  const int first = reader_.Peek();
  if (first < 0x20) {
    uint64_t count = 0;
    do {
      reader_.Take();
      ++count;
    } while (reader_.Peek() == first);
    const std::string times = count == 1 ? "" : ", " + std::to_string(count) + " times";
    return reader_.Emit(ControlName(first) + times);
  }
  while (reader_.Peek() >= 0x20) reader_.Take();
  reader_.Emit("text", true);
}

void Explainer::ExplainPclEscape() {
  const int c = reader_.Peek(1);
  if (c >= 0x21 && c <= 0x2F) {
    std::string group(1, static_cast<char>(c));
    const int second = reader_.Peek(2);
    if (second >= 0x60 && second <= 0x7E) group += static_cast<char>(second);
    const int next = reader_.Peek(1 + group.size());
    if (IsValueByte(next) || IsLetter(next)) {
      reader_.Take(1 + group.size());
      return ExplainParameters(group);
    }
  }
  reader_.Take();
  if (c < 0 || c == Escape) return reader_.Emit("unknown");
  reader_.Take();
  const char* const meaning = PclEscapeMeaning(static_cast<char>(c));
  reader_.Emit(meaning == nullptr ? "unknown escape sequence" : meaning);
  if (c == 'E' && language_ == Language::HpGl2) language_ = Language::Pcl;
}

// The values of a sequence and their letters, each with the data that it brings. A lower-case
// letter lets the sequence go on.
void Explainer::ExplainParameters(const std::string& group) {
  // Rows are summed up: there are thousands.
  const bool sumsUp = group == "*b" && !eachRow_;
  rowsWait_ = sumsUp;
  for (bool goesOn = true; goesOn;) {
    std::string value;
    while (IsValueByte(reader_.Peek()) && value.size() < MaxValue) {
      value += static_cast<char>(reader_.Peek());
      reader_.Take();
    }
    const int c = reader_.Peek();
    if (!IsLetter(c)) {
      if (sumsUp) return EmitRows(", then an unknown sequence");
      return reader_.Emit("unknown escape sequence");
    }
    reader_.Take();
    goesOn = IsLowerLetter(c);
    const char letter = static_cast<char>(goesOn ? c - 0x20 : c);
    const int64_t number = Number(value);
    const PclCommand* const command = FindPclCommand(group, letter);
    const uint64_t dataSize =
        command != nullptr && command->hasData && number > 0 ? static_cast<uint64_t>(number) : 0;

    if (sumsUp) {
      if (letter == 'W') ++rows_;
      if (reader_.Take(dataSize) < dataSize) EmitRows(", cut off");
      continue;
    }
    if (command == nullptr) {
      reader_.Emit("unknown PCL command");
      continue;
    }
    const bool isMacro = group == "&f";
    if (isMacro && letter == 'Y') macroId_ = number;
    reader_.Emit(isMacro && letter == 'X' ? MacroMeaning(number) : PclMeaning(*command, value));
    if (dataSize > 0) ExplainPclData(command->meaning, dataSize);
    if (group == "%" && letter == 'B') language_ = Language::HpGl2;
    if (group == "%" && letter == 'A') language_ = Language::Pcl;
  }
}

void Explainer::ExplainPclData(std::string_view what, uint64_t count) {
  const uint64_t taken = reader_.Take(count);
  std::string meaning = std::to_string(taken) + " bytes: " + std::string(what);
  if (taken < count) meaning += ", cut off: " + std::to_string(count) + " were to come";
  reader_.Emit(meaning);
}

// A definition begins or ends here: the offset of the next byte is that of its body.
std::string Explainer::MacroMeaning(int64_t value) {
  const std::string id = macroId_ < 0 ? "" : " " + std::to_string(macroId_);
  if (value == 0) {
    macroOffset_ = reader_.Offset();
    return "begin of the definition of macro" + id;
  }
  if (value == 1) {
    const uint64_t size = reader_.Offset() - reader_.Taken() - macroOffset_;
    return "end of the definition of macro" + id + ", " + std::to_string(size) + " bytes";
  }
  return PclMeaning(*FindPclCommand("&f", 'X'), std::to_string(value)) +
         (value == 6 || value == 7 ? "" : id);
}

void Explainer::EmitRows(const std::string& remark) {
  const std::string rows = rows_ == 0   ? "settings of rows of dots"
                           : rows_ == 1 ? "1 row of dots"
                                        : std::to_string(rows_) + " rows of dots";
  reader_.Emit(rows + remark);
  rows_ = 0;
  rowsWait_ = false;
}

void Explainer::ExplainHpGl2() {
  if (reader_.Peek() == Escape) return ExplainPclEscape();
  uint64_t instructions = 0;
  for (int before = 0; reader_.Peek() >= 0 && reader_.Peek() != Escape;) {
    const int c = reader_.Peek();
    const auto isLetter = [](int byte) { return byte >= 'A' && byte <= 'Z'; };
    // Two letters behind something else are an instruction.
    if (isLetter(c) && isLetter(reader_.Peek(1)) && !isLetter(before)) ++instructions;
    before = c;
    reader_.Take();
  }
  reader_.Emit("HP-GL/2, about " + std::to_string(instructions) + " instructions", true);
}

// Blocks behind ESC = have a count of their bytes, low byte first.
void Explainer::ExplainPpds() {
  if (reader_.Peek() != Escape) return ExplainPlainBytes();
  if (reader_.Peek(1) == '=' && reader_.Peek(3) >= 0) {
    const auto count = uint64_t{reader_.PeekNumber(2, 2)};
    reader_.Take(4 + count);
    return reader_.Emit("PPDS download block, " + std::to_string(count) + " bytes");
  }
  reader_.Take();
  if (reader_.Peek() >= 0x20) reader_.Take();
  reader_.Emit("PPDS command");
}

}  // namespace hvtool
