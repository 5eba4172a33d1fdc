#include "config/ini_line.h"

#include <cstring>
#include <new>

#include "config/ini_file.h"

namespace hv {
namespace {

void CopyText(IniLine* line, char* to, std::string_view text) {
  std::memcpy(to, text.data(), text.size());
  to[text.size()] = '\0';
  line->text = to;
  line->length = static_cast<uint32_t>(text.size());
}

char* TextBehind(IniLine* line) {
  return reinterpret_cast<char*>(line + 1);
}

}  // namespace

IniLine::IniLine() : HvIniLine{nullptr, nullptr} {}
IniLine::~IniLine() = default;

std::unique_ptr<IniLine> MakeIniLine(std::string_view text) {
  void* const block = ::operator new(sizeof(IniLine) + text.size() + 1, std::nothrow);
  if (block == nullptr) return nullptr;
  std::unique_ptr<IniLine> line(new (block) IniLine);
  line->capacity = static_cast<uint32_t>(text.size());
  CopyText(line.get(), TextBehind(line.get()), text);
  if (IsHeader(*line)) {
    line->section.reset(new (std::nothrow) IniSection);
    if (line->section == nullptr) return nullptr;
  }
  return line;
}

bool SetText(IniLine* line, std::string_view text) {
  if (text.size() > line->capacity) {
    std::unique_ptr<char[]> longer(new (std::nothrow) char[text.size() + 1]);
    if (longer == nullptr) return false;
    line->longerText = std::move(longer);
    line->capacity = static_cast<uint32_t>(text.size());
  }
  CopyText(line, line->longerText == nullptr ? TextBehind(line) : line->longerText.get(), text);
  return true;
}

std::optional<IniEntry> EntryOf(const IniLine& line) {
  const std::string_view text = Text(line);
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  return IniEntry{text.substr(0, equals), text.substr(equals + 1)};
}

std::string_view KeyOf(const IniLine& line) {
  const std::string_view text = Text(line);
  return IsHeader(line) ? text : text.substr(0, text.find('='));
}

}  // namespace hv
