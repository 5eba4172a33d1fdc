// Builds PCL XL jobs, byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hvtest {

// Numbers with their tags: a value as attribute, low byte first.
std::string PclXlUbyte(int value, int attribute);
std::string PclXlUint16(int value, int attribute);
std::string PclXlXy(int x, int y, int attribute);
std::string PclXlText(std::string_view text, int attribute);
std::string PclXlData(std::string_view data);

// The header of a job and of a stream, as the conversion writes it.
inline const std::string PclXlHeader = ") HP-PCL XL;1;1;\n";

// What a job becomes whose BeginSession is `settings` with its values and whose one page has these
// operators: a job that defines a stream of that name and, with `execute`, runs it once.
std::string PclXlStreamJob(std::string_view settings, std::string_view name, std::string_view page,
                           bool execute);

// A job of one page with a value of each kind, embedded data of both kinds and a font.
std::string PclXlSampleJob();

}  // namespace hvtest
