// What HvFonQueryInfo says of DLF, FMF, Type 1, AFM, PFM and PCM files and their companions.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::DescribedFont;
using hvtest::DescribeFont;
using hvtest::DlfFont;
using hvtest::Le16;
using hvtest::Le32;
using hvtest::PfmFile;
using hvtest::TestFolder;

// Class, type and flags.
void ExpectKind(const DescribedFont& font, uint32_t fontClass, int32_t fontType, uint32_t flags) {
  EXPECT_EQ(font.code, HV_OK) << font.info.name;
  EXPECT_EQ(font.info.fontClass, fontClass) << font.info.name;
  EXPECT_EQ(font.info.fontType, fontType) << font.info.name;
  EXPECT_EQ(font.info.flags, flags) << font.info.name;
}

std::string DlfLine(const DlfFont& font) {
  const TestFolder folder;
  return DescribeFont(folder.Add("font.dlf", font.Bytes())).info.name;
}

TEST(DlfInfo, DescribesInOneLine) {
  const std::pair<DlfFont, const char*> cases[] = {
      {{.flags = 1}, "Courier                      12.0 pitch  cp: 850A"},
      {{.flags = 3}, "Courier                      12.0 pitch  cp: 850A"},
      {{.flags = 0}, "Courier Typo                10.0 point  cp: 850A"},
      {{.flags = 2}, "Courier PS                  10.0 point  cp: 850A"},
      {{.letterByte = 0x0F}, "Courier Typo                10.0 point  cp: 850 "},
      {{.letterByte = 0xF1}, "Courier Typo                10.0 point  cp: 850O"},
      // Tenths are rounded, halves upward.
      {{.size = 1046}, "Courier Typo                10.5 point  cp: 850A"},
      {{.size = 1096}, "Courier Typo                11.0 point  cp: 850A"},
      {{.size = 1045}, "Courier Typo                10.5 point  cp: 850A"},
      {{.size = 0xFFFFFFFF}, "Courier Typo               42949673.0 point  cp: 850A"},
      {{.flags = 1, .pitch = 0}, "Courier                           pitch  cp: 850A"},
      {{.format = 10, .flags = 1, .codePage = 65535, .size = 4363},
       "Courier                      16.5 pitch  Referenced  cp:65535"},
      {{.format = 10, .codePage = 7, .size = 850},
       "Courier Typo                 8.5 point  Referenced  cp:   7"},
  };
  for (auto [font, line] : cases) {
    font.length = 36 + 7;
    EXPECT_EQ(DlfLine(font), line);
  }
}

TEST(DlfInfo, TakesTheNameByTheLengthOfTheHeader) {
  const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWX";
  const struct {
    unsigned format;
    unsigned length;
    const char* name;  // of a proportional font, with its style
  } cases[] = {
      {1, 60, "ABCDEFGHIJKLMNOPQRSTUV Typo"}, {1, 61, "ABCDEFGHIJKLMNOPQRSTUV Typo"},
      {1, 35, "ABCDEFGHIJKLMNOPQRSTUV Typo"}, {1, 0xFFFF, "ABCDEFGHIJKLMNOPQRSTUV Typo"},
      {1, 39, "ABC Typo                  "},  {1, 36, " Typo                     "},
      {10, 60, "ABCDEFGHIJKLMNOPQRST Typo "},
  };
  for (const auto& c : cases) {
    const std::string line = DlfLine({.format = c.format, .name = letters, .length = c.length});
    EXPECT_EQ(line.substr(0, line.find("  10.0 ")), c.name) << c.length;
  }
  EXPECT_EQ(DlfLine({.flags = 1, .name = std::string("A\x1F\0B", 4)}).substr(0, 6), "A  B  ");
}

