#include "replies/reply_record.h"

#include <algorithm>
#include <cstring>

#include "api/caller_memory.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

// The fields of packed records have any address.
template <typename T>
T Load(const uint8_t* field) {
  T value;
  std::memcpy(&value, field, sizeof value);
  return value;
}

template <typename T>
void Store(uint8_t* field, T value) {
  std::memcpy(field, &value, sizeof value);
}

const ReplyRow* FindRow(ReplyTable table, int32_t identifier) {
  for (const ReplyRow& row : table) {
    if (row.identifier == identifier) return &row;
  }
  return nullptr;
}

bool TakesContainer(const ReplyRow* row) {
  return row != nullptr && (row->store == ReplyStore::Level || row->store == ReplyStore::Block ||
                            row->store == ReplyStore::Array);
}

void ClearField(const ReplyRow& row, uint8_t* field) {
  switch (row.store) {
    case ReplyStore::Integer:
    case ReplyStore::FixedText:
      break;
    case ReplyStore::Text:
    case ReplyStore::TextOrNull:
      ReleaseForCaller(Load<void*>(field));
      Store<void*>(field, nullptr);
      break;
    case ReplyStore::Level:
      ClearReplyRecord(row.children, field);
      break;
    case ReplyStore::Block: {
      void* const block = Load<void*>(field);
      if (block != nullptr) ClearReplyRecord(row.children, block);
      ReleaseForCaller(block);
      Store<void*>(field, nullptr);
      break;
    }
    case ReplyStore::Array: {
      const auto count = Load<uint32_t>(field);
      uint8_t* const pointer = field + sizeof count;
      if (count == 0) break;
      auto* const array = Load<uint8_t*>(pointer);
      for (uint32_t i = 0; i < count; ++i) ClearReplyRecord(row.children, array + i * row.size);
      ReleaseForCaller(array);
      Store<uint32_t>(field, 0);
      Store<void*>(pointer, nullptr);
      break;
    }
  }
}

void ReadChildren(ReplyReader* reader, int32_t count, ReplyTable table, uint8_t* record) {
  for (; count > 0 && !reader->AtEnd(); --count) ReadReplyItem(reader, table, record);
}

void ReadBlock(ReplyReader* reader, int32_t count, const ReplyRow& row, uint8_t* field) {
  auto* const block = static_cast<uint8_t*>(AllocateForCaller(row.size));
  Store(field, block);
  ReadChildren(reader, count, block == nullptr ? ReplyTable() : row.children, block);
}

void ReadArray(ReplyReader* reader, int32_t count, const ReplyRow& row, uint8_t* field) {
  const std::size_t most = std::min(static_cast<std::size_t>(count), reader->MostItems());
  auto* const array =
      static_cast<uint8_t*>(most == 0 ? nullptr : AllocateForCaller(most * row.size));
  const ReplyTable table = array == nullptr ? ReplyTable() : row.children;
  uint32_t begun = 0;
  for (; begun < most && !reader->AtEnd(); ++begun) {
    const ReplyPrefix prefix = reader->ReadPrefix();
    if (reader->Failed()) break;
    if (prefix.type == ReplyContainer) {
      uint8_t* const record = array == nullptr ? nullptr : array + begun * row.size;
      ReadChildren(reader, reader->ReadElementCount(), table, record);
    } else {
      reader->ReadValue(prefix.type);
    }
  }
  if (array == nullptr || begun == 0) {
    ReleaseForCaller(array);
    return;
  }
  Store(field, begun);
  Store(field + sizeof begun, array);
}

void ReadContainer(ReplyReader* reader, const ReplyRow& row, uint8_t* field) {
  const int32_t count = reader->ReadElementCount();
  if (reader->Failed()) return;
  if (row.store == ReplyStore::Level) return ReadChildren(reader, count, row.children, field);
  ClearField(row, field);
  if (row.store == ReplyStore::Block) return ReadBlock(reader, count, row, field);
  ReadArray(reader, count, row, field);
}

void StoreText(std::string_view text, const ReplyRow& row, uint8_t* field) {
  ClearField(row, field);
  if (text.empty() && row.store == ReplyStore::TextOrNull) return;
  auto* const copy = static_cast<char*>(AllocateForCaller(text.size() + 1));
  if (copy != nullptr) SetFixedText(copy, text.size() + 1, text);
  Store(field, copy);
}

void StoreValue(const ReplyValue& value, const ReplyRow& row, uint8_t* field) {
  if (row.store == ReplyStore::Integer) return Store(field, value.integer);
  if (!value.text) return;
  if (row.store == ReplyStore::FixedText) {
    SetFixedText(reinterpret_cast<char*>(field), row.size, *value.text);
  } else if (!TakesContainer(&row)) {
    StoreText(*value.text, row, field);
  }
}

}  // namespace

void ReadReplyItem(ReplyReader* reader, ReplyTable table, void* record) noexcept {
  const ReplyPrefix prefix = reader->ReadPrefix();
  const ReplyRow* const row = FindRow(table, prefix.identifier);
  uint8_t* const field = row == nullptr ? nullptr : static_cast<uint8_t*>(record) + row->offset;
  if (prefix.type == ReplyContainer && TakesContainer(row)) {
    ReadContainer(reader, *row, field);
    return;
  }
  const ReplyValue value = reader->ReadValue(prefix.type);
  if (row != nullptr && !reader->Failed()) StoreValue(value, *row, field);
}

void ClearReplyRecord(ReplyTable table, void* record) {
  for (const ReplyRow& row : table) ClearField(row, static_cast<uint8_t*>(record) + row.offset);
}

}  // namespace hv
