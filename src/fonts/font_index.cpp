#include "fonts/font_index.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "platform/stream.h"
#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::size_t LongestLine = 99;
constexpr std::size_t LongestSymbolSet = 3;
constexpr std::string_view CartridgeSection = "[Cartridge]";
constexpr std::string_view FontSection = "[PCL fonts]";
constexpr std::string_view FontList = "{O}";

bool IsBlankOrControl(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

// The lines of a text that say something.
class IndexLines {
 public:
  explicit IndexLines(std::string_view text) : rest_(text) {}

  // False behind the last one.
  bool Next(std::string_view* line) {
    while (!rest_.empty()) {
      const std::size_t end = rest_.find('\n');
      std::string_view text = rest_.substr(0, end).substr(0, LongestLine);
      rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
      while (!text.empty() && IsBlankOrControl(text.back())) text.remove_suffix(1);
      while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
      if (text.empty() || text.front() == ';') continue;
      *line = text;
      return true;
    }
    return false;
  }

  // Goes behind the first line that begins with the keyword; false when none does, or one of the
  // characters that end the search begins a line before it.
  bool Find(std::string_view keyword, std::string_view ends, std::string_view* line) {
    while (Next(line)) {
      if (StartsWith(*line, keyword)) return true;
      if (ends.find(line->front()) != std::string_view::npos) return false;
    }
    return false;
  }

 private:
  std::string_view rest_;
};

std::string_view SkipBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return text;
}

// The words behind a keyword.
class Words {
 public:
  Words(std::string_view line, std::string_view keyword)
      : rest_(line.substr(0, line.find_first_of(";}"))) {
    rest_.remove_prefix(std::min(keyword.size(), rest_.size()));
  }

  std::string_view Next() {
    rest_ = SkipBlanks(rest_);
    const std::string_view word = rest_.substr(0, rest_.find_first_of(" \t"));
    rest_.remove_prefix(word.size());
    return word;
  }
  std::string_view Rest() {
    rest_ = SkipBlanks(rest_);
    const std::size_t last = rest_.find_last_not_of(" \t");
    return rest_.substr(0, last == std::string_view::npos ? 0 : last + 1);
  }

 private:
  std::string_view rest_;
};

// The rest of the line behind the first word, which is an equals sign as a rule.
std::string_view ValueOf(std::string_view line, std::string_view keyword) {
  Words words(line, keyword);
  words.Next();
  return words.Rest();
}

// The third word of just three, a number.
uint32_t ReadMemory(std::string_view line, std::string_view keyword) {
  constexpr uint32_t Most = std::numeric_limits<uint32_t>::max();
  Words words(line, keyword);
  words.Next();
  words.Next();
  const std::string_view number = words.Next();
  if (!words.Rest().empty()) return 0;
  uint64_t value = 0;
  for (const char c : number) {
    if (!IsDigit(c)) break;
    value = std::min<uint64_t>(value * 10 + static_cast<uint64_t>(c - '0'), Most);
  }
  return static_cast<uint32_t>(value);
}

void AddUnlessEmpty(FontIndexEntry&& entry, std::vector<FontIndexEntry>* entries) {
  if (!entry.fontPath.empty()) entries->push_back(std::move(entry));
}

void ParseCartridges(std::string_view text, std::vector<FontIndexEntry>* entries) {
  IndexLines lines(text);
  std::string_view line;
  if (!lines.Find(CartridgeSection, "", &line)) return;
  while (lines.Find("{", "[", &line)) {
    FontIndexEntry entry;
    entry.fontPath = Words(line, "{").Next();
    AddUnlessEmpty(std::move(entry), entries);
  }
}

// Attributes of a font; of one that comes twice the first counts.
struct FontAttributes {
  FontIndexEntry entry;
  bool hasMemory = false;

  void Read(std::string_view line) {
    const auto take = [line](std::string_view keyword, std::string* value) {
      if (StartsWith(line, keyword) && value->empty()) *value = ValueOf(line, keyword);
    };
    constexpr std::string_view SymbolSet = "/symset";
    constexpr std::string_view Resource = "/resource";
    take("/font file", &entry.fontPath);
    take("/tfm", &entry.metricsPath);
    if (StartsWith(line, SymbolSet) && entry.symbolSet.empty()) {
      Words words(line, SymbolSet);
      words.Next();
      entry.symbolSet = words.Next().substr(0, LongestSymbolSet);
    }
    if (StartsWith(line, Resource) && !hasMemory) {
      entry.memoryNeeded = ReadMemory(line, Resource);
      hasMemory = true;
    }
  }
};

void ParseFonts(std::string_view text, std::vector<FontIndexEntry>* entries) {
  IndexLines lines(text);
  std::string_view line;
  if (!lines.Find(FontSection, "", &line) || !lines.Find(FontList, "[", &line)) return;
  FontAttributes font;
  bool inFont = false;
  while (lines.Next(&line) && line.front() != '{' && line.front() != '[') {
    if (line.front() == 'F') {
      AddUnlessEmpty(std::move(font.entry), entries);
      font = FontAttributes();
      inFont = StartsWith(line, "FONT");
    } else if (inFont) {
      font.Read(line);
    }
  }
  AddUnlessEmpty(std::move(font.entry), entries);
}

}  // namespace

std::vector<FontIndexEntry> ParseFontIndex(std::string_view text) {
  std::vector<FontIndexEntry> entries;
  ParseCartridges(text, &entries);
  ParseFonts(text, &entries);
  return entries;
}

std::vector<FontIndexEntry> ReadFontIndex(const std::string& folder) {
  constexpr std::size_t Step = 65536;
  const std::unique_ptr<platform::Stream> file =
      platform::OpenStream((folder + "GLUE.TXT").c_str(), "rb");
  if (file == nullptr) return {};
  std::string text;
  std::size_t got = Step;
  while (got == Step) {
    const std::size_t before = text.size();
    text.resize(before + Step);
    got = file->Read(&text[before], Step);
    text.resize(before + got);
  }
  if (file->HasError()) return {};
  return ParseFontIndex(text);
}

}  // namespace hv
