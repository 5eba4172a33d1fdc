// What HvFonDownload sends, byte for byte.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/font_files.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

const std::string MakePermanent = "\x1B*c5F";

const std::string Prologue = std::string(
    "%% BeginExitServer 0\n% Adobe Type 1 download\r\n\r\n serverdict begin   0   exitserver  \n"
    "%% EndExitServer\n",
    103);
const std::string Trailer = "%!\x04";

HvJobInfo FontJob(int32_t emulation, uint32_t flags = 0, int identifier = 5) {
  HvJobInfo job = Job(flags, emulation);
  job.identifier = static_cast<uint16_t>(identifier);
  return job;
}

// The result, and what was sent.
using Sent = std::pair<uint32_t, std::string>;

// Downloads a font of that name to a file that is not there before.
Sent Download(const std::string& name, const std::string& bytes, const HvJobInfo& job,
              uint32_t device = STORAGE_DEVICE_RAM) {
  const TestFolder folder;
  const std::string font = folder.Add(name, bytes);
  const std::string destination = folder / "printer.out";
  const uint32_t code = HvFonDownload(font.c_str(), destination.c_str(), &job, device);
  return {code, std::filesystem::exists(destination) ? ReadFile(destination) : "(none)"};
}

TEST(FontDownload, ChecksArgumentsBeforeItLooksForTheFont) {
  const std::string tooLong(261, 'x');
  const auto expectBad = [](const char* path, const char* destination, int32_t emulation,
                            uint32_t device) {
    const HvJobInfo job = FontJob(emulation);
    EXPECT_EQ(HvFonDownload(path, destination, &job, device), HV_BAD_ARGUMENT)
        << emulation << " " << device;
  };
  expectBad(nullptr, "out", 5, 1);
  expectBad("none.sfp", nullptr, 5, 1);
  expectBad(tooLong.c_str(), "out", 5, 1);
  expectBad("none.sfp", tooLong.c_str(), 5, 1);
  for (const uint32_t device : {0U, 6U}) expectBad("none.sfp", "out", 5, device);
  for (const int32_t emulation : {-1, 0, 7}) expectBad("none.sfp", "out", emulation, 1);
  EXPECT_EQ(HvFonDownload("none.sfp", "out", nullptr, 1), HV_BAD_ARGUMENT);
}

TEST(FontDownload, RefusesWhatIsNoFontBeforeItReachesThePrinter) {
  const auto expect = [&](const char* file, const std::string& bytes, uint32_t code) {
    EXPECT_EQ(Download(file, bytes, FontJob(5)), Sent(code, "(none)")) << file;
  };
  expect("font.afm", AfmFile("Times"), HV_UNUSABLE_FILE);
  expect("a.fot", "x", HV_UNUSABLE_FILE);
  expect("a.sfp", "no font", HV_UNUSABLE_FILE);
  expect("noextension", PclFont({}, {}), HV_BAD_ARGUMENT);
  const TestFolder folder;
  const HvJobInfo job = FontJob(5);
  const std::string font = folder / "a.sfp";
  const std::string out = folder / "none/out";
  EXPECT_EQ(HvFonDownload(font.c_str(), out.c_str(), &job, 1), HV_NOT_FOUND);
  folder.Add("a.sfp", PclFont({}, {}));
  EXPECT_EQ(HvFonDownload(font.c_str(), out.c_str(), &job, 1), HV_CANNOT_OPEN);
}

TEST(FontDownload, SendsPclFontsAsTheyAre) {
  const std::pair<unsigned, unsigned> formats[] = {{0, 64},  {5, 72},  {20, 68},
                                                   {10, 80}, {11, 88}, {15, 72}};
  for (const auto& [format, size] : formats) {
    const std::string bytes = PclFont({.size = size, .format = format}, SampleCharacters());
    for (const auto& [emulation, identifier] : {std::pair{1, 5}, {3, 1234}, {5, 65535}}) {
      const std::string command = "\x1B*c" + std::to_string(identifier) + "D";
      EXPECT_EQ(Download("font.sfp", bytes, FontJob(emulation, 0, identifier)),
                Sent(HV_OK, command + bytes + MakePermanent));
    }
  }
}