TEST(DlfInfo, ChecksHeaderAndBlock) {
  const TestFolder folder;
  // A block may end within the name.
  const std::pair<std::string, std::size_t> blocks[] = {{DlfFont().Bytes(), 6 + 34},
                                                        {DlfFont{.format = 10}.Bytes(), 6 + 14}};
  for (const auto& [bytes, shortest] : blocks) {
    const auto code = [&](const std::string& file) {
      return DescribeFont(folder.Add("font.dlf", file)).code;
    };
    for (const std::size_t at : {0U, 1U, 4U, 5U, 6U}) {
      std::string damaged = bytes;
      damaged[at] = 9;
      EXPECT_EQ(code(damaged), HV_UNUSABLE_FILE) << at;
    }
    EXPECT_EQ(code(bytes.substr(0, shortest - 1)), HV_UNUSABLE_FILE);
    EXPECT_EQ(code(bytes.substr(0, shortest)), HV_OK);
    EXPECT_EQ(code(bytes.substr(0, 3)), HV_UNUSABLE_FILE);
  }
  const std::string cut = blocks[0].first.substr(0, 6 + 34 + 3);
  EXPECT_STREQ(DescribeFont(folder.Add("cut.dlf", cut)).info.name,
               "Cou                    Typo  10.0 point  cp: 850A");
}

TEST(DlfInfo, IsDownloadableAndMayNeedItsMetrics) {
  const TestFolder folder;
  const std::string bytes = DlfFont().Bytes();
  const std::string path = folder.Add("Font.dlf", bytes);
  const DescribedFont alone = DescribeFont(path, 0, 0);
  ExpectKind(alone, FONT_CLASS_DOWNLOADABLE, FONT_TYPE_DLF, 0x0B);
  EXPECT_EQ(alone.info.memoryNeeded, bytes.size() + 320);
  for (const uint32_t mode : {1U, 4U, 5U}) EXPECT_EQ(DescribeFont(path, mode).code, HV_OK);

  const DescribedFont missing = DescribeFont(path, 2);
  EXPECT_EQ(missing.code, HV_NOT_SUPPORTED);
  EXPECT_EQ(missing.info.fontType, FONT_TYPE_DLF);
  EXPECT_STREQ(missing.info.companionPath1, "");
  folder.Add("Font.FMF", "");
  EXPECT_EQ(DescribeFont(path, 2).code, HV_OK);
  EXPECT_EQ(DescribeFont(path, 2).info.companionPath1, folder / "Font.FMF");
}

TEST(FmfInfo, HoldsItsNameAndPointsToItsFont) {
  const TestFolder folder;
  const std::string path = folder.Add("a.fmf", hvtest::FmfFile("Courier 10"));
  const DescribedFont font = DescribeFont(path);
  ExpectKind(font, FONT_CLASS_METRICS, FONT_TYPE_FMF, 0x2B);
  EXPECT_STREQ(font.info.name, "Courier 10");
  EXPECT_EQ(font.info.companionPath1, folder / "a.DLF");
  EXPECT_EQ(font.info.companionPath2, folder / "a.DLF");
  EXPECT_EQ(DescribeFont(path, 0, 0).code, HV_UNUSABLE_FILE);

  folder.Add("a.fmf", hvtest::FmfFile(std::string(132, 'n')));
  EXPECT_EQ(DescribeFont(path).info.name, std::string(79, 'n'));
  for (const std::string& bytes : {hvtest::FmfFile(""), hvtest::FmfFile("Name").substr(0, 183)}) {
    EXPECT_EQ(DescribeFont(folder.Add("a.fmf", bytes)).code, HV_UNUSABLE_FILE);
  }
}

struct NamedText {
  std::string text;
  const char* name;  // NULL: unusable
  uint32_t flags;
};

// What is told of Type 1 fonts of these texts, and the memory that 20001 bytes take.
void ExpectType1(const std::string& file, const std::vector<NamedText>& cases, uint32_t memory,
                 std::string (*pack)(const std::string& text)) {
  const TestFolder folder;
  for (const NamedText& c : cases) {
    const DescribedFont font = DescribeFont(folder.Add(file, pack(c.text)), 0, 0);
    EXPECT_STREQ(font.info.name, c.name == nullptr ? "" : c.name) << c.text;
    if (c.name == nullptr) {
      EXPECT_EQ(font.code, HV_UNUSABLE_FILE) << c.text;
    } else {
      ExpectKind(font, FONT_CLASS_DOWNLOADABLE, FONT_TYPE_TYPE1, c.flags);
    }
  }
  std::string big = pack(hvtest::Type1Head("Big", "StandardEncoding"));
  big.resize(20001, 'A');
  EXPECT_EQ(DescribeFont(folder.Add(file, big)).info.memoryNeeded, memory);
}

