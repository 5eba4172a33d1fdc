// Keyed record files: what a line may look like, walks, counts, handles.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

using hvtest::TestFolder;

// What a call must leave as it was is filled with this.
constexpr int Untouched = 0x5A;

std::string Line(const std::string& key, const std::string& rest = "") {
  return '"' + key + "\",\"Set size\",\"PCL\",\"1B45\",\"%d\",1,2.5,0.5,\"D\"" + rest + "\n";
}

// A record whose key asks for `text`.
HvCommandRecord Search(const std::string& text) {
  HvCommandRecord record;
  std::memset(&record, Untouched, sizeof record);
  std::memcpy(record.szKey, text.c_str(), std::min(text.size() + 1, sizeof record.szKey));
  return record;
}

bool IsUntouched(const HvCommandRecord& record, const std::string& searchText) {
  const HvCommandRecord expected = Search(searchText);
  return std::memcmp(&record, &expected, sizeof record) == 0;
}

// A record file of its own, open as long as the object is.
class OpenFile {
 public:
  explicit OpenFile(const std::string& text)
      : handle_(HvDatOpenFile(folder_.Add("r.dat", text).c_str(), 0, DAT_FILE_COMMANDS)) {
    EXPECT_GE(handle_, 0);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { EXPECT_EQ(HvDatCloseFile(handle_), 0); }

  int32_t Handle() const { return handle_; }
  int32_t First(HvCommandRecord* record) const { return HvDatGetFirstKey(handle_, record); }
  // The code, or for a record that was found its key.
  std::string First(const std::string& text) const {
    HvCommandRecord record = Search(text);
    const int32_t code = HvDatGetFirstKey(handle_, &record);
    EXPECT_TRUE(code == 0 || IsUntouched(record, text)) << text;
    return code == 0 ? record.szKey : std::to_string(code);
  }
  std::string Next() const {
    HvCommandRecord record = Search("");
    const int32_t code = HvDatGetNextKey(handle_, &record);
    EXPECT_TRUE(code == 0 || IsUntouched(record, ""));
    return code == 0 ? record.szKey : std::to_string(code);
  }

 private:
  TestFolder folder_;
  int32_t handle_;
};

TEST(RecordFile, ReadsARecordWithWhateverSeparates) {
  const std::string lines[] = {
      "\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.5,2e3,.25,\"D\"\n",
      "\"K1\";\"Set size\";\"PCL\";\"1B45\";\"%d\";-1.5;2e3;.25;\"D\"\n",
      "\"K1\":\"Set size\":\"PCL\":\"1B45\":\"%d\":-1.5:2e3:.25:\"D\"\n",
      "\"K1\"\"Set size\"\"PCL\"\"1B45\"\"%d\"-1.5,2e3,.25,\"D\"\n",
      " ,\t\"K1\" \r \"Set size\"\x80\xFF\"PCL\"\x01\x7F,;:\"1B45\"\v\"%d\" -1.5, +2e3;;\x1F.25: "
      "\"D\" ,\n",
      std::string("\"K1\"\0\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.5,2e3,.25,\"D\"\0\n", 53),
      "# a comment\n\n ;, # another, indented\n\t\n\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\","
      "-1.5,2e3,.25,\"D\"\n",
      "\r\n\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.5,2e3,.25,\"D\"\r\n\x1A\"",
      // Of a number 24 characters are kept, the rest is not even looked at.
      "\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.500000000000000000000 or so,2e3,.25,\"D\"\n",
  };
  for (const std::string& line : lines) {
    const OpenFile file(line);
    HvCommandRecord record = Search("K");
    ASSERT_EQ(file.First(&record), 0) << line;
    EXPECT_STREQ(record.szKey, "K1");
    EXPECT_STREQ(record.szDescr, "Set size");
    EXPECT_STREQ(record.szEmulation, "PCL");
    EXPECT_STREQ(record.szCommand, "1B45");
    EXPECT_STREQ(record.szVarFormat, "%d");
    double numbers[3];
    std::memcpy(numbers, reinterpret_cast<const char*>(&record) + 222, sizeof numbers);
    EXPECT_EQ(numbers[0], -1.5) << line;
    EXPECT_EQ(numbers[1], 2000.0) << line;
    EXPECT_EQ(numbers[2], 0.25) << line;
    EXPECT_STREQ(record.szDuration, "D");
    // Nothing of the search or of a stack is left behind the texts.
    for (std::size_t i = 15; i < 108; ++i) EXPECT_EQ(reinterpret_cast<char*>(&record)[i], 0) << i;
    EXPECT_EQ(file.Next(), "-10") << line;
  }
}

TEST(RecordFile, CutsTextsToTheirFields) {
  const std::string longText(150, 'x');
  std::string line;
  for (int i = 0; i < 5; ++i) line += '"' + longText + "\",";
  const OpenFile file("\"A,#\nB\",\"\",\"\",\"\",\"\",0,0,0,\"\"\n" + line + "1,2,3,\"DEF\"\n");
  EXPECT_EQ(file.First(""), "A,#\nB");
  HvCommandRecord record = Search("xxxxx");
  ASSERT_EQ(file.First(&record), 0);
  EXPECT_EQ(std::string(record.szKey), std::string(5, 'x'));
  EXPECT_EQ(std::string(record.szDescr), std::string(101, 'x'));
  EXPECT_EQ(std::string(record.szEmulation), std::string(5, 'x'));
  EXPECT_EQ(std::string(record.szCommand), std::string(101, 'x'));
  EXPECT_EQ(std::string(record.szVarFormat), std::string(5, 'x'));
  EXPECT_EQ(std::string(record.szDuration), "D");
}

TEST(RecordFile, RefusesMalformedLines) {
  const std::string before = "\"K1\",\"d\",\"e\",\"c\",\"f\",";
  const std::string lines[] = {
      "K1,\"d\",\"e\",\"c\",\"f\",1,2,3,\"D\"\n",  // no quotes
      "1\n",
      before + "1 ,2,3,\"D\"\n",  // a blank behind a number
      before + "1\t,2,3,\"D\"\n",
      before + "1 5,2,3,\"D\"\n",
      before + "1x,2,3,\"D\"\n",
      before + "0x10,2,3,\"D\"\n",
      before + "\"1\",2,3,\"D\"\n",
      before + "inf,2,3,\"D\"\n",
      before + "-nan,2,3,\"D\"\n",
      before + "+-1,2,3,\"D\"\n",
      before + "1e,2,3,\"D\"\n",
      before + ".,2,3,\"D\"\n",
      before + "-,2,3,\"D\"\n",
      before + "1,2,\n",               // too few fields
      before + "1,2,3\n",              // the number before the last field ends the line
      before + "1,2,3\n\"D\"\n",       // the last field on a line of its own
      before + "1,2,3,\"D\",\"E\"\n",  // too many
      before + "1,2,3,\"D\"x\n",
      before + "1,2,3,\"D\" #\n",
      before + "1,2,3,\"D\"",  // no line feed at the end
      before + "1,2,3,\"D\" ,",
      before + "1,2,3,\"D\"\x1A\n",
      before + "1,2,3",  // the file ends before a field
      before,
      "\"K1\"",
  };
  for (const std::string& line : lines) {
    const OpenFile file(line);
    EXPECT_EQ(file.First(""), "-2") << line;
    EXPECT_EQ(file.Next(), "-7") << line;
    const OpenFile second(Line("K0") + line);
    EXPECT_EQ(second.First(""), "K0") << line;
    EXPECT_EQ(second.Next(), "-2") << line;
    EXPECT_EQ(second.Next(), "-7") << line;
  }
}

TEST(RecordFile, ATextCutByTheEndOfTheFileIsTheEnd) {
  for (const char* rest :
       {"\"K2", "\"", "\"K2\",\"d\",\"e\",\"c\",\"f\",1,2,3,\"D\n", "# K2", " ,"}) {
    EXPECT_EQ(OpenFile(rest).First(""), "-7") << rest;
    const OpenFile file(Line("K1") + rest);
    EXPECT_EQ(file.First("K"), "K1");
    EXPECT_EQ(file.Next(), "-10") << rest;
    EXPECT_EQ(file.Next(), "-10") << rest;
  }
}

TEST(RecordFile, TakesNumbersOutOfRange) {
  const OpenFile file("\"K\",\"\",\"\",\"\",\"\",1e999,-1E999,-1e-999,\"\"\n");
  HvCommandRecord record = Search("");
  ASSERT_EQ(file.First(&record), 0);
  double numbers[3];
  std::memcpy(numbers, reinterpret_cast<const char*>(&record) + 222, sizeof numbers);
  EXPECT_EQ(numbers[0], HUGE_VAL);
  EXPECT_EQ(numbers[1], -HUGE_VAL);
  EXPECT_EQ(numbers[2], 0.0);
}

TEST(RecordFile, WalksFromTheFirstMatch) {
  const OpenFile file("# keys\n" + Line("A1") + Line("S1") + "\n" + Line("sx") + Line("S2") +
                      Line("SABCDEF"));
  EXPECT_EQ(file.Next(), "-7");  // nothing was found yet
  EXPECT_EQ(file.First(""), "A1");
  EXPECT_EQ(file.Next(), "S1");
  EXPECT_EQ(file.First("S"), "S1");
  EXPECT_EQ(file.Next(), "sx");
  EXPECT_EQ(file.First("s"), "sx");  // letter case counts
  EXPECT_EQ(file.Next(), "S2");
  EXPECT_EQ(file.Next(), "SABCD");
  EXPECT_EQ(file.Next(), "-10");
  EXPECT_EQ(file.Next(), "-10");
  EXPECT_EQ(file.First("S2"), "S2");
  EXPECT_EQ(file.First("S12"), "-7");  // no key is that long
  EXPECT_EQ(file.Next(), "-7");
  EXPECT_EQ(file.First("SABCD"), "SABCD");
  EXPECT_EQ(file.First("SABCDEF"), "-7");  // keys have five characters
  EXPECT_EQ(file.First("A1"), "A1");
}

TEST(RecordFile, AMalformedLineEndsTheSearch) {
  const OpenFile file(Line("A") + "bad\n" + Line("C"));
  EXPECT_EQ(file.First("C"), "-2");
  EXPECT_EQ(file.Next(), "-7");
  EXPECT_EQ(file.First("A"), "A");
}

TEST(RecordFile, HasFourHandles) {
  const TestFolder folder;
  const std::string path = folder.Add("r.dat", Line("A"));
  int32_t handles[4];
  for (int32_t i = 0; i < 4; ++i) {
    handles[i] = HvDatOpenFile(path.c_str(), 0xFFFFFFFF, DAT_FILE_COMMANDS);
    EXPECT_EQ(handles[i], i);
  }
  EXPECT_EQ(HvDatOpenFile(path.c_str(), 0, DAT_FILE_COMMANDS), DAT_FAILED);
  char prefix[sizeof(HvCommandRecord)] = "A";
  EXPECT_EQ(HvDatQueryCount(path.c_str(), prefix, DAT_FILE_COMMANDS), 0xFFFBU);
  uint16_t counts[12];
  EXPECT_EQ(HvDatQueryCounts(path.c_str(), counts, DAT_FILE_COMMANDS), DAT_CANNOT_OPEN);

  EXPECT_EQ(HvDatCloseFile(2), 0);
  EXPECT_EQ(HvDatCloseFile(2), DAT_BAD_HANDLE);
  HvCommandRecord record = Search("");
  EXPECT_EQ(HvDatGetFirstKey(2, &record), DAT_BAD_HANDLE);
  EXPECT_EQ(HvDatGetNextKey(2, &record), DAT_BAD_HANDLE);
  EXPECT_EQ(HvDatQueryCount(path.c_str(), prefix, DAT_FILE_COMMANDS), 1U);
  EXPECT_EQ(HvDatOpenFile(path.c_str(), 0, DAT_FILE_COMMANDS), 2);

  for (const int32_t bad : {-1, -32768, 4, 5, 32767}) {
    EXPECT_EQ(HvDatGetFirstKey(bad, &record), DAT_BAD_HANDLE) << bad;
    EXPECT_EQ(HvDatGetNextKey(bad, &record), DAT_BAD_HANDLE) << bad;
    EXPECT_EQ(HvDatCloseFile(bad), bad < 0 ? DAT_FAILED : DAT_BAD_HANDLE) << bad;
  }
  EXPECT_TRUE(IsUntouched(record, ""));
  EXPECT_EQ(HvDatGetFirstKey(0, nullptr), DAT_BAD_HANDLE);
  EXPECT_EQ(HvDatGetNextKey(0, nullptr), DAT_BAD_HANDLE);
  // A handle is 16 bits wide.
  EXPECT_EQ(HvDatGetFirstKey(0x10001, &record), 0);
  for (const int32_t handle : handles) EXPECT_EQ(HvDatCloseFile(handle), 0);
}

TEST(RecordFile, OpensOnlyFilesOfCommandRecords) {
  const TestFolder folder;
  const std::string path = folder.Add("r.dat", Line("A"));
  std::string longPath = folder / "r.dat";
  while (longPath.size() < 261) longPath.insert(folder.Path().string().size(), "/");
  longPath.resize(261, '.');
  const struct {
    const char* path;
    uint32_t fileType;
    int32_t expected;
  } cases[] = {
      {nullptr, 2, -1},
      {"", 2, -1},
      {longPath.c_str(), 2, -1},
      {path.c_str(), 0, -1},
      {path.c_str(), 1, -1},
      {path.c_str(), 3, -1},
      {path.c_str(), 0x10002, -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(HvDatOpenFile(c.path, 0, c.fileType), c.expected) << (c.path ? c.path : "NULL");
  }
  EXPECT_EQ(HvDatOpenFile((folder / "none.dat").c_str(), 0, 2), -1);
  EXPECT_EQ(HvDatOpenFile(folder.Path().string().c_str(), 0, 2), -5);
  const int32_t handle = HvDatOpenFile(path.c_str(), 0, 2);
  EXPECT_EQ(handle, 0);  // no failure kept a slot
  EXPECT_EQ(HvDatCloseFile(handle), 0);
}

TEST(RecordFile, CountsRecordsInARow) {
  const TestFolder folder;
  const std::string text = Line("A") + Line("S1") + Line("S22") + Line("SABCD") + Line("T") +
                           Line("S3") + "bad\n" + Line("T2");
  const std::string path = folder.Add("r.dat", text);
  const struct {
    const char* prefix;
    uint32_t expected;
    const char* lastRead;
  } cases[] = {
      {"S", 3, "T"},   {"s", 0, "s"},  {"S2", 1, "SABCD"}, {"SABCDEFG", 1, "T"}, {"", 6, "S3"},
      {"S3", 1, "S3"}, {"A", 1, "S1"}, {"T", 1, "S3"},     {"T2", 0, "T2"},
  };
  for (const auto& c : cases) {
    char buffer[sizeof(HvCommandRecord)] = {};
    std::strcpy(buffer, c.prefix);
    EXPECT_EQ(HvDatQueryCount(path.c_str(), buffer, DAT_FILE_COMMANDS), c.expected) << c.prefix;
    EXPECT_STREQ(buffer, c.lastRead) << c.prefix;
  }
  char buffer[sizeof(HvCommandRecord)] = "S";
  EXPECT_EQ(HvDatQueryCount(path.c_str(), nullptr, 2), 0xFFFDU);
  EXPECT_EQ(HvDatQueryCount(path.c_str(), buffer, 1), 0xFFFBU);
  EXPECT_EQ(HvDatQueryCount(nullptr, buffer, 2), 0xFFFBU);
  EXPECT_EQ(HvDatQueryCount((folder / "none").c_str(), buffer, 2), 0xFFFBU);
  EXPECT_STREQ(buffer, "S");
}

TEST(RecordFile, CountsRecordsByLetter) {
  const TestFolder folder;
  std::string text;
  for (const char* key : {"A",  "AS", "f1", "G",  "G",  "P",  "t",  "TS", "S", "Sa",
                          "sF", "SF", "SG", "SP", "ss", "ST", "s1", "B",  "1", ""}) {
    text += Line(key);
  }
  text += "bad\n" + Line("A");
  const std::string path = folder.Add("r.dat", text);
  std::vector<uint16_t> counts(13, 99);
  EXPECT_EQ(HvDatQueryCounts(path.c_str(), counts.data(), 2), 0);
  EXPECT_EQ(counts, (std::vector<uint16_t>{2, 1, 2, 1, 9, 2, 1, 2, 1, 1, 1, 1, 99}));

  EXPECT_EQ(HvDatQueryCounts((folder / "none").c_str(), counts.data(), 2), -5);
  EXPECT_EQ(counts, (std::vector<uint16_t>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 99}));
  EXPECT_EQ(HvDatQueryCounts(path.c_str(), counts.data(), 1), -5);
  EXPECT_EQ(HvDatQueryCounts(path.c_str(), nullptr, 2), -3);
}

TEST(RecordFile, ThreadsWithHandlesOfTheirOwnDoNotDisturbEachOther) {
  const TestFolder folder;
  std::atomic<int> faults = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    const std::string key(1, static_cast<char>('A' + t));
    std::string text;
    for (int i = 0; i < 20; ++i) text += Line(key + std::to_string(i));
    threads.emplace_back([&faults, key, path = folder.Add(key, text)] {
      for (int round = 0; round < 50; ++round) {
        const int32_t handle = HvDatOpenFile(path.c_str(), 0, DAT_FILE_COMMANDS);
        HvCommandRecord record = Search("");
        int found = 0;
        for (int32_t code = HvDatGetFirstKey(handle, &record); code == 0;
             code = HvDatGetNextKey(handle, &record)) {
          found += record.szKey == key + std::to_string(found);
        }
        if (handle < 0 || found != 20 || HvDatCloseFile(handle) != 0) ++faults;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults, 0);
}

}  // namespace