TEST(FontDownload, AppendsToAFile) {
  const TestFolder folder;
  const std::string bytes = PclFont({}, {});
  const std::string font = folder.Add("font.sfp", bytes);
  const std::string out = folder.Add("out", "before");
  const HvJobInfo job = FontJob(5);
  EXPECT_EQ(HvFonDownload(font.c_str(), out.c_str(), &job, 1), HV_OK);
  EXPECT_EQ(ReadFile(out), "before\x1B*c5D" + bytes + MakePermanent);
  // A font appended to itself would never end.
  EXPECT_EQ(HvFonDownload(font.c_str(), font.c_str(), &job, 1), HV_CANNOT_OPEN);
  EXPECT_EQ(ReadFile(font), bytes);
}

// The file with the 16 name bytes replaced; the name of a descriptor lies behind the command.
std::string Renamed(std::string file, const std::string& name) {
  return file.replace(file.find('W') + 1 + 48, 16, name);
}

TEST(FontDownload, NamesAFontForPclXlByItsDescriptor) {
  const std::pair<PclDescriptor, const char*> cases[] = {
      {{.strokeWeight = 3, .name = "CG Times        "}, "CG Times12Bd8U  "},
      {{.height = 215, .name = "Courier"}, "Courier138U     "},
      {{.styleLow = 2}, "Courier12Al8U   "},
      {{.styleLow = 1, .name = "Cour Italic"}, "Cour Italic128U "},
      // What is too long loses its leftmost blanks and points, as many as needed.
      {{.name = "A b.c,d:e;f g"}, "Ab.c,d:e;f g128U"},
      {{.name = "A b.c,d:e;f gh i"}, "Abcde;f gh i128U"},
      // Then vowels, small ones only.
      {{.styleLow = 1, .strokeWeight = 3, .name = "Aeiouy Letter"}, "AyLetter12BdIt8U"},
      {{.styleLow = 1, .strokeWeight = 3, .name = "AEIOUYaeiouyABCD"}, "AEIOUYABCD12BdIt"},
      {{.styleLow = 1, .strokeWeight = 3, .name = "UNIVERSUNIVERSXX"}, "UNIVERSUNIVERSXX"},
      {{.height = 16, .name = "                "}, "18U             "},
      // Scalable fonts have neither size nor style.
      {{.size = 80, .format = 10, .styleLow = 1, .strokeWeight = 3}, "Courier8U       "},
      {{.size = 88, .format = 11, .symbolSet = 0, .styleLow = 1}, "Courier0@       "},
      {{.size = 72, .format = 15, .symbolSet = 65535, .strokeWeight = 3}, "Courier2047_    "},
  };
  for (const auto& [descriptor, name] : cases) {
    const std::string bytes = PclFont(descriptor, SampleCharacters());
    EXPECT_EQ(Download("font.sfp", bytes, FontJob(6)),
              Sent(HV_OK, "\x1B*c5D" + Renamed(bytes, name) + MakePermanent));
  }
}

TEST(FontDownload, FramesTheFontAndDirectsItToADevice) {
  const std::string bytes = PclFont({}, {});
  const std::string payload = "\x1B*c5D" + bytes + MakePermanent;
  HvJobInfo job = FontJob(5, JOB_FLAG_PJL);
  job.jobName = "Fonts";
  job.copies = 7;  // none are asked for
  const auto expect = [&](uint32_t device, const std::string& sent) {
    EXPECT_EQ(Download("font.sfp", bytes, job, device), Sent(HV_OK, sent)) << device;
  };
  const std::string header = Uel + PjlPanel("Fonts") + PjlLanguage("PCL");
  expect(STORAGE_DEVICE_RAM, header + payload + PjlEnd);
  expect(STORAGE_DEVICE_FLASH2, header + PjlTarget("flash2") + payload + PjlTarget("ram") + PjlEnd);
  expect(STORAGE_DEVICE_DISK1, header + PjlTarget("disk1") + payload + PjlTarget("ram") + PjlEnd);
  // The same under a name made up for PCL XL.
  job.emulation = 6;
  const std::string named = "\x1B*c5D" + Renamed(bytes, "Courier128U     ") + MakePermanent;
  expect(STORAGE_DEVICE_DISK1, header + PjlTarget("disk1") + named + PjlTarget("ram") + PjlEnd);

  job.emulation = 5;
  job.flags = JOB_FLAG_ESC_K;
  const std::string select = EscKLanguage(2) + "\x1B&l7X";
  expect(STORAGE_DEVICE_RAM, select + payload);
  job.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  expect(STORAGE_DEVICE_DISK1, select + EscKLeadIn + EscKToDevice + payload + EscKToRam);
}

