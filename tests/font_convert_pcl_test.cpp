// PCL soft fonts as PFM of the Windows PCL driver, byte by byte.

#include <gtest/gtest.h>

#include <string>

#include "hvapi.h"
#include "support/font_calls.h"
#include "support/font_files.h"
#include "support/pcl_pfm_files.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

constexpr const char* Device = "PCL / HP LaserJet";
constexpr int32_t Plain = 5;
constexpr int32_t Described = 17;

// A descriptor, its bytes put in place one by one; the others are 0.
class Head {
 public:
  explicit Head(std::size_t size = 64) : bytes_(size, '\0') {
    Word(0, static_cast<unsigned>(size));
    Byte(3, 1);
  }
  Head& Byte(std::size_t at, int value) {
    bytes_[at] = static_cast<char>(value);
    return *this;
  }
  Head& Word(std::size_t at, unsigned value) {
    bytes_.replace(at, 2, Be16(value));
    return *this;
  }
  Head& Name(const std::string& name) {
    bytes_.replace(48, 16, Field(name, 16, ' '));
    return *this;
  }
  std::string Command() const { return "\x1B)s" + std::to_string(bytes_.size()) + "W" + bytes_; }

 private:
  std::string bytes_;
};

// The 12-point fixed-pitch font in Roman-8: 12 characters an inch, Courier.
Head FixedHead() {
  return Head().Word(6, 40).Word(10, 60).Word(14, 277).Word(16, 100).Word(18, 200).Byte(25, 3).Name(
      "Sample");
}

std::string Download(unsigned code, const std::string& data) {
  return "\x1B*c" + std::to_string(code) + "E\x1B(s" + std::to_string(data.size()) + "W" + data;
}

// A character of a bitmap font, its dots left out.
std::string Character(unsigned code, int deltaX, int left = 0, int top = 0, int width = 0,
                      int height = 0, char orientation = 0) {
  std::string data = {4, 0, 14, 1, orientation, 0};
  for (const int value : {left, top, width, height, deltaX}) {
    data += Be16(static_cast<unsigned>(value) & 0xFFFF);
  }
  return Download(code, data);
}

// One of a font of format 5 or 9: only three bytes tell its width.
std::string ExtendedCharacter(unsigned code, int body, int before, int behind) {
  std::string data(12, '\x7E');
  data[4] = static_cast<char>(body);
  data[6] = static_cast<char>(before);
  data[7] = static_cast<char>(behind);
  return Download(code, data);
}

// The PFM of a font, or "code N".
std::string PfmOf(const std::string& font, int32_t type = Plain) {
  return Converted("font.sfp", font, type, "PFM");
}

// The number at an offset of a PFM.
unsigned At(const std::string& pfm, std::size_t at, std::size_t width) {
  unsigned value = 0;
  for (std::size_t i = width; i-- > 0;) value = value << 8 | static_cast<uint8_t>(pfm.at(at + i));
  return value;
}

// Both conversions: the longer one adds the description.
void ExpectBoth(const std::string& font, PclDriverPfm pfm, const char* description) {
  EXPECT_EQ(PfmOf(font), pfm.Bytes());
  pfm.described = true;
  pfm.description = description;
  EXPECT_EQ(PfmOf(font, Described), pfm.Bytes());
}

std::string FixedFont() {
  return FixedHead().Command() + Character('-', 100, 2, 20, 18, 4) +
         Character('_', 102, 0, -5, 25, 3) + Character('d', 100, 1, 33, 20, 34) +
         Character('p', 100, 1, 22, 20, 32) + Character('x', 103, 1, 21, 20, 21);
}

