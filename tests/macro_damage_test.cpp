// Damaged sources: cut at every length, each byte changed. Each gives a code that such a file may
// give, what is found in it is whole, and no work file stays.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/job_filter_model.h"
#include "support/macro_files.h"

namespace {

using hvtest::Bytes;
using hvtest::MacroInfo;
using hvtest::MacroJob;
using hvtest::TestFolder;

struct Sample {
  int32_t emulation;
  uint32_t flags;
  std::string bytes;
};

std::vector<Sample> Samples() {
  const std::string uel = "\x1B%-12345X";
  const std::string pcl = "\x1B&f12y0X\033E\x1B&l1o2a3H@PJL x\n\x1B*b3m2Wab\x1B%0BIN\x1B%0A" +
                          Bytes("\x1B[K\x02\0xy") + "\x1B&n2Wab\x1B&f1X" + uel;
  return {
      {5, 0, pcl},
      {5, MACRO_FLAG_FILTER, pcl},
      {3, 0,
       "statusdict begin currentfilenameextend false setfilenameextend end\n"
       "/writefile (%disk1%Name.demo) (w) file def\n"},
      {3, 0, "serverdict begin 0 exitserver /Logo {\n"},
      {3, MACRO_FLAG_FILTER | MACRO_FLAG_PS_OVERLAY,
       uel + "@PJL X\n%!PS-Adobe\n%%Quintar Overlay: Name\n\x04" + uel},
      {2, 0, Bytes("\x1B[l\x05\0\x01\0\x05xy")},
      {6, 0, hvtest::ConvertedPclXlJob("Letterhead", false)},
      {6, MACRO_FLAG_FILTER, uel + hvtest::OnePagePclXlJob() + uel},
  };
}

void ForEachDamage(const std::string& bytes, const std::function<void(const std::string&)>& visit) {
  for (std::size_t length = 0; length <= bytes.size(); ++length) visit(bytes.substr(0, length));
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string damaged = bytes;
    const char changes[] = {'\0', '\xFF', static_cast<char>(damaged[at] + 1), '\x1B'};
    damaged[at] = changes[at % std::size(changes)];
    visit(damaged);
  }
}

std::string Put(const TestFolder& folder, const std::string& bytes) {
  std::filesystem::remove(folder.Path() / "source");
  return folder.Add("source", bytes);
}

TEST(MacroDamage, IsValidatedOrRefused) {
  const std::set<uint32_t> possible = {HV_OK, HV_READ_FAILED, HV_WRONG_LANGUAGE, HV_BAD_PCLXL,
                                       HV_PCLXL_JOB};
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder here(folder.Path());
  const std::size_t handles = hvtest::OpenHandleCount();
  for (const Sample& sample : Samples()) {
    ForEachDamage(sample.bytes, [&](const std::string& damaged) {
      const std::string source = Put(folder, damaged);
      HvJobInfo job = MacroJob(sample.emulation, 99);
      HvMacroInfo info = MacroInfo(sample.flags, "before", STORAGE_DEVICE_DISK2);
      const uint32_t code = HvMacValidate(source.c_str(), &job, &info);
      ASSERT_EQ(possible.count(code), 1U) << code;
      ASSERT_NE(std::memchr(info.name, 0, sizeof info.name), nullptr);
      ASSERT_TRUE(info.target >= STORAGE_DEVICE_RAM && info.target <= STORAGE_DEVICE_DISK2);
      ASSERT_TRUE(code == HV_OK || std::strcmp(info.name, "before") == 0);
    });
    ASSERT_EQ(folder.Names(), std::vector<std::string>{"source"});
  }
  EXPECT_EQ(hvtest::OpenHandleCount(), handles);
}

TEST(MacroDamage, IsFilteredAsTheModelDoes) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder here(folder.Path());
  for (const Sample& sample : Samples()) {
    if ((sample.flags & MACRO_FLAG_FILTER) == 0) continue;
    ForEachDamage(sample.bytes, [&](const std::string& damaged) {
      const std::string source = Put(folder, damaged);
      std::filesystem::remove("out");
      const HvJobInfo job = MacroJob(sample.emulation);
      HvMacroInfo info = MacroInfo(sample.flags, "x");
      const uint32_t code = HvMacCreate(source.c_str(), "out", &job, &info);
      const std::string made = hvtest::ReadFile("out");
      if (sample.emulation == JOB_EMULATION_PCLXL) {
        ASSERT_EQ(code == HV_OK, !made.empty());
        ASSERT_TRUE(code == HV_OK || code == HV_BAD_PCLXL) << code;
        return;
      }
      ASSERT_EQ(code, HV_OK);
      const std::string expected =
          sample.emulation == JOB_EMULATION_PCL
              ? "\x1B&f5y0X" + hvtest::FilterPclModel(damaged, DEFAULT_FILTER_MASK) + "\x1B&f1X"
              : hvtest::FilterPostScriptModel(damaged, "%%Quintar Overlay: x\n");
      ASSERT_EQ(made, expected) << damaged;
    });
    ASSERT_EQ(folder.Names(), (std::vector<std::string>{"out", "source"}));
  }
}

}  // namespace
