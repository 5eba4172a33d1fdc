#include "fontconv/pcl_font_stream.h"

#include <algorithm>
#include <array>
#include <utility>

#include "support/ascii.h"

namespace hv {
namespace {

constexpr int Escape = 0x1B;
constexpr std::size_t MostDataKept = 1024;
constexpr uint32_t LargestNumber = 0x7FFFFFFF;

struct CommandRow {
  char parameterized;
  char group;
  char terminator;
  PclFontCommand command;
};
constexpr CommandRow CommandTable[] = {
    {')', 's', 'W', PclFontCommand::Descriptor},
    {'*', 'c', 'E', PclFontCommand::CharacterCode},
    {'(', 's', 'W', PclFontCommand::Character},
};

}  // namespace

int PclFontStream::Take() {
  return pending_ == Nothing ? file_->ReadByte() : std::exchange(pending_, Nothing);
}

uint32_t PclFontStream::TakeNumber() {
  uint64_t number = 0;
  for (;;) {
    const int byte = Take();
    if (byte < 0 || !IsDigit(static_cast<char>(byte))) {
      PutBack(byte);
      return static_cast<uint32_t>(number);
    }
    number = std::min<uint64_t>(number * 10 + static_cast<uint64_t>(byte - '0'), LargestNumber);
  }
}

bool PclFontStream::TakeData(PclFontItem* item) {
  item->data.resize(std::min<std::size_t>(item->number, MostDataKept));
  std::size_t left = item->number;
  if (file_->Read(item->data.data(), item->data.size()) != item->data.size()) return false;
  left -= item->data.size();
  std::array<uint8_t, 4096> dropped;
  while (left > 0) {
    const std::size_t part = std::min(left, dropped.size());
    if (file_->Read(dropped.data(), part) != part) return false;
    left -= part;
  }
  return true;
}

std::optional<PclFontItem> PclFontStream::Next() {
  int byte = Take();
  if (byte < 0) return std::nullopt;
  PclFontItem item;
  if (byte != Escape) return item;

  // What does not belong to the command may begin the next one.
  const int parameterized = Take();
  const auto* row =
      std::find_if(std::begin(CommandTable), std::end(CommandTable),
                   [&](const CommandRow& r) { return r.parameterized == parameterized; });
  if (row == std::end(CommandTable)) {
    PutBack(parameterized);
    return item;
  }
  if (byte = Take(); byte != row->group) {
    PutBack(byte);
    return item;
  }
  item.number = TakeNumber();
  if (byte = Take(); byte != row->terminator) {
    PutBack(byte);
    return item;
  }
  if (item.number == 0) return item;
  const bool hasData = row->command != PclFontCommand::CharacterCode;
  if (!hasData || TakeData(&item)) item.command = row->command;
  return item;
}

}  // namespace hv
