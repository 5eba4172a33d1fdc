#include "show/explainer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace hvtool {
namespace {

constexpr std::string_view Uel = "\x1B%-12345X";
constexpr char EndOfJob = 0x04;

struct PjlMeaning {
  std::string_view begin;  // behind "@PJL ", blanks and letter case put in order
  const char* meaning;
};

// The first that fits.
constexpr PjlMeaning PjlMeanings[] = {
    {"RDYMSG DISPLAY = \"\"", "panel: ready message again"},
    {"RDYMSG DISPLAY", "panel: text shown when ready"},
    {"OPMSG DISPLAY", "panel: text, and stop until the operator goes on"},
    {"STMSG DISPLAY", "panel: text, and stop until the operator answers"},
    {"ENTER LANGUAGE", "switch the printer language"},
    {"SET COPIES", "number of copies"},
    {"SET QDOWNLOADTARGET = RAM", "downloads go to memory again"},
    {"SET QDOWNLOADTARGET", "downloads go to a storage device"},
    {"SET RESOLUTION", "dots an inch"},
    {"SET RET", "resolution enhancement"},
    {"SET ", "PJL variable, for this job"},
    {"DEFAULT QRESOURCE", "description of a stored resource"},
    {"DEFAULT ", "PJL variable, for good"},
    {"QFORMAT", "format a storage device: what it holds is lost"},
    {"QPRINTDIRECTORY", "print the directory of the storage"},
    {"QOPENFILE", "open a file on a storage device"},
    {"QWRITEFILE", "write the file: its data follow"},
    {"END DATA", "end of the data of the file"},
    {"QCLOSEFILE", "close the file on the storage device"},
    {"QOPENDEMOFILE", "open a demonstration file: its data follow"},
    {"QCLOSEDEMOFILE", "close the demonstration file"},
    {"RESET", "PJL variables at their defaults again"},
    {"INITIALIZE", "PJL variables at the maker's settings"},
    {"JOB", "begin of a job"},
    {"EOJ", "end of a job"},
    {"COMMENT", "comment"},
    {"ECHO", "text to be sent back"},
    {"INQUIRE", "question: a variable"},
    {"DINQUIRE", "question: a default"},
    {"INFO", "question: information"},
    {"USTATUSOFF", "status reports off"},
    {"USTATUS", "status reports"},
    {"FS", "file system of the printer"},
    {"", "PJL command"},
};

struct EscKMeaning {
  std::string_view bytes;
  const char* meaning;
};

constexpr EscKMeaning EscKMeanings[] = {
    {"\x01", "a download follows (printers of class 2)"},
    {"\x06", "end of the job"},
    {"\x06\xC0\x31", "downloads go to a storage device"},
    {"\x06\xC0\x32", "downloads go to memory again"},
    {"\x06\xC0\x50", "format the storage device: what it holds is lost"},
    {"\x06\xC0\x46", "print the directory of the storage"},
};

// A line with its blanks and its letter case put in order: "ENTER LANGUAGE = PCL".
std::string PutInOrder(std::string_view line) {
  std::string words;
  for (const char c : line) {
    if (std::isspace(static_cast<unsigned char>(c)) != 0) {
      if (!words.empty() && words.back() != ' ') words += ' ';
    } else if (c == '=') {
      if (!words.empty() && words.back() != ' ') words += ' ';
      words += "= ";
    } else {
      words += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
  }
  while (!words.empty() && words.back() == ' ') words.pop_back();
  return words;
}

}  // namespace

Explainer::Explainer(std::istream* stream, PieceReader::Sink sink, bool eachRow)
    : reader_(stream, std::move(sink)), eachRow_(eachRow) {}

void Explainer::Run() {
  while (!reader_.AtEnd()) {
    const uint64_t before = reader_.Offset();
    Step();
    if (reader_.Offset() == before) {
      reader_.Take();
      reader_.Emit("unknown");
    }
  }
  if (rowsWait_) EmitRows();
}

void Explainer::Step() {
  if (rowsWait_ && !reader_.Matches("\x1B*b")) EmitRows();
  if (!storedUpTo_.empty() && ExplainStoredData()) return;
  if (reader_.Matches(Uel)) {
    reader_.Take(Uel.size());
    language_ = Language::Open;
    return reader_.Emit("universal exit: back to PJL");
  }
  if (reader_.Matches("@PJL")) return ExplainPjlLine();
  if (reader_.Peek() == 0x1B && reader_.Peek(1) == '[' && ExplainBracket()) return;
  if (language_ == Language::Open) {
    if (ExplainBlanks()) return;
    language_ = Guess();
  }
  switch (language_) {
    case Language::Open:
    case Language::Pcl:
      return ExplainPcl();
    case Language::HpGl2:
    case Language::Gl:
      return ExplainHpGl2();
    case Language::Ppds:
      return ExplainPpds();
    case Language::PostScript:
      return ExplainPostScript();
    case Language::PclXl:
      return ExplainPclXl();
  }
}

// White space, and the byte that ends a PostScript job, between framing and data.
bool Explainer::ExplainBlanks() {
  if (reader_.Peek() == EndOfJob) {
    reader_.Take();
    reader_.Emit("end of a PostScript job");
    return true;
  }
  const auto isBlank = [](int c) { return c == ' ' || c == '\r' || c == '\n' || c == '\t'; };
  if (!isBlank(reader_.Peek())) return false;
  while (isBlank(reader_.Peek())) reader_.Take();
  reader_.Emit("blank");
  return true;
}

Explainer::Language Explainer::Guess() {
  if (reader_.Matches("%!")) return Language::PostScript;
  if (reader_.Matches(") HP-PCL XL;") || reader_.Matches(") PCL XL;")) return Language::PclXl;
  if (reader_.Matches("\x1B=")) return Language::Ppds;
  return Language::Pcl;
}

void Explainer::ExplainPjlLine() {
  reader_.TakeLine();
  constexpr std::string_view Prefix = "@PJL";
  const std::string words = PutInOrder(reader_.Shown().substr(Prefix.size()));
  const std::string command = words.substr(words.find_first_not_of(' ') == 1 ? 1 : 0);
  const auto* row = std::find_if(
      std::begin(PjlMeanings), std::end(PjlMeanings),
      [&](const PjlMeaning& each) { return std::string_view(command).starts_with(each.begin); });
  constexpr std::string_view Enter = "ENTER LANGUAGE = ";
  if (std::string_view(command).starts_with(Enter)) EnterLanguage(command.substr(Enter.size()));
  if (command.starts_with("QWRITEFILE")) storedUpTo_ = "@PJL END DATA";
  if (command.starts_with("QOPENDEMOFILE")) storedUpTo_ = "\x1BM@PJL QCLOSEDEMOFILE";
  reader_.Emit(command.empty() ? "PJL, no command" : row->meaning, true);
}

void Explainer::EnterLanguage(const std::string& name) {
  constexpr std::array<std::pair<std::string_view, Language>, 8> Names = {{
      {"PCL", Language::Pcl},
      {"PCLXL", Language::PclXl},
      {"POSTSCRIPT", Language::PostScript},
      {"PPDS", Language::Ppds},
      {"GL", Language::Gl},
      {"HPGL2", Language::Gl},
      {"HPGL", Language::Gl},
      {"POSTSCRIPT3", Language::PostScript},
  }};
  language_ = Language::Open;
  for (const auto& [known, language] : Names) {
    if (name == known) language_ = language;
  }
  // A PCL XL job may be announced as a PCL one: its header tells.
  if (language_ == Language::Pcl) language_ = Language::Open;
}

bool Explainer::ExplainStoredData() {
  reader_.TakeUpTo(storedUpTo_);
  storedUpTo_.clear();
  if (reader_.Taken() == 0) return false;
  reader_.Emit(std::to_string(reader_.Taken()) + " bytes of the stored file");
  return true;
}

// ESC [ with a letter and a count of the bytes that follow, low byte first.
bool Explainer::ExplainBracket() {
  const int letter = reader_.Peek(2);
  if (letter == 'D' && reader_.Peek(3) == 0) {
    ExplainDemoHeader();
    return true;
  }
  const bool isPpds = language_ == Language::Ppds;
  const bool known = letter == 'K' || letter == 'l' || (isPpds && letter >= 0);
  if (!known || reader_.Peek(4) < 0) return false;
  const auto count = uint64_t{reader_.PeekNumber(3, 2)};
  if (letter == 'K') {
    ExplainEscK(count);
  } else if (letter == 'l') {
    ExplainPpdsMacro(count);
  } else {
    reader_.Take(5 + count);
    reader_.Emit("PPDS command with " + std::to_string(count) + " bytes");
  }
  return true;
}

void Explainer::ExplainEscK(uint64_t count) {
  constexpr std::size_t HeaderSize = 5;
  const uint64_t taken = reader_.Take(HeaderSize + count) - HeaderSize;
  const std::string_view data = reader_.Shown().substr(HeaderSize);
  const auto* row = std::find_if(std::begin(EscKMeanings), std::end(EscKMeanings),
                                 [&](const EscKMeaning& each) { return each.bytes == data; });
  if (row != std::end(EscKMeanings)) return reader_.Emit(row->meaning);
  if (taken < count) return reader_.Emit("ESC [ K sequence, cut off");
  if (count != 3 || data[0] != 0x06) return reader_.Emit("ESC [ K sequence");
  constexpr std::pair<const char*, Language> None = {nullptr, Language::Open};
  const auto [name, language] = [&]() -> std::pair<const char*, Language> {
    switch (data[2]) {
      case 0x00:
        return {"the printer's default", Language::Open};
      case 0x01:
        return {"PPDS", Language::Ppds};
      case 0x02:
        return {"PCL", Language::Open};
      case 0x03:
        return {"GL", Language::Gl};
      case 0x08:
        return {"PostScript", Language::PostScript};
      default:
        return None;
    }
  }();
  if (name == nullptr) return reader_.Emit("ESC [ K sequence");
  language_ = language;
  reader_.Emit(std::string("switch the printer language: ") + name);
}

void Explainer::ExplainPpdsMacro(uint64_t count) {
  constexpr uint64_t HeaderSize = 5;
  const int operation = count > 0 ? reader_.Peek(5) : -1;
  const std::string id = std::to_string(reader_.Peek(6) << 8 | reader_.Peek(7));
  if (operation == 1 && count >= 3 && reader_.Peek(7) >= 0) {
    reader_.Take(HeaderSize + 3);
    reader_.Emit("begin of macro " + id + ", " + std::to_string(count - 3) + " bytes");
    language_ = Language::Ppds;
    return;
  }
  const uint64_t taken = reader_.Take(HeaderSize + count) - HeaderSize;
  if (operation == 5 && count == 3 && taken == count) return reader_.Emit("overlay macro " + id);
  if (operation == 6 && count == 1) return reader_.Emit("no overlay any more");
  reader_.Emit("PPDS macro command");
}

void Explainer::ExplainDemoHeader() {
  constexpr std::size_t HeaderSize = 23;
  constexpr std::size_t NameAt = 7;
  constexpr std::size_t NameSize = 12;
  if (reader_.Take(HeaderSize) < HeaderSize) {
    return reader_.Emit("header of a demonstration file, cut off");
  }
  const std::string_view header = reader_.Shown();
  const std::string_view name = header.substr(NameAt, NameSize);
  uint32_t size = 0;
  for (const char c : header.substr(NameAt + NameSize)) {
    size = size << 8 | static_cast<unsigned char>(c);
  }
  language_ = Language::Open;
  reader_.Emit("header of the demonstration file " + std::string(name.substr(0, name.find('\0'))) +
               ", " + std::to_string(size) + " bytes");
}

}  // namespace hvtool