TEST(FontDownload, SendsDlfFontsWithThePpdsIdentifier) {
  const std::string bytes = DlfFont().Bytes();
  const std::pair<int, std::string> commands[] = {
      {99, Bytes("\x1B=\x03\x00\x31\x08\x63")},
      {100, Bytes("\x1B=\x04\x00\x31\x0E\x00\x64")},
      {0x1234, Bytes("\x1B=\x04\x00\x31\x0E\x12\x34")},
  };
  for (const auto& [identifier, command] : commands) {
    for (const int32_t emulation : {2, 5}) {
      EXPECT_EQ(Download("font.dlf", bytes, FontJob(emulation, 0, identifier)),
                Sent(HV_OK, command + bytes));
    }
  }
  // No name can be made up for it: the job is complete and empty.
  EXPECT_EQ(Download("font.dlf", bytes, FontJob(6, JOB_FLAG_PJL)),
            Sent(HV_CANNOT_OPEN, Uel + PjlLanguage("PCL") + PjlEnd));
}

TEST(FontDownload, SendsNothingButTheFrameForTrueType) {
  EXPECT_EQ(Download("font.ttf", "whatever", FontJob(5, JOB_FLAG_PJL), 3),
            Sent(HV_UNUSABLE_FILE,
                 Uel + PjlLanguage("PCL") + PjlTarget("flash2") + PjlTarget("ram") + PjlEnd));
}

std::string Counted(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i * 7 + i / 256);
  return bytes;
}

TEST(FontDownload, WrapsAPfaForThePostScriptServer) {
  const std::string bytes =
      Type1Head("Times", "StandardEncoding") + std::string(5000, 'A') + "\r\ncleartomark";
  for (const int32_t emulation : {1, 3, 5, 6}) {
    EXPECT_EQ(Download("font.pfa", bytes, FontJob(emulation)),
              Sent(HV_OK, Prologue + bytes + Trailer));
  }
  HvJobInfo job = FontJob(3);
  job.fontQueryArg = 4;  // a missing companion does not stop it
  EXPECT_EQ(Download("font.pfa", bytes, job), Sent(HV_OK, Prologue + bytes + Trailer));
}

TEST(FontDownload, DecodesTheSegmentsOfAPfb) {
  const std::string head = Type1Head("Times", "StandardEncoding");
  const std::string binary = Counted(3000);
  const std::string pfb =
      PfbFile({{1, head}, {2, binary}, {1, ""}, {2, "\xFF"}, {1, std::string(2500, '0')}});
  const std::string decoded = head + ToHex(binary) + "FF" + std::string(2500, '0');
  // A file that breaks off, or goes on as no PFB, ends what can be sent; the job is completed.
  const std::string first = PfbFile({{1, head}});
  const std::string text = first.substr(0, first.size() - 2);
  const std::pair<std::string, std::string> cases[] = {
      {pfb + "junk", decoded},
      {text, head},
      {text + "\x80\x04", head},
      {text + "\x81\x01", head},
      {text + std::string("\x80\x02\x05\x00\x00", 5), head},
      {text + std::string("\x80\x02\x05\x00\x00\x00\xAB\xCD", 8), head + "ABCD"},
      {text + std::string("\x80\x01\xFF\xFF\xFF\xFF", 6) + "tail", head + "tail"},
  };
  for (const auto& [bytes, sent] : cases) {
    EXPECT_EQ(Download("font.pfb", bytes, FontJob(3)), Sent(HV_OK, Prologue + sent + Trailer));
  }
}

