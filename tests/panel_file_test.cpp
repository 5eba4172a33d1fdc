// Operator panel files: registrations, limits, lists, pages.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

// Files of some numbers in a folder of their own.
class PanelFolder {
 public:
  explicit PanelFolder(const std::vector<uint32_t>& numbers,
                       const std::string& text = "[Format]\nStyle=1\n") {
    for (const uint32_t number : numbers) {
      char name[20];
      HvOpcGetFileName(number, name);
      folder_.Add(name, text);
    }
  }
  const std::filesystem::path& Path() const { return folder_.Path(); }
  HvIniHandle* Register(uint32_t number, const std::string& end = "") const {
    return HvOpcRegisterCfg(number, (folder_.Path().string() + end).c_str());
  }

 private:
  TestFolder folder_;
};

// A panel file of its own, registered as long as the object is.
struct Panel : PanelFolder {
  explicit Panel(const std::string& text) : PanelFolder({31}, text), handle(Register(31)) {
    EXPECT_NE(handle, nullptr);
  }
  ~Panel() { EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U); }
  HvIniHandle* const handle;
};

// The result of a call with a buffer and the bytes that it wrote there.
template <typename Call>
std::string Written(Call call) {
  std::vector<uint8_t> buffer(40, 0xAA);
  std::string text = std::to_string(call(buffer.data())) + ":";
  while (!buffer.empty() && buffer.back() == 0xAA) buffer.pop_back();
  char hex[4];
  for (const uint8_t byte : buffer) text.append(hex, std::snprintf(hex, sizeof hex, " %02X", byte));
  return text;
}

TEST(PanelNames, HaveThreeDigitsAtLeast) {
  const std::pair<uint32_t, const char*> cases[] = {
      {5, "opc005.cfg"},       {0, "opc000.cfg"},       {999, "opc999.cfg"},
      {1234, "opc1234.cfg"},   {32767, "opc32767.cfg"}, {32768, "opc4294934528.cfg"},
      {0x10007, "opc007.cfg"},
  };
  for (const auto& [number, expected] : cases) {
    std::string buffer(20, 'x');
    EXPECT_EQ(HvOpcGetFileName(number, buffer.data()), 1U);
    EXPECT_STREQ(buffer.c_str(), expected);
    EXPECT_EQ(buffer.find('x'), std::strlen(expected) + 1);
  }
  EXPECT_EQ(HvOpcGetFileName(5, nullptr), 0U);
}

TEST(PanelRegistration, SharesAndCounts) {
  const PanelFolder folder({11, 12, 13, 14, 15, 16});
  std::vector<HvIniHandle*> handles;
  for (uint32_t number = 11; number <= 15; ++number) {
    // With and without a separator at the end.
    handles.push_back(folder.Register(number, number % 2 == 0 ? "\\" : ""));
    ASSERT_NE(handles.back(), nullptr) << number;
  }
  EXPECT_EQ(folder.Register(16), nullptr);
  // Another directory does not matter for a number that is held; only 16 bits of it count.
  EXPECT_EQ(HvOpcRegisterCfg(0x10000 | 12, "nowhere"), handles[1]);
  EXPECT_STREQ(HvIniRead(handles[1], "Format", "Style"), "1");

  // A number keeps its handle although an entry before its own becomes free.
  EXPECT_EQ(HvOpcUnregisterCfg(handles[0]), 1U);
  EXPECT_EQ(HvOpcUnregisterCfg(handles[0]), 0U);
  EXPECT_EQ(folder.Register(12), handles[1]);
  handles[0] = folder.Register(16);
  EXPECT_NE(handles[0], nullptr);

  for (int i = 0; i < 2; ++i) EXPECT_EQ(HvOpcUnregisterCfg(handles[1]), 1U);
  for (HvIniHandle* handle : handles) EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U);
  for (HvIniHandle* handle : handles) EXPECT_EQ(HvOpcUnregisterCfg(handle), 0U);
}

TEST(PanelRegistration, HoldsANumberWhoseFileIsMissing) {
  const PanelFolder missing({});
  const PanelFolder folder({101, 102, 103, 104, 105, 106}, "");  // without lines, which is enough
  for (uint32_t number = 101; number <= 105; ++number) EXPECT_EQ(missing.Register(number), nullptr);
  EXPECT_EQ(folder.Register(106), nullptr);
  for (uint32_t number = 101; number <= 105; ++number) {
    HvIniHandle* const handle = folder.Register(number);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U);
  }
}

