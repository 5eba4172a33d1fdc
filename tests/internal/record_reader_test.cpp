// The kinds of fields that command records do not have.

#include "config/record_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <sstream>

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

// The values of a line, in their order, or "malformed".
std::string Read(const std::string& line) {
  const hvtest::TestFolder folder;
  const auto file = hv::platform::OpenStream(folder.Add("r.dat", line).c_str(), "r");
  int64_t offset = -1;
  std::array<uint8_t, 32> record;
  record.fill(0xAA);
  if (hv::ReadRecord(file.get(), Layout, record, &offset) != RecordResult::Read) return "malformed";
  std::ostringstream shown;
  const auto show = [&](auto value, std::size_t at) {
    std::memcpy(&value, &record[at], sizeof value);
    shown << value << "|";
  };
  show(int16_t(), 0);
  for (const std::size_t at : {2, 6}) show(int32_t(), at);
  show(float(), 10);
  shown << reinterpret_cast<const char*>(&record[14]) << "|";
  show(int32_t(), 18);
  shown << reinterpret_cast<const char*>(&record[22]) << "|";
  show(uint32_t(), 28);
  return shown.str();
}

TEST(RecordReader, FillsFieldsByTheirDescriptors) {
  EXPECT_EQ(Read("-7;+70000,-2147483648:1.5, two words,12;plain text\n"),
            "-7|70000|-2147483648|1.5|two|12|plain|0|");
  EXPECT_EQ(Read("70000,-99999999999,99999999999999999999999,1,\"a,b\"0,\"c\"\n"),
            "32767|-2147483648|2147483647|1|a,b|0|c|0|");
  for (const char* line : {"1.5,2,3,1,a,0,b\n", "1,2e1,3,1,a,0,b\n", "1,2,3,1,a,text,b\n"}) {
    EXPECT_EQ(Read(line), "malformed") << line;
  }
}

}  // namespace
