// Keyed record files: what a line may look like, walks, counts, handles.

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

using hvtest::TestFolder;

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

  HvCommandRecord Record(const std::string& search) const {
    HvCommandRecord record = Search(search);
    EXPECT_EQ(HvDatGetFirstKey(handle_, &record), 0) << search;
    return record;
  }
  // The code, or for a record that was found its key.
  std::string First(const std::string& text) const { return Get(HvDatGetFirstKey, text); }
  std::string Next() const { return Get(HvDatGetNextKey, ""); }
  // The keys from the first one on and the code that ends them.
  std::string Keys(const std::string& search) const {
    std::string text = First(search);
    for (std::string key = text; key[0] != '-'; text += " " + key) key = Next();
    return text;
  }

 private:
  std::string Get(decltype(&HvDatGetFirstKey) get, const std::string& text) const {
    HvCommandRecord record = Search(text);
    const int32_t code = get(handle_, &record);
    EXPECT_TRUE(code == 0 || IsUntouched(record, text)) << text;
    return code == 0 ? record.szKey : std::to_string(code);
  }

  TestFolder folder_;
  int32_t handle_;
};

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
    const OpenFile file(line);
    const HvCommandRecord record = file.Record("K");
    EXPECT_EQ(Show(record), "K1|Set size|PCL|1B45|%d|-1.5 2000 0.25|D") << line;
    // Nothing of the search or of a stack is left behind the texts.
    for (std::size_t i = 8; i < sizeof record.szDescr; ++i) EXPECT_EQ(record.szDescr[i], 0) << i;
    EXPECT_EQ(file.Next(), "-10") << line;
  }
}

TEST(RecordFile, CutsTextsToTheirFieldsAndNumbersToTheirRange) {
  const std::string x(101, 'x');
  const std::string longText = '"' + std::string(150, 'x') + "\",";
  const OpenFile file("\"A,#\nB\",\"\",\"\",\"\",\"\",1e999,-1E999,1e-999,\"\"\n" + longText +
                      longText + longText + longText + longText + "1,2,3,\"DEF\"\n");
  EXPECT_EQ(Show(file.Record("")), "A,#\nB|||||inf -inf 0|");
  EXPECT_EQ(Show(file.Record("xxxxx")), "xxxxx|" + x + "|xxxxx|" + x + "|xxxxx|1 2 3|D");
}

TEST(RecordFile, RefusesMalformedLines) {
  const std::string texts = "\"K1\",\"d\",\"e\",\"c\",\"f\",";
  const std::string lines[] = {
      "K1,\"d\",\"e\",\"c\",\"f\",1,2,3,\"D\"\n",  // no quotes
      texts,
      texts + "1,2,\n",               // too few fields
      texts + "1,2,3\n\"D\"\n",       // the last field on a line of its own
      texts + "1,2,3,\"D\",\"E\"\n",  // too many
      texts + "1,2,3,\"D\"x\n",
      texts + "1,2,3,\"D\"",  // no line feed at the end
  };
  const auto expectRefused = [](const std::string& line) {
    const OpenFile file(Line("K0") + line);
    EXPECT_EQ(file.Keys(""), "K0 -2") << line;
    EXPECT_EQ(file.Next(), "-7") << line;
    EXPECT_EQ(file.First("K9"), "-2") << line;  // a search does not get beyond it either
  };
  for (const std::string& line : lines) expectRefused(line);
  for (const char* number : {"1 ", "1\t5", "1x", "0x10", "inf", "-nan", "+-1", "1e", ".", "-"}) {
    expectRefused(texts + number + ",2,3,\"D\"\n");
  }
}

TEST(RecordFile, ATextCutByTheEndOfTheFileIsTheEnd) {
  for (const char* rest :
       {"\"K2", "\"", "\"K2\",\"d\",\"e\",\"c\",\"f\",1,2,3,\"D\n", "# K2", " ,"}) {
    EXPECT_EQ(OpenFile(rest).First(""), "-7") << rest;
    const OpenFile file(Line("K1") + rest);
    EXPECT_EQ(file.Keys("K"), "K1 -10") << rest;
    EXPECT_EQ(file.Next(), "-10") << rest;
  }
}

TEST(RecordFile, WalksFromTheFirstMatch) {
  const OpenFile file("# keys\n" + Line("A1") + Line("S1") + "\n" + Line("sx") + Line("S2") +
                      Line("SABCDEF"));
  EXPECT_EQ(file.Next(), "-7");  // nothing was found yet
  const std::pair<const char*, const char*> cases[] = {
      {"", "A1 S1 sx S2 SABCD -10"},
      {"S", "S1 sx S2 SABCD -10"},
      {"s", "sx S2 SABCD -10"},  // letter case counts
      {"S2", "S2 SABCD -10"},
      {"SABCDEF", "-7"},  // keys have five characters
      {"S12", "-7"},
  };
  for (const auto& [search, keys] : cases) EXPECT_EQ(file.Keys(search), keys) << search;
  EXPECT_EQ(file.Next(), "-7");
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
