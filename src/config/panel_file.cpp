#include "config/panel_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "config/number_list.h"
#include "config/panel_registrations.h"
#include "support/byte_order.h"

namespace hv {
namespace {

constexpr std::size_t ValueSize = 4000;
constexpr std::size_t StyleSize = 10;
constexpr std::size_t PageNameLength = 63;
constexpr uint32_t NumberSize = sizeof(uint16_t);  // of a list value and of a printer variable

using Value = std::array<char, ValueSize>;

// How the entries of a control are named.
std::string ControlKey(HvIniHandle* file, int16_t controlId, uint32_t subIndex) {
  std::array<char, StyleSize> style;
  const std::string_view text = ReadPanelEntry(file, "Format", "Style", style);
  const bool isHexadecimal = !text.empty() && static_cast<uint8_t>(text[0]) >= '2';
  const uint32_t number = static_cast<uint32_t>(int32_t{controlId});
  std::array<char, 24> key;
  if (isHexadecimal) {
    std::snprintf(key.data(), key.size(), "%04x", number);
  } else {
    std::snprintf(key.data(), key.size(), "%u", number);
  }
  std::string name = key.data();
  if (subIndex != 0) name.append("-").append(std::to_string(subIndex));
  return name;
}

template <typename Integer>
Integer Nearest(int64_t value) {
  return static_cast<Integer>(std::clamp<int64_t>(value, std::numeric_limits<Integer>::min(),
                                                  std::numeric_limits<Integer>::max()));
}

// Says in the buffer, where it has room for that, how many bytes it should have.
int32_t TooSmall(int64_t needed, void* buffer, uint32_t size) {
  const uint16_t bytes = Nearest<uint16_t>(needed);
  if (size >= sizeof bytes) std::memcpy(buffer, &bytes, sizeof bytes);
  return OPC_TOO_SMALL;
}

// What a page lists: a count, and the items in an entry of their own.
struct PageList {
  const char* countKey;
  const char* itemsKey;
  int64_t itemSize;  // in the caller's buffer
};

// Checks the buffer against the number of items that a page announces and has store(items, number)
// fill it, whose result is that of the call.
template <typename Store>
int32_t ReadPage(HvIniHandle* file, uint32_t pageNumber, const PageList& list, void* buffer,
                 uint32_t size, Store store) {
  Value text;
  const std::string page = std::to_string(pageNumber);
  const std::string section(ReadPanelEntry(file, "Dialogs", page, text).substr(0, PageNameLength));
  if (section.empty()) return OPC_MISSING;
  const int64_t announced =
      Nearest<int32_t>(LeadingDecimal(ReadPanelEntry(file, section, list.countKey, text)));
  const int64_t needed = list.itemSize * announced;
  if (buffer == nullptr) return Nearest<int16_t>(needed);
  if (size < needed) return TooSmall(needed, buffer, size);
  return Nearest<int16_t>(store(ReadPanelEntry(file, section, list.itemsKey, text), announced));
}

}  // namespace

void ReadSpinLimits(HvIniHandle* file, int16_t controlId, int32_t* minimum, int32_t* maximum,
                    int32_t* step) {
  *minimum = 0;
  *maximum = 0;
  Value text;
  std::string_view limits =
      ReadPanelEntry(file, "Spin Limits", ControlKey(file, controlId, 0), text);
  if (limits.empty()) return;
  *minimum = Nearest<int32_t>(TakeDecimal(&limits, ';'));
  if (*minimum != -1) *maximum = Nearest<int32_t>(TakeDecimal(&limits, ';'));
  *step = Nearest<int32_t>(TakeDecimal(&limits, ';'));
}

int32_t ReadComboValues(HvIniHandle* file, int16_t controlId, uint32_t subIndex, uint16_t* values,
                        uint32_t valuesSize) {
  Value text;
  std::string_view list =
      ReadPanelEntry(file, "Combos", ControlKey(file, controlId, subIndex), text);
  if (list.empty()) return OPC_MISSING;
  const uint32_t room = values == nullptr ? 0 : valuesSize / NumberSize;
  uint32_t count = 0;
  while (const std::optional<std::string_view> item = TakeItem(&list, ';')) {
    if (count < room) values[count] = static_cast<uint16_t>(LeadingDecimal(*item));
    ++count;
  }
  // A value holds so few items that their number is a result as it is.
  const uint32_t needed = count * NumberSize;
  if (values == nullptr) return static_cast<int32_t>(needed);
  if (count > room) return TooSmall(needed, values, valuesSize);
  return static_cast<int32_t>(count);
}

int32_t ReadMaxEditLength(HvIniHandle* file, int16_t controlId) {
  Value text;
  return Nearest<int16_t>(
      LeadingDecimal(ReadPanelEntry(file, "Edit Lengths", ControlKey(file, controlId, 0), text)));
}

int32_t ReadPageDefaults(HvIniHandle* file, uint32_t pageNumber, HvPageDefault* entries,
                         uint32_t entriesSize) {
  const auto store = [entries](std::string_view list, int64_t announced) {
    for (int64_t i = 0; i < announced; ++i) {
      const std::optional<std::string_view> identifier = TakeItem(&list, ';');
      if (!identifier) break;
      entries[i].controlId = LenientHex(*identifier);
      const std::optional<std::string_view> value = TakeItem(&list, ';');
      if (value) entries[i].value = static_cast<uint32_t>(LeadingDecimal(*value));
    }
    return announced;
  };
  return ReadPage(file, pageNumber, {"NumCtrls", "Defaults", sizeof(HvPageDefault)}, entries,
                  entriesSize, store);
}

int32_t ReadPageVariables(HvIniHandle* file, uint32_t pageNumber, uint8_t* variables,
                          uint32_t variablesSize) {
  // What is there is stored, whatever the page announces.
  const auto store = [=](std::string_view list, int64_t /*announced*/) {
    int64_t stored = 0;
    for (uint32_t at = 0; variablesSize - at >= NumberSize; at += NumberSize) {
      const std::optional<std::string_view> item = TakeItem(&list, ' ');
      if (!item) break;
      StoreBe16(variables + at, LenientHex(*item));
      ++stored;
    }
    return stored;
  };
  return ReadPage(file, pageNumber, {"NumOMVAR", "OMVAR", NumberSize}, variables, variablesSize,
                  store);
}

}  // namespace hv