TEST(PanelRegistration, ChecksItsArguments) {
  const PanelFolder folder({0, 44});
  const ScopedCurrentFolder current(folder.Path());
  EXPECT_EQ(HvOpcRegisterCfg(0, nullptr), nullptr);
  EXPECT_EQ(HvOpcRegisterCfg(0x10000, nullptr), nullptr);
  for (uint32_t number = 50; number < 56; ++number) {  // takes up no entry
    EXPECT_EQ(HvOpcRegisterCfg(number, std::string(261, '.').c_str()), nullptr);
  }
  EXPECT_EQ(HvOpcUnregisterCfg(nullptr), 0U);
  HvIniHandle* const handle = HvOpcRegisterCfg(44, nullptr);
  EXPECT_NE(handle, nullptr);
  EXPECT_EQ(HvOpcUnregisterCfg(handle), 1U);
}

TEST(PanelRegistration, TellsThatChangesWereLost) {
  HvIniHandle* const handle = PanelFolder({21}).Register(21);  // which is gone from here on
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(HvIniWrite(handle, "Format", "Style", "2"), 1U);
  EXPECT_EQ(HvOpcUnregisterCfg(handle), 0U);
  EXPECT_EQ(HvOpcUnregisterCfg(handle), 0U);
}

TEST(PanelControls, AreNamedByStyle) {
  const std::string entries =
      "[Edit Lengths]\n300=1\n012c=2\n4294967295=3\nffffffff=4\n0=5\n0000=6\n";
  const std::tuple<const char*, int32_t, int32_t> cases[] = {
      {"", 300, 1},    {"1", 300, 1},     {"2", 300, 2},           {"3", 300, 2}, {"12", 300, 1},
      {"1", 0, 5},     {"1", -1, 3},      {"1", 0xFFFF, 3},        {"2", -1, 4},  {"1", 0x1012C, 1},
      {"x 2", 300, 2}, {"2", 0x10000, 6}, {"20000000000", 300, 2},
  };
  for (const auto& [style, controlId, expected] : cases) {
    const Panel panel(std::string("[Format]\nstyle=") + style + "\n" + entries);
    EXPECT_EQ(HvOpcGetMaxEditLength(panel.handle, controlId), expected)
        << style << ' ' << controlId;
  }
  const Panel plain(entries);
  EXPECT_EQ(HvOpcGetMaxEditLength(plain.handle, 300), 1);
}

TEST(PanelControls, HaveEditLengths) {
  const Panel panel("[Edit Lengths]\n1=\n2= 17 characters\n3=none\n4=-5\n5=40000\n6=+8\n7-1=9\n");
  const int32_t expected[] = {0, 0, 17, 0, -5, 32767, 8, 0, 0};
  for (int32_t i = 0; i < 9; ++i) EXPECT_EQ(HvOpcGetMaxEditLength(panel.handle, i), expected[i]);
  EXPECT_EQ(HvOpcGetMaxEditLength(nullptr, 1), 0);
}

TEST(PanelControls, HaveSpinLimits) {
  // expected: minimum, maximum, step
  const std::pair<const char*, std::vector<int32_t>> cases[] = {
      {"10;200;5", {10, 200, 5}},
      {"-1;5;7", {-1, 0, 5}},
      {"-1", {-1, 0, 0}},
      {" 3 ; 4 ; 5 ;6", {3, 4, 5}},
      {"3;9", {3, 9, 0}},
      {";", {0, 0, 0}},
      {"", {0, 0, 77}},
      {"-9999999999;99999999999999999999;+1", {INT32_MIN, INT32_MAX, 1}},
  };
  for (const auto& [value, expected] : cases) {
    const Panel panel(std::string("[Spin Limits]\n418=") + value + "\n");
    std::vector<int32_t> limits = {66, 66, 77};
    HvOpcGetSpinControlLimits(panel.handle, 418, &limits[0], &limits[1], &limits[2]);
    EXPECT_EQ(limits, expected) << value;
    HvOpcGetSpinControlLimits(panel.handle, 418, nullptr, &limits[1], &limits[2]);
    HvOpcGetSpinControlLimits(panel.handle, 418, &limits[0], nullptr, &limits[2]);
    HvOpcGetSpinControlLimits(panel.handle, 418, &limits[0], &limits[1], nullptr);
    HvOpcGetSpinControlLimits(panel.handle, 419, &limits[0], &limits[1], &limits[2]);
    EXPECT_EQ(limits, (std::vector<int32_t>{0, 0, expected[2]})) << value;
  }
}

