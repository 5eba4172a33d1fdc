// Operator panel files: registrations, limits, lists, pages.

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

using hvtest::TestFolder;

// A panel file of its own, registered as long as the object is.
class Panel {
 public:
  explicit Panel(const std::string& text) {
    folder_.Add("opc031.cfg", text);
    handle_ = HvOpcRegisterCfg(31, folder_.Path().string().c_str());
    EXPECT_NE(handle_, nullptr);
  }
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  ~Panel() { EXPECT_EQ(HvOpcUnregisterCfg(handle_), 1U); }

  HvIniHandle* Handle() const { return handle_; }

 private:
  TestFolder folder_;
  HvIniHandle* handle_;
};

TEST(PanelNames, HaveThreeDigitsAtLeast) {
  const struct {
    uint32_t number;
    const char* expected;
  } cases[] = {
      {5, "opc005.cfg"},       {0, "opc000.cfg"},       {999, "opc999.cfg"},
      {1234, "opc1234.cfg"},   {32767, "opc32767.cfg"}, {32768, "opc4294934528.cfg"},
      {0x10007, "opc007.cfg"},
  };
  for (const auto& c : cases) {
    char buffer[20];
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(HvOpcGetFileName(c.number, buffer), 1U);
    EXPECT_STREQ(buffer, c.expected);
    EXPECT_EQ(buffer[std::strlen(c.expected) + 1], 'x');
  }
  EXPECT_EQ(HvOpcGetFileName(5, nullptr), 0U);
}

TEST(PanelRegistration, SharesAndCounts) {
  const TestFolder folder;
  for (int number = 11; number <= 16; ++number) {
    folder.Add("opc0" + std::to_string(number) + ".cfg", "[Format]\nStyle=1\n");
  }
  const std::string directory = folder.Path().string();
  std::vector<HvIniHandle*> handles;
  for (uint32_t number = 11; number <= 15; ++number) {
    // With and without a separator at the end.
    const std::string name = directory + (number % 2 == 0 ? "\\" : "");
    handles.push_back(HvOpcRegisterCfg(number, name.c_str()));
    ASSERT_NE(handles.back(), nullptr) << number;
  }
  EXPECT_EQ(HvOpcRegisterCfg(16, directory.c_str()), nullptr);
  // Another directory does not matter for a number that is held; only 16 bits of it count.
  EXPECT_EQ(HvOpcRegisterCfg(0x10000 | 12, "nowhere"), handles[1]);
  EXPECT_STREQ(HvIniRead(handles[1], "Format", "Style"), "1");

  // A number keeps its handle although an entry before its own becomes free.
  EXPECT_EQ(HvOpcUnregisterCfg(handles[0]), 1U);
  EXPECT_EQ(HvOpcUnregisterCfg(handles[0]), 0U);
  EXPECT_EQ(HvOpcRegisterCfg(12, directory.c_str()), handles[1]);
  handles[0] = HvOpcRegisterCfg(16, directory.c_str());
  EXPECT_NE(handles[0], nullptr);

  for (int i = 0; i < 2; ++i) EXPECT_EQ(HvOpcUnregisterCfg(handles[1]), 1U);
  for (HvIniHandle* handle : handles) EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U);
  for (HvIniHandle* handle : handles) EXPECT_EQ(HvOpcUnregisterCfg(handle), 0U);
}

TEST(PanelRegistration, HoldsANumberWhoseFileIsMissing) {
  const TestFolder folder;
  const std::string directory = folder.Path().string();
  const auto add = [&](uint32_t number) {
    char name[20];
    HvOpcGetFileName(number, name);
    folder.Add(name, "");  // a file without lines is one too
  };
  for (uint32_t number = 101; number <= 105; ++number) {
    EXPECT_EQ(HvOpcRegisterCfg(number, directory.c_str()), nullptr);
  }
  add(106);
  EXPECT_EQ(HvOpcRegisterCfg(106, directory.c_str()), nullptr);
  for (uint32_t number = 101; number <= 105; ++number) {
    add(number);
    HvIniHandle* const handle = HvOpcRegisterCfg(number, directory.c_str());
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U);
  }
}

