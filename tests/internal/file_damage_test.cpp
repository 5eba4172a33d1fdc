// Damaged configuration files, printer replies and archives: read within their bounds or refused.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/damage.h"
#include "support/ini_handle.h"
#include "support/quick_setup_builder.h"
#include "support/reply_records.h"
#include "support/test_folder.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "zip/zip_records.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;
using enum hvtest::Order;

// A value that is written is the one that is read again, from the file too; a file that holds more
// than was read stays as it is.
TEST(FileDamage, OfIniFilesLeavesThemWritable) {
  const auto read = [](const std::string& damaged) {
    const OpenIni before(HvIniOpen2("a.ini", INI_OPEN_READ));
    bool found = false;
    for (const HvIniLine* line = before->lines->next; line != nullptr; line = line->next) {
      EXPECT_LT(std::strlen(line->text), +before->maxLineLength);
    }
    if (const char* value = HvIniRead(before.get(), "two", "SECOND")) found = *value == 'v';
    OpenIni ini(HvIniOpen2("a.ini", INI_OPEN_UPDATE));
    EXPECT_EQ(HvIniWrite(ini.get(), "One", "first", "new"), 1U);
    EXPECT_EQ(HvIniWriteAll(ini.get(), "Two", "list", "more"), 1U);
    HvIniDelete(ini.get(), "Two", "second", nullptr);
    const std::string text = damaged.substr(0, damaged.find('\x1A'));
    const bool isWritable = text.find('\0') == text.npos;
    EXPECT_EQ(HvIniClose(ini.release()), isWritable ? 1U : 0U);
    if (!isWritable) {
      EXPECT_EQ(ReadFile("a.ini"), damaged);
      return found;
    }
    ini.reset(HvIniOpen("a.ini"));
    EXPECT_STREQ(HvIniRead(ini.get(), "ONE", "First"), "new");
    EXPECT_STREQ(HvIniRead(ini.get(), "two", "list"), "more");
    return found;
  };
  MeetDamage("INI", "; comment\r\n[One]\r\nfirst=1\r\n\r\n[Two]\r\nsecond =v\r\nthird=\r\n", {},
             read, "[]=;\n\x1A", "a.ini");
}

TEST(FileDamage, OfPanelFilesGivesWhatFits) {
  const auto read = [](const std::string& /*damaged*/) {
    HvIniHandle* const panel = HvOpcRegisterCfg(31, ".");
    EXPECT_NE(panel, nullptr);
    int32_t limits[3] = {};
    HvOpcGetSpinControlLimits(panel, 0x1A2, &limits[0], &limits[1], &limits[2]);
    const int32_t length = HvOpcGetMaxEditLength(panel, 0x1F);
    EXPECT_TRUE(length >= 0 && length <= 32767) << length;
    uint16_t values[4] = {7, 7, 7, 7};
    const int32_t listed = HvOpcGetTextListing(panel, 0x1A2, 0, values, 6);
    EXPECT_TRUE(listed >= OPC_MISSING && listed <= 3) << listed;
    EXPECT_EQ(values[3], 7);
    HvPageDefault defaults[3] = {};
    const int32_t controls = HvOpcGetPageDefaults(panel, 1, defaults, 2 * sizeof *defaults);
    EXPECT_TRUE(controls >= OPC_MISSING && controls <= 2) << controls;
    EXPECT_EQ(+defaults[2].controlId, 0);
    uint8_t variables[5] = {7, 7, 7, 7, 7};
    const int32_t count = HvOpcGetPageOmVars(panel, 1, variables, 4);
    EXPECT_TRUE(count >= OPC_MISSING && count <= 2) << count;
    EXPECT_EQ(variables[4], 7);
    EXPECT_EQ(HvOpcUnregisterCfg(panel), 1U);
    return listed == 3 && controls == 2 && count == 2;
  };
  MeetDamage("operator panel",
             "[Format]\nStyle=2\n[Combos]\n01a2=10;20;30\n[Edit Lengths]\n001f=40\n"
             "[Spin Limits]\n01a2=1;9;2\n[Dialogs]\n1=Paper\n[Paper]\nNumCtrls=2\n"
             "Defaults=0010;5;0011;7\nNumOMVAR=2\nOMVAR=1A2B 0003\n",
             {}, read, "[=;\n -", "opc031.cfg");
}

