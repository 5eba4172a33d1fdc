// What HvFonQueryInfo says of DLF, FMF, Type 1, AFM, PFM and PCM files and their companions.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::DlfFont;
using hvtest::Le16;
using hvtest::Le32;
using hvtest::PfmFile;
using hvtest::TestFolder;

struct Described {
  uint32_t code;
  HvFontInfo info;
};

Described Describe(const std::string& path, uint32_t mode = 0, uint32_t metrics = 1) {
  Described result;
  result.code = HvFonQueryInfo(path.c_str(), &result.info, mode, metrics);
  return result;
}

std::string DlfLine(const DlfFont& font) {
  const TestFolder folder;
  return Describe(folder.Add("font.dlf", font.Bytes())).info.name;
}

std::string Padded(const std::string& text, std::size_t width) {
  return hvtest::Field(text, width, ' ');
}

TEST(DlfInfo, DescribesInOneLine) {
  const std::string full = Padded("Courier", 26);
  const auto with = [&](auto change) {
    DlfFont font;
    font.length = 36 + 7;
    change(font);
    return DlfLine(font);
  };
  using D = DlfFont;
  EXPECT_EQ(with([](D& f) { f.flags = 1; }), full + "   12.0 pitch  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.flags = 3; }), full + "   12.0 pitch  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.flags = 0; }), Padded("Courier Typo", 26) + "  10.0 point  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.flags = 2; }), Padded("Courier PS", 26) + "  10.0 point  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.letterByte = 0x0F; }),
            Padded("Courier Typo", 26) + "  10.0 point  cp: 850 ");
  EXPECT_EQ(with([](D& f) { f.letterByte = 0xF1; }),
            Padded("Courier Typo", 26) + "  10.0 point  cp: 850O");
  // Tenths are rounded, halves upward.
  EXPECT_EQ(with([](D& f) { f.size = 1046; }),
            Padded("Courier Typo", 26) + "  10.5 point  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.size = 1096; }),
            Padded("Courier Typo", 26) + "  11.0 point  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.size = 1045; }),
            Padded("Courier Typo", 26) + "  10.5 point  cp: 850A");
  EXPECT_EQ(with([](D& f) { f.size = 0xFFFFFFFF; }),
            Padded("Courier Typo", 26) + " 42949673.0 point  cp: 850A");
  EXPECT_EQ(with([](D& f) {
              f.flags = 1;
              f.pitch = 0;
            }),
            full + "        pitch  cp: 850A");
  // Format 10.
  EXPECT_EQ(with([](D& f) {
              f.format = 10;
              f.flags = 1;
              f.size = 4363;
              f.codePage = 65535;
            }),
            full + "   16.5 pitch  Referenced  cp:65535");
  EXPECT_EQ(with([](D& f) {
              f.format = 10;
              f.size = 850;
              f.codePage = 7;
            }),
            Padded("Courier Typo", 26) + "   8.5 point  Referenced  cp:   7");
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
    DlfFont font;
    font.format = c.format;
    font.length = c.length;
    font.name = letters;
    const std::string line = DlfLine(font);
    EXPECT_EQ(line.substr(0, line.find("  10.0 ")), c.name) << c.length;
  }
  DlfFont control;
  control.flags = 1;
  control.name = std::string("A\x1F\0B", 4);
  EXPECT_EQ(DlfLine(control).substr(0, 6), "A  B  ");
}

TEST(DlfInfo, ChecksHeaderAndBlock) {
  const TestFolder folder;
  const std::string format1 = DlfFont().Bytes();
  DlfFont ten;
  ten.format = 10;
  const std::string format10 = ten.Bytes();
  const auto code = [&](std::string bytes, std::size_t at, char byte) {
    if (at < bytes.size()) bytes[at] = byte;
    return Describe(folder.Add("font.dlf", bytes)).code;
  };
  EXPECT_EQ(code(format1, 1000, 0), HV_OK);
  for (const std::size_t at : {0U, 1U, 4U, 5U, 6U}) {
    EXPECT_EQ(code(format1, at, 9), HV_UNUSABLE_FILE) << at;
    EXPECT_EQ(code(format10, at, 9), HV_UNUSABLE_FILE) << at;
  }
  // A block may end within the name.
  const struct {
    const std::string& bytes;
    std::size_t shortest;
  } blocks[] = {{format1, 6 + 34}, {format10, 6 + 14}};
  for (const auto& block : blocks) {
    EXPECT_EQ(code(block.bytes.substr(0, block.shortest - 1), 1000, 0), HV_UNUSABLE_FILE);
    EXPECT_EQ(code(block.bytes.substr(0, block.shortest), 1000, 0), HV_OK);
    EXPECT_EQ(code(block.bytes.substr(0, 3), 1000, 0), HV_UNUSABLE_FILE);
  }
  EXPECT_EQ(Describe(folder.Add("cut.dlf", format1.substr(0, 6 + 34 + 3))).info.name,
            Padded("Cou", 22) + " Typo  10.0 point  cp: 850A");
}

