#include "replies/reply_reader.h"

#include <algorithm>
#include <limits>

#include "support/ascii.h"
#include "support/byte_order.h"

namespace hv {
namespace {

// By ReplyKey.
constexpr std::string_view KeyNames[] = {"ID", "DT", "NE", "SE", "LD", "DA",
                                         "TD", "DL", "TL", "VN", "BF", "DD"};
static_assert(std::size(KeyNames) == static_cast<std::size_t>(ReplyKey::Unknown));

// A layout may list any number of fields that take no bytes. A reply whose items have fewer than
// this many fields for each of its bytes is read whole.
constexpr std::size_t FieldsPerByte = 16;

std::span<const uint8_t> WholeReply(const uint8_t* reply) {
  return {reply, std::size_t{LoadBe16(reply)} + 2};
}

// Blanks, a sign, digits; behind them anything. No digits give 0, and so does a negative number,
// since no field takes fewer bytes than none.
int32_t ParseWidth(std::string_view text) {
  constexpr int32_t Most = std::numeric_limits<int32_t>::max();
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const bool negative = StartsWith(text, "-");
  if (negative || StartsWith(text, "+")) text.remove_prefix(1);
  int32_t width = 0;
  for (const char c : text) {
    if (!IsDigit(c)) break;
    const int32_t digit = c - '0';
    width = width > (Most - digit) / 10 ? Most : width * 10 + digit;
  }
  return negative ? 0 : width;
}

// A field of a name that is not known is one to be passed over: printers may add some.
ReplyField ParseField(std::string_view element) {
  for (std::size_t i = 0; i < std::size(KeyNames); ++i) {
    if (!StartsWith(element, KeyNames[i])) continue;
    // The character behind the key is not looked at.
    const std::size_t number = std::min(KeyNames[i].size() + 1, element.size());
    return {static_cast<ReplyKey>(i), ParseWidth(element.substr(number))};
  }
  const std::size_t colon = std::min(element.find(':'), element.size());
  return {ReplyKey::Unknown, ParseWidth(element.substr(std::min(colon + 1, element.size())))};
}

int32_t ToNumber(std::span<const uint8_t> bytes) {
  switch (bytes.size()) {
    case 1:
      return static_cast<int8_t>(bytes[0]);
    case 2:
      return LoadBe16(bytes.data());
    case 4:
      return static_cast<int32_t>(LoadBe32(bytes.data()));
    default:
      return 0;
  }
}

std::string_view AsText(std::span<const uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

ReplyReader::ReplyReader(const uint8_t* reply)
    : cursor_(WholeReply(reply)), fieldsLeft_(FieldsPerByte * cursor_.Remaining()) {
  constexpr std::size_t LeadingWords = 4;
  cursor_.Skip(LeadingWords);
  if (!ReadSection(&prefix_) || !ReadSection(&container_) || !ReadSection(&data_)) Stop();
  for (const ReplyField& field : prefix_) prefixSize_ += static_cast<std::size_t>(field.width);
}

// Two characters that are not looked at, the elements, "}".
bool ReplyReader::ReadSection(Section* section) {
  cursor_.Skip(2);
  std::size_t length = 0;
  while (cursor_.Has(length + 1) && cursor_.PeekU8(length) != '}') ++length;
  std::string_view text = AsText(cursor_.ReadBytes(length));
  if (!cursor_.Skip(1)) return false;

  const auto colons = static_cast<std::size_t>(std::count(text.begin(), text.end(), ':'));
  section->reserve(colons + 1);
  while (section->size() <= colons) {
    const std::size_t comma = text.find(',');
    const ReplyField field = ParseField(text.substr(0, comma));
    if (field.key != ReplyKey::Unknown || field.width > 0) section->push_back(field);
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  return true;
}

std::size_t ReplyReader::MostItems() const {
  return cursor_.Remaining() / std::max<std::size_t>(prefixSize_, 1);
}

ReplyPrefix ReplyReader::ReadPrefix() {
  ReplyPrefix prefix;
  for (const ReplyField& field : prefix_) {
    const int32_t value = TakeNumber(field.width);
    if (field.key == ReplyKey::Identifier) prefix.identifier = value;
    if (field.key == ReplyKey::DataType) prefix.type = value;
  }
  return prefix;
}

ReplyReader::ContainerHeader ReplyReader::ReadContainerHeader() {
  ContainerHeader header;
  for (const ReplyField& field : container_) {
    const int32_t value = TakeNumber(field.width);
    if (field.key == ReplyKey::ElementCount) header.elementCount = value;
    if (field.key == ReplyKey::Length) header.length = value;
  }
  return header;
}

int32_t ReplyReader::ReadElementCount() {
  const int32_t count = ReadContainerHeader().elementCount;
  if (count < 0) Stop();
  return std::max(count, 0);
}

ReplyValue ReplyReader::ReadValue(int32_t type) {
  ReplyValue value;
  if (type == ReplyContainer) Take(ReadContainerHeader().length);
  if (type != ReplyInteger && type != ReplyText) return value;
  value.text = std::string_view();
  int32_t length = 0;
  for (const ReplyField& field : data_) {
    if (field.key == ReplyKey::Data) {
      const std::span<const uint8_t> bytes = Take(length);
      value.text = AsText(bytes);
      if (type == ReplyInteger) value.integer = ToNumber(bytes);
    } else {
      const int32_t number = TakeNumber(field.width);
      if (field.key == ReplyKey::Length) length = number;
    }
  }
  return value;
}

std::span<const uint8_t> ReplyReader::Take(int32_t width) {
  if (fieldsLeft_ == 0) {
    Stop();
    return {};
  }
  --fieldsLeft_;
  // A negative width is more than any reply holds.
  return cursor_.ReadBytes(static_cast<std::size_t>(width));
}

int32_t ReplyReader::TakeNumber(int32_t width) {
  return ToNumber(Take(width));
}

void ReplyReader::Stop() {
  cursor_.Skip(std::numeric_limits<std::size_t>::max());
}

}  // namespace hv
