// Quick setup files: headers, blocks; lists of variables in INI files.

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/quick_setup_builder.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

constexpr uint32_t FileType = 3;

QuickSetupFile Sample(uint8_t major = 1, uint8_t minor = 1, uint16_t count1 = 4,
                      const char* magic = "QS", uint8_t fileType = FileType) {
  QuickSetupFile file = {magic, fileType, major, minor, {"first block", count1, {}}, {}, {}};
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
  const std::size_t handles = OpenHandleCount();
  const std::pair<QuickSetupFile, uint32_t> cases[] = {
      {Sample(), 0},         {Sample(1, 1, 4, "XX", 4), 44},
      {Sample(2, 0), 29},    {Sample(1, 1, 4, "SQ"), 29},
      {Sample(0, 1), 0},     {Sample(1, 0), 0},
      {Sample(1, 0, 0), 29}, {Sample(1, 1, 0), 0},
      {Sample(0, 0, 0), 0},
  };
  for (const auto& [file, expected] : cases) EXPECT_EQ(OpenCode(file.Bytes()), expected);
  // An odd size, and more words than 16 bits count.
  for (const std::size_t size : {14U, 140001U}) {
    QuickSetupFile file = Sample();
    file.block5.data.assign(size, 'x');
    EXPECT_EQ(OpenCode(file.Bytes()), 0U);
  }
  std::string changed = Sample().Bytes();
  changed.back() = 'x';
  EXPECT_EQ(OpenCode(changed), 43U);
  EXPECT_EQ(OpenCode(WithChecksum(Sample().Bytes().substr(0, 74))), 0U);
  EXPECT_EQ(OpenCode(WithChecksum(Sample().Bytes().substr(0, 73))), 3U);
  EXPECT_EQ(OpenHandleCount(), handles);
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

  uint8_t* data = nullptr;
  uint16_t count = 0;
  for (const uint32_t block : {0U, 3U, 4U, 6U, 0x10001U, 1U}) {
    uint8_t marker = 0;
    data = &marker;
    count = 9;
    EXPECT_EQ(HvQsfGetVariables(block == 1 ? nullptr : handle, block, &data, &count), 1U) << block;
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(count, 0);
  }
  EXPECT_EQ(HvQsfGetVariables(handle, 1, nullptr, &count), 1U);
  EXPECT_EQ(HvQsfGetVariables(handle, 1, &data, nullptr), 1U);
  HvQsfClose(handle);
  HvQsfClose(nullptr);
}

// Code, count and, of a block that is given, its bytes, `size` of them.
std::string Read(HvQsfHandle* handle, uint32_t block, std::size_t size = 0) {
  uint8_t* data = nullptr;
  uint16_t count = 0;
  std::string text = std::to_string(HvQsfGetVariables(handle, block, &data, &count));
  text += " " + std::to_string(count);
  if (data != nullptr) text += ":" + std::string(reinterpret_cast<char*>(data), size);
  HvMemFree(data);
  return text;
}

// A file of which the offset of a block is not the true one.
QuickSetupFile Placed(uint8_t major, uint8_t minor, QuickSetupBlock QuickSetupFile::*block,
                      uint32_t offset) {
  QuickSetupFile file = Sample(major, minor);
  (file.*block).offset = offset;
  return file;
}