TEST(DlfInfo, IsDownloadableAndMayNeedItsMetrics) {
  const TestFolder folder;
  const std::string bytes = DlfFont().Bytes();
  const std::string path = folder.Add("Font.dlf", bytes);
  const Described alone = Describe(path, 0, 0);
  EXPECT_EQ(alone.code, HV_OK);
  EXPECT_EQ(alone.info.fontClass, FONT_CLASS_DOWNLOADABLE);
  EXPECT_EQ(alone.info.fontType, FONT_TYPE_DLF);
  EXPECT_EQ(alone.info.flags, 0x0BU);
  EXPECT_EQ(alone.info.memoryNeeded, bytes.size() + 320);
  for (const uint32_t mode : {1U, 4U, 5U}) EXPECT_EQ(Describe(path, mode).code, HV_OK);

  const Described missing = Describe(path, 2);
  EXPECT_EQ(missing.code, HV_NOT_SUPPORTED);
  EXPECT_EQ(missing.info.fontType, FONT_TYPE_DLF);
  EXPECT_STREQ(missing.info.companionPath1, "");
  folder.Add("Font.FMF", "");
  const Described found = Describe(path, 2);
  EXPECT_EQ(found.code, HV_OK);
  EXPECT_EQ(found.info.companionPath1, folder / "Font.FMF");
}

TEST(FmfInfo, HoldsItsNameAndPointsToItsFont) {
  const TestFolder folder;
  const std::string path = folder.Add("a.fmf", hvtest::FmfFile("Courier 10"));
  const Described font = Describe(path);
  EXPECT_EQ(font.code, HV_OK);
  EXPECT_STREQ(font.info.name, "Courier 10");
  EXPECT_EQ(font.info.fontClass, FONT_CLASS_METRICS);
  EXPECT_EQ(font.info.fontType, FONT_TYPE_FMF);
  EXPECT_EQ(font.info.flags, 0x2BU);
  EXPECT_EQ(font.info.companionPath1, folder / "a.DLF");
  EXPECT_EQ(font.info.companionPath2, folder / "a.DLF");
  EXPECT_EQ(Describe(path, 0, 0).code, HV_UNUSABLE_FILE);

  const std::string longName(132, 'n');
  EXPECT_EQ(Describe(folder.Add("a.fmf", hvtest::FmfFile(longName))).info.name,
            longName.substr(0, 79));
  EXPECT_EQ(Describe(folder.Add("a.fmf", hvtest::FmfFile(""))).code, HV_UNUSABLE_FILE);
  EXPECT_EQ(Describe(folder.Add("a.fmf", hvtest::FmfFile("Name").substr(0, 183))).code,
            HV_UNUSABLE_FILE);
}

