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

using hvtest::Field;
using hvtest::PclDescriptor;
using hvtest::PclFont;
using hvtest::TestFolder;
using hvtest::Type1Head;

const std::string Uel = "\x1B%-12345X";
const std::string PjlTrailer = Uel + "@PJL RDYMSG DISPLAY = \"\"\n" + Uel;
const std::string MakePermanent = "\x1B*c5F";

const std::string Prologue = std::string(
    "%% BeginExitServer 0\n% Adobe Type 1 download\r\n\r\n serverdict begin   0   exitserver  \n"
    "%% EndExitServer\n",
    103);
const std::string Trailer = "%!\x04";

HvJobInfo FontJob(int32_t emulation, uint32_t flags = 0, uint16_t identifier = 5) {
  HvJobInfo job = hvtest::Job(flags, emulation);
  job.identifier = identifier;
  return job;
}

struct Sent {
  uint32_t code;
  std::string bytes;
  bool operator==(const Sent&) const = default;
};

void PrintTo(const Sent& sent, std::ostream* out) {
  *out << "code " << sent.code << ": " << testing::PrintToString(sent.bytes);
}

// Downloads to a file that is not there before.
Sent Download(const TestFolder& folder, const std::string& font, const HvJobInfo& job,
              uint32_t device = STORAGE_DEVICE_RAM) {
  const std::string destination = folder / "printer.out";
  std::filesystem::remove(destination);
  const uint32_t code = HvFonDownload(font.c_str(), destination.c_str(), &job, device);
  return {code, std::filesystem::exists(destination) ? hvtest::ReadFile(destination) : "(none)"};
}

TEST(FontDownload, ChecksArgumentsBeforeItReachesThePrinter) {
  const TestFolder folder;
  const std::string font = folder.Add("font.sfp", PclFont({}, {}));
  const std::string out = folder / "out";
  const std::string tooLong(261, 'x');
  const HvJobInfo job = FontJob(5);
  const auto expectBad = [](const char* path, const char* destination, const HvJobInfo* info,
                            uint32_t device) {
    EXPECT_EQ(HvFonDownload(path, destination, info, device), HV_BAD_ARGUMENT) << device;
  };
  expectBad(nullptr, out.c_str(), &job, 1);
  expectBad(font.c_str(), nullptr, &job, 1);
  expectBad(font.c_str(), out.c_str(), nullptr, 1);
  expectBad(tooLong.c_str(), out.c_str(), &job, 1);
  expectBad(font.c_str(), tooLong.c_str(), &job, 1);
  for (const uint32_t device : {0U, 6U}) expectBad(font.c_str(), out.c_str(), &job, device);
  for (const int32_t emulation : {-1, 0, 7}) {
    const HvJobInfo bad = FontJob(emulation);
    expectBad(font.c_str(), out.c_str(), &bad, 1);
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"font.sfp"});
}

TEST(FontDownload, RefusesWhatIsNoFontBeforeItReachesThePrinter) {
  const TestFolder folder;
  folder.Add("font.pfb", "");
  const std::pair<const char*, std::string> files[] = {
      {"a.afm", hvtest::AfmFile("Times")},
      {"a.pfm", hvtest::PfmFile().Bytes()},
      {"a.pcm", hvtest::PcmFile("Z", {})},
      {"a.tfm", "x"},
      {"a.fot", "x"},
      {"a.txt", PclFont({}, {})},
      {"a.sfp", "no font"},
  };
  for (const auto& [file, bytes] : files) {
    EXPECT_EQ(Download(folder, folder.Add(file, bytes), FontJob(5)),
              (Sent{HV_UNUSABLE_FILE, "(none)"}))
        << file;
  }
  EXPECT_EQ(Download(folder, folder.Add("noextension", PclFont({}, {})), FontJob(5)),
            (Sent{HV_BAD_ARGUMENT, "(none)"}));
  EXPECT_EQ(Download(folder, folder / "missing.sfp", FontJob(5)), (Sent{HV_NOT_FOUND, "(none)"}));
  const HvJobInfo job = FontJob(5);
  const std::string font = folder.Add("a.sfp", PclFont({}, {}));
  EXPECT_EQ(HvFonDownload(font.c_str(), (folder / "none/out").c_str(), &job, 1), HV_CANNOT_OPEN);
}

