// Printer streams explained: what each command means, and that the pieces cover every byte.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/explained.h"
#include "support/jobs.h"
#include "support/pclxl_jobs.h"

namespace {

using namespace hvtest;
struct Case {
  std::string bytes;
  std::vector<std::string> lines;
};

void ExpectLines(const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    EXPECT_EQ(Explained(each.bytes), each.lines) << testing::PrintToString(each.bytes);
  }
}

TEST(Show, ExplainsFraming) {
  ExpectLines({
      {"", {}},
      {Uel + "@PJL RDYMSG DISPLAY = \"x\"\n@PJL ENTER LANGUAGE = PCL\n@PJL SET COPIES = 3\nHi" +
           Uel + "@pjl\n",
       {"9 universal exit: back to PJL", "26 panel: text shown when ready",
        "26 switch the printer language", "20 number of copies", "2 text",
        "9 universal exit: back to PJL", "4 text", "1 line feed"}},
      {"@PJL\r\n@PJL  set qdownloadtarget=flash1\r\n@PJL NEWS\n",
       {"6 PJL, no command", "34 downloads go to a storage device", "10 PJL command"}},
      {Bytes("\x1B[K\x03\x00\x06\x31\x01\x1B=\x03\x00\x31\x08\x05\x1B[K\x01\x00\x06"),
       {"8 switch the printer language: PPDS", "7 PPDS download block, 3 bytes",
        "6 end of the job"}},
      {Bytes("\x1B[K\x03\x00\x06\xC0\x50\x1B[K\x01\x00\x01\x1B[K\x02\x00\x09\x09"),
       {"8 format the storage device: what it holds is lost",
        "6 a download follows (printers of class 2)", "7 ESC [ K sequence"}},
      {Bytes("\x1B[l\x08\x00\x01\x01\x02"
             "Hello"),
       {"8 begin of macro 258, 5 bytes", "5 text"}},
      {Bytes("\x1B[l\x03\x00\x05\x00\x07\x1B[l\x01\x00\x06"),
       {"8 overlay macro 7", "6 no overlay any more"}},
      {Bytes("\x1B[D\x00\x05\x01\x00Logo\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x04%!PS"),
       {"23 header of the demonstration file Logo, 4 bytes", "4 PostScript comment"}},
      {"@PJL QWRITEFILE DEVICE=disk1 FILENAME=\"a\" START=0 \n\x1B"
       "E@PJL END DATA\n",
       {"51 write the file: its data follow", "2 2 bytes of the stored file",
        "14 end of the data of the file"}},
      {"@PJL QOPENDEMOFILE NAME=\"a\"\n\x1BM@PJL QCLOSEDEMOFILE\n",
       {"28 open a demonstration file: its data follow", "2 end of a demonstration file",
        "20 close the demonstration file"}},
      {"@PJL ENTER LANGUAGE = POSTSCRIPT\n%!PS\nshowpage\n\x04" + Uel,
       {"33 switch the printer language", "5 PostScript comment", "9 PostScript, 1 line",
        "1 end of a PostScript job", "9 universal exit: back to PJL"}},
  });
}

