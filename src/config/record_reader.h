// Reads one record of a keyed record file by the descriptors of its layout.
//
// A line holds the fields in the order of the descriptors, separated by any run of "," ";" ":",
// blanks, control characters and bytes above 0x7F; its line feed ends the record. Empty lines and
// lines whose first character is "#" are no records.
#pragma once

#include <cstdint>
#include <span>

#include "config/record_layout_table.h"
#include "platform/stream.h"

namespace hv {

enum class RecordResult : uint8_t {
  Read,
  Malformed,  // a field that its type does not allow, a field missing or too many, no line feed at
              // the end, or the file could not be read
  Ended       // the file ends before a record, or inside a quoted text
};

// Fills `record`, layout.recordSize bytes, from the next record of `file`, a text stream that
// stands at the start of a line, and leaves it at the start of the next one. `offset` receives the
// offset of the line. Unless the result is Read, both hold nothing of use.
RecordResult ReadRecord(platform::Stream* file, const RecordLayout& layout,
                        std::span<uint8_t> record, int64_t* offset);

}  // namespace hv
