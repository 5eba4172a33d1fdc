// Support addresses: both forms, what an INI file redirects, and buffers of every size.

#include <gtest/gtest.h>

#include <string>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/test_folder.h"

namespace {

using hvtest::OpenIni;
using hvtest::TestFolder;

const std::string PlainBase = "https://support.example.com/NA";
const std::string DispatchBase = "https://support.example.com/MD/?";

struct Answer {
  uint32_t code;
  std::string buffer;  // all bytes, which were '#' before
};

Answer PathForm(int32_t model, uint32_t topic, uint32_t language, std::size_t size = 100,
                HvIniHandle* ini = nullptr) {
  std::string buffer(100, '#');
  const uint32_t code =
      HvWebGetURL(model, topic, language, buffer.data(), static_cast<uint32_t>(size), ini);
  return {code, buffer};
}

Answer DispatchForm(uint32_t printerA, uint32_t printerB, uint32_t topic, uint32_t languageId,
                    std::size_t size = 150) {
  std::string buffer(150, '#');
  const uint32_t code = HvWebGetCGIURL(printerA, printerB, topic, languageId, buffer.data(),
                                       static_cast<uint32_t>(size), 0xFFFFFFFFU);
  return {code, buffer};
}

// The buffer holds this text, its NUL, and nothing else was written.
void ExpectText(const Answer& answer, const std::string& text) {
  std::string expected = text + '\0';
  expected.resize(answer.buffer.size(), '#');
  EXPECT_EQ(answer.buffer, expected);
}

TEST(WebUrl, NamesTopicLanguageAndPrinter) {
  const struct {
    int32_t model;
    uint32_t topic;
    uint32_t language;
    uint32_t code;
    const char* rest;  // behind the base
  } cases[] = {
      {0, 1, 3, HV_OK, "/drivers/3/8"},
      {-1, 2, 0, HV_OK, "/firmware/0"},
      {3, 3, 22, HV_OK, "/homepage/22/4"},
      {8, 4, 10, HV_OK, "/fleetdesk/10/4"},
      {10, 5, 1, HV_OK, "/registration/1/1"},
      {25, 6, 1, HV_OK, "/supplies/1/1"},
      {19, 7, 1, HV_OK, "/techsupport/1/11"},
      {20, 8, 1, HV_OK, "/publications/1/20"},
      {24, 1, 1, HV_OK, "/drivers/1/24"},
      {26, 1, 1, HV_OK, "/drivers/1/26"},
      {2147483647, 1, 1, HV_OK, "/drivers/1/2147483647"},
      {2, 1, 1, HV_UNKNOWN_MODEL, nullptr},
      {9, 1, 1, HV_UNKNOWN_MODEL, nullptr},
      {11, 1, 1, HV_UNKNOWN_MODEL, nullptr},
      {16, 1, 1, HV_UNKNOWN_MODEL, nullptr},
      {-2, 1, 1, HV_UNKNOWN_MODEL, nullptr},
      {-2147483647 - 1, 1, 1, HV_UNKNOWN_MODEL, nullptr},
      {2, 0, 1, HV_BAD_ARGUMENT, nullptr},
      {2, 9, 1, HV_BAD_ARGUMENT, nullptr},
      {2, 1, 23, HV_BAD_ARGUMENT, nullptr},
      {2, 1, 0xFFFFFFFFU, HV_BAD_ARGUMENT, nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.model << " " << c.topic << " " << c.language);
    const Answer answer = PathForm(c.model, c.topic, c.language);
    EXPECT_EQ(answer.code, c.code);
    ExpectText(answer, c.rest == nullptr ? "" : PlainBase + c.rest);
  }
  EXPECT_EQ(HvWebGetURL(0, 1, 1, nullptr, 100, nullptr), 1U);
}

TEST(WebUrl, NeedsTheAddressAndItsNul) {
  const std::size_t needed = PlainBase.size() + sizeof "/drivers/3/8";
  ExpectText(PathForm(0, 1, 3, needed), PlainBase + "/drivers/3/8");
  for (std::size_t size = 1; size < needed; ++size) {
    const Answer answer = PathForm(0, 1, 3, size);
    EXPECT_EQ(answer.code, 42U) << size;
    ExpectText(answer, "");
  }
  // Nothing can be written into no bytes.
  for (const uint32_t topic : {1U, 9U}) {
    const Answer answer = PathForm(0, topic, 3, 0);
    EXPECT_EQ(answer.code, topic == 1 ? 42U : 1U);
    EXPECT_EQ(answer.buffer, std::string(100, '#'));
  }
}

TEST(WebUrl, IsRedirectedByAFile) {
  const struct {
    const char* file;
    int32_t model;
    std::string address;  // empty for one that does not fit
  } cases[] = {
      {"[AREA]\nDRIVERS=printers/laser\n", 0, PlainBase + "/printers/laser/3/8"},
      {"[area]\ndrivers=\n", 0, PlainBase + "/3/8"},
      {"[AREA]\nFIRMWARE=x\n[PRINTER]\n0=x\n", 0, PlainBase + "/drivers/3/8"},
      {"[PRINTER]\n8=\n", 0, PlainBase + "/drivers/3"},
      {"[PRINTER]\n8=eight\n", 0, PlainBase + "/drivers/3/eight"},
      {"[PRINTER]\n-1=x\n", -1, PlainBase + "/drivers/3"},
      {"[LANGUAGE]\n3=en us\n", -1, PlainBase + "/drivers/en us"},
      {"[LANGUAGE]\n3=\n", 0, PlainBase + "/drivers/8"},
      {"[AREA_PREFIX]\nDRIVERS=ftp://h\n", 0, "ftp://h/drivers/3/8"},
      {"[AREA_PREFIX]\nDRIVERS=\n", 0, "/drivers/3/8"},
      {"[LANGUAGE]\n3=0123456789012345678901234567890123456789012345678901234567\n", -1, ""},
  };
  const TestFolder folder;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    const OpenIni ini(HvIniOpen(folder.Add("web.ini", c.file).c_str()));
    ASSERT_NE(ini, nullptr);
    const Answer answer = PathForm(c.model, 1, 3, 97, ini.get());
    EXPECT_EQ(answer.code, c.address.empty() ? 42U : 0U);
    ExpectText(answer, c.address);
  }
  // All parts made empty: the address is empty, and still needs a byte.
  const OpenIni ini(HvIniOpen(folder
                                  .Add("web.ini",
                                       "[AREA_PREFIX]\nDRIVERS=\n[AREA]\nDRIVERS=\n"
                                       "[LANGUAGE]\n3=\n[PRINTER]\n8=\n")
                                  .c_str()));
  EXPECT_EQ(PathForm(0, 1, 3, 1, ini.get()).code, 0U);
  EXPECT_EQ(PathForm(0, 1, 3, 0, ini.get()).code, 42U);
}

