#include "config/record_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::size_t NumberTokenSize = 24;
constexpr int EndOfFile = -1;

bool IsFieldSeparator(int c) {
  constexpr int FirstPrintable = 0x20;
  constexpr int Delete = 0x7F;
  if (c == ',' || c == ';' || c == ':' || c == ' ') return true;
  return c != EndOfFile && c != '\n' && (c < FirstPrintable || c >= Delete);
}

bool EndsToken(int c) {
  return c == ',' || c == ';' || c == ':' || c == '\n' || c == EndOfFile;
}

// The file with the character at hand, which is the next one to be looked at.
class Scanner {
 public:
  explicit Scanner(platform::Stream* file) : file_(file) {}

  int AtHand() const { return atHand_; }
  void Advance() { atHand_ = file_->ReadByte(); }

  void SkipSeparators() {
    while (IsFieldSeparator(atHand_)) Advance();
  }
  void SkipLine() {
    while (atHand_ != '\n' && atHand_ != EndOfFile) Advance();
  }

  // The characters up to `isEnd`; those that do not fit are dropped.
  template <typename Predicate>
  std::string_view TakeUntil(std::span<char> kept, Predicate isEnd) {
    std::size_t length = 0;
    for (; atHand_ != EndOfFile && !isEnd(atHand_); Advance()) {
      if (length < kept.size()) kept[length++] = static_cast<char>(atHand_);
    }
    return {kept.data(), length};
  }

 private:
  platform::Stream* file_;
  int atHand_ = EndOfFile;
};

// The value of a token that is a decimal number as a whole. A number that is out of range gives the
// nearest one.
template <typename Number>
std::optional<Number> ParseNumber(std::string_view token) {
  const bool negative = StartsWith(token, "-");
  const std::string_view magnitude = token.substr(negative || StartsWith(token, "+") ? 1 : 0);
  // from_chars takes "inf" and "nan" as well, and a second sign behind the "+".
  if (magnitude.empty() || (!IsDigit(magnitude[0]) && magnitude[0] != '.')) return std::nullopt;
  Number value = 0;
  const char* const end = magnitude.data() + magnitude.size();
  const auto [parsed, error] = std::from_chars(magnitude.data(), end, value);
  if (parsed != end || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<Number>;
    // So short a token is too small for a floating-point number only by its exponent.
    const bool tooSmall = magnitude.find("e-") != std::string_view::npos ||
                          magnitude.find("E-") != std::string_view::npos;
    value = tooSmall ? Number{0} : Limits::has_infinity ? Limits::infinity() : Limits::max();
  }
  return negative ? -value : value;
}

template <typename Stored, typename Number>
void Store(std::span<uint8_t> field, Number value) {
  const Stored stored = static_cast<Stored>(value);
  std::memcpy(field.data(), &stored, sizeof stored);
}

void StoreInteger(std::span<uint8_t> field, int64_t value) {
  const auto nearest = [value](auto limits) {
    return std::clamp<int64_t>(value, limits.lowest(), limits.max());
  };
  if (field.size() == sizeof(int16_t)) {
    Store<int16_t>(field, nearest(std::numeric_limits<int16_t>()));
  } else {
    Store<int32_t>(field, nearest(std::numeric_limits<int32_t>()));
  }
}

void StoreFloat(std::span<uint8_t> field, double value) {
  if (field.size() == sizeof(float)) {
    Store<float>(field, value);
  } else {
    Store<double>(field, value);
  }
}

// The room for a text in its field: what is left is its NUL.
std::span<char> TextRoom(std::span<uint8_t> field) {
  return {reinterpret_cast<char*>(field.data()), field.size() - 1};
}

RecordResult ReadQuoted(Scanner* scanner, std::span<uint8_t> field) {
  if (scanner->AtHand() != '"') return RecordResult::Malformed;
  scanner->Advance();
  scanner->TakeUntil(TextRoom(field), [](int c) { return c == '"'; });
  if (scanner->AtHand() == EndOfFile) return RecordResult::Ended;
  scanner->Advance();
  return RecordResult::Read;
}

RecordResult ReadText(Scanner* scanner, std::span<uint8_t> field) {
  if (scanner->AtHand() == '"') return ReadQuoted(scanner, field);
  scanner->TakeUntil(TextRoom(field), EndsToken);
  return RecordResult::Read;
}

template <typename Number>
RecordResult ReadNumber(Scanner* scanner, std::span<uint8_t> field,
                        void (*store)(std::span<uint8_t>, Number)) {
  std::array<char, NumberTokenSize> kept;
  const std::optional<Number> value = ParseNumber<Number>(scanner->TakeUntil(kept, EndsToken));
  if (!value) return RecordResult::Malformed;
  store(field, *value);
  return RecordResult::Read;
}

RecordResult ReadValue(Scanner* scanner, const FieldDescriptor& descriptor,
                       std::span<uint8_t> field) {
  const bool isLong = descriptor.type == 5 && descriptor.size == sizeof(int32_t);
  switch (isLong ? 8 : descriptor.type) {
    case 0:
      return ReadQuoted(scanner, field);
    case 1:
    case 2:
    case 8:
      return ReadNumber<int64_t>(scanner, field, StoreInteger);
    case 3:
    case 4:
      return ReadNumber<double>(scanner, field, StoreFloat);
    case 5:
    case 7:
      return ReadText(scanner, field);
    default:
      return RecordResult::Read;
  }
}

// From the first character of a record to its line feed.
RecordResult ReadFields(Scanner* scanner, const RecordLayout& layout, std::span<uint8_t> record) {
  std::fill(record.begin(), record.end(), uint8_t{0});
  for (const FieldDescriptor& descriptor : layout.fields) {
    scanner->SkipSeparators();
    if (scanner->AtHand() == EndOfFile) return RecordResult::Malformed;
    const RecordResult result =
        ReadValue(scanner, descriptor, record.subspan(descriptor.offset, descriptor.size));
    if (result != RecordResult::Read) return result;
  }
  scanner->SkipSeparators();
  return scanner->AtHand() == '\n' ? RecordResult::Read : RecordResult::Malformed;
}

}  // namespace

RecordResult ReadRecord(platform::Stream* file, const RecordLayout& layout,
                        std::span<uint8_t> record, int64_t* offset) {
  Scanner scanner(file);
  do {
    *offset = file->Position();
    scanner.Advance();
    scanner.SkipSeparators();
    if (scanner.AtHand() == '#') scanner.SkipLine();
  } while (scanner.AtHand() == '\n');

  const RecordResult result =
      scanner.AtHand() == EndOfFile ? RecordResult::Ended : ReadFields(&scanner, layout, record);
  // A failed read looks like the end of the file, but there may be more records.
  return file->HasError() ? RecordResult::Malformed : result;
}

}  // namespace hv
