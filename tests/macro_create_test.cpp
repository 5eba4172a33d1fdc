// What HvMacCreate writes, byte for byte, and the filter's rules as a person would try them.

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "hvapi.h"
#include "support/macro_files.h"

namespace {

using hvtest::Bytes;
using hvtest::MacroInfo;
using hvtest::MacroJob;
using hvtest::ReadFile;
using hvtest::ScopedCurrentFolder;
using hvtest::SentMacro;
using hvtest::TestFolder;
using Names = std::vector<std::string>;

const std::string Uel = "\x1B%-12345X";

SentMacro Create(const TestFolder& folder, const std::string& bytes, const HvJobInfo& job,
                 HvMacroInfo info) {
  const std::string source = folder.Add("source", bytes);
  const std::string out = folder / "macro";
  std::filesystem::remove(out);
  return hvtest::Sent(HvMacCreate(source.c_str(), out.c_str(), &job, &info), out);
}

TEST(MacroCreate, ChecksItsArgumentsBeforeItWrites) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "x");
  folder.Add("SETUP.EXE", "x");
  folder.Add("a.iniX", "x");
  std::filesystem::create_directory(folder / "directory");
  const std::string out = folder / "out";
  const HvJobInfo job = MacroJob(5);
  HvMacroInfo info = MacroInfo();
  const auto code = [&](const std::string& from, const std::string& to) {
    return HvMacCreate(from.c_str(), to.c_str(), &job, &info);
  };
  EXPECT_EQ(HvMacCreate(nullptr, out.c_str(), &job, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacCreate(source.c_str(), nullptr, &job, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacCreate(source.c_str(), out.c_str(), nullptr, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvMacCreate(source.c_str(), out.c_str(), &job, nullptr), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(std::string(261, 'x'), out), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(source, std::string(261, 'x')), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(folder / "source", folder / "SOURCE"), HV_BAD_ARGUMENT);
  for (const int32_t emulation : {-1, 0, 7}) {
    const HvJobInfo bad = MacroJob(emulation);
    EXPECT_EQ(HvMacCreate(source.c_str(), out.c_str(), &bad, &info), HV_BAD_ARGUMENT);
  }
  const HvJobInfo high = MacroJob(5, 32768);
  EXPECT_EQ(HvMacCreate(source.c_str(), out.c_str(), &high, &info), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(folder / "missing", out), HV_NOT_FOUND);
  EXPECT_EQ(code(folder / "SETUP.EXE", out), HV_UNUSABLE_FILE);
  EXPECT_EQ(code(folder / "a.iniX", out), HV_UNUSABLE_FILE);
  EXPECT_EQ(code(folder / "directory", out), HV_CANNOT_OPEN);
  EXPECT_EQ(code(source, folder / "none/out"), HV_CANNOT_OPEN);
  // The same file by another name would be emptied before it is read.
  EXPECT_EQ(code(source, folder / "./source"), HV_CANNOT_OPEN);
  EXPECT_EQ(ReadFile(source), "x");
  EXPECT_EQ(folder.Names(), (Names{"SETUP.EXE", "a.iniX", "directory", "source"}));
}

TEST(MacroCreate, WrapsASourceByItsLanguage) {
  const TestFolder folder;
  const std::string body = "text\x1B&l3X\x0C" + Uel;
  HvMacroInfo calls = MacroInfo(MACRO_FLAG_CALL_MACRO);
  calls.callMacroId = 7;
  const struct {
    int32_t emulation;
    uint16_t identifier;
    HvMacroInfo info;
    std::string bytes;
  } cases[] = {
      {1, 5, MacroInfo(), body},
      {4, 5, MacroInfo(MACRO_FLAG_FILTER), body},
      {2, 0x1234, MacroInfo(), "\x1B[l\x16" + Bytes("\0\x01\x12\x34") + body},
      {2, 32767, MacroInfo(MACRO_FLAG_FILTER), "\x1B[l\x16" + Bytes("\0\x01\x7F\xFF") + body},
      {3, 5, MacroInfo(0, "Name"), body},
      {5, 5, MacroInfo(), "\x1B&f5y0X" + body + "\x1B&f1X"},
      {5, 0, MacroInfo(), "\x1B&f0y0X" + body + "\x1B&f1X"},
      {5, 32767, MacroInfo(MACRO_FLAG_FILTER), "\x1B&f32767y0Xtext\x1B&l3X\x1B&f1X"},
      {5, 5, calls, "\x1B&f5y0X\x1B&f7y3x5Y" + body + "\x1B&f1X"},
      {6, 5, MacroInfo(0, "Name"), body},
  };
  for (const auto& c : cases) {
    const SentMacro macro = Create(folder, body, MacroJob(c.emulation, c.identifier), c.info);
    EXPECT_EQ(macro.code, HV_OK);
    EXPECT_EQ(macro.bytes, c.bytes) << c.emulation;
  }
}

TEST(MacroCreate, FramesNothingWhateverTheFlags) {
  const TestFolder folder;
  const HvJobInfo job = MacroJob(5, 5, JOB_FLAG_PJL | JOB_FLAG_ESC_K);
  EXPECT_EQ(Create(folder, "x", job, MacroInfo()).bytes, "\x1B&f5y0Xx\x1B&f1X");
}

TEST(MacroCreate, RefusesAPpdsSourceThatItsCountCannotTell) {
  const TestFolder folder;
  for (const std::size_t size : {65532U, 65533U, 65536U}) {
    const SentMacro macro = Create(folder, std::string(size, 'x'), MacroJob(2), MacroInfo());
    EXPECT_EQ(macro.code, size == 65532 ? HV_OK : HV_LIMIT_REACHED) << size;
    EXPECT_EQ(macro.bytes.substr(0, 8), size == 65532 ? Bytes("\x1B[l\xFF\xFF\x01\0\x05") : "");
  }
}

TEST(MacroCreate, FiltersPostScript) {
  const TestFolder folder;
  const std::string comment = "%%Quintar Overlay: An overlay of 23 charac\n";
  const struct {
    std::string source;
    std::string bytes;
  } cases[] = {
      {Uel + "@PJL ENTER LANGUAGE = POSTSCRIPT\r\n%!PS-Adobe-3.0\nshowpage\n\x04",
       "%!PS-Adobe-3.0\n" + comment + "showpage\n"},
      {"%!PS\nx %!PS y\n", "%!PS\n" + comment + "x %!PS y\n" + comment},
      {"no header", "no header"},
      {"%!P", "%!P"},
      {"a@PJL b\nc@PJ", "ac@PJ"},
      {"a" + Bytes("\x1B[K\x02\0xyz") + "\x1B[X\x1B%-12345Y", "az\x1B[X\x1B%-12345Y"},
      {"%%\x1B\x1B%-12345X", "%%\x1B"},
  };
  for (const auto& c : cases) {
    const SentMacro macro = Create(folder, c.source, MacroJob(3),
                                   MacroInfo(MACRO_FLAG_FILTER, "An overlay of 23 characters"));
    EXPECT_EQ(macro.code, HV_OK);
    EXPECT_EQ(macro.bytes, c.bytes);
  }
}

TEST(MacroCreate, FiltersPcl) {
  const TestFolder folder;
  constexpr uint32_t Default = DEFAULT_FILTER_MASK;
  const std::string characters = std::string(140, '@') + "\033E\x0C@PJL\nx";
  const struct {
    uint32_t mask;
    std::string source;
    std::string bytes;
  } cases[] = {
      {Default, "\x1B&l0o2a5H", ""},
      {Default, "\x1B&l1o66P", ""},
      {Default, "\x1B&l3X", "\x1B&l3X"},
      {Default | FILTER_DROP_COPIES, "\x1B&l3X", ""},
      {FILTER_DROP_PAGE_SIZE, "\x1B&l0o26A", "\x1B&l0O"},
      {FILTER_DROP_PAGE_SIZE, "\x1B&l26a0O", "\x1B&l0O"},
      {FILTER_DROP_PAGE_SIZE, "\x1B&l1x26a0o2T", "\x1B&l1x0o2T"},
      {0, "\033E\x0C\x1B&l2a66p1F", "\033E\x0C\x1B&l2A"},
      {Default, "\x1B(s149W" + characters, "\x1B(s149W" + characters},
      {Default, "\x1B*c0F\x1B*c1F\x1B*c5F", "\x1B*c5F"},
      {Default, "\x1B&f6X\x1B&f7X\x1B&f10X\x1B&f3X\x1B&f0X", "\x1B&f3X\x1B&f0X"},
      {FILTER_DROP_MACRO_DEFINITION, "\x1B&f5y0X\x1B&f1X", "\x1B&f5Y"},
      {Default, "\x1B%0B@PJL\n\x0C\x1B&l2A\x1B%0A\x0C\x1B&l2A", "\x1B%0B@PJL\n\x0C\x1B&l2A\x1B%0A"},
      {Default, "\x1B%0BIN;\x0C\033E\x0C", "\x1B%0BIN;\x0C"},
      {Default, "\x1B&n5Wabcdex\x1B&n0Wy", "x\x1B&n0Wy"},
      {Default, "\x1B&b1M\x1B&a1G\x1B&r1F\x1B&l1S", ""},
      {FILTER_DROP_JOB_SEPARATION, "\x1B&l1T\x1B&l2T", "\x1B&l2T"},
      {FILTER_DROP_PERFORATION_SKIP, "\x1B&l1L\x1B&l1G", "\x1B&l1G"},
      {FILTER_DROP_OUTPUT_BIN, "\x1B&l1L\x1B&l1G", "\x1B&l1L"},
      {FILTER_DROP_PAPER_SOURCE, "\x1B&l1H\x1B&l1S\x1B&a1G", "\x1B&l1S\x1B&a1G"},
      {FILTER_DROP_FLUSH_PAGES, "\x1B&r1F\x1B&l1O", "\x1B&l1O"},
      {Default, Uel + "@PJL SET X\n" + Bytes("\x1B[K\x01\0\x06") + "x" + Uel, "x"},
      {Default, "\x1B&l2a", ""},
      {Default, "\x1B&l2x", "\x1B&l2x"},
      {Default, "\x1B*b-5W\033E", "\x1B*b-5W"},
  };
  for (const auto& c : cases) {
    HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER_MASK);
    info.filterMask = c.mask;
    const SentMacro macro = Create(folder, c.source, MacroJob(5), info);
    EXPECT_EQ(macro.code, HV_OK);
    EXPECT_EQ(macro.bytes, "\x1B&f5y0X" + c.bytes + "\x1B&f1X") << c.source;
    if (c.mask != Default) continue;
    EXPECT_EQ(Create(folder, c.source, MacroJob(5), MacroInfo(MACRO_FLAG_FILTER)).bytes,
              macro.bytes);
  }
}

TEST(MacroCreate, SwitchesTheFilterOnInTheRecordForAMask) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "x");
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER_MASK);
  const HvJobInfo job = MacroJob(5);
  EXPECT_EQ(HvMacCreate(source.c_str(), (folder / "out").c_str(), &job, &info), HV_OK);
  EXPECT_EQ(+info.flags, uint32_t{MACRO_FLAG_FILTER_MASK | MACRO_FLAG_FILTER});
}

