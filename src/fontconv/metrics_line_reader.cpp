#include "fontconv/metrics_line_reader.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "api/hvapi.h"
#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::size_t LongestFile = 65534;
constexpr std::size_t LongestLine = 255;
constexpr char EndOfText = 0x1A;
constexpr int64_t LargestInteger = std::numeric_limits<int32_t>::max();

constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
constexpr bool EndsWord(char c) {
  return IsBlank(c) || c == ';';
}
constexpr bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

// The first place from `from` on of a character that is so, or the end.
template <typename Is>
std::size_t FindFirst(std::string_view text, std::size_t from, Is is) {
  while (from < text.size() && !is(text[from])) ++from;
  return from;
}

int64_t AppendDigit(int64_t value, int64_t base, int64_t digit) {
  return std::min(value * base + digit, LargestInteger);
}

// 0 to 9, then 10 to 35 for the letters of either case, else -1.
int DigitValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'Z' ? upper - 'A' + 10 : -1;
}

}  // namespace

void MetricsLine::SkipBlanks() {
  rest_.remove_prefix(FindFirst(rest_, 0, [](char c) { return !IsBlank(c); }));
}

bool MetricsLine::TakeMinus() {
  SkipBlanks();
  const bool negative = !rest_.empty() && rest_.front() == '-';
  if (negative) rest_.remove_prefix(1);
  return negative;
}

std::string_view MetricsLine::Word(std::size_t longest) {
  SkipBlanks();
  std::size_t length = FindFirst(rest_, 0, EndsWord);
  if (length < rest_.size() && rest_[length] == ';') ++length;
  length = std::min(length, longest);
  const std::string_view word = rest_.substr(0, length);
  rest_.remove_prefix(length);
  return word;
}

int64_t MetricsLine::TakeDigits() {
  int64_t value = 0;
  while (!rest_.empty() && IsDigit(rest_.front())) {
    value = AppendDigit(value, 10, rest_.front() - '0');
    rest_.remove_prefix(1);
  }
  return value;
}

int32_t MetricsLine::Integer() {
  const bool negative = TakeMinus();
  const int64_t value = TakeDigits();
  return static_cast<int32_t>(negative ? -value : value);
}

int16_t MetricsLine::Tenths() {
  const bool negative = TakeMinus();
  int64_t value = TakeDigits() * 10;
  // Further digits make no difference to a number cut after the first.
  if (rest_.size() >= 2 && rest_[0] == '.' && IsDigit(rest_[1])) value += rest_[1] - '0';
  return static_cast<int16_t>(negative ? -value : value);
}

int32_t MetricsLine::HexInteger() {
  const bool negative = TakeMinus();
  const std::size_t length = FindFirst(rest_, 0, EndsWord);
  int64_t value = 0;
  for (const char c : rest_.substr(0, length)) {
    const int digit = DigitValue(c);
    if (digit >= 0) value = AppendDigit(value, 16, digit);
  }
  rest_.remove_prefix(length);
  return static_cast<int32_t>(negative ? -value : value);
}

std::string_view MetricsLine::Rest() {
  SkipBlanks();
  return std::exchange(rest_, {});
}

MetricsLine MetricsLine::Field() {
  const std::size_t end = std::min(rest_.find(';'), rest_.size());
  const MetricsLine field(rest_.substr(0, end));
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  return field;
}

uint32_t MetricsLineReader::Load(platform::Stream* file) {
  text_.resize(LongestFile + 1);
  text_.resize(file->Read(text_.data(), text_.size()));
  if (file->HasError()) return HV_UNUSABLE_FILE;
  if (text_.size() > LongestFile) return HV_LIMIT_REACHED;
  text_.resize(std::min(text_.find(EndOfText), text_.size()));
  next_ = lineStart_ = 0;
  return HV_OK;
}

std::optional<MetricsLine> MetricsLineReader::Next() {
  const std::string_view text = text_;
  lineStart_ = FindFirst(text, next_, [](char c) { return !IsBlank(c) && !IsLineEnd(c); });
  if (lineStart_ == text.size()) {
    next_ = lineStart_;
    return std::nullopt;
  }
  const std::string_view line =
      text.substr(lineStart_, FindFirst(text, lineStart_, IsLineEnd) - lineStart_);
  if (line.size() >= LongestLine) {
    // What a line has too much ends at a line feed, whatever its lines end in elsewhere.
    const std::size_t end = text.find('\n', lineStart_ + LongestLine);
    next_ = end == std::string_view::npos ? text.size() : end + 1;
    return MetricsLine(line.substr(0, LongestLine));
  }
  next_ = lineStart_ + line.size();
  return MetricsLine(line);
}

}  // namespace hv
