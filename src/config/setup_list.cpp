#include "config/setup_list.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "api/caller_memory.h"
#include "config/ini_entries.h"
#include "config/number_list.h"
#include "support/byte_order.h"

namespace hv {
namespace {

constexpr std::size_t VariableSize = 2;

struct ListKind {
  const char* name;
  bool hasDefaultList;  // for the setups that have no list of their own
};

constexpr ListKind ListKinds[] = {
    {"REQUIRED", false},  // QSF_LIST_REQUIRED
    {"OPTIONAL", false},  // QSF_LIST_OPTIONAL
    {"EXCLUDE", true},    // QSF_LIST_EXCLUDE
    {"ORDER", true},      // QSF_LIST_ORDER
};

// Reads the entries of one section.
class SectionReader {
 public:
  explicit SectionReader(HvIniHandle* ini)
      : ini_(ini), buffer_(std::max<uint32_t>(+ini->maxLineLength, 1)) {}

  void SetSection(std::string section) { section_ = std::move(section); }

  // `value` holds until the next read.
  uint32_t Read(const std::string& key, const char* defaultValue, std::string_view* value) {
    uint32_t length = 0;
    const uint32_t code = IniRead2(ini_, section_.c_str(), key.c_str(), defaultValue,
                                   buffer_.data(), static_cast<uint32_t>(buffer_.size()), &length);
    *value = {buffer_.data(), length};
    return code;
  }

  // A number of items, from 1 to as many as 16 bits count.
  uint32_t ReadCount(const char* key, int64_t* number) {
    std::string_view text;
    const uint32_t code = Read(key, nullptr, &text);
    if (code != HV_OK) return code;
    *number = LeadingDecimal(text);
    return *number >= 1 && *number <= std::numeric_limits<uint16_t>::max() ? HV_OK
                                                                           : HV_UNUSABLE_FILE;
  }

 private:
  HvIniHandle* ini_;
  std::vector<char> buffer_;
  std::string section_;
};

// Fills `list` with exactly `count` variables from the given number of lines.
uint32_t ReadVariables(SectionReader* section, int64_t lines, int64_t count, uint8_t* list) {
  int64_t taken = 0;
  for (int64_t line = 1; line <= lines; ++line) {
    std::string_view text;
    const uint32_t code = section->Read("OMVARS" + std::to_string(line), "", &text);
    if (code != HV_OK) return code;
    if (text.empty()) return HV_UNUSABLE_FILE;
    while (const std::optional<std::string_view> item = TakeItem(&text, ' ')) {
      if (taken == count) return HV_UNUSABLE_FILE;
      StoreBe16(list + VariableSize * static_cast<std::size_t>(taken), LenientHex(*item));
      ++taken;
    }
  }
  return taken == count ? HV_OK : HV_UNUSABLE_FILE;
}

}  // namespace

uint32_t ReadSetupList(HvIniHandle* ini, uint32_t kind, uint8_t setupNumber, uint8_t** values,
                       uint16_t* count) {
  const ListKind& list = ListKinds[kind - QSF_LIST_REQUIRED];
  std::array<char, 4> number;
  std::snprintf(number.data(), number.size(), "%03d", setupNumber);
  SectionReader section(ini);
  section.SetSection(std::string(number.data()) + list.name);

  int64_t variables = 0;
  uint32_t code = section.ReadCount("NUMVARS", &variables);
  if (code == HV_SECTION_MISSING && list.hasDefaultList) {
    section.SetSection(std::string("DEFAULT") + list.name);
    code = section.ReadCount("NUMVARS", &variables);
  }
  if (code != HV_OK) return code;
  int64_t lines = 0;
  code = section.ReadCount("NUMENTRIES", &lines);
  if (code != HV_OK) return code;

  CallerMemory<uint8_t> memory(
      static_cast<uint8_t*>(AllocateForCaller(VariableSize * static_cast<std::size_t>(variables))));
  if (memory == nullptr) return HV_NO_MEMORY;
  code = ReadVariables(&section, lines, variables, memory.get());
  if (code != HV_OK) return code;
  *count = static_cast<uint16_t>(variables);
  *values = memory.release();
  return HV_OK;
}

}  // namespace hv