TEST(PfaInfo, TakesTheNameFromItsLine) {
  const TestFolder folder;
  const struct {
    std::string text;
    const char* name;  // NULL: unusable
  } cases[] = {
      {"%!PS\n/FontName /Times-Roman def\n", "Times-Roman"},
      {"%!PS\r\n/FontName /Times-Roman\r\ndef", "Times-Roman"},
      {"/FontName /Last", "Last"},
      {" /FontName /Indented def\n/FontName /Second def\n", "Second"},
      {"/FontName  /Two def\n", nullptr},
      {"/FontName / def\n", nullptr},
      {"\x1A/FontName /Behind def\n", nullptr},
      {"x\x1A\n/FontName /Behind def\n", nullptr},
      {std::string(255, 'x') + "/FontName /Piece def\n", "Piece"},
      {std::string(254, 'x') + "/FontName /Piece def\n", nullptr},
      {"/FontName /" + std::string(90, 'n') + " def\n",
       "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"},
      {"", nullptr},
  };
  for (const auto& c : cases) {
    const Described font = Describe(folder.Add("font.pfa", c.text), 0, 0);
    EXPECT_EQ(font.code, c.name == nullptr ? HV_UNUSABLE_FILE : HV_OK) << c.text;
    EXPECT_STREQ(font.info.name, c.name == nullptr ? "" : c.name);
  }
  std::string big = hvtest::Type1Head("Big", "StandardEncoding");
  big.resize(20001, 'A');
  const Described font = Describe(folder.Add("font.pfa", big));
  EXPECT_EQ(font.info.fontClass, FONT_CLASS_DOWNLOADABLE);
  EXPECT_EQ(font.info.fontType, FONT_TYPE_TYPE1);
  EXPECT_EQ(font.info.flags, 0x2AU);
  EXPECT_EQ(font.info.memoryNeeded, 10344U);
}

TEST(PfbInfo, TakesNameAndEncodingFromTheFirst39CharactersOfALine) {
  const TestFolder folder;
  const struct {
    std::string text;
    const char* name;  // NULL: unusable
    bool standardEncoding;
  } cases[] = {
      {"/FontName /Times def\n/Encoding StandardEncoding def\n", "Times", true},
      {"/FontName /Times def\r/Encoding 256 array\r", "Times", false},
      {"/Encoding 256 array\n/FontName /Times def\n", "Times", false},
      {"/FontName /Times def\n", "Times", true},
      // Whatever a line ends in, the next one is not lost.
      {"/Weight (Bold) def\r/FontName /Times def\r", "Times", true},
      // The rest of a line is read with its first slash; what lies behind 39 characters is looked
      // at again.
      {"/Weight /FontName /Times def\n", nullptr, true},
      {"/" + std::string(39, 'x') + "/FontName /Times def\n", "Times", true},
      {"/FontName /" + std::string(40, 'n') + " def\n", "nnnnnnnnnnnnnnnnnnnnnnnnnnnnn", true},
      {"/FontName /Times\n", "Times", true},
      {"/FontName / def\n", nullptr, true},
      {"/FontName /First def\n/FontName /Second def\n", "First", true},
      {"/Encoding StandardEncoding def\n/Encoding 256 array\n/FontName /T ", "T", true},
      {"no slash", nullptr, true},
      {std::string("/FontName /\0Times def\n", 22), nullptr, true},
  };
  for (const auto& c : cases) {
    const std::string file = hvtest::PfbFile({{1, c.text}, {2, std::string("\0\x1A\xFF", 3)}});
    const Described font = Describe(folder.Add("font.pfb", file), 0, 0);
    EXPECT_EQ(font.code, c.name == nullptr ? HV_UNUSABLE_FILE : HV_OK) << c.text;
    EXPECT_STREQ(font.info.name, c.name == nullptr ? "" : c.name) << c.text;
    if (c.name == nullptr) continue;
    EXPECT_EQ(font.info.flags, c.standardEncoding ? 0x2BU : 0x29U) << c.text;
    EXPECT_EQ(font.info.fontClass, FONT_CLASS_DOWNLOADABLE);
    EXPECT_EQ(font.info.fontType, FONT_TYPE_TYPE1);
  }
  std::string big = hvtest::PfbFile({{1, hvtest::Type1Head("Big", "StandardEncoding")}});
  big.resize(20001);
  EXPECT_EQ(Describe(folder.Add("font.pfb", big)).info.memoryNeeded, 23063U);
}