// A walk ends, with the codes for an end or for a bad line.
TEST(FileDamage, OfRecordFilesEndsTheWalk) {
  const std::string rest = "\",\"Set size\",\"PCL\",\"1B45\",\"%d\",-1,2.5e1,0.5,\"D\"\n";
  const std::string file = "# records\n\"A1" + rest + "\"A2" + rest + "\"B1" + rest;
  const auto read = [](const std::string& damaged) {
    const int32_t handle = HvDatOpenFile("r.dat", 0, DAT_FILE_COMMANDS);
    EXPECT_GE(handle, 0);
    HvCommandRecord record = {};
    std::strcpy(record.szKey, "A");
    int32_t code = HvDatGetFirstKey(handle, &record);
    std::size_t found = 0;
    for (; code == 0; code = HvDatGetNextKey(handle, &record)) {
      ++found;
      EXPECT_LE(found, damaged.size());
      EXPECT_NE(std::memchr(record.szKey, 0, sizeof record.szKey), nullptr);
      EXPECT_NE(std::memchr(record.szDescr, 0, sizeof record.szDescr), nullptr);
      EXPECT_NE(std::memchr(record.szDuration, 0, sizeof record.szDuration), nullptr);
    }
    ExpectOneOf(code, {DAT_END_OF_FILE, DAT_NO_RECORD, DAT_FAILED});
    EXPECT_EQ(HvDatCloseFile(handle), 0);
    char prefix[sizeof(HvCommandRecord)] = "A";
    const uint32_t count = HvDatQueryCount("r.dat", prefix, DAT_FILE_COMMANDS);
    EXPECT_TRUE(count <= damaged.size() || count == static_cast<uint16_t>(DAT_FAILED)) << count;
    return found == 3 && count == 2;
  };
  MeetDamage("keyed records", file, {}, read, "\",;#\n-e", "r.dat");
}

// What a block gives is a part of the file.
void ExpectBlocks(const std::string& bytes, HvQsfHandle* handle) {
  for (const uint32_t block : {1U, 2U, 5U}) {
    uint8_t* data = nullptr;
    uint16_t count = 0;
    const uint32_t result = HvQsfGetVariables(handle, block, &data, &count);
    ExpectOneOf(result, {handle == nullptr ? HV_BAD_ARGUMENT : HV_OK,
                         handle == nullptr ? HV_BAD_ARGUMENT : HV_UNUSABLE_FILE});
    EXPECT_EQ(data != nullptr, count != 0);
    if (data != nullptr && bytes[5] == 1 && bytes[6] == 1) {
      const std::size_t size = data[0] | data[1] << 8 | data[2] << 16 | data[3] << 24;
      ASSERT_LE(size, bytes.size());
      EXPECT_NE(bytes.find(std::string(reinterpret_cast<char*>(data) + 6, size)), bytes.npos);
    }
    HvMemFree(data);
  }
}

// The checksum finds any change behind the first bytes; where somebody made it fit, the offsets and
// counts still lead nowhere else.
TEST(FileDamage, OfQuickSetupFilesIsFound) {
  QuickSetupFile file;
  file.block1 = {"first block", 4, {}};
  file.block2 = {"second", 0x0102, {}};
  file.block5 = {"the fifth one", 7, {}};
  const std::string whole = file.Bytes();
  const auto open = [&](const std::string& bytes) {
    HvQsfHandle* handle = nullptr;
    const uint32_t code = HvQsfOpen("a.qsf", 3, &handle);
    ExpectOneOf(code,
                {HV_OK, HV_CANNOT_OPEN, HV_WRONG_LANGUAGE, HV_BAD_CHECKSUM, HV_UNKNOWN_MODEL});
    EXPECT_EQ(code == HV_OK, handle != nullptr);
    ExpectBlocks(bytes, handle);
    HvQsfClose(handle);
    return code;
  };
  const auto read = [&](const std::string& damaged) {
    const uint32_t code = open(damaged);
    uint32_t expected = damaged == whole ? HV_OK : HV_BAD_CHECKSUM;
    if (damaged.size() < 74) {
      expected = HV_CANNOT_OPEN;
    } else if (damaged[4] != 3) {
      expected = HV_UNKNOWN_MODEL;
    } else if (damaged.substr(0, 2) != "QS" || damaged[5] >> 1 != 0 || damaged[6] >> 1 != 0) {
      expected = HV_WRONG_LANGUAGE;
    }
    EXPECT_EQ(code, expected);
    return code == HV_OK;
  };
  const auto readSealed = [&](const std::string& damaged) {
    const std::string sealed = WithChecksum(damaged);
    Replace("a.qsf", sealed);
    return open(sealed) == HV_OK;
  };
  const NumberFields numbers = Numbers(LowFirst, 0, {2, 2, 1, 1, 1, 37, 4, 2, 4, 2, 4, 2});
  MeetDamage("quick setup", whole, numbers, read, "", "a.qsf");
  MeetDamage("quick setup, checksum mended", whole, numbers, readSealed);
}