TEST(MacroCreate, ConvertsAPclXlJob) {
  const TestFolder folder;
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  const std::string job = hvtest::OnePagePclXlJob();
  const struct {
    std::string before;
    std::string behind;
  } frames[] = {
      {"", ""},
      {Uel + "@PJL ENTER LANGUAGE = PCLXL\r\n", Uel},
      {Bytes("\0abc") + Uel + "@PJL\n", Uel + "@PJL EOJ\n"},
      {"", "what follows the session is not read"},
  };
  for (const auto& frame : frames) {
    const SentMacro macro = Create(folder, frame.before + job + frame.behind, MacroJob(6),
                                   MacroInfo(MACRO_FLAG_FILTER, "Letterhead"));
    EXPECT_EQ(macro.code, HV_OK);
    EXPECT_EQ(macro.bytes, hvtest::ConvertedPclXlJob("Letterhead", false));
    EXPECT_EQ(work.Names(), Names{});
  }
  for (const std::string& bad :
       {std::string("no job"), job.substr(0, job.size() - 1), "x" + job, Bytes("\0") + job}) {
    const SentMacro macro = Create(folder, bad, MacroJob(6), MacroInfo(MACRO_FLAG_FILTER, "x"));
    EXPECT_EQ(macro.code, HV_BAD_PCLXL);
    EXPECT_EQ(macro.bytes, "");
    EXPECT_EQ(work.Names(), Names{});
  }
}

