#include "support/ini_model.h"

namespace hvtest {
namespace {

constexpr std::size_t MostPerRead = 1019;
constexpr std::size_t LongestLine = 1021;

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return text;
}

bool Same(const std::string& a, const std::string& b) {
  return Lower(a) == Lower(b);
}

bool StartsHeader(const std::string& line) {
  return !line.empty() && line[0] == '[';
}

// Key and value of an entry, nothing for another line.
std::optional<std::pair<std::string, std::string>> Entry(const std::string& line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) return std::nullopt;
  return std::pair(line.substr(0, equals), line.substr(equals + 1));
}

bool IsEntryOf(const std::string& line, const std::string& key) {
  const auto entry = Entry(line);
  return entry && Same(entry->first, key);
}

// The pieces of a line between its '=' characters.
std::vector<std::string> Pieces(const std::string& line) {
  std::vector<std::string> pieces(1);
  for (const char c : line) {
    if (c == '=') {
      pieces.emplace_back();
    } else {
      pieces.back() += c;
    }
  }
  return pieces;
}

void TrimBlanks(std::string* text) {
  while (!text->empty() && text->back() == ' ') text->pop_back();
}

// The text that a text stream gives for the bytes of a file.
std::string DecodeText(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size() && bytes[i] != '\x1A'; ++i) {
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') continue;
    text += bytes[i];
  }
  return text;
}

}  // namespace

IniModel::IniModel(const std::string& bytes, bool dropsComments) {
  const std::string text = DecodeText(bytes);
  for (std::size_t at = 0; at < text.size();) {
    std::string line;
    while (at < text.size() && line.size() < MostPerRead) {
      line += text[at++];
      if (line.back() == '\n') break;
    }
    if (line.back() == '\n') line.pop_back();
    TrimBlanks(&line);
    const auto entry = Entry(line);
    if (entry && !StartsHeader(line)) {
      std::string key = entry->first;
      TrimBlanks(&key);
      line = key + "=" + entry->second;
    } else if (dropsComments && (line.empty() || line[0] == ';')) {
      continue;
    }
    Insert(lines_.size(), line);
  }
}

void IniModel::Insert(std::size_t at, const std::string& line) {
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), line);
  if (cursor_ && at <= *cursor_) ++*cursor_;
  maxLineLength_ = std::max(maxLineLength_, line.size() + 1);
}

void IniModel::Remove(std::size_t at) {
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at));
  if (cursor_ && at < *cursor_) --*cursor_;
  if (cursor_ && *cursor_ >= lines_.size()) cursor_.reset();
}

std::optional<std::size_t> IniModel::FindHeader(const std::string& section) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (Same(lines_[i], "[" + section + "]")) return i;
  }
  return std::nullopt;
}

MaybeText IniModel::Read(const MaybeText& section, const MaybeText& key) {
  std::size_t at = cursor_.value_or(lines_.size());
  if (section) {
    const auto header = FindHeader(*section);
    if (!header) return std::nullopt;
    at = *header + 1;
  }
  cursor_.reset();
  for (; at < lines_.size(); ++at) {
    const std::string& line = lines_[at];
    if (key ? IsEntryOf(line, *key) : !StartsHeader(line)) {
      if (at + 1 < lines_.size()) cursor_ = at + 1;
      return key ? Entry(line)->second : line;
    }
    if (StartsHeader(line)) break;
  }
  return std::nullopt;
}

IniModel::Copy IniModel::Read2(const std::string& section, const std::string& key,
                               const MaybeText& defaultValue, std::size_t size) const {
  const auto header = FindHeader(section);
  uint32_t code = header ? 41 : 45;
  MaybeText value = defaultValue;
  for (std::size_t i = header ? *header + 1 : lines_.size();
       i < lines_.size() && !StartsHeader(lines_[i]); ++i) {
    if (!IsEntryOf(lines_[i], key)) continue;
    value = Entry(lines_[i])->second;
    break;
  }
  if (!value) return {code, ""};
  code = value->size() < size ? 0 : 42;
  return {code, value->substr(0, size)};
}

// Behind the last line that is neither empty nor a header.
std::size_t IniModel::FirstBlockEnd(std::size_t header) const {
  std::size_t at = header + 1;
  while (at < lines_.size() && !lines_[at].empty() && !StartsHeader(lines_[at])) ++at;
  return at;
}

bool IniModel::Write(const std::string& section, const std::string& key, const std::string& value,
                     bool besideOthers) {
  const std::string entry = key + "=" + value;
  if (section.size() + 2 > LongestLine || entry.size() > LongestLine) return false;
  dirty_ = true;
  const auto header = FindHeader(section);
  if (!header) {
    if (!lines_.empty() && !lines_.back().empty()) Insert(lines_.size(), "");
    Insert(lines_.size(), "[" + section + "]");
    Insert(lines_.size(), entry);
    return true;
  }
  const std::size_t end = FirstBlockEnd(*header);
  for (std::size_t i = *header + 1; i < lines_.size() && !StartsHeader(lines_[i]); ++i) {
    if (!IsEntryOf(lines_[i], key)) continue;
    if (besideOthers && Same(Entry(lines_[i])->second, value)) return true;
    if (besideOthers || i >= end) continue;
    lines_[i] = entry;
    maxLineLength_ = std::max(maxLineLength_, entry.size() + 1);
    return true;
  }
  Insert(end, entry);
  return true;
}

void IniModel::Delete(const std::string& section, const MaybeText& key, const MaybeText& value) {
  dirty_ = true;
  const auto header = FindHeader(section);
  if (!header) return;
  if (!key) return Remove(*header);
  for (std::size_t i = *header + 1; i < lines_.size() && !StartsHeader(lines_[i]); ++i) {
    const std::vector<std::string> pieces = Pieces(lines_[i]);
    if (!Same(pieces[0], *key)) continue;
    if (value && (pieces.size() < 2 || !Same(pieces[1], *value))) continue;
    return Remove(i);
  }
}

std::string IniModel::Bytes() const {
  std::string bytes;
  for (const std::string& line : lines_) bytes += line + "\r\n";
  return bytes;
}

}  // namespace hvtest
