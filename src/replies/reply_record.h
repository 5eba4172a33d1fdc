// Records filled from replies by tables: a row for each item that a record has a place for.
//
// The items of a reply are known by where they stand: an item's identifier has its meaning among
// the children of one container only, so a row of a container leads to the table of its children.
// Items without a row, and items of another data type than their row needs, are passed over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "replies/reply_reader.h"

namespace hv {

enum class ReplyStore : uint8_t {
  Integer,     // u32; an item of another data type gives 0
  FixedText,   // char[size], cut to size - 1 bytes; takes integers too, as their bytes
  Text,        // char*, a copy; takes integers too
  TextOrNull,  // the same, but NULL for no bytes
  Level,       // container: its children belong to the same record
  Block,       // container: pointer to a record of `size` bytes that its children fill
  Array,       // container: u32 count, and behind it a pointer to as many records of `size` bytes.
               // Each child is a container, whatever its identifier, and its children fill one.
};

struct ReplyRow {
  int32_t identifier;
  ReplyStore store;
  std::size_t offset = 0;  // in the record that the children of this level fill
  std::size_t size = 0;
  std::span<const ReplyRow> children = {};
};
using ReplyTable = std::span<const ReplyRow>;

// Reads one item with all below it into the zeroed or partly filled `record`. An item that comes
// again takes the place of what it gave before. After a failed read the record holds what came
// before it: a count is that of the records its array has, and an array is there when it is above
// 0. What cannot be allocated stays NULL, and what belongs there is passed over.
void ReadReplyItem(ReplyReader* reader, ReplyTable table, void* record) noexcept;

// Releases what the rows of a record own, and leaves NULL and 0 there.
void ClearReplyRecord(ReplyTable table, void* record);

}  // namespace hv
