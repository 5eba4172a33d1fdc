// Job records as applications fill them, and the framing that they ask for.
#pragma once

#include <cstdint>
#include <string>

#include "hvapi.h"

namespace hvtest {

// A job of the framing flags and the language given; every other field is 0.
inline HvJobInfo Job(uint32_t flags, int32_t emulation = 0, const char* name = nullptr,
                     uint16_t copies = 0) {
  HvJobInfo job = {};
  job.flags = flags;
  job.emulation = emulation;
  job.copies = copies;
  job.jobName = name;
  return job;
}

// The bytes of a literal, which may hold NUL.
template <std::size_t Size>
std::string Bytes(const char (&literal)[Size]) {
  return std::string(literal, Size - 1);
}

inline const std::string Uel = "\x1B%-12345X";

inline std::string PjlPanel(const std::string& text) {
  return "@PJL RDYMSG DISPLAY = \"" + text + "\"\n";
}
inline std::string PjlLanguage(const std::string& language) {
  return "@PJL ENTER LANGUAGE = " + language + "\n";
}
// Where downloads go, from then on.
inline std::string PjlTarget(const std::string& device) {
  return Uel + "@PJL SET QDOWNLOADTARGET = " + device + "\n";
}
// The end of a job without a reset of the printer.
inline const std::string PjlEnd = Uel + PjlPanel("") + Uel;

// The commands of printers without PJL.
inline std::string EscKLanguage(char language, char personality = 0x31) {
  return Bytes("\x1B[K\x03\x00\x06") + personality + language;
}
inline const std::string EscKEnd = Bytes("\x1B[K\x01\x00\x06");
inline const std::string EscKToDevice = Bytes("\x1B[K\x03\x00\x06\xC0\x31");
inline const std::string EscKToRam = Bytes("\x1B[K\x03\x00\x06\xC0\x32");
inline const std::string EscKLeadIn = Bytes("\x1B[K\x01\x00\x01");

}  // namespace hvtest