TEST(PclPfm, HasEveryFieldOfAFixedPitchFont) {
  PclDriverPfm pfm = {Device, 0x80, 12, 40, 10, 10, false, 400, 0, 25, 60, 48, 25, 25, 32};
  pfm.last = 247;  // the division sign is made with the hyphen
  pfm.face = "Courier (8U)";
  pfm.metrics = {288, 1,  60, 60, 60, 60, 30, 21, 33, 10, 0, 9,
                 -10, 60, 60, -5, 3,  1,  -5, 3,  3,  16, 4};
  pfm.memory = (125 + 7) / 8 * 60 + 63;
  pfm.selection = "\x1B(8U\x1B(s0p12.00v12.00h0s0b3T";
  ExpectBoth(FixedFont(), pfm, "Sample            [12.0 Pt.] (Roman-8)");
}

TEST(PclPfm, HasEveryFieldOfAProportionalFont) {
  // Landscape, italic, bold, Helv in the set 1U; 10.95 points.
  Head head;
  head.Byte(4, 2).Word(6, 30).Word(10, 44).Byte(12, 1).Byte(13, 1).Word(14, 53).Word(16, 90);
  head.Word(18, 182).Byte(41, 128).Byte(23, 5).Byte(24, 3).Byte(25, 4).Name("Name");
  // Widths 12, 13 and 20; the metrics are those of characters on their side.
  const std::string font = head.Command() + Character('-', 51, 9, 0, 3, 0, 1) +
                           Character('_', 48, -2, 0, 5, 0, 2) + Character('p', 82, 6, 0, 8, 0, 1) +
                           Character('d', 48, 25, 0, 0, 0, 1) + Character('x', 48, 15, 0, 0, 0, 1);
  PclDriverPfm pfm = {Device, 0x80, 10, 30, 44 - 46, 45 - 30, true,
                      700,    185,  0,  44, 33,      68 / 5,  20};
  pfm.last = 'x';
  pfm.face = "Helv (US Legal) (1U)";
  pfm.metrics = {211, 2,  44, 44, 44, 44, 32, 15, 25, 2, 0, 17,
                 -2,  44, 44, -2, 5,  8,  -2, 5,  5,  6, 3};
  pfm.memory = (68 + 7) / 8 * 44 + 63;
  pfm.translation = 16;
  pfm.symbolSet = 53;
  pfm.selection = "\x1B(1U\x1B(s1p11.00v517s3b4T";
  pfm.widths.resize('x' - 32 + 2);
  pfm.widths[0] = 22;  // no space: as wide as the pitch
  for (const char c : {'-', '_', 'd', 'x'}) pfm.widths[static_cast<std::size_t>(c - 32)] = 12;
  pfm.widths['p' - 32] = 20;
  ExpectBoth(font, pfm, "Name         BdIt [10.9 Pt.] (Legal)");
}

TEST(PclPfm, HasEveryFieldOfAFontOfFormat9) {
  for (const int format : {5, 9}) {
    Head head(72);
    head.Byte(2, format).Byte(12, 1).Byte(13, 1).Word(14, 277).Word(16, 80).Word(18, 200);
    head.Word(20, 99).Byte(23, 1).Byte(24, -3).Byte(25, 5).Byte(30, -6).Byte(31, 2).Word(32, 222);
    head.Byte(70, -9).Name("Name");
    // 65 is 15 wide; 216 is the place of code 196 in Roman-8, and its larger width counts.
    const std::string characters =
        ExtendedCharacter('A', 20, 5, 6) + ExtendedCharacter(216, 254, 1, 2) +
        ExtendedCharacter(216, 9, 0, 1) + ExtendedCharacter('B', 255, 9, 9);
    PclDriverPfm pfm = {Device, 0x80, 12, 41, 10, 5, true, 300, 0, 0, 55, 17, 148 / 4, 128};
    pfm.last = 196;
    pfm.face = "Tms Rmn (8U)";
    pfm.metrics = {264, 2,  55, 55, 55, 55, 31, 24, 32, 9,  0, 7,
                   -8,  55, 55, -6, 2,  -2, -6, 2,  2,  12, 2};
    pfm.memory = (148 + 7) / 8 * 55 + 63;
    pfm.widths.resize(196 - 32 + 2);
    pfm.widths[0] = 20;
    pfm.widths['A' - 32] = 15;
    pfm.widths[196 - 32] = 128;
    ExpectBoth(head.Command() + characters, pfm, "Name         LtIt [12.0 Pt.] (Roman-8)");
    // Three quarters of 55 were cut, those of 54 are rounded.
    EXPECT_EQ(At(PfmOf(head.Word(32, 4 * 54).Command() + characters), 74, 2), 41U);
  }
}

