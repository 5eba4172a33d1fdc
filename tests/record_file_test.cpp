// Keyed record files: what a line may look like, walks, counts, handles.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// What a call must leave as it was is filled with this.
constexpr int Untouched = 0x5A;

std::string Line(const std::string& key) {
  return '"' + key + "\",\"Set size\",\"PCL\",\"1B45\",\"%d\",1,2.5,0.5,\"D\"\n";
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

std::string Show(const HvCommandRecord& record) {
  std::ostringstream text;
  text << record.szKey << '|' << record.szDescr << '|' << record.szEmulation << '|'
       << record.szCommand << '|' << record.szVarFormat << '|' << +record.dVarRangeLo << ' '
       << +record.dVarRangeHi << ' ' << +record.dVarIncrement << '|' << record.szDuration;
  return text.str();
}

// The first record of a file whose key begins with `search`.
HvCommandRecord RecordOf(const std::string& file, const std::string& search) {
  const TestFolder folder;
  const int32_t handle = HvDatOpenFile(folder.Add("r.dat", file).c_str(), 0, DAT_FILE_COMMANDS);
  HvCommandRecord record = Search(search);
  EXPECT_EQ(HvDatGetFirstKey(handle, &record), 0) << file;
  EXPECT_EQ(HvDatCloseFile(handle), 0);
  return record;
}

// The keys of a file from the first match on, the code that ends them, and that of one more step.
std::string Walk(const std::string& file, const std::string& search) {
  const TestFolder folder;
  const int32_t handle = HvDatOpenFile(folder.Add("r.dat", file).c_str(), 0, DAT_FILE_COMMANDS);
  const auto get = [handle](decltype(&HvDatGetFirstKey) call, const std::string& wanted) {
    HvCommandRecord record = Search(wanted);
    const int32_t code = call(handle, &record);
    EXPECT_TRUE(code == 0 || IsUntouched(record, wanted)) << wanted;
    return code == 0 ? record.szKey : std::to_string(code);
  };
  EXPECT_EQ(get(HvDatGetNextKey, ""), "-7");  // nothing was found yet
  const std::string first = get(HvDatGetFirstKey, search);
  std::string keys = first;
  for (std::string key = first; key[0] != '-'; keys += " " + key) key = get(HvDatGetNextKey, "");
  keys += " " + get(HvDatGetNextKey, "");
  EXPECT_EQ(get(HvDatGetFirstKey, search), first) << file;
  EXPECT_EQ(HvDatCloseFile(handle), 0);
  return keys;
}

TEST(RecordFile, ReadsARecordWithWhateverSeparates) {
  const std::string lines[] = {
      "\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.5,2e3,.25,\"D\"\n",
      "\"K1\";\"Set size\":\"PCL\";\"1B45\":\"%d\":-1.5;2e3:.25;\"D\"\n",
      "\"K1\"\"Set size\"\"PCL\"\"1B45\"\"%d\"-1.5,2e3,.25,\"D\"\n",
      " ,\t\"K1\" \r \"Set size\"\x80\xFF\"PCL\"\x01\x7F,;:\"1B45\"\v\"%d\" -1.5, +2e3;;\x1F.25: "
      "\"D\" ,\n",
      "# a comment\n\n ;, # another, indented\n\t\n\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\","
      "-1.5,2e3,.25,\"D\"\n",
      "\r\n\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.5,2e3,.25,\"D\"\r\n\x1A\"",
      // Of a number 24 characters are kept, the rest is not even looked at.
      "\"K1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1.500000000000000000000 or so,2e3,.25,\"D\"\n",
  };
  for (const std::string& line : lines) {
    const HvCommandRecord record = RecordOf(line, "K");
    EXPECT_EQ(Show(record), "K1|Set size|PCL|1B45|%d|-1.5 2000 0.25|D") << line;
    // Nothing of the search or of a stack is left behind the texts.
    for (std::size_t i = 8; i < sizeof record.szDescr; ++i) EXPECT_EQ(record.szDescr[i], 0) << i;
    EXPECT_EQ(Walk(line, ""), "K1 -10 -10") << line;
  }
}

TEST(RecordFile, CutsTextsToTheirFieldsAndNumbersToTheirRange) {
  const std::string x(101, 'x');
  const std::string longText = '"' + std::string(150, 'x') + "\",";
  const std::string file("\"A,#\nB\",\"\",\"\",\"\",\"\",1e999,-1E999,1e-999,\"\"\n" + longText +
                         longText + longText + longText + longText + "1,2,3,\"DEF\"\n");
  EXPECT_EQ(Show(RecordOf(file, "")), "A,#\nB|||||inf -inf 0|");
  EXPECT_EQ(Show(RecordOf(file, "xxxxx")), "xxxxx|" + x + "|xxxxx|" + x + "|xxxxx|1 2 3|D");
}

TEST(RecordFile, RefusesMalformedLines) {
  const std::string texts = "\"K1\",\"d\",\"e\",\"c\",\"f\",";
  std::vector<std::string> lines = {
      "K1,\"d\",\"e\",\"c\",\"f\",1,2,3,\"D\"\n",  // no quotes
      texts,
      texts + "1,2,\n",               // too few fields
      texts + "1,2,3\n\"D\"\n",       // the last field on a line of its own
      texts + "1,2,3,\"D\",\"E\"\n",  // too many
      texts + "1,2,3,\"D\"x\n",
      texts + "1,2,3,\"D\"",  // no line feed at the end
  };
  for (const char* number : {"1 ", "1\t5", "1x", "0x10", "inf", "-nan", "+-1", "1e", ".", "-"}) {
    lines.push_back(texts + number + ",2,3,\"D\"\n");
  }
  for (const std::string& line : lines) {
    EXPECT_EQ(Walk(Line("K0") + line, ""), "K0 -2 -7") << line;
    EXPECT_EQ(Walk(Line("K0") + line, "K9"), "-2 -7") << line;
  }
}

TEST(RecordFile, ATextCutByTheEndOfTheFileIsTheEnd) {
  for (const char* rest :
       {"\"K2", "\"", "\"K2\",\"d\",\"e\",\"c\",\"f\",1,2,3,\"D\n", "# K2", " ,"}) {
    EXPECT_EQ(Walk(rest, ""), "-7 -7") << rest;
    EXPECT_EQ(Walk(Line("K1") + rest, "K"), "K1 -10 -10") << rest;
  }
}

TEST(RecordFile, WalksFromTheFirstMatch) {
  const std::string file =
      "# keys\n" + Line("A1") + Line("S1") + "\n" + Line("sx") + Line("S2") + Line("SABCDEF");
  EXPECT_EQ(Walk(file, ""), "A1 S1 sx S2 SABCD -10 -10");
  EXPECT_EQ(Walk(file, "S"), "S1 sx S2 SABCD -10 -10");
  EXPECT_EQ(Walk(file, "s"), "sx S2 SABCD -10 -10");  // letter case counts
  EXPECT_EQ(Walk(file, "SABCDEF"), "-7 -7");          // keys have five characters
  EXPECT_EQ(Walk(file, "S12"), "-7 -7");
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
  EXPECT_EQ(HvDatOpenFile(nullptr, 0, 2), -1);
  EXPECT_EQ(HvDatOpenFile("", 0, 2), -1);
  EXPECT_EQ(HvDatOpenFile((folder / "none.dat").c_str(), 0, 2), -1);
  EXPECT_EQ(HvDatOpenFile((path + std::string(261 - path.size(), '.')).c_str(), 0, 2), -1);
  for (const uint32_t fileType : {0U, 1U, 3U, 0x10002U}) {
    EXPECT_EQ(HvDatOpenFile(path.c_str(), 0, fileType), -1) << fileType;
  }
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
  const std::tuple<const char*, uint32_t, const char*> cases[] = {
      {"S", 3, "T"},   {"s", 0, "s"},  {"S2", 1, "SABCD"}, {"SABCDEFG", 1, "T"}, {"", 6, "S3"},
      {"S3", 1, "S3"}, {"A", 1, "S1"}, {"T", 1, "S3"},     {"T2", 0, "T2"},
  };
  for (const auto& [prefix, expected, lastRead] : cases) {
    char buffer[sizeof(HvCommandRecord)] = {};
    std::strcpy(buffer, prefix);
    EXPECT_EQ(HvDatQueryCount(path.c_str(), buffer, DAT_FILE_COMMANDS), expected) << prefix;
    EXPECT_STREQ(buffer, lastRead) << prefix;
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

}  // namespace
