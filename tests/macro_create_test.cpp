// What HvMacCreate writes, byte for byte, and the filter's rules as a person would try them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"

namespace {

using namespace hvtest;
using Names = std::vector<std::string>;

class MacroCreate : public testing::Test {
 protected:
  SentMacro Create(const std::string& bytes, const HvJobInfo& job, HvMacroInfo info) {
    const std::string source = folder_.Add("source", bytes);
    const std::string out = folder_ / "macro";
    std::filesystem::remove(out);
    return Sent(HvMacCreate(source.c_str(), out.c_str(), &job, &info), out);
  }

  const TestFolder folder_;
};

// What creating and downloading ask of their arguments alike.
TEST_F(MacroCreate, AndDownloadCheckTheirArgumentsBeforeTheyWrite) {
  const std::string source = folder_.Add("source", "x");
  folder_.Add("a.iniX", "x");
  std::filesystem::create_directory(folder_ / "directory");
  const std::string out = folder_ / "out";
  const std::string tooLong(261, 'x');
  const auto expect = [&](const char* from, const char* to, const HvJobInfo* job, uint32_t code) {
    SCOPED_TRACE(from == nullptr ? "NULL" : from);
    HvMacroInfo info = MacroInfo();
    EXPECT_EQ(HvMacCreate(from, to, job, &info), code);
    EXPECT_EQ(HvMacDownload(from, to, job, &info, MACRO_SEND_RAW, 29), code);
  };
  const HvJobInfo job = MacroJob(5);
  expect(nullptr, out.c_str(), &job, HV_BAD_ARGUMENT);
  expect(source.c_str(), nullptr, &job, HV_BAD_ARGUMENT);
  expect(source.c_str(), out.c_str(), nullptr, HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacCreate(source.c_str(), out.c_str(), &job, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacDownload(source.c_str(), out.c_str(), &job, nullptr, 1, 0), HV_BAD_ARGUMENT);
  for (const int32_t emulation : {0, 7}) {
    const HvJobInfo bad = MacroJob(emulation);
    expect(source.c_str(), out.c_str(), &bad, HV_BAD_ARGUMENT);
  }
  const auto expectOf = [&](const std::string& from, const std::string& to, uint32_t code) {
    expect(from.c_str(), to.c_str(), &job, code);
  };
  expectOf(tooLong, out, HV_BAD_ARGUMENT);
  expectOf(source, tooLong, HV_BAD_ARGUMENT);
  expectOf(source, folder_ / "SOURCE", HV_BAD_ARGUMENT);
  expectOf(folder_ / "missing", out, HV_NOT_FOUND);
  expectOf(folder_ / "a.iniX", out, HV_UNUSABLE_FILE);
  expectOf(folder_ / "directory", out, HV_CANNOT_OPEN);
  expectOf(source, folder_ / "none/out", HV_CANNOT_OPEN);
  // The same file by another name would be emptied before it is read.
  expectOf(source, folder_ / "./source", HV_CANNOT_OPEN);
  HvMacroInfo info = MacroInfo();
  const HvJobInfo high = MacroJob(5, 32768);
  EXPECT_EQ(HvMacCreate(source.c_str(), out.c_str(), &high, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(ReadFile(source), "x");
  EXPECT_EQ(folder_.Names(), (Names{"a.iniX", "directory", "source"}));
}

TEST_F(MacroCreate, WrapsASourceByItsLanguage) {
  const std::string body = "text\x1B&l3X\x0C" + Uel;
  HvMacroInfo calls = MacroInfo(MACRO_FLAG_CALL_MACRO);
  calls.callMacroId = 7;
  const struct {
    int32_t emulation;
    uint16_t identifier;
    HvMacroInfo info;
    std::string bytes;
  } cases[] = {
      {1, 5, MacroInfo(MACRO_FLAG_FILTER), body},
      {2, 0x1234, MacroInfo(), "\x1B[l\x16" + Bytes("\0\x01\x12\x34") + body},
      {3, 5, MacroInfo(0, "Name"), body},
      {5, 5, MacroInfo(), "\x1B&f5y0X" + body + "\x1B&f1X"},
      {5, 32767, MacroInfo(MACRO_FLAG_FILTER), "\x1B&f32767y0Xtext\x1B&l3X\x1B&f1X"},
      {5, 5, calls, "\x1B&f5y0X\x1B&f7y3x5Y" + body + "\x1B&f1X"},
      {6, 5, MacroInfo(0, "Name"), body},
  };
  for (const auto& c : cases) {
    // The framing of the job does not count.
    const HvJobInfo job = MacroJob(c.emulation, c.identifier, JOB_FLAG_PJL | JOB_FLAG_ESC_K);
    EXPECT_EQ(Create(body, job, c.info), (SentMacro{HV_OK, c.bytes})) << c.emulation;
  }
}

TEST_F(MacroCreate, RefusesAPpdsSourceThatItsCountCannotTell) {
  for (const std::size_t size : {65532U, 65533U}) {
    const SentMacro macro = Create(std::string(size, 'x'), MacroJob(2), MacroInfo());
    EXPECT_EQ(macro.code, size == 65532 ? HV_OK : HV_LIMIT_REACHED) << size;
    EXPECT_EQ(macro.bytes.substr(0, 8), size == 65532 ? Bytes("\x1B[l\xFF\xFF\x01\0\x05") : "");
  }
}

TEST_F(MacroCreate, FiltersPostScript) {
  const std::string comment = "%%Quintar Overlay: An overlay of 23 charac\n";
  const std::pair<std::string, std::string> cases[] = {
      {Uel + "@PJL ENTER LANGUAGE = POSTSCRIPT\r\n%!PS-Adobe-3.0\nshowpage\n\x04",
       "%!PS-Adobe-3.0\n" + comment + "showpage\n"},
      {"%!PS\nx %!PS y\n", "%!PS\n" + comment + "x %!PS y\n" + comment},
      {"a" + Bytes("\x1B[K\x02\0xyz") + "\x1B[X\x1B%-12345Y", "az\x1B[X\x1B%-12345Y"},
  };
  const HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "An overlay of 23 characters");
  for (const auto& [source, bytes] : cases) {
    EXPECT_EQ(Create(source, MacroJob(3), info), (SentMacro{HV_OK, bytes}));
  }
}

TEST_F(MacroCreate, FiltersPcl) {
  constexpr uint32_t Default = DEFAULT_FILTER_MASK;
  const std::string digits(1025, '1');
  const std::string characters = std::string(140, '@') + "\033E\x0C@PJL\nx";
  const struct {
    uint32_t mask;
    std::string source;
    std::string bytes;
  } cases[] = {
      {Default, "\x1B&l0o2a5H", ""},
      {Default, "\x1B&l1o66P\x1B&l3X", "\x1B&l3X"},
      {FILTER_DROP_PAGE_SIZE, "\x1B&l0o26A", "\x1B&l0O"},
      {FILTER_DROP_PAGE_SIZE, "\x1B&l1x26a0o2T", "\x1B&l1x0o2T"},
      {Default, "\x1B(s149W" + characters, "\x1B(s149W" + characters},
      {Default, "\x1B*c0F\x1B*c1F\x1B*c5F", "\x1B*c5F"},
      {Default, "\x1B&f6X\x1B&f7X\x1B&f10X\x1B&f3X\x1B&f0X", "\x1B&f3X\x1B&f0X"},
      {FILTER_DROP_MACRO_DEFINITION, "\x1B&f5y0X\x1B&f1X", "\x1B&f5Y"},
      {Default, "\x1B%0B@PJL\n\x0C\x1B&l2A\x1B%0A\x0C\x1B&l2A", "\x1B%0B@PJL\n\x0C\x1B&l2A\x1B%0A"},
      {Default, "\x1B&n5Wabcdex\x1B&n0Wy", "x\x1B&n0Wy"},
      // No count of a printer has so many digits.
      {Default, "\x1B&n" + digits + "Wy", "\x1B&n" + digits + "Wy"},
      {Default, "\033E\x0C\x1B&b1M\x1B&a1G\x1B&r1F\x1B&l1s2L\x1B&l1g1T", "\x1B&l1g1T"},
      {Default, "\x1B*b-5W\033E", "\x1B*b-5W"},
  };
  for (const auto& c : cases) {
    HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER_MASK);
    info.filterMask = c.mask;
    const SentMacro macro = Create(c.source, MacroJob(5), info);
    EXPECT_EQ(macro, (SentMacro{HV_OK, "\x1B&f5y0X" + c.bytes + "\x1B&f1X"})) << c.source;
    if (c.mask != Default) continue;
    EXPECT_EQ(Create(c.source, MacroJob(5), MacroInfo(MACRO_FLAG_FILTER)), macro);
  }
}

TEST_F(MacroCreate, ConvertsAPclXlJob) {
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  const std::string job = OnePagePclXlJob();
  const HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "Letterhead");
  const std::pair<std::string, std::string> frames[] = {
      {Bytes("\0abc") + Uel + "@PJL\n", Uel + "@PJL EOJ\n"},
      {"", "what follows the session is not read"},
  };
  for (const auto& [before, behind] : frames) {
    EXPECT_EQ(Create(before + job + behind, MacroJob(6), info),
              (SentMacro{HV_OK, ConvertedPclXlJob("Letterhead", false)}));
  }
  for (const std::string& bad :
       {std::string("no job"), job.substr(0, job.size() - 1), "x" + job, Bytes("\0") + job}) {
    EXPECT_EQ(Create(bad, MacroJob(6), info), (SentMacro{HV_BAD_PCLXL, ""}));
    EXPECT_EQ(work.Names(), Names{});
  }
}

TEST_F(MacroCreate, DoesNotConvertAFileThatTheConversionNeeds) {
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  const std::string job = OnePagePclXlJob();
  work.Add("IN.STR", job);
  work.Add("job", job);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "x");
  HvJobInfo record = MacroJob(6);
  EXPECT_EQ(HvMacCreate((work / "IN.STR").c_str(), "macro", &record, &info), HV_CANNOT_OPEN);
  EXPECT_EQ(HvMacCreate("in.str", "macro", &record, &info), HV_CANNOT_OPEN);
  // Those that are not there yet, by whatever name.
  for (const std::string& destination : {std::string("out.str"), work / "TEMP.str"}) {
    EXPECT_EQ(HvMacCreate("job", destination.c_str(), &record, &info), HV_CANNOT_OPEN);
  }
  EXPECT_EQ(HvMacValidate("in.str", &record, &info), HV_CANNOT_OPEN);
  EXPECT_EQ(work.Names(), (Names{"IN.STR", "job"}));
  EXPECT_EQ(ReadFile(work / "IN.STR"), job);
}

}  // namespace
