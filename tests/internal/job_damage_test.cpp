// Damaged macro sources, PCL XL jobs, command texts and print files: taken as they are, filtered,
// converted or refused; explained to the last byte.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/damage.h"
#include "support/explained.h"
#include "support/font_files.h"
#include "support/job_filter_model.h"
#include "support/macro_files.h"
#include "support/pclxl_jobs.h"
#include "support/pclxl_reading.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;
using enum hvtest::Order;

// The name that a refused source leaves is the one before.
bool IsValidated(int32_t emulation, uint32_t flags) {
  HvJobInfo job = MacroJob(emulation, 99);
  HvMacroInfo info = MacroInfo(flags, "before", STORAGE_DEVICE_DISK2);
  const uint32_t code = HvMacValidate("source", &job, &info);
  ExpectOneOf(code, {HV_OK, HV_READ_FAILED, HV_WRONG_LANGUAGE, HV_BAD_PCLXL, HV_PCLXL_JOB});
  EXPECT_NE(std::memchr(info.name, 0, sizeof info.name), nullptr);
  EXPECT_TRUE(info.target >= STORAGE_DEVICE_RAM && info.target <= STORAGE_DEVICE_DISK2);
  EXPECT_TRUE(code == HV_OK || std::strcmp(info.name, "before") == 0);
  return code == HV_OK;
}

// What is filtered is what the model makes of it; a PCL XL job is converted or leaves nothing.
bool IsFiltered(int32_t emulation, uint32_t flags, const std::string& damaged) {
  const HvJobInfo job = MacroJob(emulation);
  HvMacroInfo info = MacroInfo(flags, "x");
  const uint32_t code = HvMacCreate("source", "out", &job, &info);
  const std::string made = ReadFile("out");
  fs::remove("out");
  if (emulation == JOB_EMULATION_PCLXL) {
    EXPECT_EQ(code == HV_OK, !made.empty());
    return ExpectOneOf(code, {HV_OK, HV_BAD_PCLXL});
  }
  EXPECT_EQ(code, HV_OK);
  EXPECT_EQ(made, emulation == JOB_EMULATION_PCL
                      ? "\x1B&f5y0X" + FilterPclModel(damaged, DEFAULT_FILTER_MASK) + "\x1B&f1X"
                      : FilterPostScriptModel(damaged, "%%Quintar Overlay: x\n"));
  return true;
}

TEST(JobDamage, OfMacrosIsValidatedAndFilteredOrRefused) {
  const std::string pcl = "\x1B&f12y0X\033E\x1B&l1o2a3H@PJL x\n\x1B*b3m2Wab\x1B%0BIN\x1B%0A" +
                          Bytes("\x1B[K\x02\0xy") + "\x1B&n2Wab\x1B&f1X";
  const std::string xl = OnePagePclXlJob();
  const struct {
    const char* name;
    int32_t emulation;
    uint32_t flags;
    std::string bytes;
    std::size_t numbersFrom = 999;  // of 16 bits
  } samples[] = {
      {"PCL macro", 5, 0, pcl},
      {"PCL macro, filtered", 5, MACRO_FLAG_FILTER, pcl + Uel},
      {"PostScript demonstration", 3, 0,
       "statusdict begin currentfilenameextend false setfilenameextend end\n"
       "/writefile (%disk1%Name.demo) (w) file def\n"},
      {"PostScript macro", 3, 0, "serverdict begin 0 exitserver /Logo {\n"},
      {"PostScript overlay, filtered", 3, MACRO_FLAG_FILTER | MACRO_FLAG_PS_OVERLAY,
       "%!PS-Adobe\n%%Quintar Overlay: Name\n" + Uel + "@PJL X\nshow\n\x04" + Uel},
      {"PPDS macro", 2, 0, Bytes("\x1B[l\x05\0\x01\0\x05xy"), 0},
      {"PCL XL stream", 6, 0, ConvertedPclXlJob("Letterhead", false), 17},
      {"PCL XL job, filtered", 6, MACRO_FLAG_FILTER, Uel + xl + Uel, 9 + 17},
  };
  for (const auto& sample : samples) {
    const auto read = [&](const std::string& damaged) {
      const bool isMacro = IsValidated(sample.emulation, sample.flags);
      if ((sample.flags & MACRO_FLAG_FILTER) == 0) return isMacro;
      return IsFiltered(sample.emulation, sample.flags, damaged);
    };
    MeetDamage(sample.name, sample.bytes,
               NumbersAnywhere(LowFirst, sample.numbersFrom, sample.bytes.size(), 2), read, "\x1B",
               "source");
  }
}

