#include "support/pclxl_jobs.h"

#include "support/font_files.h"
#include "support/jobs.h"

namespace hvtest {
namespace {

std::string Attribute(int attribute) {
  return std::string("\xF8") + static_cast<char>(attribute);
}

}  // namespace

std::string PclXlUbyte(int value, int attribute) {
  return std::string("\xC0") + static_cast<char>(value) + Attribute(attribute);
}

std::string PclXlUint16(int value, int attribute) {
  return "\xC1" + Le16(static_cast<unsigned>(value)) + Attribute(attribute);
}

std::string PclXlXy(int x, int y, int attribute) {
  return "\xD1" + Le16(static_cast<unsigned>(x)) + Le16(static_cast<unsigned>(y)) +
         Attribute(attribute);
}

std::string PclXlText(std::string_view text, int attribute) {
  const std::string length = text.size() < 256
                                 ? std::string("\xC0") + static_cast<char>(text.size())
                                 : "\xC1" + Le16(static_cast<unsigned>(text.size()));
  return "\xC8" + length + std::string(text) + Attribute(attribute);
}

std::string PclXlData(std::string_view data) {
  return "\xFA" + Le32(static_cast<uint32_t>(data.size())) + std::string(data);
}

std::string PclXlStreamJob(std::string_view settings, std::string_view name, std::string_view page,
                           bool execute) {
  const std::string body = PclXlHeader + std::string(page);
  const std::string size = Le32(static_cast<uint32_t>(body.size()));
  std::string job = PclXlHeader + PclXlXy(600, 600, 0x89) + PclXlUbyte(0, 0x86) +
                    PclXlUbyte(3, 0x8F) + "\x41" + PclXlUbyte(0, 0x88) + PclXlUbyte(1, 0x82) +
                    "\x48" + PclXlText(settings, 0x81) + "\x47" + PclXlText(name, 0x8B) + "\x5B" +
                    "\xC2" + size + "\xF8\x8C\x5C" + PclXlData(body) + "\x5D";
  if (execute) {
    job += PclXlUbyte(0, 0x28) + PclXlUbyte(0, 0x25) + PclXlUbyte(1, 0x26) + "\x43" +
           PclXlText(name, 0x8B) + "\x5E" + PclXlUint16(1, 0x31) + "\x44";
  }
  return job + "\x49\x42";
}

std::string PclXlSampleJob() {
  const std::string settings = PclXlXy(300, 300, 0x89) + PclXlUbyte(0, 0x86) + "\x41";
  const std::string font = "\x4F\x50" + PclXlData("font") + "\x51";
  const std::string pageBegin = PclXlUbyte(0, 0x28) + PclXlUbyte(2, 0x25) + "\x43";
  const std::string page = Bytes("\xC2\x01\x00\x00\x00\xF8\x4C\xC5\x00\x00\x80\x3F\xF8\x4B\x6B") +
                           Bytes("\xE1\x01\x00\x02\x00\x03\x00\x04\x00\xF8\x42\xA0") +
                           Bytes("\xC9\xC1\x02\x00\x01\x00\x02\x00\xF8\xAF\xA8") + "\xB1" +
                           PclXlData("dots") + Bytes("\xB1\xFB\x03xyz");
  return PclXlHeader + settings + font + pageBegin + page + PclXlUint16(1, 0x31) + "\x44\x42";
}

}  // namespace hvtest
