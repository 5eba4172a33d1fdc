#include "support/job_filter_model.h"

#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

namespace hvtest {
namespace {

constexpr std::size_t MostValueBytes = 12;
constexpr std::size_t End = std::string::npos;

bool StartsAt(const std::string& text, std::size_t at, const std::string& wanted) {
  return text.compare(at, wanted.size(), wanted) == 0;
}

std::size_t BehindLine(const std::string& text, std::size_t at) {
  const std::size_t lineFeed = text.find('\n', at);
  return lineFeed == End ? text.size() : lineFeed + 1;
}

// Where what goes on behind a command that every job may have, or nothing.
std::optional<std::size_t> BehindJobCommand(const std::string& text, std::size_t at) {
  if (StartsAt(text, at, "\x1B%-12345X")) return at + 9;
  if (StartsAt(text, at, "@PJL")) return BehindLine(text, at);
  if (!StartsAt(text, at, "\x1B[K")) return std::nullopt;
  if (at + 5 > text.size()) return text.size();
  const std::size_t count = static_cast<unsigned char>(text[at + 3]) +
                            std::size_t{256} * static_cast<unsigned char>(text[at + 4]);
  return std::min(text.size(), at + 5 + count);
}

bool IsLetter(char c) {
  return c >= 0x40 && c <= 0x7E && c != 0x5F;
}

std::size_t FindLetter(const std::string& text, std::size_t at) {
  while (at < text.size() && !IsLetter(text[at])) ++at;
  return at;
}

enum class Fate { Drop, Keep, Data };

// The table of commands, row by row.
Fate FateOf(const std::string& family, char letter, long value, uint32_t mask) {
  const std::string command = family + (letter >= 'a' ? static_cast<char>(letter - 0x20) : letter);
  const auto masked = [&](uint32_t bit) { return (mask & bit) != 0 ? Fate::Drop : Fate::Keep; };
  if (command == "&lF" || command == "&lP" || command == "&bM") return Fate::Drop;
  if (command == "&lA") return masked(0x004);
  if (command == "&lH") return masked(0x008);
  if (command == "&lS" || command == "&aG") return masked(0x010);
  if (command == "&lO") return masked(0x020);
  if (command == "&lT" && value == 1) return masked(0x040);
  if (command == "&lX") return masked(0x080);
  if (command == "&lL") return masked(0x100);
  if (command == "&rF") return masked(0x200);
  if (command == "&lG") return masked(0x400);
  if (command == "&fX" && (value == 6 || value == 7 || value == 10)) return Fate::Drop;
  if (command == "&fX" && (value == 0 || value == 1)) return masked(0x800);
  if (command == "*cF" && (value == 0 || value == 1)) return Fate::Drop;
  for (const char* data : {"&pX", "(fW", "(sW", ")sW", "*bW", "*bV", "*cW"}) {
    if (command == data) return Fate::Data;
  }
  return Fate::Keep;
}

bool IsFamily(const std::string& family) {
  for (const char* known : {"&a", "&b", "&f", "&l", "&p", "&r", "(f", "(s", ")s", "*b", "*c"}) {
    if (family == known) return true;
  }
  return false;
}

// Filters the sequence whose parameters begin at `at`, and its data; the place behind them.
std::size_t FilterSequence(const std::string& text, std::size_t at, const std::string& family,
                           uint32_t mask, std::string* out) {
  std::string kept;
  bool dropped = false;
  long data = 0;
  for (;;) {
    const std::size_t letter = FindLetter(text, at);
    const std::string value = text.substr(at, letter - at).substr(0, MostValueBytes);
    if (letter == text.size()) {
      if (kept.empty() && value.empty() && dropped) return letter;
      *out += "\x1B" + family + kept + value;
      return letter;
    }
    const long number = std::strtol(value.c_str(), nullptr, 10);
    const Fate fate = FateOf(family, text[letter], number, mask);
    if (fate == Fate::Drop) dropped = true;
    if (fate != Fate::Drop) kept += value + text[letter];
    if (fate == Fate::Data) data += number;
    at = letter + 1;
    if (text[letter] < 0x60) break;
  }
  if (!kept.empty()) {
    if (kept.back() >= 0x60) kept.back() = static_cast<char>(kept.back() - 0x20);
    *out += "\x1B" + family + kept;
  }
  if (data <= 0) return at;
  *out += text.substr(at, static_cast<std::size_t>(data));
  return std::min(text.size(), at + static_cast<std::size_t>(data));
}

std::size_t FilterIdentifier(const std::string& text, std::size_t at, std::string* out) {
  const std::size_t end = std::min(text.find_first_not_of("0123456789", at + 3), text.size());
  const long count = std::strtol(text.substr(at + 3, end - at - 3).c_str(), nullptr, 10);
  if (count != 0 && end < text.size() && text[end] == 'W') {
    return std::min(text.size(), end + 1 + static_cast<std::size_t>(count));
  }
  const std::size_t behind = std::min(text.size(), end + 1);
  *out += text.substr(at, behind - at);
  return behind;
}

}  // namespace

std::string FilterPostScriptModel(const std::string& source, const std::string& textAfterPsHeader) {
  std::string out;
  for (std::size_t at = 0; at < source.size();) {
    if (const auto behind = BehindJobCommand(source, at)) {
      at = *behind;
    } else if (StartsAt(source, at, "%!PS")) {
      const std::size_t end = BehindLine(source, at);
      out += source.substr(at, end - at) + textAfterPsHeader;
      at = end;
    } else {
      if (source[at] != 0x04) out += source[at];
      ++at;
    }
  }
  return out;
}

std::string FilterPclModel(const std::string& source, uint32_t mask) {
  std::string text = source;
  std::string out;
  bool graphics = false;
  for (std::size_t at = 0; at < text.size();) {
    if (!graphics) {
      if (const auto behind = BehindJobCommand(text, at)) {
        at = *behind;
        continue;
      }
    }
    if (StartsAt(text, at, "\x1B%")) {
      const std::size_t letter = FindLetter(text, at + 2);
      // What does not fit a value is lost.
      if (letter > at + 2 + MostValueBytes) {
        text.erase(at + 2 + MostValueBytes, letter - (at + 2 + MostValueBytes));
        continue;
      }
      if (letter < text.size() && text[letter] == (graphics ? 'A' : 'B')) {
        out += text.substr(at, letter + 1 - at);
        at = letter + 1;
        graphics = !graphics;
        continue;
      }
    }
    if (StartsAt(text, at, "\033E")) {
      graphics = false;
      if ((mask & 0x001) == 0) out += "\033E";
      at += 2;
    } else if (!graphics && StartsAt(text, at, "\x1B&n")) {
      at = FilterIdentifier(text, at, &out);
    } else if (!graphics && text[at] == 0x1B && IsFamily(text.substr(at + 1, 2))) {
      at = FilterSequence(text, at + 3, text.substr(at + 1, 2), mask, &out);
    } else {
      const bool dropped = !graphics && text[at] == 0x0C && (mask & 0x002) != 0;
      if (!dropped) out += text[at];
      ++at;
    }
  }
  return out;
}

}  // namespace hvtest