TEST(PfaInfo, TakesTheNameFromItsLine) {
  ExpectType1(
      "font.pfa",
      {
          {"%!PS\n/FontName /Times-Roman def\n", "Times-Roman", 0x2A},
          {"%!PS\r\n/FontName /Times-Roman\r\ndef", "Times-Roman", 0x2A},
          {"/FontName /Last", "Last", 0x2A},
          {" /FontName /Indented def\n/FontName /Second def\n", "Second", 0x2A},
          {"/FontName  /Two def\n", nullptr, 0},
          {"/FontName / def\n", nullptr, 0},
          {"\x1A/FontName /Behind def\n", nullptr, 0},
          {"x\x1A\n/FontName /Behind def\n", nullptr, 0},
          {std::string(255, 'x') + "/FontName /Piece def\n", "Piece", 0x2A},
          {std::string(254, 'x') + "/FontName /Piece def\n", nullptr, 0},
          {"/FontName /" + std::string(90, 'n') + " def\n",
           "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn", 0x2A},
          {"", nullptr, 0},
      },
      10344, [](const std::string& text) { return text; });
}

TEST(PfbInfo, TakesNameAndEncodingFromTheFirst39CharactersOfALine) {
  ExpectType1(
      "font.pfb",
      {
          {"/FontName /Times def\n/Encoding StandardEncoding def\n", "Times", 0x2B},
          {"/FontName /Times def\r/Encoding 256 array\r", "Times", 0x29},
          {"/Encoding 256 array\n/FontName /Times def\n", "Times", 0x29},
          {"/FontName /Times def\n", "Times", 0x2B},
          // Whatever a line ends in, the next one is not lost.
          {"/Weight (Bold) def\r/FontName /Times def\r", "Times", 0x2B},
          // The rest of a line is read with its first slash; what lies behind 39 characters is
          // looked at again.
          {"/Weight /FontName /Times def\n", nullptr, 0},
          {"/" + std::string(39, 'x') + "/FontName /Times def\n", "Times", 0x2B},
          {"/FontName /" + std::string(40, 'n') + " def\n", "nnnnnnnnnnnnnnnnnnnnnnnnnnnnn", 0x2B},
          {"/FontName /Times\n", "Times", 0x2B},
          {"/FontName / def\n", nullptr, 0},
          {"/FontName /First def\n/FontName /Second def\n", "First", 0x2B},
          {"/Encoding StandardEncoding def\n/Encoding 256 array\n/FontName /T ", "T", 0x2B},
          {"no slash", nullptr, 0},
          {std::string("/FontName /\0Times def\n", 22), nullptr, 0},
      },
      23063, [](const std::string& text) {
        return hvtest::PfbFile({{1, text}, {2, std::string("\0\x1A\xFF", 3)}});
      });
}

TEST(Type1Info, LooksForCompanionsAsTheModeSays) {
  // For nothing, AFM, INF, both, PFM, and PFM with each of these: "-" not supported, else the
  // companions that are told of.
  const std::string expected[] = {
      "0 0 0 0 0 0 0 0 ", "0 0 0 0 0 0 0 0 ", "- 2 - 2 - 2 - 2 ",
      "0 0 0 0 0 0 0 0 ", "- - - 2 1 1 1 1 ", "0 0 0 2 1 1 1 1 ",
  };
  for (const std::string file : {"font.pfa", "font.pfb"}) {
    for (uint32_t mode = 0; mode < std::size(expected); ++mode) {
      std::string found;
      for (unsigned there = 0; there < 8; ++there) {
        const TestFolder folder;
        folder.Add(file, hvtest::Type1Head("Times", "StandardEncoding"));
        for (const auto& [bit, name] :
             {std::pair{1U, "font.AFM"}, {2, "font.INF"}, {4, "font.PFM"}}) {
          if ((there & bit) != 0) folder.Add(name, "");
        }
        const DescribedFont font = DescribeFont(folder / file, mode, 0);
        EXPECT_STREQ(font.info.name, "Times");
        const std::string path1 = font.info.companionPath1;
        const std::string path2 = font.info.companionPath2;
        EXPECT_TRUE(path1.empty() || path1 == folder / "font.AFM") << path1;
        EXPECT_TRUE(path2.empty() || path2 == folder / "font.PFM") << path2;
        EXPECT_TRUE(path1.empty() || !path2.empty());
        if (font.code == HV_OK) {
          found += path2.empty() ? "0 " : path1.empty() ? "1 " : "2 ";
        } else {
          EXPECT_EQ(font.code, HV_NOT_SUPPORTED);
          found += "- ";
        }
      }
      EXPECT_EQ(found, expected[mode]) << file << " mode " << mode;
    }
  }
}

