// Support addresses: both forms, what an INI file redirects, and buffers of every size.

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

const std::string PlainBase = "https://support.example.com/NA";
const std::string DispatchBase = "https://support.example.com/MD/?";

// Code and address, or "untouched"; "@" stands for the base of an address. The buffer, which was
// filled with '#', must hold the address, its NUL, and nothing else.
std::string Show(uint32_t code, const std::string& buffer) {
  std::string text = buffer.c_str();
  if (buffer.find('\0') == std::string::npos) {
    text = buffer.find_first_not_of('#') == std::string::npos ? "untouched" : buffer;
  } else {
    EXPECT_EQ(buffer.find_first_not_of('#', text.size() + 1), std::string::npos) << text;
  }
  for (const std::string& base : {PlainBase, DispatchBase}) {
    if (text.rfind(base, 0) == 0) text.replace(0, base.size(), "@");
  }
  return std::to_string(code) + " " + text;
}

std::string PathForm(int32_t model, uint32_t topic, uint32_t language, uint32_t size = 100,
                     const OpenIni& ini = nullptr) {
  std::string buffer(100, '#');
  const uint32_t code = HvWebGetURL(model, topic, language, buffer.data(), size, ini.get());
  return Show(code, buffer);
}

std::string DispatchForm(uint32_t printerA, uint32_t printerB, uint32_t topic, uint32_t languageId,
                         std::size_t size = 150) {
  std::string buffer(150, '#');
  const uint32_t code = HvWebGetCGIURL(printerA, printerB, topic, languageId, buffer.data(),
                                       static_cast<uint32_t>(size), 0xFFFFFFFFU);
  return Show(code, buffer);
}

TEST(WebUrl, NamesTopicLanguageAndPrinter) {
  const std::tuple<int32_t, uint32_t, uint32_t, const char*> cases[] = {
      {0, 1, 3, "0 @/drivers/3/8"},
      {-1, 2, 0, "0 @/firmware/0"},
      {3, 3, 22, "0 @/homepage/22/4"},
      {8, 4, 10, "0 @/fleetdesk/10/4"},
      {25, 6, 1, "0 @/supplies/1/1"},
      {10, 5, 1, "0 @/registration/1/1"},
      {19, 7, 1, "0 @/techsupport/1/11"},
      {20, 8, 1, "0 @/publications/1/20"},
      {26, 1, 1, "0 @/drivers/1/26"},
      {2, 1, 1, "44 "},
      {INT32_MAX, 1, 1, "0 @/drivers/1/2147483647"},
      {11, 1, 1, "44 "},
      {INT32_MIN, 1, 1, "44 "},
      {2, 0, 1, "1 "},
      {2, 9, 1, "1 "},
      {2, 1, 23, "1 "},
  };
  for (const auto& [model, topic, language, expected] : cases) {
    EXPECT_EQ(PathForm(model, topic, language), expected)
        << model << " " << topic << " " << language;
  }
  EXPECT_EQ(HvWebGetURL(0, 1, 1, nullptr, 100, nullptr), 1U);
}

TEST(WebUrl, NeedsTheAddressAndItsNul) {
  const auto needed = static_cast<uint32_t>(PlainBase.size() + sizeof "/drivers/3/8");
  EXPECT_EQ(PathForm(0, 1, 3, needed), "0 @/drivers/3/8");
  for (uint32_t size = 1; size < needed; ++size) EXPECT_EQ(PathForm(0, 1, 3, size), "42 ") << size;
  // Nothing can be written into no bytes.
  EXPECT_EQ(PathForm(0, 1, 3, 0), "42 untouched");
}

