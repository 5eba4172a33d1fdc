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
};

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
  const auto code = [&](const char* path, const char* destination, const HvJobInfo* info,
                        uint32_t device) { return HvFonDownload(path, destination, info, device); };
  EXPECT_EQ(code(nullptr, out.c_str(), &job, 1), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(font.c_str(), nullptr, &job, 1), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(font.c_str(), out.c_str(), nullptr, 1), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(tooLong.c_str(), out.c_str(), &job, 1), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(font.c_str(), tooLong.c_str(), &job, 1), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(font.c_str(), out.c_str(), &job, 0), HV_BAD_ARGUMENT);
  EXPECT_EQ(code(font.c_str(), out.c_str(), &job, 6), HV_BAD_ARGUMENT);
  for (const int32_t emulation : {-1, 0, 7}) {
    const HvJobInfo bad = FontJob(emulation);
    EXPECT_EQ(code(font.c_str(), out.c_str(), &bad, 1), HV_BAD_ARGUMENT) << emulation;
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"font.sfp"});
}

TEST(FontDownload, RefusesWhatIsNoFontBeforeItReachesThePrinter) {
  const TestFolder folder;
  folder.Add("font.pfb", "");
  const struct {
    std::string file;
    std::string bytes;
    uint32_t code;
  } cases[] = {
      {"a.afm", hvtest::AfmFile("Times"), HV_UNUSABLE_FILE},
      {"a.pfm", hvtest::PfmFile().Bytes(), HV_UNUSABLE_FILE},
      {"a.pcm", hvtest::PcmFile("Z", {}), HV_UNUSABLE_FILE},
      {"a.tfm", "x", HV_UNUSABLE_FILE},
      {"a.fot", "x", HV_UNUSABLE_FILE},
      {"a.txt", PclFont({}, {}), HV_UNUSABLE_FILE},
      {"a.sfp", "no font", HV_UNUSABLE_FILE},
      {"noextension", PclFont({}, {}), HV_BAD_ARGUMENT},
  };
  for (const auto& c : cases) {
    const Sent sent = Download(folder, folder.Add(c.file, c.bytes), FontJob(5));
    EXPECT_EQ(sent.code, c.code) << c.file;
    EXPECT_EQ(sent.bytes, "(none)") << c.file;
  }
  EXPECT_EQ(Download(folder, folder / "missing.sfp", FontJob(5)).code, HV_NOT_FOUND);
  const HvJobInfo job = FontJob(5);
  const std::string font = folder.Add("a.sfp", PclFont({}, {}));
  EXPECT_EQ(HvFonDownload(font.c_str(), (folder / "none/out").c_str(), &job, 1), HV_CANNOT_OPEN);
}