TEST(AfmInfo, NeedsItsFontAndInSomeModesItsInf) {
  const auto expect = [](uint32_t mode, bool inf, bool pfb, uint32_t code, bool described) {
    SCOPED_TRACE(mode);
    const TestFolder folder;
    const std::string path = folder.Add("font.afm", hvtest::AfmFile("Times-Bold"));
    if (inf) folder.Add("font.INF", "MSMenuName (Times)\r\nVPStyle (T)\r\n");
    if (pfb) folder.Add("font.PFB", "");
    const DescribedFont font = DescribeFont(path, mode);
    EXPECT_EQ(font.code, code);
    EXPECT_STREQ(font.info.name, described ? "Times-Bold" : "");
    EXPECT_STREQ(font.info.description, inf ? "Times,BOLDITALIC" : "");
    EXPECT_EQ(font.info.flags, described ? 0x0AU : 0x02U);
    EXPECT_EQ(font.info.fontClass, described ? 4U : 0U);
    EXPECT_EQ(font.info.companionPath1, pfb ? folder / "font.PFB" : "");
    EXPECT_EQ(DescribeFont(path, mode, 0).code, HV_UNUSABLE_FILE);
  };
  expect(0, false, true, HV_OK, true);
  expect(0, false, false, HV_NOT_SUPPORTED, true);
  expect(5, false, false, HV_OK, false);
  expect(4, false, false, HV_NOT_SUPPORTED, false);
  expect(4, true, false, HV_NOT_SUPPORTED, true);
  expect(5, true, false, HV_NOT_SUPPORTED, true);
  expect(4, true, true, HV_OK, true);
  expect(2, true, true, HV_OK, true);
}

TEST(AfmInfo, ReadsMenuNames) {
  const TestFolder folder;
  const std::string path = folder.Add("font.afm", hvtest::AfmFile("Times"));
  folder.Add("font.pfb", "");
  const std::pair<std::string, std::string> cases[] = {
      {"MSMenuName (Times)\nVPStyle (B)\n", "Times,BOLD"},
      {"VPStyle (Italic)\nMSMenuName (Times New)", "Times New,ITALIC"},
      {"MSMenuName (Times)\nVPStyle (N)\n", "Times"},
      {"MSMenuName (Times)\nVPStyle (B)\nVPStyle (N)\n", "Times"},
      {"MSMenuName x(Times\n", "Times"},
      {"MSMenuName Times\nVPStyle (B)\n", ""},
      {"msmenuname (Times)\n", ""},
      {"MSMenuName ()\nVPStyle (T)\n", ""},
      {"MSMenuName (" + std::string(100, 'n') + ")\n", std::string(79, 'n')},
      {std::string(127, ' ') + "MSMenuName (Piece)\n", "Piece"},
      {"", ""},
  };
  for (const auto& [inf, description] : cases) {
    folder.Add("font.inf", inf);
    EXPECT_EQ(DescribeFont(path).info.description, description) << inf;
  }
}

TEST(AfmInfo, RefusesWhatIsTooLongOrHasNoName) {
  std::string full = hvtest::AfmFile("Times");
  full.resize(65534, ' ');
  const struct {
    std::string afm;
    std::size_t inf;
    uint32_t code;
  } cases[] = {
      {full, 65534, HV_OK},
      {full, 65535, HV_LIMIT_REACHED},
      {full + " ", 0, HV_LIMIT_REACHED},
      // What lies behind the end-of-text byte is no text, but counts for the length.
      {"\x1A" + full.substr(1), 0, HV_UNUSABLE_FILE},
      {"\x1A" + full, 0, HV_LIMIT_REACHED},
      {"FontName \nEndFontMetrics\nFontName Behind\n", 0, HV_UNUSABLE_FILE},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    folder.Add("font.pfb", "");
    if (c.inf != 0) folder.Add("font.inf", std::string(c.inf, ' '));
    EXPECT_EQ(DescribeFont(folder.Add("font.afm", c.afm)).code, c.code) << c.afm.substr(0, 30);
  }
}