TEST(WebUrl, IsRedirectedByAFile) {
  const std::tuple<const char*, int32_t, const char*> cases[] = {
      {"[AREA]\nDRIVERS=printers/laser\n", 0, "0 @/printers/laser/3/8"},
      {"[area]\ndrivers=\n", 0, "0 @/3/8"},
      {"[PRINTER]\n8=\n", 0, "0 @/drivers/3"},
      {"[PRINTER]\n-1=x\n", -1, "0 @/drivers/3"},
      {"[LANGUAGE]\n3=en us\n", -1, "0 @/drivers/en us"},
      {"[LANGUAGE]\n3=\n", 0, "0 @/drivers/8"},
      {"[AREA_PREFIX]\nDRIVERS=ftp://h\n", 0, "0 ftp://h/drivers/3/8"},
      {"[AREA_PREFIX]\nDRIVERS=\n", 0, "0 /drivers/3/8"},
      {"[LANGUAGE]\n3=0123456789012345678901234567890123456789012345678901234567\n", -1, "42 "},
  };
  const TestFolder folder;
  const auto open = [&](const char* text) {
    return OpenIni(HvIniOpen(folder.Add("web.ini", text).c_str()));
  };
  for (const auto& [file, model, expected] : cases) {
    EXPECT_EQ(PathForm(model, 1, 3, 97, open(file)), expected) << file;
  }
  // All parts made empty: the address is empty, and still needs a byte.
  const OpenIni ini =
      open("[AREA_PREFIX]\nDRIVERS=\n[AREA]\nDRIVERS=\n[LANGUAGE]\n3=\n[PRINTER]\n8=\n");
  EXPECT_EQ(PathForm(0, 1, 3, 1, ini), "0 ");
  EXPECT_EQ(PathForm(0, 1, 3, 0, ini), "42 untouched");
}

TEST(WebCgiUrl, AsksTheDispatchScript) {
  // Printer, topic and language; the address up to what depends on the system.
  const std::tuple<uint32_t, uint32_t, uint32_t, uint32_t, const char*> cases[] = {
      {12, 34, 1, 0x0407, "0 @func=drivers&lang=2&prtr=B012034&ctry="},
      {0, 999, 2, 0x0804, "0 @func=firmware&lang=13&prtr=B000999&ctry="},
      {1, 1, 3, 0x0404, "0 @func=homepage&lang=14&prtr=B001001&ctry="},
      {1, 1, 4, 0x0004, "0 @func=fleetdesk&lang=14&prtr=B001001&ctry="},
      {1, 1, 5, 0x0409, "0 @func=registration&lang=0&prtr=B001001&ctry="},
      {1, 1, 6, 0x0C0A, "0 @func=supplies&lang=4&prtr=B001001&ctry="},
      {1000, 4294967295U, 7, 0x041D, "0 @func=support&lang=8&prtr=B10004294967295&ctry="},
      {1, 1, 8, 0x10816, "0 @func=publications&lang=21&prtr=B001001&ctry="},
      {1, 1, 1, 0xFC19, "0 @func=drivers&lang=22&prtr=B001001&ctry="},
      {1, 1, 1, 0x021D, "0 @func=drivers&lang=0&prtr=B001001&ctry="},
  };
  for (const auto& [printerA, printerB, topic, languageId, expected] : cases) {
    // Eight digits of the user's language, then one for the system.
    const std::string answer = DispatchForm(printerA, printerB, topic, languageId);
    const std::size_t country = answer.find("ctry=") + 5;
    EXPECT_EQ(answer.substr(0, country), expected);
    EXPECT_EQ(answer.find_first_not_of("0123456789ABCDEF", country), country + 8) << answer;
    EXPECT_EQ(answer.substr(country + 8, 4), "&os=");
    EXPECT_EQ(answer.size(), country + 13) << answer;
  }
}

TEST(WebCgiUrl, NeedsOneByteMoreThanTheNul) {
  const std::string whole = DispatchForm(12, 34, 1, 0x0407);
  const std::size_t length = DispatchBase.size() + whole.size() - sizeof "0 @" + 1;
  EXPECT_EQ(DispatchForm(12, 34, 1, 0x0407, length + 2), whole);
  for (const std::size_t size : {std::size_t{1}, DispatchBase.size() + 1, length + 1}) {
    EXPECT_EQ(DispatchForm(12, 34, 1, 0x0407, size), "42 ") << size;
  }
  // A bad argument empties the buffer.
  EXPECT_EQ(DispatchForm(12, 34, 0, 0x0407), "1 ");
  EXPECT_EQ(DispatchForm(12, 34, 9, 0x0407), "1 ");
  EXPECT_EQ(DispatchForm(12, 34, 1, 0x0407, 0), "1 ");
  EXPECT_EQ(HvWebGetCGIURL(12, 34, 1, 0x0407, nullptr, 150, 0), 1U);
}

}  // namespace