TEST(PanelControls, HaveLists) {
  std::string hundred;
  for (int i = 0; i < 100; ++i) hundred += std::to_string(i) + ";";
  const Panel panel(
      "[Format]\nStyle=2\n[Combos]\n01a2=10;20;30\n01a2-3=7\n0001=\n0002=1;;2;\n"
      "0003=-1;65536;x;70000\n0004=" +
      hundred + "\n0005=;\n");
  const std::tuple<int32_t, uint32_t, uint32_t, const char*> cases[] = {
      {0x1A2, 0, 6, "3: 0A 00 14 00 1E 00"},
      {0x1A2, 0, 5, "-1: 06 00 14 00"},
      {0x1A2, 0, 2, "-1: 06 00"},
      {0x1A2, 0, 1, "-1:"},
      {0x1A2, 3, 2, "1: 07 00"},
      {0x1A2, 4, 8, "-2:"},
      {2, 0, 8, "2: 01 00 02 00"},
      {3, 0, 8, "4: FF FF 00 00 00 00 70 11"},
      {4, 0, 4, "-1: C8 00 01 00"},
      {5, 0, 4, "0:"},
  };
  for (const auto& [controlId, subIndex, size, expected] : cases) {
    const auto call = [&, id = controlId, index = subIndex, bytes = size](uint8_t* buffer) {
      return HvOpcGetTextListing(panel.handle, id, index, reinterpret_cast<uint16_t*>(buffer),
                                 bytes);
    };
    EXPECT_EQ(Written(call), expected);
  }
  EXPECT_EQ(HvOpcGetTextListing(panel.handle, 0x1A2, 0, nullptr, 0), 6);
  EXPECT_EQ(HvOpcGetTextListing(panel.handle, 4, 0, nullptr, 100), 200);
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

TEST(PanelPages, HaveDefaultsAndVariables) {
  const Panel panel(Pages);
  // The page, the size of the buffer, and what is written as defaults and as variables.
  const std::tuple<uint32_t, uint32_t, const char*, const char*> cases[] = {
      {1, 12, "2: 10 00 05 00 00 00 11 00 07 00 00 00", "2: 1A 2B 00 03"},
      {1, 11, "-1: 0C 00", "2: 1A 2B 00 03"},
      {1, 3, "-1: 0C 00", "-1: 04 00"},
      {1, 1, "-1:", "-1:"},
      {2, 18, "3: FF FF FF FF FF FF 12 00", "3: 00 01 00 02 00 03"},
      {2, 2, "-1: 12 00", "1: 00 01"},
      {3, 12, "2:", "0:"},
      {5, 24, "-2:", "-2:"},
      {6, 24, "-1: FF FF", "-1: FF FF"},
      {7, 24, "-3:", "1: 00 05"},
      {8, 6, "1:", "0:"},
  };
  for (const auto& [page, size, defaults, variables] : cases) {
    EXPECT_EQ(Written([&, page = page, size = size](uint8_t* buffer) {
                return HvOpcGetPageDefaults(panel.handle, page,
                                            reinterpret_cast<HvPageDefault*>(buffer), size);
              }),
              defaults);
    EXPECT_EQ(Written([&, page = page, size = size](uint8_t* buffer) {
                return HvOpcGetPageOmVars(panel.handle, page, buffer, size);
              }),
              variables);
  }
  const int32_t needed[] = {-2, 12, 18, 12, 0, -2, 32767};
  for (uint32_t page = 0; page <= 6; ++page) {
    EXPECT_EQ(HvOpcGetPageDefaults(panel.handle, page, nullptr, 0), needed[page]) << page;
  }
  EXPECT_EQ(HvOpcGetPageOmVars(panel.handle, 1, nullptr, 0), 4);
  EXPECT_EQ(HvOpcGetPageOmVars(panel.handle, 9, nullptr, 0), -2);
  EXPECT_EQ(HvOpcGetPageDefaults(nullptr, 1, nullptr, 0), -2);
  EXPECT_EQ(HvOpcGetPageOmVars(nullptr, 1, nullptr, 0), -2);
}

}  // namespace
