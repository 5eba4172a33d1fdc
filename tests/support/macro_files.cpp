#include "support/macro_files.h"

#include "support/font_files.h"
#include "support/pclxl_jobs.h"

namespace hvtest {
namespace {

const std::string Header = ") HP-PCL XL;1;1;\n";

std::string Settings() {
  return PclXlXy(300, 300, 0x89) + PclXlUbyte(0, 0x86) + "\x41";
}

std::string Page() {
  return PclXlXy(10, 20, 0x4C) + "\x6B" + "\xB1" + PclXlData("\x1B%-12345 @PJK\n");
}

}  // namespace

std::string OnePagePclXlJob() {
  return Header + Settings() + PclXlUbyte(0, 0x28) + "\x43" + Page() + "\x44\x42";
}

std::string ConvertedPclXlJob(const std::string& streamName, bool execute) {
  const std::string body = Header + Page();
  const std::string size = Le32(static_cast<uint32_t>(body.size()));
  std::string job = Header + PclXlXy(600, 600, 0x89) + PclXlUbyte(0, 0x86) + PclXlUbyte(3, 0x8F) +
                    "\x41" + PclXlUbyte(0, 0x88) + PclXlUbyte(1, 0x82) + "\x48" +
                    PclXlText(Settings(), 0x81) + "\x47" + PclXlText(streamName, 0x8B) + "\x5B" +
                    "\xC2" + size + "\xF8\x8C\x5C" + "\xFA" + size + body + "\x5D";
  if (execute) {
    job += PclXlUbyte(0, 0x28) + PclXlUbyte(0, 0x25) + PclXlUbyte(1, 0x26) + "\x43" +
           PclXlText(streamName, 0x8B) + "\x5E" + PclXlUint16(1, 0x31) + "\x44";
  }
  return job + "\x49\x42";
}

}  // namespace hvtest
