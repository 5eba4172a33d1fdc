// The layouts of keyed record files: what fields a line holds, and where their values go in the
// record of fixed size that is made of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace hv {

// One field of a line, in the order of the line.
//
//   type     text in the file               value in the record
//   0        text in double quotes          text, NUL-terminated within `size`
//   1, 2, 8  decimal integer                integer of `size` 2 or 4, nearest when out of range
//   3, 4     decimal floating-point number  float of `size` 4 or double of `size` 8
//   5, 7     text, with or without quotes   text; type 5 with `size` 4 is type 8
//   else     nothing                        zeros
struct FieldDescriptor {
  const char* name;
  uint8_t type;
  std::size_t size;
  std::size_t offset;
  const char* picture;  // how applications show the value; not interpreted here
};

// A field by which records can be found.
struct KeyDefinition {
  std::size_t offset;
  std::size_t length;
  std::size_t field;  // index of its descriptor
};

struct RecordLayout {
  std::size_t recordSize;
  std::span<const FieldDescriptor> fields;
  std::span<const KeyDefinition> keys;  // the first one is used for matching
};

// The layout of printer command records, HvCommandRecord.
extern const RecordLayout CommandRecordLayout;

}  // namespace hv
