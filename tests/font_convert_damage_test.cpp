// Damaged sources of conversions: cut at every length, each byte changed. Each gives a code that
// such a file may give, and what is written is whole; a refused file leaves no output.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/tagged_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::TestFolder;

struct Sample {
  const char* file;    // that is damaged
  const char* source;  // that is converted
  int32_t type;
  std::string bytes;
};

std::vector<Sample> Samples() {
  hvtest::FontMetrics metrics;
  metrics.face = "Times";
  metrics.fontName = "Times-Bold";
  metrics.first = 60;
  metrics.last = 90;
  metrics.widths.assign(31, 500);
  metrics.kerning = {{'A', 'B', -80}};
  hvtest::PclDescriptor extended;
  extended.format = 9;
  extended.size = 72;
  const std::string tagged = hvtest::TaggedFile("MM", {hvtest::SampleTaggedFont()});
  return {
      {"a.afm", "a.afm", FONT_CONVERT_AFM_TO_PFM, hvtest::AfmFile("Times")},
      {"a.inf", "a.afm", FONT_CONVERT_AFM_TO_PFM, "MSMenuName (Times)\nSerif true\nPi false\n"},
      {"a.pfm", "a.pfm", FONT_CONVERT_PFM_TO_AFM, hvtest::PostScriptPfm(metrics)},
      {"a.dlf", "a.dlf", FONT_CONVERT_DLF_TO_PBM, hvtest::DlfFont().Bytes()},
      {"a.sfp", "a.sfp", FONT_CONVERT_PCL_TO_PFM_DESCRIBED,
       hvtest::PclFont({}, hvtest::SampleCharacters())},
      {"b.sfp", "b.sfp", FONT_CONVERT_PCL_TO_PFM,
       hvtest::PclFont(extended, hvtest::SampleCharacters())},
      {"a.tfm", "a.sfs", FONT_CONVERT_TFM_TO_PFM, tagged},
      {"a.sfs", "a.sfs", FONT_CONVERT_TFM_TO_PFM_BY_HEADER, hvtest::PclFont({}, {})},
  };
}

// Visits the bytes cut at each length, and with each byte changed, in turns to 0, to 255 and by
// one; behind the headers at some lengths and bytes only.
void ForEachDamage(const std::string& bytes, const std::function<void(const std::string&)>& visit) {
  constexpr std::size_t Fine = 64;
  for (std::size_t length = 0; length < bytes.size(); length += length < Fine ? 1 : 7) {
    visit(bytes.substr(0, length));
  }
  for (std::size_t at = 0; at < bytes.size(); at += at < 2 * Fine ? 1 : 5) {
    const char old = bytes[at];
    const char changes[] = {'\0', '\xFF', static_cast<char>(old + 1), static_cast<char>(old - 1)};
    std::string damaged = bytes;
    damaged[at] = changes[at % std::size(changes)];
    visit(damaged);
  }
}

bool IsWhole(const std::string& output) {
  if (output.compare(0, 16, "StartFontMetrics") == 0) {
    return output.size() > 16 && output.substr(output.size() - 16) == "EndFontMetrics\r\n";
  }
  const auto size = static_cast<uint32_t>(output.size());
  return output.size() > 117 && output.substr(2, 4) == hvtest::Le32(size);
}

TEST(FontConvertDamage, GivesAWholeFileOrNone) {
  for (const Sample& sample : Samples()) {
    const TestFolder folder;
    for (const Sample& other : Samples()) folder.Add(other.file, other.bytes);
    const std::string source = folder / sample.source;
    const std::string output = folder / "out.x";
    HvFontInfo info = {};
    HvFonQueryInfo(source.c_str(), &info, 0, 0);
    const std::string tagged = folder / "a.tfm";
    tagged.copy(info.companionPath1, sizeof info.companionPath1 - 1);
    std::size_t written = 0;
    ForEachDamage(sample.bytes, [&](const std::string& damaged) {
      std::filesystem::remove(folder.Path() / sample.file);
      folder.Add(sample.file, damaged);
      const int32_t code = HvFonConvert(source.c_str(), output.c_str(), &info, 2, sample.type);
      ASSERT_TRUE(code == HV_OK || code == HV_UNUSABLE_FILE) << sample.file << " " << code;
      ASSERT_EQ(std::filesystem::exists(output), code == HV_OK) << sample.file;
      if (code != HV_OK) return;
      ++written;
      ASSERT_TRUE(IsWhole(hvtest::ReadFile(output))) << sample.file;
      std::filesystem::remove(output);
    });
    EXPECT_GT(written, 10U) << sample.file;
  }
}

}  // namespace
