// The kinds of fields that command records do not have.

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "config/record_reader.h"
#include "support/test_folder.h"

namespace {

using hv::RecordResult;

constexpr hv::FieldDescriptor Fields[] = {
    {"short", 1, 2, 0, ""}, {"long", 2, 4, 2, ""},     {"also long", 8, 4, 6, ""},
    {"real", 3, 4, 10, ""}, {"word", 7, 4, 14, ""},    {"not a text", 5, 4, 18, ""},
    {"text", 5, 6, 22, ""}, {"nothing", 6, 3, 28, ""}, {"unknown", 9, 1, 31, ""},
};
constexpr hv::KeyDefinition Keys[] = {{22, 6, 6}};
constexpr hv::RecordLayout Layout = {32, Fields, Keys};

RecordResult Read(const std::string& text, std::array<uint8_t, 32>* record) {
  const hvtest::TestFolder folder;
  const auto file = hv::platform::OpenStream(folder.Add("r.dat", text).c_str(), "r");
  int64_t offset = -1;
  record->fill(0xAA);
  return hv::ReadRecord(file.get(), Layout, *record, &offset);
}

template <typename Value>
Value At(const std::array<uint8_t, 32>& record, std::size_t offset) {
  Value value;
  std::memcpy(&value, &record[offset], sizeof value);
  return value;
}

TEST(RecordReader, FillsFieldsByTheirDescriptors) {
  std::array<uint8_t, 32> record;
  ASSERT_EQ(Read("-7;+70000,-2147483648:1.5, two words,12;plain text\n", &record),
            RecordResult::Read);
  EXPECT_EQ(At<int16_t>(record, 0), -7);
  EXPECT_EQ(At<int32_t>(record, 2), 70000);
  EXPECT_EQ(At<int32_t>(record, 6), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(At<float>(record, 10), 1.5F);
  EXPECT_STREQ(reinterpret_cast<const char*>(&record[14]), "two");
  EXPECT_EQ(At<int32_t>(record, 18), 12);
  EXPECT_STREQ(reinterpret_cast<const char*>(&record[22]), "plain");
  EXPECT_EQ(At<uint32_t>(record, 28), 0U);
}

TEST(RecordReader, TakesQuotedTextsAndNearestIntegers) {
  std::array<uint8_t, 32> record;
  ASSERT_EQ(Read("70000,-99999999999,99999999999999999999999,1,\"a,b\"0,\"c\"\n", &record),
            RecordResult::Read);
  EXPECT_EQ(At<int16_t>(record, 0), 32767);
  EXPECT_EQ(At<int32_t>(record, 2), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(At<int32_t>(record, 6), std::numeric_limits<int32_t>::max());
  EXPECT_STREQ(reinterpret_cast<const char*>(&record[14]), "a,b");
  EXPECT_STREQ(reinterpret_cast<const char*>(&record[22]), "c");
}

TEST(RecordReader, RefusesFractionsAndTextsForIntegers) {
  std::array<uint8_t, 32> record;
  EXPECT_EQ(Read("1.5,2,3,1,a,0,b\n", &record), RecordResult::Malformed);
  EXPECT_EQ(Read("1,2e1,3,1,a,0,b\n", &record), RecordResult::Malformed);
  EXPECT_EQ(Read("1,2,3,1,a,text,b\n", &record), RecordResult::Malformed);
}

}  // namespace
