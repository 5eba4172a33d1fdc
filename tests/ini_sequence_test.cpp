// Long random sequences of reads and edits on one open file: each gives and leaves what it does on
// a file of the same lines that was just opened.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/test_folder.h"

namespace {

using hvtest::LinesOf;
using hvtest::OpenIni;

constexpr int Steps = 1000;
constexpr int StepsOfOneFile = 20;

// The same numbers on every system (xorshift32).
class Numbers {
 public:
  explicit Numbers(uint32_t seed) : state_(seed) {}
  uint32_t Below(uint32_t limit) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<uint32_t>(uint64_t{state_} * limit >> 32);
  }
  bool OneIn(uint32_t limit) { return Below(limit) == 0; }
  std::string Pick(const std::vector<std::string>& texts) {
    return texts[Below(static_cast<uint32_t>(texts.size()))];
  }

 private:
  uint32_t state_;
};

// One call of an export with a place for the cursor before it.
class Operation {
 public:
  explicit Operation(Numbers& numbers)
      : kind_(numbers.Below(18)),
        hasSection_(numbers.OneIn(2)),
        hasKey_(!numbers.OneIn(8)),
        hasValue_(numbers.OneIn(2)),
        place_(Section(numbers)),
        section_(Section(numbers)),
        key_(Key(numbers)),
        value_(numbers.Pick({"", "1", "2", "one", "ONE", "x=y", " padded", "]", "[s]"})) {}

  // What the call and a read at the cursor give.
  std::string Do(HvIniHandle* ini) const {
    HvIniRead(ini, nullptr, "in no section");  // clears the cursor
    HvIniRead(ini, place_.c_str(), nullptr);
    const std::string result = Call(ini);
    return result + " | " + HvIniRead(ini, nullptr, nullptr);
  }

 private:
  static std::string Section(Numbers& numbers) {
    return numbers.Pick({"s", "S", "Two words", "TWO WORDS", "t", "", "[odd", "a=]"});
  }
  // Few enough to meet again, enough to make an index grow.
  static std::string Key(Numbers& numbers) {
    if (numbers.OneIn(3)) return numbers.Pick({"n", "N"}) + std::to_string(numbers.Below(90));
    if (numbers.OneIn(30)) return numbers.Pick({"[a", "k=k"});
    return numbers.Pick({"a", "A", "b", "key", "Key", "", "stray", "; a comment"});
  }

  std::string Call(HvIniHandle* ini) const {
    const char* const section = section_.c_str();
    const char* const key = hasKey_ ? key_.c_str() : nullptr;
    const char* const value = hasValue_ ? value_.c_str() : nullptr;
    if (kind_ < 6) return std::to_string(HvIniWrite(ini, section, key_.c_str(), value_.c_str()));
    if (kind_ < 9) return std::to_string(HvIniWriteAll(ini, section, key_.c_str(), value_.c_str()));
    if (kind_ < 12) return std::to_string(HvIniDelete(ini, section, key, value));
    if (kind_ < 14) return HvIniRead(ini, hasSection_ ? section : nullptr, key);
    char buffer[4];
    uint32_t count = 0;
    const uint32_t code =
        HvIniRead2(ini, section, key_.c_str(), value, buffer, sizeof buffer, &count);
    return std::to_string(code) + " " + std::string(buffer, count);
  }

  uint32_t kind_;
  bool hasSection_, hasKey_, hasValue_;
  std::string place_, section_, key_, value_;
};

TEST(IniSequence, GoesOnAsAFileOpenedAfresh) {
  for (const uint32_t seed : {1U, 2U, 3U, 4U}) {
    const hvtest::TestFolder folder;
    Numbers numbers(seed);
    const OpenIni ini(HvIniOpen2((folder / "kept.ini").c_str(), INI_OPEN_REPLACE));
    OpenIni fresh;
    for (int step = 0; step < Steps && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
      if (step % StepsOfOneFile == 0) {
        std::string lines;
        for (const std::string& line : LinesOf(*ini)) lines += line + "\n";
        fresh.reset(HvIniOpen2(folder.Add("new.ini", lines).c_str(), INI_OPEN_UPDATE));
      }
      const Operation operation(numbers);
      ASSERT_EQ(operation.Do(ini.get()), operation.Do(fresh.get()));
      ASSERT_EQ(LinesOf(*ini), LinesOf(*fresh));
    }
    EXPECT_GT(LinesOf(*ini).size(), 60U);
  }
}

}  // namespace