TEST(MacroCreate, DoesNotConvertAFileThatTheConversionNeeds) {
  const TestFolder work;
  const ScopedCurrentFolder here(work.Path());
  const std::string job = hvtest::OnePagePclXlJob();
  work.Add("IN.STR", job);
  work.Add("job", job);
  HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, "x");
  HvJobInfo record = MacroJob(6);
  EXPECT_EQ(HvMacCreate((work / "IN.STR").c_str(), "macro", &record, &info), HV_CANNOT_OPEN);
  EXPECT_EQ(HvMacCreate("in.str", "macro", &record, &info), HV_CANNOT_OPEN);
  EXPECT_EQ(HvMacCreate("job", "out.str", &record, &info), HV_CANNOT_OPEN);
  EXPECT_EQ(HvMacValidate("in.str", &record, &info), HV_CANNOT_OPEN);
  EXPECT_EQ(work.Names(), (Names{"IN.STR", "job"}));
  EXPECT_EQ(ReadFile(work / "IN.STR"), job);
}

TEST(MacroCreate, ConvertsJobsOfSeveralThreadsOneByOne) {
  const TestFolder folder;
  const ScopedCurrentFolder here(folder.Path());
  folder.Add("job", hvtest::OnePagePclXlJob());
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([i] {
      const std::string name = "stream" + std::to_string(i);
      for (int round = 0; round < 5; ++round) {
        HvMacroInfo info = MacroInfo(MACRO_FLAG_FILTER, name);
        const HvJobInfo job = MacroJob(6);
        EXPECT_EQ(HvMacCreate("job", name.c_str(), &job, &info), HV_OK);
        EXPECT_EQ(ReadFile(name), hvtest::ConvertedPclXlJob(name, false));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(folder.Names(), (Names{"job", "stream0", "stream1", "stream2", "stream3"}));
}

}  // namespace
