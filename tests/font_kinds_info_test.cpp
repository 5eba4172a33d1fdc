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

using namespace hvtest;

std::string DlfLine(const DlfFont& font) {
  return DescribeBytes("font.dlf", font.Bytes()).info.name;
}

TEST(DlfInfo, DescribesInOneLine) {
  const std::pair<DlfFont, const char*> cases[] = {
      {{.flags = 3}, "Courier                      12.0 pitch  cp: 850A"},
      {{.flags = 2}, "Courier PS                  10.0 point  cp: 850A"},
      {{.letterByte = 0x0F}, "Courier Typo                10.0 point  cp: 850 "},
      {{.letterByte = 0xF1}, "Courier Typo                10.0 point  cp: 850O"},
      // Tenths are rounded, halves upward.
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
  // The name of a proportional font, with its style.
  const auto expect = [](unsigned format, unsigned length, const std::string& name) {
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWX";
    const std::string line = DlfLine({.format = format, .name = letters, .length = length});
    EXPECT_EQ(line.substr(0, line.find("  10.0 ")), name) << length;
  };
  expect(1, 60, "ABCDEFGHIJKLMNOPQRSTUV Typo");
  expect(1, 35, "ABCDEFGHIJKLMNOPQRSTUV Typo");
  expect(1, 39, "ABC Typo                  ");
  expect(1, 36, " Typo                     ");
  expect(10, 60, "ABCDEFGHIJKLMNOPQRST Typo ");
  const std::string fixed = std::string("A\x1F\0", 3) + "DEFGHIJKLMNOPQRSTUVWX";
  EXPECT_EQ(DlfLine({.flags = 1, .name = fixed, .length = 61}).substr(0, 26),
            "A  DEFGHIJKLMNOPQRSTUVWX  ");
}

TEST(DlfInfo, ChecksHeaderAndBlock) {
  const auto code = [](const std::string& file) { return DescribeBytes("font.dlf", file).code; };
  // A block may end within the name.
  const std::pair<std::string, std::size_t> blocks[] = {{DlfFont().Bytes(), 6 + 34},
                                                        {DlfFont{.format = 10}.Bytes(), 6 + 14}};
  for (const auto& [bytes, shortest] : blocks) {
    for (const std::size_t at : {0U, 1U, 4U, 5U, 6U}) {
      std::string damaged = bytes;
      damaged[at] = 9;
      EXPECT_EQ(code(damaged), HV_UNUSABLE_FILE) << at;
    }
    EXPECT_EQ(code(bytes.substr(0, shortest - 1)), HV_UNUSABLE_FILE);
    EXPECT_EQ(code(bytes.substr(0, shortest)), HV_OK);
  }
  const std::string cut = blocks[0].first.substr(0, 6 + 34 + 3);
  EXPECT_STREQ(DescribeBytes("font.dlf", cut).info.name,
               "Cou                    Typo  10.0 point  cp: 850A");
}

TEST(DlfInfo, IsDownloadableAndMayNeedItsMetrics) {
  const TestFolder folder;
  const std::string bytes = DlfFont().Bytes();
  const std::string path = folder.Add("Font.dlf", bytes);
  const DescribedFont alone = DescribeFont(path, 0, 0);
  EXPECT_EQ(Kind(alone), "0 3 6 0B");
  EXPECT_EQ(alone.info.memoryNeeded, bytes.size() + 320);
  for (const uint32_t mode : {1U, 4U, 5U}) EXPECT_EQ(DescribeFont(path, mode).code, HV_OK);

  const DescribedFont missing = DescribeFont(path, 2);
  EXPECT_EQ(Kind(missing), "32 3 6 0B");
  EXPECT_STREQ(missing.info.companionPath1, "");
  folder.Add("Font.FMF", "");
  const DescribedFont whole = DescribeFont(path, 2);
  EXPECT_EQ(whole.code, HV_OK);
  EXPECT_EQ(whole.info.companionPath1, folder / "Font.FMF");
}

TEST(FmfInfo, HoldsItsNameAndPointsToItsFont) {
  const TestFolder folder;
  const std::string path = folder.Add("a.fmf", FmfFile("Courier 10"));
  const DescribedFont font = DescribeFont(path);
  EXPECT_EQ(Kind(font), "0 2 23 2B");
  EXPECT_STREQ(font.info.name, "Courier 10");
  EXPECT_EQ(font.info.companionPath1, folder / "a.DLF");
  EXPECT_EQ(font.info.companionPath2, folder / "a.DLF");
  EXPECT_EQ(DescribeFont(path, 0, 0).code, HV_UNUSABLE_FILE);

  const std::string longest = FmfFile(std::string(132, 'n'));
  EXPECT_EQ(DescribeBytes("a.fmf", longest).info.name, std::string(79, 'n'));
  for (const std::string& bytes : {FmfFile(""), longest.substr(0, 183)}) {
    EXPECT_EQ(DescribeBytes("a.fmf", bytes).code, HV_UNUSABLE_FILE);
  }
}

// What is told of a Type 1 font; the empty name for one that cannot be used.
void ExpectType1(const char* file, const std::string& bytes, const std::string& name,
                 const char* kind) {
  const DescribedFont font = DescribeBytes(file, bytes, 0, 0);
  EXPECT_EQ(font.info.name, name) << bytes;
  EXPECT_EQ(Kind(font), name.empty() ? "27 0 0 02" : kind) << bytes;
}

TEST(PfaInfo, TakesTheNameFromItsLine) {
  const auto expect = [](const std::string& text, const std::string& name) {
    ExpectType1("font.pfa", text, name, "0 3 2 2A");
  };
  expect("%!PS\r\n/FontName /Times-Roman\r\ndef", "Times-Roman");
  expect("/FontName /Last", "Last");
  expect(" /FontName /Indented def\n/FontName /Second def\n", "Second");
  expect("/FontName  /Two def\n", "");
  expect("/FontName / def\n", "");
  expect("x\x1A\n/FontName /Behind def\n", "");
  expect(std::string(255, 'x') + "/FontName /Piece def\n", "Piece");
  expect(std::string(254, 'x') + "/FontName /Piece def\n", "");
  expect("/FontName /" + std::string(90, 'n') + " def\n", std::string(79, 'n'));
}

TEST(PfbInfo, TakesNameAndEncodingFromTheFirst39CharactersOfALine) {
  const auto expect = [](const std::string& text, const std::string& name,
                         const char* kind = "0 3 2 2B") {
    const std::string binary("\0\x1A\xFF", 3);
    ExpectType1("font.pfb", PfbFile({{1, text}, {2, binary}}), name, kind);
  };
  expect("/FontName /Times def\n/Encoding StandardEncoding def\n", "Times");
  expect("/FontName /Times def\r/Encoding 256 array\r", "Times", "0 3 2 29");
  expect("/Encoding 256 array\n/FontName /Times def\n", "Times", "0 3 2 29");
  // Whatever a line ends in, the next one is not lost.
  expect("/Weight (Bold) def\r/FontName /Times\r", "Times");
  // The rest of a line is read with its first slash; what lies behind 39 characters is looked at
  // again.
  expect("/Weight /FontName /Times def\n", "");
  expect("/" + std::string(39, 'x') + "/FontName /Times def\n", "Times");
  expect("/FontName /" + std::string(40, 'n') + " def\n", std::string(29, 'n'));
  expect("/FontName / def\n", "");
  expect("/FontName /First def\n/FontName /Second def\n", "First");
  expect("/Encoding StandardEncoding def\n/Encoding 256 array\n/FontName /T ", "T");
  expect(std::string("/FontName /\0Times def\n", 22), "");
}

TEST(Type1Info, TellsTheMemoryThatAFileTakes) {
  const std::string bytes = Field("/FontName /Big def\n", 20001, 'A');
  EXPECT_EQ(DescribeBytes("big.pfa", bytes).info.memoryNeeded, 10344U);
  EXPECT_EQ(DescribeBytes("big.pfb", bytes).info.memoryNeeded, 23063U);
}

TEST(Type1Info, LooksForCompanionsAsTheModeSays) {
  // For nothing, AFM, INF, both, PFM, and PFM with each of these: "-" for what is missing, else "a"
  // and "p" for the AFM and the PFM that are told of.
  const std::string expected[] = {
      ",,,,,,,,", ",,,,,,,,",          "-,ap,-,ap,-,ap,-,ap,",
      ",,,,,,,,", "-,-,-,ap,p,p,p,p,", ",,,ap,p,p,p,p,",
  };
  const std::pair<unsigned, const char*> companions[] = {
      {1, "font.AFM"}, {2, "font.INF"}, {4, "font.PFM"}};
  for (const char* const file : {"font.pfa", "font.pfb"}) {
    for (uint32_t mode = 0; mode < std::size(expected); ++mode) {
      std::string found;
      for (unsigned there = 0; there < 8; ++there) {
        const TestFolder folder;
        for (const auto& [bit, name] : companions) {
          if ((there & bit) != 0) folder.Add(name, "");
        }
        const std::string path = folder.Add(file, Type1Head("Times", "StandardEncoding"));
        const DescribedFont font = DescribeFont(path, mode, 0);
        EXPECT_STREQ(font.info.name, "Times");
        if (font.code == HV_NOT_SUPPORTED) found += "-";
        found += font.info.companionPath1 == folder / "font.AFM" ? "a" : font.info.companionPath1;
        found += font.info.companionPath2 == folder / "font.PFM" ? "p" : font.info.companionPath2;
        found += ",";
      }
      EXPECT_EQ(found, expected[mode]) << file << " mode " << mode;
    }
  }
}

TEST(AfmInfo, NeedsItsFontAndInSomeModesItsInf) {
  const auto expect = [](uint32_t mode, bool inf, bool pfb, const std::string& kind) {
    SCOPED_TRACE(mode);
    const TestFolder folder;
    const std::string path = folder.Add("font.afm", AfmFile("Times-Bold"));
    if (inf) folder.Add("font.INF", "MSMenuName (Times)\r\nVPStyle (T)\r\n");
    if (pfb) folder.Add("font.PFB", "");
    const DescribedFont font = DescribeFont(path, mode);
    EXPECT_EQ(Kind(font), kind);
    EXPECT_STREQ(font.info.name, font.info.fontType != 0 ? "Times-Bold" : "");
    EXPECT_STREQ(font.info.description, inf ? "Times,BOLDITALIC" : "");
    EXPECT_EQ(font.info.companionPath1, pfb ? folder / "font.PFB" : "");
    EXPECT_EQ(DescribeFont(path, mode, 0).code, HV_UNUSABLE_FILE);
  };
  expect(0, false, true, "0 4 2 0A");
  expect(2, false, false, "32 4 2 0A");
  expect(5, false, false, "0 0 0 02");
  expect(4, false, false, "32 0 0 02");
  expect(4, true, false, "32 4 2 0A");
  expect(5, true, true, "0 4 2 0A");
}

TEST(AfmInfo, ReadsMenuNames) {
  const TestFolder folder;
  const std::string path = folder.Add("font.afm", AfmFile("Times"));
  folder.Add("font.pfb", "");
  const std::pair<std::string, std::string> cases[] = {
      {"MSMenuName (Times)\nVPStyle (B)\n", "Times,BOLD"},
      {"VPStyle (Italic)\nMSMenuName (Times New)", "Times New,ITALIC"},
      {"MSMenuName (Times)\nVPStyle (N)\n", "Times"},
      {"MSMenuName (Times)\nVPStyle (B)\nVPStyle (N)\n", "Times"},
      {"MSMenuName x(Times\n", "Times"},
      {"MSMenuName Times\nVPStyle (B)\n", ""},
      {"MSMenuName ()\nVPStyle (T)\n", ""},
      {"MSMenuName (" + std::string(100, 'n') + ")\n", std::string(79, 'n')},
      {std::string(127, ' ') + "MSMenuName (Piece)\n", "Piece"},
  };
  for (const auto& [inf, description] : cases) {
    folder.Add("font.inf", inf);
    EXPECT_EQ(DescribeFont(path).info.description, description) << inf;
  }
}

TEST(AfmInfo, RefusesWhatIsTooLongOrHasNoName) {
  const auto code = [](const std::string& afm) { return DescribeBytes("font.afm", afm).code; };
  const std::string full = Field(AfmFile("Times"), 65534, ' ');
  EXPECT_EQ(code(full), HV_NOT_SUPPORTED);  // for want of its font
  // What lies behind the end-of-text byte is no text, but counts for the length.
  EXPECT_EQ(code("\x1A" + full.substr(1)), HV_UNUSABLE_FILE);
  EXPECT_EQ(code("\x1A" + full), HV_LIMIT_REACHED);
  EXPECT_EQ(code("FontName \nEndFontMetrics\nFontName Behind\n"), HV_UNUSABLE_FILE);
}

TEST(PfmInfo, NamesFaceAndStyle) {
  const std::pair<PfmFile, std::string> cases[] = {
      {{.face = "Times", .italic = 1, .weight = 699}, "Times (It)"},
      {{.face = "Times", .weight = 700}, "Times (Bd)"},
      {{.face = "Times", .italic = 255, .weight = 900}, "Times (It) (Bd)"},
      {{.face = std::string(100, 'n'), .italic = 1}, std::string(79, 'n')},
  };
  for (const char* const file : {"font.pfm", "font.PSM", "font.pbm"}) {
    for (const auto& [pfm, name] : cases) {
      const DescribedFont font = DescribeBytes(file, pfm.Bytes(), 2);
      EXPECT_EQ(Kind(font), "0 2 25 2B");
      EXPECT_EQ(font.info.name, name);
    }
    EXPECT_EQ(DescribeBytes(file, PfmFile().Bytes(), 2, 0).code, HV_UNUSABLE_FILE);
  }
  EXPECT_EQ(DescribeBytes("font.pfm", PfmFile{.face = ""}.Bytes()).code, HV_UNUSABLE_FILE);
}

TEST(PfmInfo, ChecksSizeAndOffsets) {
  // The size that the file states, bytes behind that, the word at 117.
  const auto expect = [](std::size_t size, unsigned faceOffset, int behind, unsigned word,
                         bool accepted) {
    std::string bytes = PfmFile{.faceOffset = faceOffset, .size = size}.Bytes();
    bytes.replace(117, 2, Le16(word));
    bytes.resize(static_cast<std::size_t>(static_cast<int>(size) + behind), 'x');
    // Every offset of the table holds text, so that only the checks decide.
    if (faceOffset < bytes.size()) bytes.replace(faceOffset, 1, "F");
    bytes.replace(105, 4, Le32(faceOffset));
    const DescribedFont font = DescribeBytes("font.pfm", bytes);
    EXPECT_EQ(font.code, accepted ? HV_OK : HV_UNUSABLE_FILE) << size << " " << faceOffset;
    EXPECT_EQ(*font.info.name == '\0', !accepted);
  };
  expect(256, 160, 0, 30, true);
  expect(255, 160, 0, 30, false);
  expect(300, 34, 0, 30, false);
  expect(300, 35, 0, 30, true);
  expect(3000, 2047, 0, 30, true);
  expect(3000, 2048, 0, 30, false);
  for (const int behind : {1, -1, 32}) expect(300, 160, behind, 30, false);
  expect(300, 160, 31, 0, false);
  // The offset is free behind a trailer, but it must lie in the file.
  expect(3000, 2048, 32, 0, true);
  expect(300, 331, 32, 0, true);
  expect(300, 332, 32, 0, false);
  expect(300, 0xFFFFFFFF, 32, 0, false);
}

TEST(PcmInfo, ListsTheFacesOfACartridge) {
  const std::string first = PfmFile().Bytes();
  const PfmFile second = {.face = std::string(100, 'n'), .italic = 1, .weight = 700, .size = 5000};
  // Its face name lies where that of no well-formed file does.
  const std::string outside =
      PfmFile{.faceOffset = 2048, .size = 3000}.Bytes().replace(2048, 1, "F");
  const std::string file = PcmFile("Cartridge Z", {first, second.Bytes(), outside, first});
  DescribedFont cartridge = DescribeBytes("cart.pcm", file);
  EXPECT_EQ(Kind(cartridge), "0 2 28 03");
  EXPECT_STREQ(cartridge.info.name, "Cartridge Z");
  ASSERT_NE(+cartridge.info.cartridge, nullptr);
  EXPECT_STREQ(cartridge.info.cartridge->title, "Cartridge Z");
  EXPECT_EQ(TakeFaces(&cartridge.info),
            (std::vector<std::string>{"Courier", std::string(80, 'n') + " (It) (Bd)", "Courier"}));
  EXPECT_EQ(+DescribeBytes("cart.pcm", file, 0, 0).info.cartridge, nullptr);
}

TEST(PcmInfo, EndsTheWalkWhereAnImageHasNoSize) {
  const std::string image = PfmFile().Bytes();
  const auto faces = [](const std::string& file) {
    DescribedFont cartridge = DescribeBytes("c.pcm", file);
    return TakeFaces(&cartridge.info).size();
  };
  // By the size that the second of three images states.
  const std::pair<uint32_t, std::size_t> cases[] = {
      {0, 1}, {116, 1}, {117, 2}, {300, 3}, {0xFFFFFFFF, 2}};
  for (const auto& [size, count] : cases) {
    const std::string second = image.substr(0, 2) + Le32(size) + image.substr(6);
    EXPECT_EQ(faces(PcmFile("Z", {image, second, image})), count) << size;
  }
  // An end before the first image: no image is looked at; one behind the file: all are.
  std::string file = PcmFile("Z", {image});
  EXPECT_EQ(faces(file.replace(4, 4, Le32(96))), 0U);
  EXPECT_EQ(faces(file.replace(4, 4, Le32(0xFFFFFFFF))), 1U);
}

TEST(PcmInfo, NeedsATitle) {
  const std::string image = PfmFile().Bytes();
  DescribedFont untitled = DescribeBytes("c.pcm", PcmFile("", {image}));
  EXPECT_EQ(untitled.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(TakeFaces(&untitled.info), std::vector<std::string>{"Courier"});
  DescribedFont longTitle = DescribeBytes("c.pcm", PcmFile(std::string(80, 't'), {image}));
  EXPECT_EQ(longTitle.info.name, std::string(79, 't'));
  TakeFaces(&longTitle.info);
  const DescribedFont cut = DescribeBytes("c.pcm", std::string(15, 'x'));
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
