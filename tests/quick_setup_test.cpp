// Quick setup files: headers, blocks; lists of variables in INI files.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/quick_setup_builder.h"
#include "support/test_folder.h"

namespace {

using hvtest::QuickSetupFile;
using hvtest::TestFolder;
using hvtest::WithChecksum;
using namespace std::string_literals;

constexpr uint32_t FileType = 3;

QuickSetupFile Sample() {
  QuickSetupFile file;
  file.block1 = {"first block", 4, {}};
  file.block2 = {"second", 0x0102, {}};
  file.block5 = {"the fifth one", 7, {}};
  return file;
}

uint32_t Open(const std::string& path, HvQsfHandle** handle) {
  return HvQsfOpen(path.c_str(), FileType, handle);
}

// The code of opening a file of these bytes; it must give a handle just when it succeeds.
uint32_t OpenCode(const std::string& bytes) {
  const TestFolder folder;
  auto* handle = reinterpret_cast<HvQsfHandle*>(1);
  const uint32_t code = Open(folder.Add("a.qsf", bytes), &handle);
  EXPECT_EQ(code == 0, handle != nullptr);
  HvQsfClose(handle);
  return code;
}

TEST(QuickSetup, ChecksTheHeaderInOrder) {
  const struct {
    const char* what;
    std::function<void(QuickSetupFile*)> change;
    uint32_t expected;
  } cases[] = {
      {"as it is", [](auto*) {}, 0},
      {"another type", [](auto* f) { f->fileType = 4; }, 44},
      {"another type and no magic", [](auto* f) { f->fileType = 4, f->magic = "XX"; }, 44},
      {"Q alone", [](auto* f) { f->magic = "QT"; }, 29},
      {"S alone", [](auto* f) { f->magic = "RS"; }, 29},
      {"swapped", [](auto* f) { f->magic = "SQ"; }, 29},
      {"2.0", [](auto* f) { f->major = 2, f->minor = 0; }, 29},
      {"1.2", [](auto* f) { f->minor = 2; }, 29},
      {"0.255", [](auto* f) { f->major = 0, f->minor = 255; }, 29},
      {"0.0", [](auto* f) { f->major = 0, f->minor = 0; }, 0},
      {"0.1", [](auto* f) { f->major = 0; }, 0},
      {"1.0", [](auto* f) { f->minor = 0; }, 0},
      {"1.0 without block 1", [](auto* f) { f->minor = 0, f->block1.count = 0; }, 29},
      {"1.1 without block 1", [](auto* f) { f->block1.count = 0; }, 0},
      {"0.0 without block 1", [](auto* f) { f->major = f->minor = 0, f->block1.count = 0; }, 0},
      {"an odd size", [](auto* f) { f->block5.data += 'x'; }, 0},
      {"more words than 16 bits count", [](auto* f) { f->block5.data.assign(140001, 'x'); }, 0},
  };
  for (const auto& c : cases) {
    QuickSetupFile file = Sample();
    c.change(&file);
    EXPECT_EQ(OpenCode(file.Bytes()), c.expected) << c.what;
  }
}

TEST(QuickSetup, NeedsAWholeHeader) {
  const std::string header = WithChecksum(Sample().Bytes().substr(0, 74));
  EXPECT_EQ(OpenCode(header), 0U);
  EXPECT_EQ(OpenCode(WithChecksum(header.substr(0, 73))), 3U);
  EXPECT_EQ(OpenCode(""), 3U);
}

TEST(QuickSetup, ChecksItsArguments) {
  const TestFolder folder;
  const std::string path = folder.Add("a.qsf", Sample().Bytes());
  HvQsfHandle* handle = nullptr;
  EXPECT_EQ(Open(folder / "none.qsf", &handle), 3U);
  EXPECT_EQ(Open(folder.Path().string(), &handle), 3U);
  EXPECT_EQ(Open(std::string(261, 'a'), &handle), 1U);
  EXPECT_EQ(HvQsfOpen(nullptr, FileType, &handle), 1U);
  EXPECT_EQ(HvQsfOpen(path.c_str(), FileType, nullptr), 1U);
  // The type is one byte.
  ASSERT_EQ(HvQsfOpen(path.c_str(), 0x100 | FileType, &handle), 0U);

  uint8_t marker = 0;
  uint8_t* data = &marker;
  uint16_t count = 9;
  for (const uint32_t block : {0U, 3U, 4U, 6U, 0x10001U}) {
    data = &marker;
    count = 9;
    EXPECT_EQ(HvQsfGetVariables(handle, block, &data, &count), 1U) << block;
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(count, 0);
  }
  data = &marker;
  EXPECT_EQ(HvQsfGetVariables(nullptr, 1, &data, &count), 1U);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(HvQsfGetVariables(handle, 1, nullptr, &count), 1U);
  EXPECT_EQ(HvQsfGetVariables(handle, 1, &data, nullptr), 1U);
  HvQsfClose(handle);
  HvQsfClose(nullptr);
}

struct Variables {
  uint32_t code;
  uint16_t count;
  bool isNull;
  std::string bytes;
};

// A block of a file, `size` bytes of it as the file's version makes one expect.
Variables Read(HvQsfHandle* handle, uint32_t block, std::size_t size) {
  uint8_t* data = nullptr;
  Variables result = {};
  result.code = HvQsfGetVariables(handle, block, &data, &result.count);
  result.isNull = data == nullptr;
  if (data != nullptr) result.bytes.assign(reinterpret_cast<char*>(data), size);
  HvMemFree(data);
  return result;
}

TEST(QuickSetup, ReadsBlocksByVersion) {
  const std::string all = "first blocksecondthe fifth one";
  const std::string behindFirst = all.substr(11);
  const std::string last = "the fifth one";
  const struct {
    uint8_t major;
    uint8_t minor;
    bool noOffset2;
    uint32_t block;
    std::string expected;
    uint16_t count;
  } cases[] = {
      {1, 1, false, 1, "\x0B\0\0\0\0\x04"s + "first block", 4},
      {1, 1, false, 2, "\x06\0\0\0\x01\x02"s + "second", 0x0102},
      {1, 1, false, 5, "\x0D\0\0\0\0\x07"s + last, 7},
      {1, 1, true, 1, "\x1E\0\0\0\0\x04"s + all, 4},
      {1, 0, false, 1, "first block", 4},
      {1, 0, false, 2, behindFirst, 0x0102},
      {1, 0, false, 5, last, 7},
      {1, 0, true, 1, all, 4},
      {0, 0, false, 1, "first block", 4},
      {0, 0, false, 2, "second", 0x0102},
      {0, 1, false, 2, "second", 0x0102},
      {0, 1, false, 5, last, 7},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    QuickSetupFile file = Sample();
    file.major = c.major;
    file.minor = c.minor;
    if (c.noOffset2) file.block2.offset = 0;
    HvQsfHandle* handle = nullptr;
    ASSERT_EQ(Open(folder.Add("a.qsf", file.Bytes()), &handle), 0U);
    for (int round = 0; round < 2; ++round) {  // a block can be read again
      const Variables got = Read(handle, c.block, c.expected.size());
      EXPECT_EQ(got.code, 0U);
      EXPECT_EQ(got.bytes, c.expected) << int{c.major} << '.' << int{c.minor} << ' ' << c.block;
      EXPECT_EQ(got.count, c.count);
    }
    HvQsfClose(handle);
  }
}

TEST(QuickSetup, ChecksWhereBlocksLie) {
  const struct {
    const char* what;
    std::function<void(QuickSetupFile*)> change;
    uint32_t block;
    uint32_t expected;
    bool isNull;
  } cases[] = {
      {"no entries", [](auto* f) { f->block2.count = 0; }, 2, 0, true},
      {"no entries, bad place",
       [](auto* f) {
         f->block5 = {"", 0, 0xFFFFFFFF};
       },
       5, 0, true},
      {"entries without bytes", [](auto* f) { f->block2.data.clear(); }, 2, 0, false},
      {"at the end", [](auto* f) { f->block5.data.clear(); }, 5, 0, false},
      {"behind the end", [](auto* f) { f->block5.offset = 105; }, 5, 27, true},
      {"far behind the end", [](auto* f) { f->block5.offset = 0xFFFFFFFF; }, 5, 27, true},
      {"ending behind the end", [](auto* f) { f->block2.offset = 105; }, 1, 27, true},
      {"backward", [](auto* f) { f->block2.offset = 73; }, 1, 27, true},
      {"backward from 5", [](auto* f) { f->block5.offset = 80; }, 2, 27, true},
      {"0 ends block 1 alone", [](auto* f) { f->block5.offset = 0; }, 2, 27, true},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    QuickSetupFile file = Sample();
    c.change(&file);
    HvQsfHandle* handle = nullptr;
    ASSERT_EQ(Open(folder.Add("a.qsf", file.Bytes()), &handle), 0U) << c.what;
    const Variables got = Read(handle, c.block, 0);
    EXPECT_EQ(got.code, c.expected) << c.what;
    EXPECT_EQ(got.isNull, c.isNull) << c.what;
    EXPECT_EQ(got.count == 0, c.isNull) << c.what;
    HvQsfClose(handle);
  }
}

// A file that got shorter since it was opened.
TEST(QuickSetup, MissesBytesThatWentAway) {
  const TestFolder folder;
  const std::string path = folder.Add("a.qsf", Sample().Bytes());
  HvQsfHandle* handle = nullptr;
  ASSERT_EQ(Open(path, &handle), 0U);
  folder.Add("a.qsf", Sample().Bytes().substr(0, 90));
  EXPECT_EQ(Read(handle, 5, 0).code, 27U);
  EXPECT_EQ(Read(handle, 2, 0).code, 27U);
  EXPECT_EQ(Read(handle, 1, 17).bytes, "\x0B\0\0\0\0\x04"s + "first block");
  HvQsfClose(handle);
}

TEST(QuickSetup, LeavesNoFileOpen) {
  const TestFolder folder;
  const std::size_t before = hvtest::OpenHandleCount();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(OpenCode("QS"), 3U);
    EXPECT_EQ(OpenCode(std::string(80, '\0')), 44U);
    EXPECT_EQ(OpenCode(Sample().Bytes()), 0U);
  }
  EXPECT_EQ(hvtest::OpenHandleCount(), before);
}

