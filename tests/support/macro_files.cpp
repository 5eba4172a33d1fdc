#include "support/macro_files.h"

#include "support/pclxl_jobs.h"

namespace hvtest {
namespace {

std::string Settings() {
  return PclXlXy(300, 300, 0x89) + PclXlUbyte(0, 0x86) + "\x41";
}

std::string Page() {
  return PclXlXy(10, 20, 0x4C) + "\x6B" + "\xB1" + PclXlData("\x1B%-12345 @PJK\n");
}

}  // namespace

std::string OnePagePclXlJob() {
  return PclXlHeader + Settings() + PclXlUbyte(0, 0x28) + "\x43" + Page() + "\x44\x42";
}

std::string ConvertedPclXlJob(const std::string& streamName, bool execute) {
  return PclXlStreamJob(Settings(), streamName, Page(), execute);
}

}  // namespace hvtest