// The PFM of a font of one character.
std::string PfmOf(const Head& head) {
  return PfmOf(head.Command() + Character('A', 100));
}

// Looks for the selection escape at the end of the file.
void ExpectEscape(const Head& head, const std::string& escape) {
  const std::string pfm = PfmOf(head);
  EXPECT_EQ(pfm.substr(pfm.rfind("\x1B(")), "\x1B(" + escape + '\0');
}

TEST(PclPfm, TellsTheSizeInTheSelection) {
  const auto expect = [](unsigned height, int heightExtended, unsigned pitch, int pitchExtended,
                         const std::string& size) {
    Head head = FixedHead();
    head.Word(18, height).Byte(41, heightExtended).Word(16, pitch).Byte(40, pitchExtended);
    ExpectEscape(head, "s0p" + size + "0s0b3T");
  };
  expect(200, 0, 100, 0, "12.00v12.00h");
  expect(175, 200, 120, 17, "10.60v9.99h");
  expect(182, 128, 72, 128, "11.00v16.55h");
  expect(0, 0, 0, 0, "0.00v0.00h");
  expect(65535, 255, 0, 1, "3932.20v307200.00h");
  Head head = FixedHead();
  head.Byte(13, 1).Byte(4, 0xFF).Byte(23, 0xFE).Byte(24, -7).Byte(26, 0x10).Word(14, 65535);
  ExpectEscape(head, "s1p12.00v65534s-7b4099T");
}

TEST(PclPfm, NamesTheFace) {
  const auto expect = [](int typeface, unsigned set, const char* name, const char* face) {
    Head head = FixedHead();
    head.Byte(25, typeface).Byte(26, typeface >> 8).Word(14, set).Name(name);
    EXPECT_STREQ(PfmOf(head).c_str() + 117 + 30, face);
  };
  expect(3, 2, "Name", "Courier (LineDraw) (0B)");
  expect(28, 2, "Name", "Name             (0B)");  // not assigned: no suffix either
  expect(140, 629, "Name", "Name             (W1)");
  expect(4099, 277, "Sixteen characte", "Sixteen characte (8U)");
  expect(139, 293, "", "Bitstream Amerigo (WE)");
  // The name is that of the first descriptor.
  const std::string other = FixedHead().Byte(25, 28).Name("Other").Command();
  EXPECT_STREQ(PfmOf(other + FixedHead().Byte(25, 28).Command()).c_str() + 117 + 30,
               "Other            (8U)");
}

TEST(PclPfm, TellsWeightSymbolSetAndFamily) {
  const std::pair<int, unsigned> weights[] = {{-8, 0}, {-7, 100}, {1, 500}, {7, 900}, {8, 0}};
  for (const auto& [stroke, weight] : weights) {
    EXPECT_EQ(At(PfmOf(FixedHead().Byte(24, stroke)), 83, 2), weight) << stroke;
  }
  const auto expectSet = [](unsigned set, int fontType, unsigned characterSet, unsigned table) {
    const std::string pfm = PfmOf(FixedHead().Word(14, set).Byte(3, fontType));
    EXPECT_EQ(At(pfm, 85, 1), characterSet) << set;
    EXPECT_EQ(At(pfm, At(pfm, 117 + 22, 4) + 12, 2), table) << set;
  };
  expectSet(269, 0, 180, 17);
  expectSet(629, 1, 0, 17);
  expectSet(629, 0, 0, 16);
  const std::pair<int, unsigned> families[] = {{7, 64}, {19, 80}, {28, 0}};
  for (const auto& [typeface, family] : families) {
    EXPECT_EQ(At(PfmOf(FixedHead().Byte(25, typeface)), 90, 1), family) << typeface;
  }
}