TEST(FileDamage, OfSetupListsGivesAllVariablesOrNone) {
  const auto read = [](const std::string& /*damaged*/) {
    const OpenIni ini(HvIniOpen2("s.ini", INI_OPEN_READ));
    uint8_t* values = nullptr;
    uint16_t count = 0;
    const uint32_t code = HvQsfIniGetSection(ini.get(), QSF_LIST_REQUIRED, 5, &values, &count);
    ExpectOneOf(code, {HV_OK, HV_UNUSABLE_FILE, HV_KEY_MISSING, HV_SECTION_MISSING});
    EXPECT_EQ(code == HV_OK, values != nullptr);
    EXPECT_TRUE(code == HV_OK ? count >= 1 && count <= 4 : count == 0) << count;
    HvMemFree(values);
    return code == HV_OK;
  };
  MeetDamage("setup list", "[005REQUIRED]\nNUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=3\n", {},
             read, "[=\n 129-", "s.ini");
}

TEST(FileDamage, OfDescribedFilesIsListedOrNot) {
  const auto read = [](const std::string& /*damaged*/) {
    uint16_t count = 0;
    HvConfigFileEntry* const list = HvDatQueryFiles(".", DAT_KIND_CFG, &count);
    EXPECT_LE(count, 1);
    EXPECT_EQ(count == 1, list != nullptr);
    EXPECT_TRUE(list == nullptr || std::strlen(list->description) < sizeof list->description);
    HvDatQueryFilesFree(list);
    return count == 1;
  };
  MeetDamage("described file", "x #! Two-sided, stapled and punched, in the upper tray\nrest\n", {},
             read, "#!\n", "a.cfg");
}

TEST(FileDamage, OfRedirectionsGivesAnAddressOrACode) {
  const auto read = [](const std::string& /*damaged*/) {
    const OpenIni ini(HvIniOpen2("w.ini", INI_OPEN_READ));
    char address[40];
    std::memset(address, '#', sizeof address);
    const uint32_t code = HvWebGetURL(0, WEB_TOPIC_DRIVERS, 3, address, sizeof address, ini.get());
    ExpectOneOf(code, {HV_OK, HV_BUFFER_TOO_SMALL});
    EXPECT_NE(std::memchr(address, 0, sizeof address), nullptr);
    EXPECT_EQ(code == HV_OK, *address != '\0');
    return std::string(address) == "ftp://h/a/l/p";
  };
  MeetDamage("address redirection",
             "[AREA_PREFIX]\nDRIVERS=ftp://h\n[AREA]\nDRIVERS=a\n[LANGUAGE]\n3=l\n[PRINTER]\n8=p\n",
             {}, read, "[=\n", "w.ini");
}