TEST(FontDownload, SendsAPclBitmapFontAsItIs) {
  const TestFolder folder;
  const std::string bytes = PclFont({}, hvtest::SampleCharacters());
  const std::string font = folder.Add("font.sfp", bytes);
  for (const int32_t emulation : {1, 3, 5}) {
    const Sent sent = Download(folder, font, FontJob(emulation));
    EXPECT_EQ(sent.code, HV_OK);
    EXPECT_EQ(sent.bytes, "\x1B*c5D" + bytes + MakePermanent);
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
  const struct {
    const char* name;
    unsigned height;
    int weight;
    unsigned styleLow;
    unsigned symbolSet;
    unsigned format;
    unsigned size;
    const char* sent;
  } cases[] = {
      {"CG Times        ", 200, 3, 0, 277, 0, 64, "CG Times12Bd8U  "},
      {"Courier         ", 200, 3, 0, 277, 0, 64, "Courier12Bd8U   "},
      {"Courier", 215, 0, 0, 277, 0, 64, "Courier138U     "},
      {"Courier", 200, 0, 1, 277, 0, 64, "Courier12It8U   "},
      {"Courier", 200, 0, 2, 277, 0, 64, "Courier12Al8U   "},
      {"Cour Italic", 200, 0, 1, 277, 0, 64, "Cour Italic128U "},
      // What is too long loses its leftmost blanks and points, as many as needed.
      {"A b.c,d:e;f g", 200, 0, 0, 277, 0, 64, "Ab.c,d:e;f g128U"},
      {"A b.c,d:e;f gh i", 200, 0, 0, 277, 0, 64, "Abcde;f gh i128U"},
      // Then vowels, small ones only.
      {"Aeiouy Letter", 200, 3, 1, 277, 0, 64, "AyLetter12BdIt8U"},
      {"AEIOUYaeiouyABCD", 200, 3, 1, 277, 0, 64, "AEIOUYABCD12BdIt"},
      {"UNIVERSUNIVERSXX", 200, 3, 1, 277, 0, 64, "UNIVERSUNIVERSXX"},
      {"                ", 16, 0, 0, 277, 0, 64, "18U             "},
      // Scalable fonts have neither size nor style.
      {"CG Times        ", 200, 3, 1, 277, 10, 80, "CG Times8U      "},
      {"CG Times        ", 200, 3, 1, 0, 11, 88, "CG Times0@      "},
      {"CG Times        ", 200, 3, 1, 65535, 15, 72, "CG Times2047_   "},
  };
  for (const auto& c : cases) {
    PclDescriptor descriptor;
    descriptor.name = c.name;
    descriptor.height = c.height;
    descriptor.strokeWeight = c.weight;
    descriptor.styleLow = c.styleLow;
    descriptor.symbolSet = c.symbolSet;
    descriptor.format = c.format;
    descriptor.size = c.size;
    const std::string bytes = PclFont(descriptor, hvtest::SampleCharacters());
    const Sent sent = Download(folder, folder.Add("font.sfp", bytes), FontJob(6));
    EXPECT_EQ(sent.code, HV_OK) << c.name;
    EXPECT_EQ(sent.bytes, "\x1B*c5D" + Renamed(bytes, c.sent) + MakePermanent) << c.name;
  }
}

TEST(FontDownload, SendsScalableFontsOfEachKind) {
  const TestFolder folder;
  for (const auto& [format, size] : {std::pair{10U, 80U}, {11U, 88U}, {15U, 72U}, {20U, 68U}}) {
    PclDescriptor descriptor;
    descriptor.format = format;
    descriptor.size = size;
    const std::string bytes = PclFont(descriptor, {}) + std::string(5000, '\x77');
    const Sent sent = Download(folder, folder.Add("font.sfs", bytes), FontJob(5, 0, 1234));
    EXPECT_EQ(sent.code, HV_OK);
    EXPECT_EQ(sent.bytes, "\x1B*c1234D" + bytes + MakePermanent);
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
  const struct {
    uint32_t device;
    const char* name;
  } devices[] = {{2, "flash1"}, {3, "flash2"}, {4, "disk1"}, {5, "disk2"}};
  for (const auto& device : devices) {
    EXPECT_EQ(Download(folder, font, job, device.device).bytes,
              header + Uel + "@PJL SET QDOWNLOADTARGET = " + device.name + "\n" + payload + Uel +
                  "@PJL SET QDOWNLOADTARGET = ram\n" + PjlTrailer);
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
  const struct {
    uint16_t identifier;
    std::string command;
  } cases[] = {
      {0, std::string("\x1B=\x03\x00\x31\x08\x00", 7)},
      {99, std::string("\x1B=\x03\x00\x31\x08\x63", 7)},
      {100, std::string("\x1B=\x04\x00\x31\x0E\x00\x64", 8)},
      {0x1234, std::string("\x1B=\x04\x00\x31\x0E\x12\x34", 8)},
  };
  for (const auto& c : cases) {
    for (const int32_t emulation : {2, 5}) {
      const Sent sent = Download(folder, font, FontJob(emulation, 0, c.identifier));
      EXPECT_EQ(sent.code, HV_OK);
      EXPECT_EQ(sent.bytes, c.command + bytes) << c.identifier;
    }
  }
  // No name can be made up for it: the job is complete and empty.
  const Sent sent = Download(folder, font, FontJob(6, JOB_FLAG_PJL));
  EXPECT_EQ(sent.code, HV_CANNOT_OPEN);
  EXPECT_EQ(sent.bytes, Uel + "@PJL ENTER LANGUAGE = PCL\n" + PjlTrailer);
}

TEST(FontDownload, SendsNothingButTheFrameForTrueType) {
  const TestFolder folder;
  const Sent sent =
      Download(folder, folder.Add("font.ttf", "whatever"), FontJob(5, JOB_FLAG_PJL), 3);
  EXPECT_EQ(sent.code, HV_UNUSABLE_FILE);
  EXPECT_EQ(sent.bytes, Uel + "@PJL ENTER LANGUAGE = PCL\n" + Uel +
                            "@PJL SET QDOWNLOADTARGET = flash2\n" + Uel +
                            "@PJL SET QDOWNLOADTARGET = ram\n" + PjlTrailer);
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
    const Sent sent = Download(folder, font, FontJob(emulation));
    EXPECT_EQ(sent.code, HV_OK);
    EXPECT_EQ(sent.bytes, Prologue + bytes + Trailer);
  }
}

TEST(FontDownload, DecodesTheSegmentsOfAPfb) {
  const TestFolder folder;
  const std::string head = Type1Head("Times", "StandardEncoding");
  const std::string binary = Counted(3000);
  const std::string pfb =
      hvtest::PfbFile({{1, head}, {2, binary}, {1, ""}, {2, "\xFF"}, {1, std::string(2500, '0')}});
  const std::string decoded = head + hvtest::ToHex(binary) + "FF" + std::string(2500, '0');
  const Sent whole = Download(folder, folder.Add("font.pfb", pfb + "junk"), FontJob(3));
  EXPECT_EQ(whole.code, HV_OK);
  EXPECT_EQ(whole.bytes, Prologue + decoded + Trailer);

  // A file that breaks off, or goes on as no PFB, ends what can be sent; the job is completed.
  const std::string first = hvtest::PfbFile({{1, head}});
  const std::string text = first.substr(0, first.size() - 2);
  const struct {
    std::string bytes;
    std::string sent;
  } cases[] = {
      {text, head},
      {text + "\x80", head},
      {text + "\x80\x04", head},
      {text + "\x81\x01", head},
      {text + std::string("\x80\x02\x05\x00\x00", 5), head},
      {text + std::string("\x80\x02\x05\x00\x00\x00\xAB\xCD", 8), head + "ABCD"},
      {text + std::string("\x80\x01\xFF\xFF\xFF\xFF", 6) + "tail", head + "tail"},
      {"/FontName /T def\n", ""},
  };
  for (const auto& c : cases) {
    const Sent sent = Download(folder, folder.Add("font.pfb", c.bytes), FontJob(3));
    EXPECT_EQ(sent.code, HV_OK);
    EXPECT_EQ(sent.bytes, Prologue + c.sent + Trailer);
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
  for (const char* const extension : {"pfa", "pfb"}) {
    const std::string file = std::string("font.") + extension;
    std::string bytes = Type1Head("Times", "StandardEncoding");
    bytes += Counted(5000 - bytes.size());
    Sent sent = Download(folder, folder.Add(file, bytes), job);
    EXPECT_EQ(sent.code, HV_OK);
    EXPECT_EQ(sent.bytes, id + block(bytes.substr(0, 2048), 2) +
                              block(bytes.substr(2048, 2048), 2) + block(bytes.substr(4096), 1));
    bytes.resize(4096);
    sent = Download(folder, folder.Add(file, bytes), job);
    EXPECT_EQ(sent.bytes, id + block(bytes.substr(0, 2048), 2) + block(bytes.substr(2048), 1));
  }
}

TEST(FontDownload, TakesTheWordBelow256AroundZero) {
  const TestFolder folder;
  HvJobInfo job = FontJob(2, 0, 1);
  job.fontValue18 = 0x0001;
  const std::string bytes = "/FontName /T def\n";
  EXPECT_EQ(Download(folder, folder.Add("font.pfa", bytes), job).bytes,
            std::string(
                "\x1B=\x04\x00\x41\x0E\x00\x01\x1B=\x19\x00\x41\x01\x01\xFF\x01\x00\x00\x01", 20) +
                bytes);
}

TEST(FontDownload, DoesNotStopForAMissingCompanion) {
  const TestFolder folder;
  HvJobInfo job = FontJob(3);
  job.fontQueryArg = 4;
  const std::string bytes = "/FontName /T def\n";
  const Sent sent = Download(folder, folder.Add("font.pfa", bytes), job);
  EXPECT_EQ(sent.code, HV_OK);
  EXPECT_EQ(sent.bytes, Prologue + bytes + Trailer);
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

  PclDescriptor scalable;
  scalable.format = 10;
  scalable.size = 80;
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
  PclDescriptor scalable;
  scalable.format = 10;
  scalable.size = 80;
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
