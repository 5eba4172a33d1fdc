// One-page PCL XL jobs that become jobs with a stream, byte for byte, and those that do not.

#include <gtest/gtest.h>

#include <string>

#include "pclxl/stream_conversion.h"
#include "support/jobs.h"
#include "support/pclxl_jobs.h"
#include "support/pclxl_reading.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

const std::string& Header = PclXlHeader;
const std::string Settings = Bytes("\xD1\x2C\x01\x2C\x01\xF8\x89\xC0\x00\xF8\x86\x41");
const std::string PageBegin = Bytes("\xC0\x00\xF8\x28\xC0\x02\xF8\x25\x43");
const std::string PageEnd = Bytes("\xC1\x02\x00\xF8\x31\x44");
const std::string SessionEnd = "\x42";

// The converted job, made in a folder of its own, or the code of the failure as a text.
std::string Convert(const std::string& job, const char* name = "Logo", uint32_t execute = 0) {
  const TestFolder folder;
  const ScopedCurrentFolder current(folder.Path());
  WriteFile("in.str", job);
  const hv::PclXlWorkFiles files;
  const uint32_t code = hv::PclXlConvertStream(files, name, execute);
  const std::string converted = code == hv::PclXlOk ? ReadFile("out.str") : std::to_string(code);
  files.Remove();
  EXPECT_TRUE(folder.Names().empty());
  return converted;
}

uint32_t Read(const std::string& job) {
  return ReadPclXl(job).result;
}

std::string OnePage(const std::string& operators) {
  return Header + Settings + PageBegin + operators + PageEnd + SessionEnd;
}

// The job that one with the settings above becomes.
std::string Converted(const std::string& page) {
  return PclXlStreamJob(Settings, "Logo", page, false);
}

TEST(PclXlConversion, WritesTheJobByteForByte) {
  // SetCursor, Text, and an image whose data hold operators and an ESC.
  const std::string page =
      Bytes("\xD3\x0A\x00\x14\x00\xF8\x4C\x6B") + Bytes("\xC8\xC0\x02Hi\xF8\xAB\xA8") +
      Bytes("\xC1\x00\x00\xF8\x6D\xC1\x01\x00\xF8\x63\xB1\xFA\x05\x00\x00\x00\x44\x43\x1B\x42\x00");
  const std::string begin =
      Bytes(
          ") HP-PCL XL;1;1;\n\xD1\x58\x02\x58\x02\xF8\x89\xC0\x00\xF8\x86\xC0\x03\xF8\x8F\x41"
          "\xC0\x00\xF8\x88\xC0\x01\xF8\x82\x48\xC8\xC0\x0C") +
      Settings +
      Bytes(
          "\xF8\x81\x47\xC8\xC0\x04Logo\xF8\x8B\x5B\xC2\x36\x00\x00\x00\xF8\x8C\x5C"
          "\xFA\x36\x00\x00\x00) HP-PCL XL;1;1;\n") +
      page;
  EXPECT_EQ(Convert(OnePage(page)), begin + Bytes("\x5D\x49\x42"));
  EXPECT_EQ(Convert(OnePage(page), "Logo", 1),
            begin + Bytes("\x5D\xC0\x00\xF8\x28\xC0\x00\xF8\x25\xC0\x01\xF8\x26\x43"
                          "\xC8\xC0\x04Logo\xF8\x8B\x5E\xC1\x01\x00\xF8\x31\x44\x49\x42"));
}

TEST(PclXlConversion, AcceptsHeadersAndRefusesOthers) {
  constexpr std::pair<const char*, uint32_t> cases[] = {
      {") HP-PCL XL;1;1;\n", 0},
      {") PCL XL;1;1;\n", 0},
      {") HP-PCL XL;1;1;Comment by a driver\r\n", 0},
      {") HP-PCL XL;1;1\n", 0},
      {") HP-PCL XL;1;1\rmore\n", 0},
      {") X;1;1;\n", 0},
      {"( HP-PCL XL;1;1;\n", 46},
      {")HP-PCL XL;1;1;\n", 49},
      {") HP-PCLXL;1;1;\n", 47},
      {") HP-PCL XL 1;1;\n", 49},
      {") HP-PCL XL;2;0;\n", 48},
      {") HP-PCL XL;1;0;\n", 48},
      {") HP-PCL XL;1,1;\n", 49},
      {") HP-PCL XL;1;1 \n", 49},
  };
  for (const auto& [header, code] : cases) {
    EXPECT_EQ(Read(header + Settings + PageBegin + PageEnd + SessionEnd), code) << header;
  }
}