TEST(Type1Info, LooksForCompanionsAsTheModeSays) {
  const struct {
    uint32_t mode;
    std::vector<const char*> there;
    uint32_t code;
    bool path1;
    bool path2;
  } cases[] = {
      {0, {}, HV_OK, false, false},
      {1, {"AFM", "PFM"}, HV_OK, false, false},
      {3, {"AFM", "PFM"}, HV_OK, false, false},
      {2, {}, HV_NOT_SUPPORTED, false, false},
      {2, {"PFM", "INF"}, HV_NOT_SUPPORTED, false, false},
      {2, {"AFM"}, HV_OK, true, true},
      {4, {}, HV_NOT_SUPPORTED, false, false},
      {4, {"AFM"}, HV_NOT_SUPPORTED, false, false},
      {4, {"INF"}, HV_NOT_SUPPORTED, false, false},
      {4, {"INF", "AFM"}, HV_OK, true, true},
      {4, {"PFM"}, HV_OK, false, true},
      {4, {"PFM", "INF", "AFM"}, HV_OK, false, true},
      {5, {}, HV_OK, false, false},
      {5, {"AFM"}, HV_OK, false, false},
      {5, {"INF"}, HV_OK, false, false},
      {5, {"INF", "AFM"}, HV_OK, true, true},
      {5, {"PFM"}, HV_OK, false, true},
  };
  const std::string text = hvtest::Type1Head("Times", "StandardEncoding");
  for (const char* const extension : {"pfa", "pfb"}) {
    for (const auto& c : cases) {
      const TestFolder folder;
      const std::string path = folder.Add(std::string("font.") + extension, text);
      for (const char* const companion : c.there) folder.Add(std::string("font.") + companion, "");
      const Described font = Describe(path, c.mode, 0);
      const std::string label = std::string(extension) + " mode " + std::to_string(c.mode);
      EXPECT_EQ(font.code, c.code) << label << " with " << c.there.size();
      EXPECT_STREQ(font.info.name, "Times");
      EXPECT_EQ(font.info.companionPath1, c.path1 ? folder / "font.AFM" : "") << label;
      EXPECT_EQ(font.info.companionPath2, c.path2 ? folder / "font.PFM" : "") << label;
    }
  }
}

TEST(AfmInfo, NeedsItsFontAndInSomeModesItsInf) {
  const struct {
    uint32_t mode;
    std::vector<const char*> there;
    uint32_t code;
    const char* name;
    const char* description;
  } cases[] = {
      {0, {"PFB"}, HV_OK, "Times-Bold", ""},
      {0, {}, HV_NOT_SUPPORTED, "Times-Bold", ""},
      {5, {}, HV_OK, "", ""},
      {4, {}, HV_NOT_SUPPORTED, "", ""},
      {4, {"INF"}, HV_NOT_SUPPORTED, "Times-Bold", "Times,BOLDITALIC"},
      {5, {"INF"}, HV_NOT_SUPPORTED, "Times-Bold", "Times,BOLDITALIC"},
      {4, {"INF", "PFB"}, HV_OK, "Times-Bold", "Times,BOLDITALIC"},
      {2, {"INF", "PFB"}, HV_OK, "Times-Bold", "Times,BOLDITALIC"},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    const std::string path = folder.Add("font.afm", hvtest::AfmFile("Times-Bold"));
    bool hasFont = false;
    for (const char* const companion : c.there) {
      const std::string inf = "MSMenuName (Times)\r\nVPStyle (T)\r\n";
      folder.Add(std::string("font.") + companion, inf);
      hasFont = hasFont || std::string(companion) == "PFB";
    }
    const Described font = Describe(path, c.mode);
    EXPECT_EQ(font.code, c.code) << c.mode;
    EXPECT_STREQ(font.info.name, c.name) << c.mode;
    EXPECT_STREQ(font.info.description, c.description) << c.mode;
    EXPECT_EQ(font.info.flags, *c.name == '\0' ? 0x02U : 0x0AU) << c.mode;
    EXPECT_EQ(font.info.fontClass, *c.name == '\0' ? 0U : 4U) << c.mode;
    EXPECT_EQ(font.info.companionPath1, hasFont ? folder / "font.PFB" : "") << c.mode;
    EXPECT_EQ(Describe(path, c.mode, 0).code, HV_UNUSABLE_FILE);
  }
}