struct List {
  uint32_t code;
  std::vector<int> bytes;
  bool operator==(const List&) const = default;
};

std::ostream& operator<<(std::ostream& out, const List& list) {
  out << "code " << list.code << ":";
  for (const int byte : list.bytes) out << ' ' << byte;
  return out;
}

List ReadList(HvIniHandle* ini, uint32_t kind, uint32_t setup) {
  uint8_t marker = 0;
  uint8_t* values = &marker;
  uint16_t count = 99;
  List list = {HvQsfIniGetSection(ini, kind, setup, &values, &count), {}};
  EXPECT_EQ(list.code == 0, values != nullptr);
  if (values != nullptr) list.bytes.assign(values, values + 2 * count);
  EXPECT_EQ(count == 0, values == nullptr);
  HvMemFree(values);
  return list;
}

List ReadList(const std::string& text, uint32_t kind, uint32_t setup) {
  const TestFolder folder;
  HvIniHandle* const ini = HvIniOpen2(folder.Add("s.ini", text).c_str(), INI_OPEN_UPDATE);
  List list = ReadList(ini, kind, setup);
  HvIniClose(ini);
  return list;
}

TEST(SetupList, ReadsExactlyAsManyVariablesAsItSays) {
  const std::string head = "[005REQUIRED]\n";
  const struct {
    std::string text;
    List expected;
  } cases[] = {
      {"NUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=0x3\n", {0, {0, 0x1A, 0, 0x2B, 0, 3}}},
      {"numvars= 2 of them\nnumentries=1\nomvars1=  FfEe   g1h2 \n", {0, {0xFF, 0xEE, 0, 0x12}}},
      {"NUMVARS=1\nNUMENTRIES=1\nOMVARS1=123456\n", {0, {0x34, 0x56}}},
      {"NUMVARS=1\nNUMENTRIES=1\nOMVARS1=xyz\n", {0, {0, 0}}},
      {"NUMVARS=1\nNUMENTRIES=1\nOMVARS1=1\nOMVARS2=2\n", {0, {0, 1}}},
      {"NUMVARS=2\nNUMENTRIES=1\nOMVARS1=1 2 3\n", {27, {}}},
      {"NUMVARS=2\nNUMENTRIES=2\nOMVARS1=1 2\nOMVARS2=3\n", {27, {}}},
      {"NUMVARS=4\nNUMENTRIES=2\nOMVARS1=1 2\nOMVARS2=3\n", {27, {}}},
      {"NUMVARS=2\nNUMENTRIES=2\nOMVARS1=1 2\n", {27, {}}},
      {"NUMVARS=2\nNUMENTRIES=2\nOMVARS1=1 2\nOMVARS2=\n", {27, {}}},
      {"NUMVARS=0\nNUMENTRIES=1\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=-1\nNUMENTRIES=1\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=65537\nNUMENTRIES=1\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=99999999999999999999999\nNUMENTRIES=1\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=\nNUMENTRIES=1\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=1\nNUMENTRIES=0\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=1\nNUMENTRIES=none\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=1\nNUMENTRIES=4000000000\nOMVARS1=1\n", {27, {}}},
      {"NUMVARS=1\nOMVARS1=1\n", {41, {}}},
      {"NUMENTRIES=1\nOMVARS1=1\n", {41, {}}},
      {"", {41, {}}},
  };
  for (const auto& c : cases) EXPECT_EQ(ReadList(head + c.text, 1, 5), c.expected) << c.text;

  EXPECT_EQ(ReadList("", 1, 5), (List{45, {}}));  // a file without any line
  std::string digits;
  for (int i = 0; i < 250; ++i) digits += "7b ";
  const List longest = ReadList(head + "NUMVARS=250\nNUMENTRIES=1\nOMVARS1=" + digits + "\n", 1, 5);
  EXPECT_EQ(longest.code, 0U);
  EXPECT_EQ(longest.bytes.size(), 500U);
}