TEST(QuickSetup, ReadsBlocksByVersion) {
  const std::string all = "first blocksecondthe fifth one";
  QuickSetupFile empty = Sample();
  empty.block2.data = empty.block5.data = "";
  QuickSetupFile none = Placed(1, 1, &QuickSetupFile::block5, 0xFFFFFFFF);
  none.block5.count = 0;
  const std::tuple<QuickSetupFile, uint32_t, std::string> cases[] = {
      {Sample(1, 1), 1, "0 4:\x0B\0\0\0\0\x04"s + "first block"},
      {Sample(1, 1), 2, "0 258:\x06\0\0\0\x01\x02"s + "second"},
      {Sample(1, 1), 5, "0 7:\x0D\0\0\0\0\x07"s + "the fifth one"},
      {Sample(1, 0), 1, "0 4:first block"},
      {Sample(1, 0), 5, "0 7:the fifth one"},
      // Block 2 ends with the file in version 1.0 alone, wherever block 5 lies.
      {Placed(1, 0, &QuickSetupFile::block5, 80), 2, "0 258:secondthe fifth one"},
      {Placed(0, 0, &QuickSetupFile::block5, 80), 2, "27 0"},
      {Placed(0, 1, &QuickSetupFile::block5, 80), 2, "27 0"},
      {Sample(0, 1), 2, "0 258:second"},
      // Entries without bytes; no entries, wherever they would be.
      {empty, 2, "0 258:\0\0\0\0\x01\x02"s},
      {empty, 5, "0 7:\0\0\0\0\0\x07"s},
      {none, 5, "0 0"},
      // Without a place of block 2 block 1 goes on to the end; other blocks do not.
      {Placed(1, 1, &QuickSetupFile::block2, 0), 1, "0 4:\x1E\0\0\0\0\x04"s + all},
      {Placed(1, 0, &QuickSetupFile::block2, 0), 1, "0 4:" + all},
      {Placed(1, 1, &QuickSetupFile::block5, 0), 2, "27 0"},
      {Placed(1, 1, &QuickSetupFile::block5, 105), 5, "27 0"},  // behind the end
      {Placed(1, 1, &QuickSetupFile::block2, 105), 1, "27 0"},  // ending there
      {Placed(1, 1, &QuickSetupFile::block2, 73), 1, "27 0"},   // backward
  };
  const TestFolder folder;
  HvQsfHandle* handle = nullptr;
  for (const auto& [file, block, expected] : cases) {
    ASSERT_EQ(Open(folder.Add("a.qsf", file.Bytes()), &handle), 0U);
    const std::size_t size = expected.size() - expected.find(':') - 1;
    EXPECT_EQ(Read(handle, block, size), expected);
    EXPECT_EQ(Read(handle, block, size), expected);  // as often as one likes
    HvQsfClose(handle);
  }
  // A file that got shorter since it was opened.
  ASSERT_EQ(Open(folder.Add("a.qsf", Sample().Bytes()), &handle), 0U);
  folder.Add("a.qsf", Sample().Bytes().substr(0, 90));
  EXPECT_EQ(Read(handle, 2), "27 0");
  EXPECT_EQ(Read(handle, 1, 17), "0 4:\x0B\0\0\0\0\x04"s + "first block");
  HvQsfClose(handle);
}

// The code and, of a list that is given, its bytes in hexadecimal.
std::string ReadList(HvIniHandle* ini, uint32_t kind, uint32_t setup) {
  uint8_t marker = 0;
  uint8_t* values = &marker;
  uint16_t count = 99;
  const uint32_t code = HvQsfIniGetSection(ini, kind, setup, &values, &count);
  EXPECT_EQ(code == 0, values != nullptr);
  EXPECT_EQ(code == 0, count != 0);
  std::string text = std::to_string(code);
  char hex[4];
  for (int i = 0; i < 2 * count; ++i) {
    std::snprintf(hex, sizeof hex, i % 2 == 0 ? " %02X" : "%02X", values[i]);
    text += hex;
  }
  HvMemFree(values);
  return text;
}

std::string ReadList(const std::string& text, uint32_t kind, uint32_t setup) {
  const TestFolder folder;
  const OpenIni ini(HvIniOpen2(folder.Add("s.ini", text).c_str(), INI_OPEN_UPDATE));
  uint16_t none = 0;
  EXPECT_EQ(HvQsfIniGetSection(ini.get(), kind, setup, nullptr, &none), 1U);
  uint8_t* nothing = nullptr;
  EXPECT_EQ(HvQsfIniGetSection(ini.get(), kind, setup, &nothing, nullptr), 1U);
  return ReadList(ini.get(), kind, setup);
}

