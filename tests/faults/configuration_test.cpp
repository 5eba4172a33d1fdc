// Configuration files read and written while memory runs out: the documented result, nothing lost
// or left open, and the file that was there still there.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "faults/failing_memory.h"
#include "hvapi.h"
#include "support/quick_setup_builder.h"
#include "support/test_folder.h"

namespace {

using hvtest::FailingMemory;
using hvtest::TestFolder;

// Calls again and again while allocation after allocation fails, once or from then on, until none
// does, and checks what came of each call.
void WithEveryFailure(std::size_t least, const std::function<void()>& prepare,
                      const std::function<std::string()>& call,
                      const std::function<void(const std::string& result, bool failed)>& check) {
  const std::size_t handles = hvtest::OpenHandleCount();
  for (const bool fromThenOn : {false, true}) {
    bool failed = true;
    std::size_t failing = 0;
    for (; failed; ++failing) {
      prepare();
      std::string result;
      result.reserve(4096);
      {
        const FailingMemory memory(failing, fromThenOn);
        result = call();
        failed = memory.Failed();
      }
      SCOPED_TRACE(std::to_string(failing) + (fromThenOn ? " and all after" : ""));
      check(result, failed);
    }
    EXPECT_GT(failing, least);
  }
  EXPECT_EQ(hvtest::OpenHandleCount(), handles);
}

// A result of one letter takes no memory of its own.
std::string Letter(bool good) {
  return good ? "y" : "n";
}

const std::string Before = "; head\r\n[A]\r\nK=1\r\n";
const std::string After = "; head\r\n[A]\r\nK=2\r\n\r\n[B]\r\nL=3\r\n";

TEST(ConfigurationWithoutMemory, KeepsTheIniFileOrWritesAllOfIt) {
  const TestFolder folder;
  const std::string path = folder / "p.ini";
  WithEveryFailure(
      6, [&] { hvtest::WriteFile(path, Before); },
      [&] {
        HvIniHandle* const ini = HvIniOpen2(path.c_str(), INI_OPEN_UPDATE);
        if (ini == nullptr) return Letter(false);
        const bool first = HvIniWrite(ini, "A", "K", "2") != 0;
        const bool second = HvIniWrite(ini, "B", "L", "3") != 0;
        const bool closed = HvIniClose(ini) != 0;
        return Letter(first && second && closed);
      },
      [&](const std::string& result, bool failed) {
        EXPECT_TRUE(result == "y" || failed);
        const std::string now = hvtest::ReadFile(path);
        if (result == "y") {
          EXPECT_EQ(now, After);
        } else {
          // Whole lines of the old file or of the new one.
          EXPECT_EQ(now.rfind("; head\r\n[A]\r\nK=", 0), 0U) << now;
          EXPECT_EQ(now.back(), '\n');
        }
        EXPECT_EQ(folder.Names(), std::vector<std::string>{"p.ini"});
      });
}

TEST(ConfigurationWithoutMemory, ReadsValuesOrSaysSo) {
  const TestFolder folder;
  const std::string path = folder.Add("p.ini", Before);
  HvIniHandle* const ini = HvIniOpen(path.c_str());
  ASSERT_NE(ini, nullptr);
  for (std::size_t failing = 0; failing < 4; ++failing) {
    char buffer[10] = "untouched";
    uint32_t count = 0;
    uint32_t code = 0;
    bool failed = false;
    {
      const FailingMemory memory(failing, true);
      code = HvIniRead2(ini, "A", "K", nullptr, buffer, sizeof buffer, &count);
      failed = memory.Failed();
    }
    EXPECT_EQ(code, failed ? HV_NO_MEMORY : HV_OK) << failing;
    if (code == HV_OK) {
      EXPECT_STREQ(buffer, "1");
    }
  }
  EXPECT_EQ(HvIniClose(ini), 1U);
}

TEST(ConfigurationWithoutMemory, OpensOtherFilesOrGivesTheirCode) {
  const TestFolder folder;
  const std::string records =
      folder.Add("r.dat", "\"SA\",\"Set size\",\"PCL\",\"1B45\",\"%d\",1,2,1,\"D\"\n");
  folder.Add("opc007.cfg", "[Format]\nStyle=1\n[Edit Lengths]\n30=15\n");
  hvtest::QuickSetupFile quick;
  quick.block1 = {std::string(40, 'b'), 2, {}};
  quick.minor = 0;
  const std::string setup = folder.Add("q.qsf", quick.Bytes());
  const std::string directory = folder.Path().string();
  const std::string lists =
      folder.Add("s.ini", "[005REQUIRED]\nNUMVARS=1\nNUMENTRIES=1\nOMVARS1=1\n");
  folder.Add("a.cfg", "#!First\n");
  folder.Add("b.cfg", "#!Second\n");
  const std::function<std::string()> calls[] = {
      [&] {
        const int32_t handle = HvDatOpenFile(records.c_str(), 0, DAT_FILE_COMMANDS);
        if (handle < 0) return Letter(false);
        HvCommandRecord record = {};
        record.szKey[0] = 'S';
        const int32_t found = HvDatGetFirstKey(handle, &record);
        return Letter(HvDatCloseFile(handle) == 0 && found == 0);
      },
      [&] {
        HvIniHandle* const panel = HvOpcRegisterCfg(7, directory.c_str());
        const bool good = panel != nullptr && HvOpcGetMaxEditLength(panel, 30) == 15;
        HvOpcUnregisterCfg(panel);
        return Letter(good);
      },
      [&] {
        HvQsfHandle* handle = nullptr;
        if (HvQsfOpen(setup.c_str(), 3, &handle) != HV_OK) return Letter(false);
        uint8_t* values = nullptr;
        uint16_t count = 0;
        const uint32_t code = HvQsfGetVariables(handle, 1, &values, &count);
        EXPECT_EQ(code == HV_OK, values != nullptr);
        HvMemFree(values);
        HvQsfClose(handle);
        return Letter(code == HV_OK && count == 2);
      },
      [&] {
        HvIniHandle* const ini = HvIniOpen(lists.c_str());
        if (ini == nullptr) return Letter(false);
        uint8_t* values = nullptr;
        uint16_t count = 0;
        const uint32_t code = HvQsfIniGetSection(ini, QSF_LIST_REQUIRED, 5, &values, &count);
        HvMemFree(values);
        HvIniClose(ini);
        return Letter(code == HV_OK && count == 1);
      },
      [&] {
        uint16_t count = 0;
        HvConfigFileEntry* const list = HvDatQueryFiles(directory.c_str(), DAT_KIND_CFG, &count);
        uint16_t entries = 0;
        for (const HvConfigFileEntry* entry = list; entry != nullptr; entry = entry->next)
          ++entries;
        EXPECT_EQ(entries, count);
        HvDatQueryFilesFree(list);
        return Letter(count == 2);
      },
  };
  for (const auto& call : calls) {
    WithEveryFailure(
        0, [] {}, call,
        [](const std::string& result, bool failed) { EXPECT_TRUE(result == "y" || failed); });
  }
}

}  // namespace