TEST(SetupList, FallsBackToTheDefaultListOfItsKind) {
  const std::string one = "\nNUMVARS=1\nNUMENTRIES=1\nOMVARS1=";
  const std::string defaults = "[DEFAULTREQUIRED]" + one + "1\n[DEFAULTOPTIONAL]" + one +
                               "2\n[DEFAULTEXCLUDE]" + one + "3\n[DEFAULTORDER]" + one + "4\n";
  const std::string own = "[007REQUIRED]" + one + "A\n[007OPTIONAL]" + one + "B\n[007EXCLUDE]" +
                          one + "C\n[007ORDER]" + one + "D\n[255ORDER]" + one + "E\n";
  const std::string broken = "[007EXCLUDE]\nNUMENTRIES=1\n[007ORDER]\nNUMVARS=0\n";
  const struct {
    std::string text;
    uint32_t kind;
    uint32_t setup;
    List expected;
  } cases[] = {
      {own + defaults, 1, 7, {0, {0, 10}}},
      {own + defaults, 2, 7, {0, {0, 11}}},
      {own + defaults, 3, 7, {0, {0, 12}}},
      {own + defaults, 4, 7, {0, {0, 13}}},
      {own + defaults, 4, 255, {0, {0, 14}}},
      {own + defaults, 4, 0x107, {0, {0, 13}}},
      {own + defaults, 1, 8, {45, {}}},
      {own + defaults, 2, 8, {45, {}}},
      {own + defaults, 3, 8, {0, {0, 3}}},
      {own + defaults, 4, 8, {0, {0, 4}}},
      {own, 3, 8, {45, {}}},
      {own, 4, 8, {45, {}}},
      {broken + defaults, 3, 7, {41, {}}},
      {broken + defaults, 4, 7, {27, {}}},
      {"[DEFAULTORDER]\nX=1\n", 4, 7, {41, {}}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ReadList(c.text, c.kind, c.setup), c.expected) << c.kind << ' ' << c.setup;
  }
}

TEST(SetupList, ChecksItsArguments) {
  const TestFolder folder;
  HvIniHandle* const ini = HvIniOpen(folder.Add("s.ini", "[000ORDER]\nNUMVARS=1\n").c_str());
  for (const uint32_t kind : {0U, 5U, 0x10001U}) EXPECT_EQ(ReadList(ini, kind, 0), (List{1, {}}));
  EXPECT_EQ(ReadList(nullptr, 4, 0), (List{1, {}}));
  uint8_t* values = nullptr;
  uint16_t count = 0;
  EXPECT_EQ(HvQsfIniGetSection(ini, 4, 0, nullptr, &count), 1U);
  EXPECT_EQ(HvQsfIniGetSection(ini, 4, 0, &values, nullptr), 1U);
  HvIniClose(ini);
}

}  // namespace