// What the width table says of a Windows code when the font has just this character, 77 dots wide,
// and another one that makes the widths differ. 0 also for a code outside the table.
unsigned WidthThrough(unsigned symbolSet, unsigned pclCode, unsigned windowsCode,
                      const std::string& before = "") {
  const std::string pfm = PfmOf(FixedHead().Word(14, symbolSet).Command() + Character('!', 4) +
                                before + Character(pclCode, 77 * 4));
  const unsigned first = At(pfm, 95, 1);
  const unsigned last = At(pfm, 96, 1);
  return windowsCode > last ? 0 : At(pfm, 117 + 2 * (windowsCode - first), 2);
}

TEST(PclPfm, TranslatesTheUpperHalf) {
  // A symbol set, one of its codes, a Windows code, and whether the one prints the other.
  const unsigned cases[][4] = {
      {277, 168, 221, 1}, {277, 196, 196, 0}, {277, 127, 128, 1}, {21, 65, 196, 1},
      {21, 39, 233, 1},   {21, 34, 255, 0},   {21, 121, 255, 1},  {14, 96, 145, 1},
      {14, 130, 130, 0},  {629, 130, 130, 1}, {53, 200, 200, 0},  {53, 127, 200, 1},
      {529, 105, 129, 1}, {529, 97, 130, 1},  {529, 187, 255, 1}, {529, 200, 200, 0},
  };
  for (const auto& [set, pcl, windows, prints] : cases) {
    EXPECT_EQ(WidthThrough(set, pcl, windows), 77 * prints) << set << " " << pcl << " " << windows;
  }
  // An accent does not change the width that its letter has given; a letter changes that of both.
  EXPECT_EQ(WidthThrough(21, 39, 233, Character('e', 40)), 10U);
  EXPECT_EQ(WidthThrough(21, 'e', 233, Character(39, 40)), 77U);
  EXPECT_EQ(WidthThrough(21, 'e', 233, Character('e', 40)), 77U);
  // A code too large is 0, which stands for no accent at all.
  EXPECT_EQ(WidthThrough(21, 256 + ',', 130), 0U);
}

TEST(PclPfm, ReadsTheStreamAsAPrinterDoes) {
  const std::string head = FixedHead().Command();
  const std::string a = Character('A', 100);
  const std::string plain = PfmOf(head + a);
  const std::pair<const char*, std::string> same[] = {
      {"a code before the descriptor", "\x1B*c65E" + head + a},
      {"other bytes behind it", head + "text\x1B*c5D\x1B" + a + "\x1B&l0O"},
      {"an escape that begins nothing", head + "\x1B\x1B*c\x1B(s\x1B)" + a},
      {"commands without a number", head + "\x1B(sW\x1B*cE\x1B)s0W" + a},
      {"a cut command at the end", head + a + "\x1B(s200W" + std::string(100, 'x')},
      {"a continued bitmap",
       head + a + "\x1B(s30W" + std::string("\x04\x01", 2) + std::string(28, 'x')},
      {"long data", head + "\x1B*c65E\x1B(s5000W" + a.substr(a.find('W') + 1) +
                        std::string(5000 - (a.size() - a.find('W') - 1), '\x1B')},
      {"a second descriptor", head + Character('z', 4) + head + a},
  };
  // Some of them are no fonts for HvFonQueryInfo.
  for (const auto& [what, font] : same) EXPECT_EQ(PfmOf(font), plain) << what;
  const std::pair<const char*, std::string> refused[] = {
      {"text before the descriptor", "text" + head + a},
      {"a character before it", a + head},
      {"a cut descriptor", head.substr(0, head.size() - 1)},
      {"a short descriptor", "\x1B)s63W" + head.substr(6) + a},
      {"only a code", "\x1B*c65E"},
      {"another format", FixedHead().Byte(2, 5).Command() + a},
      {"a second descriptor of another format", head + a + FixedHead().Byte(2, 10).Command()},
  };
  for (const auto& [what, font] : refused) EXPECT_EQ(PfmOf(font), "code 27") << what;
}