TEST(WebCgiUrl, AsksTheDispatchScript) {
  const struct {
    uint32_t printerA;
    uint32_t printerB;
    uint32_t topic;
    uint32_t languageId;
    const char* rest;  // up to what depends on the system
  } cases[] = {
      {12, 34, 1, 0x0407, "func=drivers&lang=2&prtr=B012034&ctry="},
      {0, 999, 2, 0x0804, "func=firmware&lang=13&prtr=B000999&ctry="},
      {1, 1, 3, 0x0404, "func=homepage&lang=14&prtr=B001001&ctry="},
      {1, 1, 4, 0x0004, "func=fleetdesk&lang=14&prtr=B001001&ctry="},
      {1, 1, 5, 0x0409, "func=registration&lang=0&prtr=B001001&ctry="},
      {1, 1, 6, 0x0C0A, "func=supplies&lang=4&prtr=B001001&ctry="},
      {1000, 4294967295U, 7, 0x041D, "func=support&lang=8&prtr=B10004294967295&ctry="},
      {1, 1, 8, 0x10816, "func=publications&lang=21&prtr=B001001&ctry="},
      {1, 1, 1, 0xFC19, "func=drivers&lang=22&prtr=B001001&ctry="},
      {1, 1, 1, 0x021D, "func=drivers&lang=0&prtr=B001001&ctry="},
  };
  for (const auto& c : cases) {
    const Answer answer = DispatchForm(c.printerA, c.printerB, c.topic, c.languageId);
    EXPECT_EQ(answer.code, 0U);
    const std::string start = DispatchBase + c.rest;
    EXPECT_EQ(answer.buffer.substr(0, start.size()), start);
    // Eight digits of the user's language, then one for the system.
    const std::string text = answer.buffer.c_str();
    EXPECT_EQ(text.substr(start.size()).find_first_not_of("0123456789ABCDEF"), 8U) << text;
    EXPECT_EQ(text.substr(start.size() + 8, 4), "&os=");
    EXPECT_EQ(text.size(), start.size() + 13) << text;
    ExpectText(answer, text);
  }
}

TEST(WebCgiUrl, NeedsOneByteMoreThanTheNul) {
  const std::string address = DispatchForm(12, 34, 1, 0x0407).buffer.c_str();
  for (const std::size_t size : {std::size_t{1}, DispatchBase.size() + 1, address.size() + 1}) {
    const Answer answer = DispatchForm(12, 34, 1, 0x0407, size);
    EXPECT_EQ(answer.code, 42U) << size;
    ExpectText(answer, "");
  }
  const Answer answer = DispatchForm(12, 34, 1, 0x0407, address.size() + 2);
  EXPECT_EQ(answer.code, 0U);
  ExpectText(answer, address);
}

TEST(WebCgiUrl, EmptiesTheBufferOnABadArgument) {
  for (const uint32_t topic : {0U, 9U}) {
    const Answer answer = DispatchForm(12, 34, topic, 0x0407);
    EXPECT_EQ(answer.code, 1U);
    ExpectText(answer, "");
  }
  const Answer answer = DispatchForm(12, 34, 1, 0x0407, 0);
  EXPECT_EQ(answer.code, 1U);
  ExpectText(answer, "");
  EXPECT_EQ(HvWebGetCGIURL(12, 34, 1, 0x0407, nullptr, 150, 0), 1U);
}

}  // namespace
