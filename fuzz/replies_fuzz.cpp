// Any bytes as a reply, through both parsers; the records are read to their last byte.

#include <cstdint>
#include <cstring>
#include <vector>

#include "hvapi.h"
#include "support/run_memory.h"

namespace {

std::size_t TextSize(const char* text) {
  return text == nullptr ? 0 : std::strlen(text);
}

std::size_t ReadOptions(const HvOptionInfo& info) {
  std::size_t sum = 0;
  for (uint32_t i = 0; i < info.entryCount; ++i) sum += TextSize(info.entries[i].text);
  for (uint32_t i = 0; i < info.groupCount; ++i) {
    const HvOptionGroup& group = info.groups[i];
    sum += TextSize(group.name) + TextSize(group.description);
    for (uint32_t k = 0; k < group.valueCount; ++k) sum += group.values[k];
  }
  return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  // The length word is put in front, so that it always tells the truth.
  constexpr std::size_t Longest = 0xFFFF;
  if (size > Longest) return 0;
  std::vector<uint8_t> reply = {static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)};
  reply.insert(reply.end(), data, data + size);
  reply.shrink_to_fit();

  HvOptionInfo* info = nullptr;
  hvfuzz::HadMemory(data, size, [&] { info = HvParseOptionInfo(reply.data()); });
  volatile std::size_t read = info == nullptr ? 0 : ReadOptions(*info);
  HvFreeOptionInfo(info);

  HvJobAccount* account = nullptr;
  hvfuzz::HadMemory(data, size, [&] { account = HvParseJobAccountingAlert(reply.data()); });
  if (account != nullptr && account->jobBlock != nullptr) {
    read = read + TextSize(account->jobBlock->j1Item7) + account->jobBlock->j2Item10;
  }
  if (account != nullptr && account->deviceBlock != nullptr) {
    read = read + TextSize(account->deviceBlock->d2Item8) + account->deviceBlock->d3Item5;
  }
  HvFreeJobAccount(account);
  return 0;
}