TEST(FontDownload, SendsAPclBitmapFontAsItIs) {
  const TestFolder folder;
  const std::string bytes = PclFont({}, hvtest::SampleCharacters());
  const std::string font = folder.Add("font.sfp", bytes);
  for (const int32_t emulation : {1, 3, 5}) {
    EXPECT_EQ(Download(folder, font, FontJob(emulation)),
              (Sent{HV_OK, "\x1B*c5D" + bytes + MakePermanent}));
  }
  EXPECT_EQ(Download(folder, font, FontJob(5, 0, 65535)).bytes,
            "\x1B*c65535D" + bytes + MakePermanent);
}

TEST(FontDownload, AppendsToAFile) {
  const TestFolder folder;
  const std::string bytes = PclFont({}, {});
  const std::string font = folder.Add("font.sfp", bytes);
  const std::string out = folder.Add("out", "before");
  const HvJobInfo job = FontJob(5);
  EXPECT_EQ(HvFonDownload(font.c_str(), out.c_str(), &job, 1), HV_OK);
  EXPECT_EQ(hvtest::ReadFile(out), "before\x1B*c5D" + bytes + MakePermanent);
  // A font appended to itself would never end.
  EXPECT_EQ(HvFonDownload(font.c_str(), font.c_str(), &job, 1), HV_CANNOT_OPEN);
  EXPECT_EQ(hvtest::ReadFile(font), bytes);
}

// The file with the 16 name bytes replaced; the name of a descriptor lies behind the command.
std::string Renamed(std::string file, const std::string& name) {
  return file.replace(file.find('W') + 1 + 48, 16, name);
}

TEST(FontDownload, NamesAFontForPclXlByItsDescriptor) {
  const TestFolder folder;
  const std::pair<PclDescriptor, const char*> cases[] = {
      {{.strokeWeight = 3, .name = "CG Times        "}, "CG Times12Bd8U  "},
      {{.strokeWeight = 3}, "Courier12Bd8U   "},
      {{.height = 215, .name = "Courier"}, "Courier138U     "},
      {{.styleLow = 1}, "Courier12It8U   "},
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
    const std::string bytes = PclFont(descriptor, hvtest::SampleCharacters());
    EXPECT_EQ(Download(folder, folder.Add("font.sfp", bytes), FontJob(6)),
              (Sent{HV_OK, "\x1B*c5D" + Renamed(bytes, name) + MakePermanent}));
  }
}

TEST(FontDownload, SendsScalableFontsOfEachKind) {
  const TestFolder folder;
  for (const auto& [format, size] : {std::pair{10U, 80U}, {11U, 88U}, {15U, 72U}, {20U, 68U}}) {
    const std::string bytes =
        PclFont({.size = size, .format = format}, {}) + std::string(5000, '\x77');
    EXPECT_EQ(Download(folder, folder.Add("font.sfs", bytes), FontJob(5, 0, 1234)),
              (Sent{HV_OK, "\x1B*c1234D" + bytes + MakePermanent}));
  }
}