TEST(Show, ExplainsPcl) {
  ExpectLines({
      {"\x1B"
       "E\x1B&l1o26a3H",
       {"2 reset the printer", "5 orientation: landscape", "3 page size: A4",
        "2 paper source: manual envelope feed"}},
      {"\x1B&l2S\x1B&l1s7H\x1B&l3X\x1B&k2G",
       {"5 sides: duplex, short edge", "5 sides: duplex, long edge", "2 paper source: automatic",
        "5 copies: 3", "5 line termination: LF and FF add CR"}},
      {"\x1B*p+30x-7Y\x1B&a10.5L\x1B&l8C",
       {"7 cursor across: +30 units", "3 cursor down: -7 units", "8 left margin: 10.5 columns",
        "5 height of a line: 8/48 inch"}},
      {"\x1B(8U\x1B(s1p12vsb4148T\x1B(3@\x1B)0X",
       {"4 symbol set of the first font: 8", "5 spacing of the first font: proportional",
        "3 height of the first font: 12 points", "1 style of the first font: upright",
        "1 weight of the first font: medium", "5 typeface of the first font: 4148",
        "4 default of the first font: 3", "4 second font by its identifier: 0"}},
      {"\x1B*c5D\x1B)s4Whead\x1B*c65E\x1B(s3Wdot\x1B*c5F",
       {"5 font identifier: 5", "5 download of a font descriptor: 4 bytes",
        "4 4 bytes: download of a font descriptor", "6 character code: 65",
        "5 download of a character: 3 bytes", "3 3 bytes: download of a character",
        "5 font: make permanent"}},
      {"\x1B&f7y0X\x1B&l1X\x1B&f1X\x1B&f7y10X\x1B&f6X",
       {"5 macro identifier: 7", "2 begin of the definition of macro 7", "5 copies: 1",
        "5 end of the definition of macro 7, 5 bytes", "5 macro identifier: 7",
        "3 macro: make permanent 7", "5 macro: delete all"}},
      {"\x1B*r1A\x1B*b2m3Wabc\x1B*b1Y\x1B*b0W\x1B*rB",
       {"5 begin of a picture: at the cursor", "20 2 rows of dots", "4 end of a picture"}},
      {"\x1B*b2M\x1B"
       "E",
       {"5 settings of rows of dots", "2 reset the printer"}},
      {"\x1B*b9Wabc", {"8 1 row of dots, cut off"}},
      {"\x1B&p3X\x1B"
       "Ex",
       {"5 text without control characters: 3 bytes",
        "3 3 bytes: text without control characters"}},
      {"\x1B(s9Wab",
       {"5 download of a character: 9 bytes",
        "2 2 bytes: download of a character, cut off: 9 were to come"}},
      {"\x1B%0BIN;SP1;PD10,10;\x1B%0A\x1B%1BPU\x1B"
       "Ea",
       {"4 enter HP-GL/2: pen where it was", "15 HP-GL/2, about 3 instructions",
        "4 enter PCL: cursor of PCL", "4 enter HP-GL/2: pen at the cursor of PCL",
        "2 HP-GL/2, about 1 instructions", "2 reset the printer", "1 text"}},
      {"A\r\n\n\f",
       {"1 text", "1 carriage return", "2 line feed, 2 times", "1 form feed: print the page"}},
      {"\x1B\x1B"
       "E\x1B?\x1B&l1?\x1B&q1A\x1B",
       {"1 unknown", "2 reset the printer", "2 unknown escape sequence",
        "4 unknown escape sequence", "1 text", "5 unknown PCL command", "1 unknown"}},
  });
  EXPECT_EQ(Explained("\x1B*b2m3Wabc\x1B*b0W", true),
            (std::vector<std::string>{"5 compression of rows: TIFF", "2 row of dots: 3 bytes",
                                      "3 3 bytes: row of dots", "5 row of dots: 0 bytes"}));
}

TEST(Show, ExplainsPclXl) {
  const std::string stream = ") HP-PCL XL;1;1;\n\x84";
  ExpectLines({
      {PclXlSampleJob(),
       {"17 header of PCL XL, low byte first",
        "12 BeginSession: UnitsPerMeasure 300 300, Measure eInch", "1 BeginFontHeader",
        "1 ReadFontHeader", "9 4 bytes of data for ReadFontHeader", "1 EndFontHeader",
        "9 BeginPage: Orientation ePortraitOrientation, MediaSize eA4Paper",
        "15 SetCursor: Point 1, PenWidth 1", "12 Rectangle: BoundingBox 1 2 3 4",
        "11 Text: XSpacingData 1 2", "1 ReadImage", "9 4 bytes of data for ReadImage",
        "1 ReadImage", "5 3 bytes of data for ReadImage", "6 EndPage: PageCopies 1",
        "1 EndSession"}},
      {stream + PclXlText("Logo", 0x8B) + "\x5B\x5C" + PclXlData(stream) + "\x5D",
       {"17 header of PCL XL, low byte first", "1 CloseSubPath",
        "10 BeginStream: StreamName \"Logo\"", "1 ReadStream", "5 18 bytes of data for ReadStream:",
        "17 header of PCL XL, low byte first", "1 CloseSubPath", "1 EndStream"}},
      {stream + "\xC0\x05\x7E\xC3\xFF\xFF\xF8\xC8\x84\xC1\x01",
       {"17 header of PCL XL, low byte first", "1 CloseSubPath", "2 values without an operator: 5",
        "1 unknown", "6 CloseSubPath: attribute 200 -1", "2 a value that is cut off"}},
      {stream + Bytes("\xC8\xC0\x09"
                      "ab"),
       {"17 header of PCL XL, low byte first", "1 CloseSubPath", "5 an array that cannot be read"}},
  });
}

// Pieces longer than the buffer, and commands across its edges.
TEST(Show, CoversLongStreams) {
  for (const std::size_t before : {65500U, 65520U, 65530U, 65535U, 65536U, 200000U}) {
    const std::string job = std::string(before, 'x') + "\x1B&l1o26A\x1B(s70000W" +
                            std::string(70000, '\x1B') + Uel + "@PJL RESET\n";
    const std::vector<std::string> lines = Explained(job);
    ASSERT_EQ(lines.size(), 7U) << before;
    EXPECT_EQ(lines[4], "70000 70000 bytes: download of a character");
  }
}

}  // namespace