TEST(FontDownload, CutsAType1FontIntoBlocksForPpds) {
  HvJobInfo job = FontJob(2, 0, 0x1234);
  job.fontValue18 = 0x0345;
  job.fontValue1A = 0x6789;
  const std::string id = Bytes("\x1B=\x04\x00\x41\x0E\x12\x34");
  const auto block = [](const std::string& data, char last) {
    return "\x1B=" + Le16(static_cast<unsigned>(data.size()) + 8) + "A\x01\x01\x02\x45" +
           "\x67\x89" + last + data;
  };
  for (const char* const file : {"font.pfa", "font.pfb"}) {
    std::string bytes = Type1Head("Times", "StandardEncoding");
    bytes += Counted(5000 - bytes.size());
    EXPECT_EQ(Download(file, bytes, job),
              Sent(HV_OK, id + block(bytes.substr(0, 2048), 2) +
                              block(bytes.substr(2048, 2048), 2) + block(bytes.substr(4096), 1)));
    bytes.resize(4096);
    EXPECT_EQ(Download(file, bytes, job),
              Sent(HV_OK, id + block(bytes.substr(0, 2048), 2) + block(bytes.substr(2048), 1)));
  }
  // A word below 256 goes around zero.
  job.fontValue18 = 0x0001;
  const std::string bytes = "/FontName /T def\n";
  const std::string header = Bytes("\x1B=\x19\x00\x41\x01\x01\xFF\x01\x67\x89\x01");
  EXPECT_EQ(Download("font.pfa", bytes, job), Sent(HV_OK, id + header + bytes));
}

// The sizes of the writes that reach the communication library.
std::vector<std::size_t> Writes(uint32_t code, const std::string& file, const std::string& bytes,
                                HvJobInfo job) {
  const TestFolder folder;
  FakeNbx nbx(TEST_BINARY_FOLDER);
  job.nbxAddress1 = 1;
  job.nbxAddress2 = 2;
  const std::string font = folder.Add(file, bytes);
  EXPECT_EQ(HvFonDownload(font.c_str(), "ignored", &job, STORAGE_DEVICE_RAM), code) << file;
  std::vector<std::size_t> sizes;
  for (const std::string& call : nbx.TakeCalls()) {
    // The last word is the bytes in hexadecimal.
    if (call.rfind("NbxWrite ", 0) == 0) sizes.push_back((call.size() - call.rfind(' ') - 1) / 2);
  }
  return sizes;
}

TEST(FontWrites, ComeInThePiecesThatPrintersAreGivenAndEndWithTheFirstThatFails) {
  const auto expect = [](const char* file, const std::string& bytes, const HvJobInfo& job,
                         std::vector<std::size_t> sizes) {
    SCOPED_TRACE(std::string(file) + " " + std::to_string(job.emulation));
    EXPECT_EQ(Writes(HV_OK, file, bytes, job), sizes);
    for (; !sizes.empty(); sizes.pop_back()) {
      const ScopedVariable fail("FAKE_NBX_FAIL_WRITE", std::to_string(sizes.size()));
      EXPECT_EQ(Writes(HV_PRINTER_REFUSED, file, bytes, job), sizes);
    }
  };
  const std::string font = Field(PclFont({}, {}), 5000, 'x');
  expect("a.sfp", font, FontJob(5), {5, 2048, 2048, 904, 5});
  expect("a.sfp", font, FontJob(6), {5, 6, 64, 2048, 2048, 5000 - 70 - 4096, 5});
  const PclDescriptor scalable = {.size = 80, .format = 10};
  expect("a.sfs", PclFont(scalable, {}), FontJob(5, 0, 123), {3, 3, 1, 86, 5});
  expect("a.sfs", PclFont(scalable, {}), FontJob(6, 0, 123), {3, 3, 1, 6, 64, 16, 5});
  expect("a.dlf", DlfFont().Bytes(), FontJob(2), {7, 6 + 58 + 40});
  const std::string head = Field(Type1Head("T", "StandardEncoding"), 1100, ' ');
  expect("a.pfb", PfbFile({{1, head}, {2, Counted(3000)}}), FontJob(3),
         {103, 1024, 76, 2048, 2048, 1904, 3});
  expect("a.pfa", head, FontJob(3), {103, 1100, 3});
  expect("a.pfa", head, FontJob(2), {8, 12, 1100});
}

}  // namespace
