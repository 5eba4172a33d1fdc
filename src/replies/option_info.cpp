#include "replies/option_info.h"

#include <cstddef>

#include "api/caller_memory.h"
#include "replies/reply_record.h"

namespace hv {
namespace {

using enum ReplyStore;

// The second number is the place in the record.
constexpr ReplyRow EntryRows[] = {
    {1, Integer, offsetof(HvOptionEntry, value1)},
    {5, Integer, offsetof(HvOptionEntry, value5)},
    {6, Text, offsetof(HvOptionEntry, text)},
};

constexpr ReplyRow ValueRows[] = {
    {1, Integer},
};

constexpr ReplyRow GroupRows[] = {
    {1, TextOrNull, offsetof(HvOptionGroup, name)},
    {2, TextOrNull, offsetof(HvOptionGroup, description)},
    {3, Array, offsetof(HvOptionGroup, valueCount), sizeof(uint32_t), ValueRows},
};

constexpr ReplyRow ListRows[] = {
    {1, Array, offsetof(HvOptionInfo, entryCount), sizeof(HvOptionEntry), EntryRows},
    {3, Array, offsetof(HvOptionInfo, groupCount), sizeof(HvOptionGroup), GroupRows},
};

constexpr ReplyRow OptionRows[] = {
    {1, Level, 0, 0, ListRows},
};

}  // namespace

HvOptionInfo* ParseOptionInfo(const uint8_t* reply) {
  ReplyReader reader(reply);
  auto* const info = static_cast<HvOptionInfo*>(AllocateForCaller(sizeof(HvOptionInfo)));
  // Only the first item of the reply counts.
  if (info != nullptr && !reader.AtEnd()) ReadReplyItem(&reader, OptionRows, info);
  return info;
}

void FreeOptionInfo(HvOptionInfo* info) {
  if (info != nullptr) ClearReplyRecord(OptionRows, info);
  ReleaseForCaller(info);
}

}  // namespace hv