TEST(PclPfm, TakesTheLayoutOfTheFontDescribedLast) {
  const TestFolder folder;
  const auto add = [&](int format, std::size_t size) {
    return folder.Add(std::to_string(format) + "." + std::to_string(size),
                      Head(size).Byte(2, format).Word(14, 277).Name("Name").Command());
  };
  const std::string sources[] = {folder.Add("0.64", FixedFont()), add(20, 68), add(5, 72),
                                 add(9, 72), add(11, 88)};
  // Which of these can be converted when one of a format was described last. No conversion changes
  // that, the longer one included.
  const auto expect = [&](const std::string& described, const std::string& converted) {
    DescribeFont(described);
    for (const int32_t type : {Described, Plain}) {
      std::string result;
      for (const std::string& source : sources) {
        const int32_t code = Convert(source, folder / "out.pfm", type);
        EXPECT_TRUE(code == HV_OK || code == HV_UNUSABLE_FILE) << code;
        result += code == HV_OK ? 'y' : 'n';
      }
      EXPECT_EQ(result, converted) << described;
    }
  };
  expect(sources[3], "nnyyn");
  expect(sources[0], "yynnn");
  expect(add(12, 92), "nnyyn");
  expect(add(0, 72), "nnyyn");  // of no known size: all stays as it was
  expect(sources[2], "nnynn");
  expect(sources[4], "yynnn");
  expect(sources[3], "nnyyn");
  expect(sources[1], "yynnn");
}

TEST(PclPfm, CountsCharactersWithoutAPlace) {
  // 130 is nowhere in Latin 1: it counts, but no code gets its width.
  Head head = FixedHead();
  head.Word(14, 14);
  const std::string pfm = PfmOf(head.Command() + Character(130, 40) + Character(131, 80));
  EXPECT_EQ(At(pfm, 95, 2), 32U);   // first 32, last 0
  EXPECT_EQ(At(pfm, 91, 2), 15U);   // average
  EXPECT_EQ(At(pfm, 93, 2), 20U);   // maximum
  EXPECT_EQ(At(pfm, 86, 2), 0U);    // widths differ
  EXPECT_EQ(At(pfm, 117, 2), 30U);  // and there is no table
  EXPECT_EQ(At(pfm, 90, 1), 49U);
  // The code behind the last one ends the table; 255 has none behind it.
  const std::string full = PfmOf(head.Command() + Character('A', 40) + Character(255, 80));
  EXPECT_EQ(At(full, 96, 1), 255U);
  EXPECT_EQ(At(full, 117 + 2 * 223, 2), 20U);
  EXPECT_EQ(At(full, 117 + 2 * 224, 2), 0U);
  EXPECT_EQ(At(full, 117 + 2 * 225, 2), 30U);
  // More than 65,535 dots in all.
  std::string many = head.Command() + Character('A', 32767);
  for (unsigned code = 'B'; code <= 'I'; ++code) many += Character(code, 32764);
  const std::string wide = PfmOf(many);
  EXPECT_EQ(At(wide, 91, 2), 8191U);
  EXPECT_EQ(At(wide, At(wide, 117 + 22, 4) + 4, 4), (9U * 8191 + 7) / 8 * 60 + 63);
}

TEST(PclPfm, TellsWhatCannotBeOpened) {
  const TestFolder folder;
  const std::string source = folder.Add("font.sfp", FixedFont());
  ASSERT_EQ(DescribeFont(source).code, HV_OK);
  EXPECT_EQ(Convert(source, folder / "nowhere/x.pfm", Plain), HV_CANNOT_OPEN);
  EXPECT_EQ(Convert(folder.Path().string(), folder / "x", Plain), HV_CANNOT_OPEN);
  const std::string old = folder.Add("old.pfm", "old");
  const std::string broken = folder.Add("broken.sfp", "no font");
  EXPECT_EQ(Convert(broken, old, Plain), HV_UNUSABLE_FILE);
  EXPECT_EQ(ReadFile(old), "old");
}

}  // namespace