TEST(AfmInfo, ReadsMenuNames) {
  const struct {
    std::string inf;
    std::string description;
  } cases[] = {
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
  for (const auto& c : cases) {
    const TestFolder folder;
    const std::string path = folder.Add("font.afm", hvtest::AfmFile("Times"));
    folder.Add("font.pfb", "");
    folder.Add("font.inf", c.inf);
    EXPECT_EQ(Describe(path).info.description, c.description) << c.inf;
  }
}

TEST(AfmInfo, RefusesWhatIsTooLongOrHasNoName) {
  const TestFolder folder;
  folder.Add("font.pfb", "");
  std::string afm = hvtest::AfmFile("Times");
  afm.resize(65534, ' ');
  const std::string path = folder.Add("font.afm", afm);
  EXPECT_EQ(Describe(path).code, HV_OK);
  folder.Add("font.inf", std::string(65535, ' '));
  EXPECT_EQ(Describe(path).code, HV_LIMIT_REACHED);
  std::filesystem::remove(folder.Path() / "font.inf");
  folder.Add("font.afm", afm + " ");
  EXPECT_EQ(Describe(path).code, HV_LIMIT_REACHED);
  // What lies behind the end-of-text byte is no text, but counts for the length.
  folder.Add("font.afm", "\x1A" + afm.substr(1));
  EXPECT_EQ(Describe(path).code, HV_UNUSABLE_FILE);
  folder.Add("font.afm", "\x1A" + afm);
  EXPECT_EQ(Describe(path).code, HV_LIMIT_REACHED);
  folder.Add("font.afm", "FontName \nEndFontMetrics\nFontName Behind\n");
  EXPECT_EQ(Describe(path).code, HV_UNUSABLE_FILE);
}

TEST(PfmInfo, NamesFaceAndStyle) {
  const TestFolder folder;
  const struct {
    const char* face;
    unsigned italic;
    unsigned weight;
    std::string name;  // empty: unusable
  } cases[] = {
      {"Times", 0, 400, "Times"},
      {"Times", 1, 699, "Times (It)"},
      {"Times", 0, 700, "Times (Bd)"},
      {"Times", 255, 900, "Times (It) (Bd)"},
      {"", 0, 400, ""},
  };
  for (const char* const extension : {"pfm", "PSM", "pbm"}) {
    for (const auto& c : cases) {
      PfmFile pfm;
      pfm.face = c.face;
      pfm.italic = c.italic;
      pfm.weight = c.weight;
      const std::string path = folder.Add(std::string("font.") + extension, pfm.Bytes());
      const Described font = Describe(path, 2);
      EXPECT_EQ(font.code, c.name.empty() ? HV_UNUSABLE_FILE : HV_OK) << extension;
      EXPECT_EQ(font.info.name, c.name);
      EXPECT_EQ(Describe(path, 2, 0).code, HV_UNUSABLE_FILE);
      if (c.name.empty()) continue;
      EXPECT_EQ(font.info.fontClass, FONT_CLASS_METRICS);
      EXPECT_EQ(font.info.fontType, FONT_TYPE_PFM);
      EXPECT_EQ(font.info.flags, 0x2BU);
    }
  }
  PfmFile pfm;
  pfm.size = 3000;
  pfm.faceOffset = 2047;
  pfm.italic = 1;
  std::string bytes = pfm.Bytes();
  bytes.replace(2047, 200, std::string(200, 'n'));
  EXPECT_EQ(Describe(folder.Add("long.pfm", bytes)).info.name, std::string(79, 'n'));
}

TEST(PfmInfo, ChecksSizeAndOffsets) {
  const TestFolder folder;
  const struct {
    std::size_t size;
    unsigned faceOffset;
    int behind;     // bytes behind the size that the file states
    unsigned word;  // at 117
    bool accepted;
  } cases[] = {
      {300, 160, 0, 30, true},
      {256, 160, 0, 30, true},
      {255, 160, 0, 30, false},
      {300, 34, 0, 30, false},
      {300, 35, 0, 30, true},
      {3000, 2048, 0, 30, false},
      {300, 160, 1, 30, false},
      {300, 160, -1, 30, false},
      {300, 160, 32, 30, false},
      {300, 160, 32, 0, true},
      {300, 160, 31, 0, false},
      // The offset is free behind a trailer, but it must lie in the file.
      {3000, 2048, 32, 0, true},
      {300, 331, 32, 0, true},
      {300, 332, 32, 0, false},
      {300, 0xFFFFFFFF, 32, 0, false},
      {300, 300, 0, 30, false},
  };
  for (const auto& c : cases) {
    PfmFile pfm;
    pfm.size = c.size;
    pfm.faceOffset = c.faceOffset;
    std::string bytes = pfm.Bytes();
    bytes.replace(117, 2, Le16(c.word));
    bytes.resize(static_cast<std::size_t>(static_cast<long>(c.size) + c.behind), 'x');
    // Every offset of the table holds text, so that only the checks decide.
    if (c.faceOffset < bytes.size()) bytes.replace(c.faceOffset, 1, "F");
    bytes.replace(105, 4, Le32(c.faceOffset));
    // A whole PFM before each, so that nothing of an earlier file can be shown.
    EXPECT_EQ(Describe(folder.Add("before.pfm", PfmFile().Bytes())).code, HV_OK);
    const Described font = Describe(folder.Add("font.pfm", bytes));
    EXPECT_EQ(font.code, c.accepted ? HV_OK : HV_UNUSABLE_FILE)
        << c.size << " " << c.faceOffset << " " << c.behind;
    EXPECT_EQ(*font.info.name == '\0', !c.accepted);
  }
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
  PfmFile first;
  first.face = "Courier";
  PfmFile second;
  second.face = std::string(100, 'n');
  second.italic = 1;
  second.weight = 700;
  second.size = 5000;
  PfmFile outside;
  outside.faceOffset = 2048;
  const std::string path = folder.Add(
      "cart.pcm", hvtest::PcmFile("Cartridge Z",
                                  {first.Bytes(), second.Bytes(), outside.Bytes(), first.Bytes()}));
  Described cartridge = Describe(path);
  EXPECT_EQ(cartridge.code, HV_OK);
  EXPECT_STREQ(cartridge.info.name, "Cartridge Z");
  ASSERT_NE(+cartridge.info.cartridge, nullptr);
  EXPECT_STREQ(cartridge.info.cartridge->title, "Cartridge Z");
  EXPECT_EQ(cartridge.info.fontClass, FONT_CLASS_METRICS);
  EXPECT_EQ(cartridge.info.fontType, FONT_TYPE_PCM);
  EXPECT_EQ(cartridge.info.flags, 0x03U);
  EXPECT_EQ(TakeFaces(&cartridge.info),
            (std::vector<std::string>{"Courier", std::string(80, 'n') + " (It) (Bd)", "Courier"}));
  EXPECT_EQ(+Describe(path, 0, 0).info.cartridge, nullptr);
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
    Described cartridge =
        Describe(folder.Add("c.pcm", hvtest::PcmFile("Z", {image, second, image})));
    EXPECT_EQ(cartridge.code, HV_OK);
    EXPECT_EQ(TakeFaces(&cartridge.info).size(), c.faces) << c.size;
  }
  // An end before the first image: no image is looked at; one behind the file: all are.
  std::string file = hvtest::PcmFile("Z", {image});
  Described none = Describe(folder.Add("c.pcm", file.replace(4, 4, Le32(96))));
  EXPECT_TRUE(TakeFaces(&none.info).empty());
  Described all = Describe(folder.Add("c.pcm", file.replace(4, 4, Le32(0xFFFFFFFF))));
  EXPECT_EQ(TakeFaces(&all.info).size(), 1U);
}

TEST(PcmInfo, NeedsATitle) {
  const TestFolder folder;
  const std::string image = PfmFile().Bytes();
  Described untitled = Describe(folder.Add("c.pcm", hvtest::PcmFile("", {image})));
  EXPECT_EQ(untitled.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(TakeFaces(&untitled.info), std::vector<std::string>{"Courier"});
  Described longTitle =
      Describe(folder.Add("c.pcm", hvtest::PcmFile(std::string(80, 't'), {image})));
  EXPECT_EQ(longTitle.info.name, std::string(79, 't'));
  TakeFaces(&longTitle.info);
  const Described cut = Describe(folder.Add("c.pcm", std::string(15, 'x')));
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
    const Described font = Describe(path, 2);
    EXPECT_EQ(font.code, length == 259 ? HV_OK : HV_NOT_SUPPORTED);
    EXPECT_EQ(std::strlen(font.info.companionPath1), length == 259 ? 259U : 0U);
  }
}

}  // namespace