TEST(PanelRegistration, ChecksItsArguments) {
  const TestFolder folder;
  folder.Add("opc000.cfg", "[Format]\nStyle=1\n");
  folder.Add("opc044.cfg", "[Format]\nStyle=1\n");
  const hvtest::ScopedCurrentFolder current(folder.Path());
  EXPECT_EQ(HvOpcRegisterCfg(0, nullptr), nullptr);
  EXPECT_EQ(HvOpcRegisterCfg(0x10000, nullptr), nullptr);
  for (int i = 0; i < 6; ++i) {  // takes up no entry
    EXPECT_EQ(HvOpcRegisterCfg(static_cast<uint32_t>(50 + i), std::string(261, '.').c_str()),
              nullptr);
  }
  EXPECT_EQ(HvOpcUnregisterCfg(nullptr), 0U);
  HvIniHandle* const handle = HvOpcRegisterCfg(44, nullptr);
  EXPECT_NE(handle, nullptr);
  EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U);
}

TEST(PanelRegistration, TellsThatChangesWereLost) {
  HvIniHandle* handle = nullptr;
  {
    const TestFolder folder;
    folder.Add("opc021.cfg", "[Format]\nStyle=1\n");
    handle = HvOpcRegisterCfg(21, folder.Path().string().c_str());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(HvIniWrite(handle, "Format", "Style", "2"), 1U);
  }
  EXPECT_EQ(HvOpcUnregisterCfg(handle), 0U);
  EXPECT_EQ(HvOpcUnregisterCfg(handle), 0U);
}