TEST(SetupList, ReadsExactlyAsManyVariablesAsItSays) {
  const std::pair<const char*, const char*> cases[] = {
      {"NUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=0x3\n", "0 001A 002B 0003"},
      {"numvars= 2 of them\nnumentries=1\nomvars1=  FfEe   g1h2 \n", "0 FFEE 0012"},
      {"NUMVARS=1\nNUMENTRIES=1\nOMVARS1=123456\n", "0 3456"},
      {"NUMVARS=1\nNUMENTRIES=1\nOMVARS1=1\nOMVARS2=2\n", "0 0001"},
      {"NUMVARS=2\nNUMENTRIES=2\nOMVARS1=1 2\nOMVARS2=3\n", "27"},
      {"NUMVARS=4\nNUMENTRIES=2\nOMVARS1=1 2\nOMVARS2=3\n", "27"},
      {"NUMVARS=2\nNUMENTRIES=2\nOMVARS1=1 2\nOMVARS2=\n", "27"},
      {"NUMVARS=0\nNUMENTRIES=1\nOMVARS1=1\n", "27"},
      {"NUMVARS=65537\nNUMENTRIES=1\nOMVARS1=1\n", "27"},
      {"NUMVARS=1\nNUMENTRIES=0\nOMVARS1=1\n", "27"},
      {"NUMVARS=1\nOMVARS1=1\n", "41"},
      {"NUMENTRIES=1\nOMVARS1=1\n", "41"},
  };
  const std::string head = "[005REQUIRED]\n";
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(ReadList(head + text, 1, 5), expected) << text;

  EXPECT_EQ(ReadList("", 1, 5), "45");  // a file without any line
  std::string digits;
  std::string expected = "0";
  for (int i = 0; i < 250; ++i) digits += "7b ", expected += " 007B";
  EXPECT_EQ(ReadList(head + "NUMVARS=250\nNUMENTRIES=1\nOMVARS1=" + digits, 1, 5), expected);
}

TEST(SetupList, FallsBackToTheDefaultListOfItsKind) {
  const std::string one = "\nNUMVARS=1\nNUMENTRIES=1\nOMVARS1=";
  const std::string defaults = "[DEFAULTREQUIRED]" + one + "1\n[DEFAULTOPTIONAL]" + one +
                               "2\n[DEFAULTEXCLUDE]" + one + "3\n[DEFAULTORDER]" + one + "4\n";
  const std::string own = "[007REQUIRED]" + one + "A\n[007OPTIONAL]" + one + "B\n[007EXCLUDE]" +
                          one + "C\n[007ORDER]" + one + "D\n[255ORDER]" + one + "E\n";
  const std::string broken = "[007EXCLUDE]\nNUMENTRIES=1\n[007ORDER]\nNUMVARS=0\n";
  const std::tuple<std::string, uint32_t, uint32_t, const char*> cases[] = {
      {own + defaults, 1, 7, "0 000A"},
      {own + defaults, 4, 7, "0 000D"},
      {own + defaults, 4, 255, "0 000E"},
      {own + defaults, 4, 0x107, "0 000D"},
      {own + defaults, 1, 8, "45"},
      {own + defaults, 2, 8, "45"},
      {own + defaults, 3, 8, "0 0003"},
      {own + defaults, 4, 8, "0 0004"},
      {own, 4, 8, "45"},
      {broken + defaults, 3, 7, "41"},
      {broken + defaults, 4, 7, "27"},
      // Other kinds there are none of.
      {own, 0, 7, "1"},
      {own, 5, 7, "1"},
  };
  for (const auto& [text, kind, setup, expected] : cases) {
    EXPECT_EQ(ReadList(text, kind, setup), expected) << kind << ' ' << setup;
  }
  EXPECT_EQ(ReadList(nullptr, 1, 7), "1");
}

}  // namespace