TEST(PfmInfo, NamesFaceAndStyle) {
  const TestFolder folder;
  const std::pair<PfmFile, const char*> cases[] = {
      {{.face = "Times"}, "Times"},
      {{.face = "Times", .italic = 1, .weight = 699}, "Times (It)"},
      {{.face = "Times", .weight = 700}, "Times (Bd)"},
      {{.face = "Times", .italic = 255, .weight = 900}, "Times (It) (Bd)"},
  };
  for (const char* const file : {"font.pfm", "font.PSM", "font.pbm"}) {
    for (const auto& [pfm, name] : cases) {
      const std::string path = folder.Add(file, pfm.Bytes());
      const DescribedFont font = DescribeFont(path, 2);
      ExpectKind(font, FONT_CLASS_METRICS, FONT_TYPE_PFM, 0x2B);
      EXPECT_STREQ(font.info.name, name);
      EXPECT_EQ(DescribeFont(path, 2, 0).code, HV_UNUSABLE_FILE);
    }
  }
  const DescribedFont noFace = DescribeFont(folder.Add("font.pfm", PfmFile{.face = ""}.Bytes()));
  EXPECT_EQ(noFace.code, HV_UNUSABLE_FILE);
  EXPECT_STREQ(noFace.info.name, "");
  std::string bytes = PfmFile{.italic = 1, .faceOffset = 2047, .size = 3000}.Bytes();
  bytes.replace(2047, 200, std::string(200, 'n'));
  EXPECT_EQ(DescribeFont(folder.Add("long.pfm", bytes)).info.name, std::string(79, 'n'));
}

TEST(PfmInfo, ChecksSizeAndOffsets) {
  const TestFolder folder;
  // The size that the file states, bytes behind that, the word at 117.
  const auto expect = [&](std::size_t size, unsigned faceOffset, int behind, unsigned word,
                          bool accepted) {
    std::string bytes = PfmFile{.faceOffset = faceOffset, .size = size}.Bytes();
    bytes.replace(117, 2, Le16(word));
    bytes.resize(static_cast<std::size_t>(static_cast<int>(size) + behind), 'x');
    // Every offset of the table holds text, so that only the checks decide.
    if (faceOffset < bytes.size()) bytes.replace(faceOffset, 1, "F");
    bytes.replace(105, 4, Le32(faceOffset));
    // A whole PFM before each, so that nothing of an earlier file can be shown.
    EXPECT_EQ(DescribeFont(folder.Add("before.pfm", PfmFile().Bytes())).code, HV_OK);
    const DescribedFont font = DescribeFont(folder.Add("font.pfm", bytes));
    EXPECT_EQ(font.code, accepted ? HV_OK : HV_UNUSABLE_FILE) << size << " " << faceOffset;
    EXPECT_EQ(*font.info.name == '\0', !accepted);
  };
  expect(300, 160, 0, 30, true);
  expect(256, 160, 0, 30, true);
  expect(255, 160, 0, 30, false);
  expect(300, 34, 0, 30, false);
  expect(300, 35, 0, 30, true);
  expect(3000, 2048, 0, 30, false);
  for (const int behind : {1, -1, 32}) expect(300, 160, behind, 30, false);
  expect(300, 160, 32, 0, true);
  expect(300, 160, 31, 0, false);
  // The offset is free behind a trailer, but it must lie in the file.
  expect(3000, 2048, 32, 0, true);
  expect(300, 331, 32, 0, true);
  expect(300, 332, 32, 0, false);
  expect(300, 0xFFFFFFFF, 32, 0, false);
  expect(300, 300, 0, 30, false);
}

// Takes the cartridge of a record apart.
std::vector<std::string> TakeFaces(HvFontInfo* info) {
  std::vector<std::string> faces;
  if (info->cartridge == nullptr) return faces;
  HvFontFace* face = info->cartridge->faces;
  while (face != nullptr) {
    faces.emplace_back(face->name);
    HvFontFace* const next = face->next;
    HvMemFree(face->name);
    HvMemFree(face);
    face = next;
  }
  HvMemFree(info->cartridge->title);
  HvMemFree(info->cartridge);
  info->cartridge = nullptr;
  return faces;
}