// Records stay within what the reply can hold, and describing them reads all that they point to.
TEST(FileDamage, OfRepliesStaysWithinTheirBounds) {
  const ReplyLayout wide = {{{"ID", 2}, {"DT", 1}}, {{"NE", 4}, {"LD", 4}}, {{"LD", 4}, {"DA", 0}}};
  std::string job;
  std::string device;
  const struct {
    const char* name;
    std::vector<ReplyItem> items;
    ReplyLayout layout;
    std::size_t width;  // of counts and lengths
  } samples[] = {
      {"option information", SampleOptions(), {}, 2},
      {"option information, wide", SampleOptions(), wide, 4},
      {"job accounting alert", SampleAlert(&job, &device), {}, 2},
      {"job accounting alert, wide", SampleAlert(&job, &device), wide, 4},
  };
  for (const auto& sample : samples) {
    const std::string whole = Reply(sample.items, sample.layout);
    const auto read = [&](std::string reply) {
      if (reply.size() < whole.size()) {
        reply.resize(std::max<std::size_t>(reply.size(), 2));
        reply.replace(
            0, 2,
            {static_cast<char>((reply.size() - 2) >> 8), static_cast<char>(reply.size() - 2)});
      }
      const ReplyBlock block(reply);
      const OptionInfo info(HvParseOptionInfo(block.Address()), HvFreeOptionInfo);
      const std::string description = Describe(info);
      EXPECT_LE(description.size() / 32, block.Size());
      const JobAccount record(HvParseJobAccountingAlert(block.Address()), HvFreeJobAccount);
      if (record == nullptr) ADD_FAILURE() << "no record";
      if (record->jobBlock != nullptr) {
        EXPECT_LT(std::strlen(record->jobBlock->j1Item7), 10U);
        EXPECT_LT(std::strlen(record->jobBlock->j2Item3), 21U);
      }
      if (record->deviceBlock != nullptr) {
        EXPECT_LT(std::strlen(record->deviceBlock->d2Item8), 10U);
      }
      return description != "" || record->jobBlock != nullptr;
    };
    MeetDamage(
        sample.name, whole,
        Numbers(HighFirst, 0, {2}) + NumbersAnywhere(HighFirst, 4, whole.size(), sample.width),
        read, ":,{}", "");
  }
}

uint32_t Get32(const std::string& bytes, std::size_t at) {
  uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

// Extracts the archive into a folder, where no file may be longer than its headers declare and one
// buffer. Gives the result and the number of files.
std::pair<uint32_t, std::size_t> ExpectBounded(const ZipArchive& zip) {
  constexpr std::size_t OneBuffer = 2048;
  std::size_t most = 0;
  for (const std::size_t at : zip.locals) {
    most = std::max<std::size_t>(most, Get32(zip.bytes, at + 22));
  }
  for (const std::size_t at : zip.entries) {
    most = std::max<std::size_t>(most, Get32(zip.bytes, at + 24));
  }
  fs::create_directory("out");
  uint32_t code = 0;
  {
    const ScopedCurrentFolder inside("out");
    code = HvZipExplode("../a.zip", nullptr, nullptr);
  }
  ExpectOneOf(code,
              {HV_OK, HV_NOT_FOUND, HV_ARCHIVE_ENDED, HV_UNUSABLE_FILE, HV_SHARING_VIOLATION});
  std::size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator("out")) {
    if (!entry.is_regular_file()) continue;
    EXPECT_LE(entry.file_size(), most + OneBuffer) << entry.path();
    ++files;
  }
  for (const auto& entry : fs::directory_iterator("out")) fs::remove_all(entry);
  return {code, files};
}

TEST(FileDamage, OfArchivesLeadsNowhereElse) {
  const std::string text = MixedContent();
  const ZipArchive whole =
      BuildZip({Packed("dir/deflated", text, 8, DeflateDynamic(text)),
                Packed("imploded", text, 6, Implode(text, false, true), 4), Stored("stored", text)},
               "a comment");
  NumberFields numbers = NumbersOf(hv::EndOfDirectory, whole.end);
  for (const std::size_t at : whole.locals) numbers = numbers + NumbersOf(hv::LocalHeader, at);
  for (const std::size_t at : whole.entries) numbers = numbers + NumbersOf(hv::DirectoryEntry, at);
  const auto read = [&](const std::string& damaged) {
    ZipArchive zip = whole;
    const bool isCut = damaged.size() < whole.end + 22;
    if (!isCut) zip.bytes = damaged;
    const auto [code, files] = ExpectBounded(zip);
    EXPECT_TRUE(!isCut || (code == HV_UNUSABLE_FILE && files == 0)) << code;
    return code == HV_OK && files == 3;
  };
  MeetDamage("zip archive", whole.bytes, numbers, read, "/\\.", "a.zip");
}

TEST(FileDamage, OfPackedDataYieldsNoMoreThanDeclared) {
  const std::string text = MixedContent();
  for (const Packing& packing : Packings) {
    const auto read = [&](const std::string& damaged) {
      ZipMember member = Packed("member", text, packing.method, damaged, packing.flags);
      const ZipArchive zip = BuildZip({member});
      Replace("a.zip", zip.bytes);
      return ExpectBounded(zip).first == HV_OK;
    };
    MeetDamage("zip: " + std::string(packing.name), packing.pack(text), {}, read);
  }
}

}  // namespace