TEST(FontDownload, FramesTheFontAndDirectsItToADevice) {
  const TestFolder folder;
  const std::string bytes = PclFont({}, {});
  const std::string font = folder.Add("font.sfp", bytes);
  const std::string payload = "\x1B*c5D" + bytes + MakePermanent;

  HvJobInfo job = FontJob(5, JOB_FLAG_PJL);
  job.jobName = "Fonts";
  job.copies = 7;  // none are asked for
  const std::string header = Uel + "@PJL RDYMSG DISPLAY = \"Fonts\"\n@PJL ENTER LANGUAGE = PCL\n";
  EXPECT_EQ(Download(folder, font, job, STORAGE_DEVICE_RAM).bytes, header + payload + PjlTrailer);
  const char* const devices[] = {"flash1", "flash2", "disk1", "disk2"};
  for (uint32_t device = STORAGE_DEVICE_FLASH1; device <= STORAGE_DEVICE_DISK2; ++device) {
    EXPECT_EQ(Download(folder, font, job, device).bytes,
              header + Uel + "@PJL SET QDOWNLOADTARGET = " + devices[device - 2] + "\n" + payload +
                  Uel + "@PJL SET QDOWNLOADTARGET = ram\n" + PjlTrailer);
  }
  // The same to a disk under a name made up for PCL XL.
  job.emulation = 6;
  EXPECT_EQ(Download(folder, font, job, STORAGE_DEVICE_DISK1).bytes,
            header + Uel + "@PJL SET QDOWNLOADTARGET = disk1\n\x1B*c5D" +
                Renamed(bytes, "Courier128U     ") + MakePermanent + Uel +
                "@PJL SET QDOWNLOADTARGET = ram\n" + PjlTrailer);

  const std::string select("\x1B[K\x03\x00\x06\x31\x02", 8);
  const std::string copies = "\x1B&l7X";
  job.emulation = 5;
  job.flags = JOB_FLAG_ESC_K;
  EXPECT_EQ(Download(folder, font, job, STORAGE_DEVICE_RAM).bytes, select + copies + payload);
  job.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
  const std::string leadIn("\x1B[K\x01\x00\x01", 6);
  const std::string toDevice("\x1B[K\x03\x00\x06\xC0\x31", 8);
  const std::string toRam("\x1B[K\x03\x00\x06\xC0\x32", 8);
  EXPECT_EQ(Download(folder, font, job, STORAGE_DEVICE_DISK1).bytes,
            select + copies + leadIn + toDevice + payload + toRam);
}

TEST(FontDownload, SendsDlfFontsWithThePpdsIdentifier) {
  const TestFolder folder;
  const std::string bytes = hvtest::DlfFont().Bytes();
  const std::string font = folder.Add("font.dlf", bytes);
  const std::pair<uint16_t, std::string> commands[] = {
      {0, std::string("\x1B=\x03\x00\x31\x08\x00", 7)},
      {99, std::string("\x1B=\x03\x00\x31\x08\x63", 7)},
      {100, std::string("\x1B=\x04\x00\x31\x0E\x00\x64", 8)},
      {0x1234, std::string("\x1B=\x04\x00\x31\x0E\x12\x34", 8)},
  };
  for (const auto& [identifier, command] : commands) {
    for (const int32_t emulation : {2, 5}) {
      EXPECT_EQ(Download(folder, font, FontJob(emulation, 0, identifier)),
                (Sent{HV_OK, command + bytes}));
    }
  }
  // No name can be made up for it: the job is complete and empty.
  EXPECT_EQ(Download(folder, font, FontJob(6, JOB_FLAG_PJL)),
            (Sent{HV_CANNOT_OPEN, Uel + "@PJL ENTER LANGUAGE = PCL\n" + PjlTrailer}));
}

TEST(FontDownload, SendsNothingButTheFrameForTrueType) {
  const TestFolder folder;
  EXPECT_EQ(Download(folder, folder.Add("font.ttf", "whatever"), FontJob(5, JOB_FLAG_PJL), 3),
            (Sent{HV_UNUSABLE_FILE, Uel + "@PJL ENTER LANGUAGE = PCL\n" + Uel +
                                        "@PJL SET QDOWNLOADTARGET = flash2\n" + Uel +
                                        "@PJL SET QDOWNLOADTARGET = ram\n" + PjlTrailer}));
}

std::string Counted(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i * 7 + i / 256);
  return bytes;
}