TEST(PcmInfo, ListsTheFacesOfACartridge) {
  const TestFolder folder;
  const std::string first = PfmFile().Bytes();
  const PfmFile second = {.face = std::string(100, 'n'), .italic = 1, .weight = 700, .size = 5000};
  const std::string outside = PfmFile{.faceOffset = 2048}.Bytes();
  const std::string path = folder.Add(
      "cart.pcm", hvtest::PcmFile("Cartridge Z", {first, second.Bytes(), outside, first}));
  DescribedFont cartridge = DescribeFont(path);
  ExpectKind(cartridge, FONT_CLASS_METRICS, FONT_TYPE_PCM, 0x03);
  EXPECT_STREQ(cartridge.info.name, "Cartridge Z");
  ASSERT_NE(+cartridge.info.cartridge, nullptr);
  EXPECT_STREQ(cartridge.info.cartridge->title, "Cartridge Z");
  EXPECT_EQ(TakeFaces(&cartridge.info),
            (std::vector<std::string>{"Courier", std::string(80, 'n') + " (It) (Bd)", "Courier"}));
  EXPECT_EQ(+DescribeFont(path, 0, 0).info.cartridge, nullptr);
}

TEST(PcmInfo, EndsTheWalkWhereAnImageHasNoSize) {
  const TestFolder folder;
  const std::string image = PfmFile().Bytes();
  const struct {
    uint32_t size;  // that the second image states
    std::size_t faces;
  } cases[] = {{0, 1}, {116, 1}, {117, 2}, {300, 3}, {0xFFFFFFFF, 2}};
  for (const auto& c : cases) {
    std::string second = image;
    second.replace(2, 4, Le32(c.size));
    DescribedFont cartridge =
        DescribeFont(folder.Add("c.pcm", hvtest::PcmFile("Z", {image, second, image})));
    EXPECT_EQ(cartridge.code, HV_OK);
    EXPECT_EQ(TakeFaces(&cartridge.info).size(), c.faces) << c.size;
  }
  // An end before the first image: no image is looked at; one behind the file: all are.
  std::string file = hvtest::PcmFile("Z", {image});
  DescribedFont none = DescribeFont(folder.Add("c.pcm", file.replace(4, 4, Le32(96))));
  EXPECT_TRUE(TakeFaces(&none.info).empty());
  DescribedFont all = DescribeFont(folder.Add("c.pcm", file.replace(4, 4, Le32(0xFFFFFFFF))));
  EXPECT_EQ(TakeFaces(&all.info).size(), 1U);
}

TEST(PcmInfo, NeedsATitle) {
  const TestFolder folder;
  const std::string image = PfmFile().Bytes();
  DescribedFont untitled = DescribeFont(folder.Add("c.pcm", hvtest::PcmFile("", {image})));
  EXPECT_EQ(untitled.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(TakeFaces(&untitled.info), std::vector<std::string>{"Courier"});
  DescribedFont longTitle =
      DescribeFont(folder.Add("c.pcm", hvtest::PcmFile(std::string(80, 't'), {image})));
  EXPECT_EQ(longTitle.info.name, std::string(79, 't'));
  TakeFaces(&longTitle.info);
  const DescribedFont cut = DescribeFont(folder.Add("c.pcm", std::string(15, 'x')));
  EXPECT_EQ(cut.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(+cut.info.cartridge, nullptr);
}

TEST(FontInfo, TakesACompanionThatDoesNotFitItsFieldForMissing) {
  // Path names of 260 characters are reached through separators that do not count.
  const TestFolder folder;
  folder.Add("a.FMF", "");
  folder.Add("a.dlf", DlfFont().Bytes());
  const std::string start = folder.Path().string() + "/";
  for (const std::size_t length : {259U, 260U}) {
    const std::string path = start + std::string(length - start.size() - 5, '/') + "a.dlf";
    const DescribedFont font = DescribeFont(path, 2);
    EXPECT_EQ(font.code, length == 259 ? HV_OK : HV_NOT_SUPPORTED);
    EXPECT_EQ(std::strlen(font.info.companionPath1), length == 259 ? 259U : 0U);
  }
}

}  // namespace