TEST(JobDamage, OfPclXlHasOneResultInWhateverPieces) {
  const std::string job = PclXlSampleJob();
  const auto read = [&](const std::string& damaged) {
    const uint32_t result = ReadPclXl(damaged).result;
    EXPECT_EQ(result, ReadPclXl(damaged, 1).result);
    EXPECT_EQ(result, ReadPclXl(damaged, 7).result);
    EXPECT_TRUE(damaged.size() == job.size() || result == hv::PclXlEnded) << result;
    return result == hv::PclXlOk;
  };
  MeetDamage(
      "PCL XL job", job,
      NumbersAnywhere(LowFirst, 17, job.size(), 2) + NumbersAnywhere(LowFirst, 17, job.size(), 4),
      read, "\x1B\x42\x5E\xC8\xF8\xFA");
}

// The text is written out or refused before anything is.
TEST(JobDamage, OfCommandTextsIsSentOrRefused) {
  for (const char* const text : {"$\\x1BE\\n\\r\\f\\\\ some text \\027", "1B451B266C304F"}) {
    const auto read = [](const std::string& damaged) {
      const HvJobInfo job = Job(0);
      const uint32_t code = HvDatSendString(damaged.c_str(), "out", &job, 0);
      const int64_t refused = damaged[0] == '%' ? HV_NOT_FOUND : HV_BAD_ARGUMENT;
      if (!ExpectOneOf(code, {HV_OK, refused})) return false;
      EXPECT_LE(fs::file_size("out"), damaged.size());
      return fs::remove("out");
    };
    MeetDamage("command text", text, {}, read, "$\\xg");
  }
}

bool IsExplained(const std::string& bytes) {
  Explained(bytes);
  return true;
}

TEST(JobDamage, OfPrintFilesIsExplained) {
  const std::pair<std::string, std::string> streams[] = {
      {"PCL",
       Uel + "@PJL ENTER LANGUAGE = PCL\n\033E\x1B&l0o2A\x1B*b2m3Wabc\x1B*rB\x1B%0BIN;\x1B%0A" +
           Uel},
      {"soft font", PclFont({}, SampleCharacters()).substr(0, 300)},
      {"PCL XL", PclXlSampleJob()},
      {"ESC K and PPDS",
       Bytes("\x1B[K\x03\0\x06\x31\x01\x1B[l\x08\0\x01\x01\x02Hello\x1B=\x03\0\x31\x08\x05")},
      {"PJL and PostScript",
       "@PJL QWRITEFILE\nab@PJL END DATA\n@PJL ENTER LANGUAGE=POSTSCRIPT\n%!PS\n%%EOF\nx\n\x04"},
      {"demonstration", Bytes("\x1B[D\0\x05\x01\0Logo\0\0\0\0\0\0\0\0\0\0\0\x04%!PS")},
  };
  for (const auto& [name, bytes] : streams) {
    MeetDamage("print file: " + name, bytes,
               NumbersAnywhere(LowFirst, 0, bytes.size(), 2) +
                   NumbersAnywhere(HighFirst, 0, bytes.size(), 4),
               IsExplained, "\n\x1B%@W\xC8\xF8");
  }
}

}  // namespace
