// Damaged font files: cut at every length, each byte changed. Nothing is read outside of them, each
// gives a code that such a file may give, and every text in the record ends.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <string>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using hvtest::TestFolder;

struct Sample {
  const char* file;
  std::string bytes;
};

std::vector<Sample> Samples() {
  hvtest::PclDescriptor scalable;
  scalable.format = 10;
  scalable.size = 80;
  hvtest::PclDescriptor resolution;
  resolution.format = 20;
  resolution.size = 68;
  hvtest::DlfFont dlf10;
  dlf10.format = 10;
  hvtest::PfmFile pfm;
  pfm.italic = 1;
  pfm.weight = 700;
  const std::string inf = "MSMenuName (Times)\nSerif true\nPi false\nVPStyle (T)\n";
  const std::string head = hvtest::Type1Head("Times", "StandardEncoding");
  return {
      {"a.sfp", hvtest::PclFont({}, hvtest::SampleCharacters())},
      {"a.sfs", hvtest::PclFont(scalable, {})},
      {"b.sfp", hvtest::PclFont(resolution, {})},
      {"a.dlf", hvtest::DlfFont().Bytes()},
      {"b.dlf", dlf10.Bytes()},
      {"a.fmf", hvtest::FmfFile("Courier")},
      {"a.pfa", head},
      {"a.pfb", hvtest::PfbFile({{1, head}, {2, std::string(40, '\x01')}, {1, "0000"}})},
      {"a.afm", hvtest::AfmFile("Times")},
      {"a.inf", inf},
      {"a.pfm", pfm.Bytes()},
      {"a.pcm", hvtest::PcmFile("Cartridge", {pfm.Bytes(), hvtest::PfmFile().Bytes()})},
  };
}

// Calls visit with the bytes cut at each length and with each byte changed: in four ways at the
// start, where the headers are, and in turns behind it.
void ForEachDamage(const std::string& bytes, const std::function<void(const std::string&)>& visit) {
  constexpr std::size_t Headers = 64;
  for (std::size_t length = 0; length <= bytes.size(); ++length) visit(bytes.substr(0, length));
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const char old = bytes[at];
    const char changes[] = {'\0', '\xFF', static_cast<char>(old + 1), static_cast<char>(old - 1)};
    for (std::size_t change = 0; change < std::size(changes); ++change) {
      if (at >= Headers && change != at % std::size(changes)) continue;
      std::string damaged = bytes;
      damaged[at] = changes[change];
      visit(damaged);
    }
  }
}

// Puts a file in the place of the one before. Emptying that one would make some file systems write
// it out at once, which takes longer than all else here.
std::string Put(const TestFolder& folder, const std::string& file, const std::string& bytes) {
  std::filesystem::remove(folder.Path() / file);
  return folder.Add(file, bytes);
}

bool Ends(const char* field, std::size_t size) {
  return std::memchr(field, 0, size) != nullptr;
}

void ReleaseCartridge(HvFontCartridge* cartridge) {
  if (cartridge == nullptr) return;
  while (HvFontFace* const face = cartridge->faces) {
    cartridge->faces = face->next;
    EXPECT_LE(std::strlen(face->name), 90U);
    HvMemFree(face->name);
    HvMemFree(face);
  }
  EXPECT_LE(std::strlen(cartridge->title), 79U);
  HvMemFree(cartridge->title);
  HvMemFree(cartridge);
}

TEST(FontDamage, IsDescribedOrRefused) {
  const std::set<uint32_t> possible = {HV_OK, HV_UNUSABLE_FILE, HV_NOT_SUPPORTED};
  for (const Sample& sample : Samples()) {
    const TestFolder folder;
    for (const char* const companion : {"a.afm", "a.pfb"}) {
      folder.Add(companion, hvtest::AfmFile("Times"));
    }
    // An INF is read with its AFM.
    const bool isInf = std::string(sample.file) == "a.inf";
    const std::string path = isInf ? folder / "a.afm" : folder / sample.file;
    ForEachDamage(sample.bytes, [&](const std::string& damaged) {
      Put(folder, sample.file, damaged);
      HvFontInfo info;
      std::memset(&info, 0xAA, sizeof info);
      const uint32_t code = HvFonQueryInfo(path.c_str(), &info, 2, 1);
      ASSERT_TRUE(possible.count(code) == 1) << sample.file << " " << code;
      ASSERT_EQ(info.fileSize, isInf ? hvtest::AfmFile("Times").size() : damaged.size());
      ASSERT_TRUE(Ends(info.name, sizeof info.name) &&
                  Ends(info.description, sizeof info.description) &&
                  Ends(info.symbolSet, sizeof info.symbolSet) &&
                  Ends(info.companionPath1, sizeof info.companionPath1) &&
                  Ends(info.companionPath2, sizeof info.companionPath2));
      ASSERT_TRUE(code == HV_UNUSABLE_FILE || *info.name != '\0') << sample.file;
      ReleaseCartridge(info.cartridge);
    });
  }
}

TEST(FontDamage, IsSentNoLongerThanTheFileAllows) {
  const std::string frame = "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X";
  for (const Sample& sample : Samples()) {
    const TestFolder folder;
    for (const int32_t emulation : {2, 3, 6}) {
      // A part of the forms for each language; the readers have seen them all.
      std::size_t number = static_cast<std::size_t>(emulation);
      ForEachDamage(sample.bytes, [&](const std::string& damaged) {
        if (++number % 6 != 0) return;
        const std::string font = Put(folder, sample.file, damaged);
        const std::string out = Put(folder, "out", "");
        HvJobInfo job = hvtest::Job(JOB_FLAG_PJL, emulation);
        const uint32_t code = HvFonDownload(font.c_str(), out.c_str(), &job, STORAGE_DEVICE_RAM);
        const std::string sent = hvtest::ReadFile(out);
        // What was begun is completed; a refused file reaches no printer.
        if (sent.empty()) {
          ASSERT_EQ(code, HV_UNUSABLE_FILE) << sample.file;
        } else {
          ASSERT_TRUE(code == HV_OK || code == HV_CANNOT_OPEN) << sample.file << " " << code;
          ASSERT_EQ(sent.substr(sent.size() - frame.size()), frame) << sample.file;
          ASSERT_LE(sent.size(), 2 * damaged.size() + 300) << sample.file;
        }
      });
    }
  }
}

}  // namespace