TEST(PclXlConversion, GivesTheReasonForEachRefusal) {
  const std::string open = Bytes("\xC0\x00\xF8\x88\x48");
  std::string values100;
  for (int i = 0; i < 100; ++i) values100 += PclXlUbyte(i, 0x4C);
  const struct {
    const char* what;
    std::string afterHeader;
    uint32_t code;
  } cases[] = {
      {"a session without a page", Settings + SessionEnd, 53},
      {"another first operator", Bytes("\xB1") + Settings, 2},
      {"data first", Bytes("\xFB\x01x") + Settings, 2},
      {"a session in the session", Settings + Settings, 2},
      {"a page operator in the session", Settings + "\x6B", 2},
      {"the end of the session in the page", Settings + PageBegin + "\x42", 2},
      {"two pages", Settings + PageBegin + PageEnd + PageBegin + PageEnd + SessionEnd, 51},
      {"a page in the page", Settings + PageBegin + PageBegin + PageEnd + SessionEnd, 51},
      {"BeginStream in the page", Settings + PageBegin + "\x5B", 52},
      {"ExecStream in the page", Settings + PageBegin + "\x5E", 52},
      {"an operator of no number", Settings + PageBegin + "\x7E", 3},
      {"a binding character", Settings + "\x29", 3},
      {"an attribute of two bytes", Settings + Bytes("\xC0\x01\xF9\x01\x02"), 3},
      {"an array of pairs", Settings + "\xD8", 3},
      {"ESC", Settings + "\x1B%-12345X", 1},
      {"an array with a length of 32 bits", Settings + Bytes("\xC8\xC2\x01\x00\x00\x00x"), 54},
      {"data that end early", Settings + PageBegin + Bytes("\xFA\xFF\xFF\xFF\xFF") + "x", 1},
      {"101 values", Settings + PageBegin + values100 + "\xC0\x01\xF8\x4C\x6B" + values100, 54},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Read(Header + each.afterHeader), each.code) << each.what;
  }
  EXPECT_EQ(Read(OnePage(values100 + "\x6B")), 0U);
  EXPECT_EQ(Read(Header + Settings + open + PageBegin + PageEnd + "\x49\x42" + "junk"), 0U);
}

// What is neither a blank nor an operator of its level must not slip into the session or onto a
// page.
TEST(PclXlConversion, KnowsEachByteThatMayBeginAnOperator) {
  const std::string both = Bytes("\x00\t\n\v\f\r ") + "GHIJKOPQRSTU";
  const std::string ofSessions = both + "[\\]^";
  const std::string ofPages =
      both +
      "`abcdefghijklmnopqrstuvwxyz{|}\x7F\x80\x81\x84\x85\x86\x91\x93\x95\x96\x97\x98\x99\x9B\x9D"
      "\x9E\x9F\xA0\xA1\xA2\xA3\xA8\xA9\xAA\xB0\xB1\xB2\xB3\xB4\xB5\xB6\xB8\xB9";
  for (int byte = 0; byte < 0xC0; ++byte) {
    const std::string c(1, static_cast<char>(byte));
    if (c == "\x44") continue;
    SCOPED_TRACE(byte);
    EXPECT_EQ(Read(OnePage(c)) == 0, ofPages.find(c) != std::string::npos);
    EXPECT_EQ(Read(Header + Settings + c + PageBegin + PageEnd + SessionEnd) == 0,
              ofSessions.find(c) != std::string::npos);
  }
}

TEST(PclXlConversion, CarriesSettingsOfUpTo255Bytes) {
  for (const std::size_t length : {16U, 255U, 256U}) {
    // A comment as an array fills up what 3 bytes of its begin, 2 of its attribute and the operator
    // leave.
    const std::string settings = PclXlText(std::string(length - 6, 'c'), 0x81) + "\x41";
    ASSERT_EQ(settings.size(), length);
    const std::string expected = length > 255 ? "54" : PclXlStreamJob(settings, "N", "", false);
    EXPECT_EQ(Convert(Header + settings + PageBegin + PageEnd + SessionEnd, "N"), expected);
  }
}

// Fonts of the session stay behind, whatever their data look like.
TEST(PclXlConversion, TakesTheOperatorsOfThePageAlone) {
  const std::string font = PclXlText("FONT", 0xA8) + "\x4F" + PclXlUint16(4, 0xA7) + "\x50" +
                           Bytes("\xFB\x04\x43\x44\x1B\xFF") + "\x51\x52\x53\x54";
  EXPECT_EQ(Convert(Header + Settings + font + PageBegin + "\x84\x85" + PageEnd + SessionEnd),
            Converted("\x84\x85"));
}

// Runs longer and shorter than the buffers, and an EndPage whose values begin in one buffer and end
// in another.
TEST(PclXlConversion, KeepsPagesAcrossItsBuffers) {
  for (const std::size_t before : {0U, 1000U, 16000U, 16300U, 16330U, 16350U, 16384U, 40000U}) {
    for (const std::size_t values : {0U, 300U, 20000U}) {
      const std::string page = "\xB1" + PclXlData(std::string(before, '\x1B'));
      const std::string comment = values == 0 ? "" : PclXlText(std::string(values, 'v'), 0x81);
      EXPECT_TRUE(Convert(OnePage(page + comment)) == Converted(page)) << before << " " << values;
    }
  }
}

TEST(PclXlConversion, SaysWhereItStopped) {
  const std::string begin = Header + Settings + PageBegin;
  const std::pair<std::string, PclXlReading> cases[] = {
      {begin + "\x6B\xC0\x01\xF8\x8B\x5E", {52, 0x5E, begin.size() + 5}},
      {begin + "\x6B\x7E", {3, 0x7E, begin.size() + 1}},
      {begin + "\x6B", {1, 0x6B, begin.size() + 1}},
      {begin + "\x6B\xC8\xC0\xFF, much of which is missing", {1, 0x6B, begin.size() + 1}},
      {begin + PageEnd + "\x43", {51, 0x43, begin.size() + PageEnd.size()}},
  };
  // Byte by byte, too: no part of the job may depend on what a read brings.
  for (const auto& [job, reading] : cases) {
    EXPECT_EQ(ReadPclXl(job), reading);
    EXPECT_EQ(ReadPclXl(job, 1), reading);
  }
}

}  // namespace
