#include "api/library_information.h"

#include <cstddef>

namespace hv {
namespace {

struct InformationWord {
  std::size_t offset;  // in bytes
  uint16_t value;
};

// The first word is the version, 8.3, times 100. Words that are not listed are 0.
constexpr InformationWord InformationWords[] = {
    {0, 830}, {2, 32}, {4, 2},  {6, 2},  {22, 1}, {24, 1}, {32, 1}, {34, 1},
    {36, 0},  {38, 0}, {40, 1}, {46, 1}, {52, 1}, {54, 0}, {56, 1},
};

}  // namespace

void FillLibraryInformation(HvApiInfo* record) {
  *record = HvApiInfo{};
  for (const InformationWord& word : InformationWords) {
    record->words[word.offset / sizeof(uint16_t)] = word.value;
  }
}

}  // namespace hv