TEST(FontDownload, WrapsAPfaForThePostScriptServer) {
  const TestFolder folder;
  const std::string bytes =
      Type1Head("Times", "StandardEncoding") + std::string(5000, 'A') + "\r\ncleartomark";
  const std::string font = folder.Add("font.pfa", bytes);
  for (const int32_t emulation : {1, 3, 5, 6}) {
    EXPECT_EQ(Download(folder, font, FontJob(emulation)),
              (Sent{HV_OK, Prologue + bytes + Trailer}));
  }
  HvJobInfo job = FontJob(3);
  job.fontQueryArg = 4;  // a missing companion does not stop it
  EXPECT_EQ(Download(folder, font, job), (Sent{HV_OK, Prologue + bytes + Trailer}));
}

TEST(FontDownload, DecodesTheSegmentsOfAPfb) {
  const TestFolder folder;
  const std::string head = Type1Head("Times", "StandardEncoding");
  const std::string binary = Counted(3000);
  const std::string pfb =
      hvtest::PfbFile({{1, head}, {2, binary}, {1, ""}, {2, "\xFF"}, {1, std::string(2500, '0')}});
  const std::string decoded = head + hvtest::ToHex(binary) + "FF" + std::string(2500, '0');
  // A file that breaks off, or goes on as no PFB, ends what can be sent; the job is completed.
  const std::string first = hvtest::PfbFile({{1, head}});
  const std::string text = first.substr(0, first.size() - 2);
  const std::pair<std::string, std::string> cases[] = {
      {pfb + "junk", decoded},
      {text, head},
      {text + "\x80", head},
      {text + "\x80\x04", head},
      {text + "\x81\x01", head},
      {text + std::string("\x80\x02\x05\x00\x00", 5), head},
      {text + std::string("\x80\x02\x05\x00\x00\x00\xAB\xCD", 8), head + "ABCD"},
      {text + std::string("\x80\x01\xFF\xFF\xFF\xFF", 6) + "tail", head + "tail"},
      {"/FontName /T def\n", ""},
  };
  for (const auto& [bytes, sent] : cases) {
    EXPECT_EQ(Download(folder, folder.Add("font.pfb", bytes), FontJob(3)),
              (Sent{HV_OK, Prologue + sent + Trailer}));
  }
}

TEST(FontDownload, CutsAType1FontIntoBlocksForPpds) {
  const TestFolder folder;
  HvJobInfo job = FontJob(2, 0, 0x1234);
  job.fontValue18 = 0x0345;
  job.fontValue1A = 0x6789;
  const std::string id("\x1B=\x04\x00\x41\x0E\x12\x34", 8);
  const auto block = [](const std::string& data, char last) {
    return "\x1B=" + hvtest::Le16(static_cast<unsigned>(data.size()) + 8) + "A\x01\x01\x02\x45" +
           "\x67\x89" + last + data;
  };
  for (const char* const file : {"font.pfa", "font.pfb"}) {
    std::string bytes = Type1Head("Times", "StandardEncoding");
    bytes += Counted(5000 - bytes.size());
    EXPECT_EQ(Download(folder, folder.Add(file, bytes), job),
              (Sent{HV_OK, id + block(bytes.substr(0, 2048), 2) +
                               block(bytes.substr(2048, 2048), 2) + block(bytes.substr(4096), 1)}));
    bytes.resize(4096);
    EXPECT_EQ(Download(folder, folder.Add(file, bytes), job).bytes,
              id + block(bytes.substr(0, 2048), 2) + block(bytes.substr(2048), 1));
  }
  // A word below 256 goes around zero.
  job.fontValue18 = 0x0001;
  const std::string bytes = "/FontName /T def\n";
  EXPECT_EQ(Download(folder, folder.Add("font.pfa", bytes), job).bytes,
            id + std::string("\x1B=\x19\x00\x41\x01\x01\xFF\x01\x67\x89\x01", 12) + bytes);
}

