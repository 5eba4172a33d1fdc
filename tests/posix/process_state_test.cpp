// What belongs to the program that calls the library: its locale, its current folder, its file
// creation mask, its signal dispositions and its descriptors are as they were after a call.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <clocale>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/jobs.h"
#include "support/macro_files.h"
#include "support/posix/socket_peer.h"
#include "support/test_folder.h"
#include "support/zip_builder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

mode_t FileMask() {
  const mode_t mask = umask(0);
  umask(mask);
  return mask;
}

struct Snapshot {
  std::string locale = std::setlocale(LC_ALL, nullptr);
  std::string folder = fs::current_path().string();
  mode_t mask = FileMask();
  std::size_t descriptors = OpenHandleCount();
  std::vector<void (*)(int)> handlers;
  std::vector<bool> blocked;

  Snapshot() {
    sigset_t maskOfThread;
    pthread_sigmask(SIG_SETMASK, nullptr, &maskOfThread);
    for (int signal = 1; signal < SIGRTMIN; ++signal) {
      struct sigaction action = {};
      sigaction(signal, nullptr, &action);
      handlers.push_back(action.sa_handler);
      blocked.push_back(sigismember(&maskOfThread, signal) == 1);
    }
  }
};

class ProcessState : public testing::Test {
 protected:
  ProcessState() {
    folder_.Add("page.pcl", "\033EPage\f\033E");
    folder_.Add("font.sfp", PclFont({}, SampleCharacters()));
    folder_.Add("sample.afm", AfmFile("Sample"));
    folder_.Add("sample.inf", "MSMenuName (Sample)\n");
    folder_.Add("one.zip", BuildZip({Stored("a/b", "content")}).bytes);
    folder_.Add("settings.ini", "[Section]\r\nKey=Value\r\n");
    folder_.Add("lines.cfg", "#! A file\r\nline\r\n");
    fs::create_directories(folder_ / "spool/lp1");
  }

  static void Expect(const char* what, const std::function<void()>& call) {
    SCOPED_TRACE(what);
    const Snapshot before;
    call();
    const Snapshot after;
    EXPECT_EQ(after.locale, before.locale);
    EXPECT_EQ(after.folder, before.folder);
    EXPECT_EQ(after.mask, before.mask);
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_TRUE(after.handlers == before.handlers);
    EXPECT_TRUE(after.blocked == before.blocked);
  }

  TestFolder folder_;
  ScopedVariable spool_{"HVAPI_SPOOL", folder_ / "spool"};
  ScopedCurrentFolder here_{folder_.Path()};
};

uint32_t HVAPI_CALL DropNothing(char* /*line*/, uintptr_t /*argument*/) {
  return 0;
}

TEST_F(ProcessState, IsAsItWasAfterEachFamily) {
  HvJobInfo job = Job(JOB_FLAG_PJL, JOB_EMULATION_PCL, "Job");
  HvMacroInfo macro = MacroInfo(MACRO_FLAG_FILTER);
  Expect("sending", [&] {
    EXPECT_EQ(HvDatSendFile("page.pcl", "lp1", &job, 0), HV_OK);
    EXPECT_EQ(HvDatSendFile("page.pcl", "out.prn", &job, 0), HV_OK);
    EXPECT_EQ(HvDatSendFile("missing", "lp1", &job, 0), HV_NOT_FOUND);
    EXPECT_EQ(HvGenResource(STORAGE_FORMAT, "lp1", &job, STORAGE_DEVICE_FLASH1), HV_OK);
  });
  Expect("fonts", [&] {
    HvFontInfo info;
    EXPECT_EQ(HvFonQueryInfo("font.sfp", &info, 0, 1), HV_OK);
    EXPECT_EQ(HvFonDownload("font.sfp", "lp1", &job, STORAGE_DEVICE_FLASH1), HV_OK);
    EXPECT_EQ(HvFonConvert("sample.afm", "out.pfm", nullptr, 0, FONT_CONVERT_AFM_TO_PFM), HV_OK);
    uint16_t count = 0;
    HvFonFindFree(HvFonFind(".", &count, FONT_KIND_ANY, FONT_CLASSES_ALL, 0, 1));
    EXPECT_GT(count, 0);
  });
  Expect("macros", [&] {
    EXPECT_EQ(HvMacCreate("page.pcl", "out.mac", &job, &macro), HV_OK);
    EXPECT_EQ(HvMacDownload("page.pcl", "lp1", &job, &macro, MACRO_STORE, HV_WRONG_LANGUAGE),
              HV_OK);
  });
  Expect("files and settings", [] {
    std::array<char, 260> name;
    EXPECT_EQ(HvFilBackup("settings.ini", name.data()), HV_OK);
    EXPECT_EQ(HvFilModify("lines.cfg", 0, DropNothing), HV_OK);
    HvIniHandle* const ini = HvIniOpen2("settings.ini", INI_OPEN_UPDATE);
    ASSERT_NE(ini, nullptr);
    EXPECT_EQ(HvIniWrite(ini, "Section", "Key", "Other"), 1U);
    EXPECT_EQ(HvIniClose(ini), 1U);
    uint16_t count = 0;
    HvDatQueryFilesFree(HvDatQueryFiles("", DAT_KIND_CFG, &count));
    EXPECT_EQ(count, 1);
  });
  Expect("archives and addresses", [] {
    EXPECT_EQ(HvZipExplode("one.zip", nullptr, nullptr), HV_OK);
    std::array<char, 512> address;
    EXPECT_EQ(HvWebGetCGIURL(1, 2, WEB_TOPIC_DRIVERS, 0x409, address.data(), 512, 0), HV_OK);
  });
}

TEST_F(ProcessState, IsAsItWasAfterAPrinterThatGoesAway) {
  folder_.Add("large.prn", std::string(24U << 20, 'x'));
  const HvJobInfo job = Job(0);
  Expect("a reset", [&] {
    SocketPeer printer([](int connection, Received*) {
      char byte = 0;
      recv(connection, &byte, 1, 0);
      ResetAtClose(connection);
    });
    testing::internal::CaptureStdout();
    EXPECT_EQ(HvDatSendFile("large.prn", printer.Destination().c_str(), &job, 0),
              HV_PRINTER_REFUSED);
    testing::internal::GetCapturedStdout();
    printer.Finish();
  });
}

}  // namespace