TEST(PanelRegistration, ThreadsShareANumber) {
  const TestFolder folder;
  folder.Add("opc061.cfg", "[Format]\nStyle=2\n[Edit Lengths]\n001f=40\n");
  const std::string directory = folder.Path().string();
  std::atomic<int> faults = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int round = 0; round < 200; ++round) {
        HvIniHandle* const handle = HvOpcRegisterCfg(61, directory.c_str());
        if (handle == nullptr || HvOpcGetMaxEditLength(handle, 31) != 40 ||
            HvOpcUnregisterCfg(handle) != 1) {
          ++faults;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(faults, 0);
}

TEST(PanelControls, AreNamedByStyle) {
  const std::string entries =
      "[Edit Lengths]\n300=1\n012c=2\n4294967295=3\nffffffff=4\n0=5\n0000=6\n";
  const struct {
    const char* style;
    int32_t controlId;
    int32_t expected;
  } cases[] = {
      {"Style=1", 300, 1},
      {"Style=2", 300, 2},
      {"Style=", 300, 1},
      {"Type=2", 300, 1},
      {"style=3", 300, 2},
      {"Style=hexadecimal style", 300, 2},
      {"Style=20000000000", 300, 2},
      {"Style=12", 300, 1},
      {"Style=1", -1, 3},
      {"Style=2", -1, 4},
      {"Style=1", 0xFFFF, 3},
      {"Style=1", 0x1012C, 1},
      {"Style=1", 0, 5},
      {"Style=2", 0x10000, 6},
  };
  for (const auto& c : cases) {
    const Panel panel(std::string("[Format]\n") + c.style + "\n" + entries);
    EXPECT_EQ(HvOpcGetMaxEditLength(panel.Handle(), c.controlId), c.expected)
        << c.style << ' ' << c.controlId;
  }
  const Panel plain(entries);
  EXPECT_EQ(HvOpcGetMaxEditLength(plain.Handle(), 300), 1);
}

TEST(PanelControls, HaveEditLengths) {
  const Panel panel("[Edit Lengths]\n1=\n2= 17 characters\n3=none\n4=-5\n5=40000\n6=+8\n7-1=9\n");
  const int32_t expected[] = {0, 17, 0, -5, 32767, 8, 0, 0};
  for (int32_t i = 0; i < 8; ++i) {
    EXPECT_EQ(HvOpcGetMaxEditLength(panel.Handle(), i + 1), expected[i]) << i + 1;
  }
  EXPECT_EQ(HvOpcGetMaxEditLength(nullptr, 1), 0);
}

TEST(PanelControls, HaveSpinLimits) {
  const struct {
    const char* value;
    int32_t minimum;
    int32_t maximum;
    int32_t step;
  } cases[] = {
      {"10;200;5", 10, 200, 5},
      {"-1;5", -1, 0, 5},
      {"-1;5;7", -1, 0, 5},
      {"-1", -1, 0, 0},
      {"-2;-1;1", -2, -1, 1},
      {" 3 ; 4 ; 5 ;6", 3, 4, 5},
      {"3", 3, 0, 0},
      {"3;9", 3, 9, 0},
      {"a;b;c", 0, 0, 0},
      {";", 0, 0, 0},
      {"-99999999999;99999999999;+1", INT32_MIN, INT32_MAX, 1},
      {"", 0, 0, 77},
  };
  for (const auto& c : cases) {
    const Panel panel(std::string("[Spin Limits]\n418=") + c.value + "\n");
    int32_t minimum = 66;
    int32_t maximum = 66;
    int32_t step = 77;
    HvOpcGetSpinControlLimits(panel.Handle(), 418, &minimum, &maximum, &step);
    EXPECT_EQ(minimum, c.minimum) << c.value;
    EXPECT_EQ(maximum, c.maximum) << c.value;
    EXPECT_EQ(step, c.step) << c.value;
    HvOpcGetSpinControlLimits(panel.Handle(), 418, &minimum, &maximum, nullptr);
    HvOpcGetSpinControlLimits(panel.Handle(), 419, &minimum, &maximum, &step);
    EXPECT_EQ(minimum, 0);
    EXPECT_EQ(step, c.step) << c.value;
  }
}

TEST(PanelControls, HaveLists) {
  std::string hundred;
  for (int i = 0; i < 100; ++i) hundred += std::to_string(i) + ";";
  const Panel panel(
      "[Format]\nStyle=2\n[Combos]\n01a2=10;20;30\n01a2-3=7\n0001=\n0002=1;;2;\n"
      "0003=-1;65536;x;70000\n0004=" +
      hundred + "\n0005=;\n");
  constexpr uint16_t Kept = 0xAAAA;
  const struct {
    int32_t controlId;
    uint32_t subIndex;
    uint32_t size;
    int32_t expected;
    std::vector<uint16_t> values;
  } cases[] = {
      {0x1A2, 0, 6, 3, {10, 20, 30, Kept}},
      {0x1A2, 0, 8, 3, {10, 20, 30, Kept}},
      {0x1A2, 0, 5, -1, {6, 20, Kept}},
      {0x1A2, 0, 4, -1, {6, 20, Kept}},
      {0x1A2, 0, 2, -1, {6, Kept}},
      {0x1A2, 0, 1, -1, {Kept}},
      {0x1A2, 0, 0, -1, {Kept}},
      {0x1A2, 3, 2, 1, {7, Kept}},
      {0x1A2, 4, 8, -2, {Kept}},
      {1, 0, 8, -2, {Kept}},
      {2, 0, 8, 2, {1, 2, Kept}},
      {3, 0, 8, 4, {0xFFFF, 0, 0, 4464}},
      {4, 0, 4, -1, {200, 1, Kept}},
      {5, 0, 4, 0, {Kept}},
      {6, 0, 8, -2, {Kept}},
  };
  for (const auto& c : cases) {
    std::vector<uint16_t> values(8, Kept);
    EXPECT_EQ(HvOpcGetTextListing(panel.Handle(), c.controlId, c.subIndex, values.data(), c.size),
              c.expected);
    values.resize(c.values.size());
    EXPECT_EQ(values, c.values) << c.controlId << ' ' << c.size;
  }
  EXPECT_EQ(HvOpcGetTextListing(panel.Handle(), 0x1A2, 0, nullptr, 0), 6);
  EXPECT_EQ(HvOpcGetTextListing(panel.Handle(), 4, 0, nullptr, 100), 200);
  EXPECT_EQ(HvOpcGetTextListing(panel.Handle(), 1, 0, nullptr, 0), -2);
  EXPECT_EQ(HvOpcGetTextListing(nullptr, 1, 0, nullptr, 0), -2);
}

// Pages, by their number:
//   1, 2  with lists    3  counts only    4  no section    5  no name
//   6     counts no one can hold          7  negative counts   8  a name that is cut
const std::string Pages =
    "[Dialogs]\n1=Paper\n2=More Paper\n3=Bare\n4=None\n5=\n6=Huge\n7=Negative\n8=" +
    std::string(70, 'n') +
    "\n[Paper]\nNumCtrls=2\nDefaults=0010;5;0011;7\nNumOMVAR=2\nOMVAR=1A2B 0003\n"
    "[More Paper]\nNumCtrls=3\nDefaults=fFfF;4294967295;12\nNumOMVAR=1\nOMVAR= 1  2 3\n"
    "[Bare]\nNumCtrls=2\nNumOMVAR=2\n"
    "[Huge]\nNumCtrls=20000\nNumOMVAR=99999999999\nDefaults=1;2\nOMVAR=1\n"
    "[Negative]\nNumCtrls=-3\nDefaults=1;2\nNumOMVAR=-3\nOMVAR=5\n[" +
    std::string(63, 'n') + "]\nNumCtrls=1\nNumOMVAR=1\n";

TEST(PanelPages, HaveDefaults) {
  const Panel panel(Pages);
  const HvPageDefault kept = {0xAAAA, 0xAAAAAAAA};
  const struct {
    uint32_t page;
    uint32_t size;
    int32_t expected;
    std::vector<HvPageDefault> entries;
  } cases[] = {
      {1, 12, 2, {{0x10, 5}, {0x11, 7}, kept}},
      {1, 24, 2, {{0x10, 5}, {0x11, 7}, kept}},
      {1, 11, -1, {{12, 0xAAAAAAAA}, kept}},
      {1, 2, -1, {{12, 0xAAAAAAAA}, kept}},
      {1, 1, -1, {kept}},
      {2, 18, 3, {{0xFFFF, 0xFFFFFFFF}, {0x12, 0xAAAAAAAA}, kept}},
      {3, 12, 2, {kept, kept}},
      {4, 24, 0, {kept}},
      {5, 24, -2, {kept}},
      {6, 24, -1, {{0xFFFF, 0xAAAAAAAA}, kept}},
      {7, 24, -3, {kept}},
      {8, 6, 1, {kept}},
      {9, 24, -2, {kept}},
  };
  for (const auto& c : cases) {
    std::vector<HvPageDefault> entries(4, kept);
    EXPECT_EQ(HvOpcGetPageDefaults(panel.Handle(), c.page, entries.data(), c.size), c.expected)
        << c.page << ' ' << c.size;
    EXPECT_EQ(std::memcmp(entries.data(), c.entries.data(), c.entries.size() * 6), 0)
        << c.page << ' ' << c.size;
  }
  EXPECT_EQ(HvOpcGetPageDefaults(panel.Handle(), 1, nullptr, 0), 12);
  EXPECT_EQ(HvOpcGetPageDefaults(panel.Handle(), 4, nullptr, 0), 0);
  EXPECT_EQ(HvOpcGetPageDefaults(panel.Handle(), 5, nullptr, 0), -2);
  EXPECT_EQ(HvOpcGetPageDefaults(panel.Handle(), 6, nullptr, 0), 32767);
  EXPECT_EQ(HvOpcGetPageDefaults(nullptr, 1, nullptr, 0), -2);
  // All that the largest page could hold, of which the file gives one entry.
  std::vector<HvPageDefault> entries(20000, kept);
  EXPECT_EQ(HvOpcGetPageDefaults(panel.Handle(), 6, entries.data(), 120000), 20000);
  const HvPageDefault expected[] = {{1, 2}, kept};
  EXPECT_EQ(std::memcmp(entries.data(), expected, sizeof expected), 0);
}

TEST(PanelPages, HaveVariables) {
  const Panel panel(Pages);
  const struct {
    uint32_t page;
    uint32_t size;
    int32_t expected;
    std::vector<uint8_t> bytes;
  } cases[] = {
      {1, 4, 2, {0x1A, 0x2B, 0x00, 0x03, 0xAA}},
      {1, 7, 2, {0x1A, 0x2B, 0x00, 0x03, 0xAA}},
      {1, 3, -1, {4, 0, 0xAA}},
      {1, 1, -1, {0xAA}},
      {2, 2, 1, {0, 1, 0xAA}},
      {2, 8, 3, {0, 1, 0, 2, 0, 3, 0xAA}},
      {2, 5, 2, {0, 1, 0, 2, 0xAA}},
      {3, 4, 0, {0xAA}},
      {4, 4, 0, {0xAA}},
      {5, 4, -2, {0xAA}},
      {6, 8, -1, {0xFF, 0xFF, 0xAA}},
      {7, 8, 1, {0, 5, 0xAA}},
      {9, 8, -2, {0xAA}},
  };
  for (const auto& c : cases) {
    std::vector<uint8_t> bytes(8, 0xAA);
    EXPECT_EQ(HvOpcGetPageOmVars(panel.Handle(), c.page, bytes.data(), c.size), c.expected)
        << c.page << ' ' << c.size;
    bytes.resize(c.bytes.size());
    EXPECT_EQ(bytes, c.bytes) << c.page << ' ' << c.size;
  }
  EXPECT_EQ(HvOpcGetPageOmVars(panel.Handle(), 1, nullptr, 0), 4);
  EXPECT_EQ(HvOpcGetPageOmVars(panel.Handle(), 9, nullptr, 0), -2);
  EXPECT_EQ(HvOpcGetPageOmVars(nullptr, 1, nullptr, 0), -2);
}

}  // namespace