// The writes that reach the communication library, each as its bytes in hexadecimal.
class FontWrites : public testing::Test {
 protected:
  uint32_t Send(const std::string& file, const std::string& bytes, HvJobInfo job) {
    job.nbxAddress1 = 1;
    job.nbxAddress2 = 2;
    const std::string font = folder_.Add(file, bytes);
    return HvFonDownload(font.c_str(), "ignored", &job, STORAGE_DEVICE_RAM);
  }

  std::vector<std::string> Taken() {
    std::vector<std::string> writes;
    for (const std::string& call : nbx_.TakeCalls()) {
      if (call.rfind("NbxWrite ", 0) == 0) writes.push_back(call.substr(call.rfind(' ') + 1));
    }
    return writes;
  }

  std::vector<std::size_t> Sizes() {
    std::vector<std::size_t> sizes;
    for (const std::string& write : Taken()) sizes.push_back(write.size() / 2);
    return sizes;
  }

  TestFolder folder_;
  hvtest::FakeNbx nbx_{TEST_BINARY_FOLDER};
};

TEST_F(FontWrites, ComeInThePiecesThatPrintersAreGiven) {
  using Sizes = std::vector<std::size_t>;
  const std::string font = Field(PclFont({}, {}), 5000, 'x');
  EXPECT_EQ(Send("a.sfp", font, FontJob(5)), HV_OK);
  EXPECT_EQ(this->Sizes(), (Sizes{5, 2048, 2048, 904, 5}));
  EXPECT_EQ(Send("a.sfp", font, FontJob(6)), HV_OK);
  EXPECT_EQ(this->Sizes(), (Sizes{5, 6, 64, 2048, 2048, 5000 - 70 - 4096, 5}));

  const PclDescriptor scalable = {.size = 80, .format = 10};
  EXPECT_EQ(Send("a.sfs", Field(PclFont(scalable, {}), 2049, 'x'), FontJob(5, 0, 123)), HV_OK);
  EXPECT_EQ(this->Sizes(), (Sizes{3, 3, 1, 2048, 1, 5}));
  EXPECT_EQ(Send("a.sfs", PclFont(scalable, {}), FontJob(6, 0, 123)), HV_OK);
  EXPECT_EQ(this->Sizes(), (Sizes{3, 3, 1, 6, 64, 16, 5}));

  const std::string head = Field(Type1Head("T", "StandardEncoding"), 1100, ' ');
  const std::string pfb = hvtest::PfbFile({{1, head}, {2, Counted(3000)}});
  EXPECT_EQ(Send("a.pfb", pfb, FontJob(3)), HV_OK);
  EXPECT_EQ(this->Sizes(), (Sizes{103, 1024, 76, 2048, 2048, 1904, 3}));
  EXPECT_EQ(Send("a.pfa", head, FontJob(2)), HV_OK);
  EXPECT_EQ(this->Sizes(), (Sizes{8, 12, 1100}));
}

TEST_F(FontWrites, EndWithTheFirstThatFails) {
  const hvtest::ScopedVariable failing("FAKE_NBX_FAIL", "NbxWrite");
  const PclDescriptor scalable = {.size = 80, .format = 10};
  const std::string type1 = hvtest::PfbFile({{1, Type1Head("T", "StandardEncoding")}});
  const struct {
    const char* file;
    std::string bytes;
    int32_t emulation;
  } cases[] = {
      {"a.sfp", PclFont({}, {}), 5},
      {"a.sfp", PclFont({}, {}), 6},
      {"a.sfs", PclFont(scalable, {}), 5},
      {"a.sfs", PclFont(scalable, {}), 6},
      {"a.pfa", type1, 3},
      {"a.pfb", type1, 3},
      {"a.pfb", type1, 2},
      {"a.dlf", hvtest::DlfFont().Bytes(), 2},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Send(c.file, c.bytes, FontJob(c.emulation)), HV_PRINTER_REFUSED) << c.file;
    EXPECT_EQ(Taken().size(), 1U) << c.file << " " << c.emulation;
  }
}

}  // namespace
