// INI files through the exports: what is kept of a file, what reads find, what edits leave behind.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

using Lines = std::vector<std::string>;

// The lines of an open file, each ended by "|".
std::string LinesOf(const OpenIni& ini) {
  if (ini == nullptr) return "not open";
  std::string text;
  for (const std::string& line : hvtest::LinesOf(*ini)) text += line + "|";
  return text;
}

class Ini : public testing::Test {
 protected:
  OpenIni Open(uint32_t mode = INI_OPEN_UPDATE) const {
    return OpenIni(HvIniOpen2(path_.c_str(), mode));
  }
  OpenIni Open(const std::string& bytes, uint32_t mode = INI_OPEN_UPDATE) const {
    folder_.Add("a.ini", bytes);
    return Open(mode);
  }

  const TestFolder folder_;
  const std::string path_ = folder_ / "a.ini";
};
using IniOpen = Ini;
using IniRead = Ini;
using IniRead2 = Ini;
using IniEdit = Ini;
using IniClose = Ini;

TEST_F(IniOpen, KnowsFourModes) {
  for (const uint32_t mode : {0U, 2U, 6U, 10U, 12U, 0xFFFFFFFFU}) {
    EXPECT_EQ(Open("[a]\n", mode), nullptr) << mode;
    EXPECT_EQ(ReadFile(path_), "[a]\n") << mode;
  }
  // makes: a file that is missing
  const std::tuple<uint32_t, const char*, bool> cases[] = {
      {INI_OPEN_READ, "[a]|", false},
      {INI_OPEN_UPDATE, "[a]|", false},
      {INI_OPEN_REPLACE, "", true},
      {INI_OPEN_APPEND, "[a]|", true},
  };
  for (const auto& [mode, lines, makes] : cases) {
    const OpenIni ini = Open("[a]\n", mode);
    ASSERT_EQ(LinesOf(ini), lines) << mode;
    EXPECT_EQ(+ini->flags == INI_READ_MODE, mode == INI_OPEN_READ) << mode;
    EXPECT_EQ(ReadFile(path_), *lines == '\0' ? "" : "[a]\n") << mode;
    std::filesystem::remove(path_);
    EXPECT_EQ(Open(mode) != nullptr, makes) << mode;
    EXPECT_EQ(std::filesystem::exists(path_), makes) << mode;
  }
}

TEST_F(IniOpen, RefusesWhatIsNoFile) {
  EXPECT_EQ(HvIniOpen2(nullptr, INI_OPEN_READ), nullptr);
  EXPECT_EQ(HvIniOpen2("", INI_OPEN_APPEND), nullptr);
  EXPECT_EQ(HvIniOpen2(folder_.Path().string().c_str(), INI_OPEN_READ), nullptr);
  EXPECT_EQ(HvIniOpen(nullptr), nullptr);
}

TEST_F(IniOpen, WithoutModeNeedsALineThatIsKept) {
  for (const char* text : {"", "\n \n", "; only a comment\n\n"}) {
    const OpenIni ini = Open(text, INI_OPEN_READ);
    ASSERT_EQ(LinesOf(ini), "");
    EXPECT_STREQ(ini->lines->text, "");
    EXPECT_EQ(+ini->maxLineLength, 0U);
    EXPECT_EQ(HvIniOpen(path_.c_str()), nullptr) << text;
  }
  folder_.Add("a.ini", "x");
  EXPECT_EQ(LinesOf(OpenIni(HvIniOpen(path_.c_str()))), "x|");
}

TEST_F(IniOpen, KeepsLinesInTheirForm) {
  const std::string x(1015, 'x');
  const std::tuple<std::string, std::string, std::size_t> cases[] = {
      {"Timeout   = 30\n", "Timeout= 30|", 12},
      {"k =v = w  \r\nlast", "k=v = w|last|", 8},
      {"  =v\n=\n", "=v|=|", 3},
      {"[a b ]  \n[c =d\n", "[a b ]|[c =d|", 7},
      {";c\n; k = v\n\n  \n;\ns\n", ";c|; k= v|||;|s|", 7},
      // A read takes 1019 characters at most, the line feed one of them.
      {"k=" + x + "1\n", "k=" + x + "1|", 1019},
      {"k=" + x + "12\n", "k=" + x + "12||", 1020},
      {"k=" + x + "12 3=4\nz", "k=" + x + "12| 3=4|z|", 1020},
  };
  for (const auto& [bytes, lines, maxLineLength] : cases) {
    const OpenIni ini = Open(bytes);
    ASSERT_EQ(LinesOf(ini), lines) << bytes;
    EXPECT_EQ(+ini->maxLineLength, maxLineLength) << bytes;
  }
  // In read mode comments that are no entries and empty lines are dropped.
  EXPECT_EQ(LinesOf(Open(";c\n; k = v\n\n  \n;\n ;c\ns\n", INI_OPEN_READ)), "; k= v| ;c|s|");
}

TEST_F(IniRead, GoesOnAtTheCursor) {
  const OpenIni ini = Open("before=all\n[One]\nstray\na=1\nA = 2\n[x=header\nb=3\n[ONE]\nc=4\n");
  const char* const no = nullptr;
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"one", "A", "1"},       {no, "a", " 2"},  {no, "a", ""},        // met the header
      {"ONE", no, "stray"},    {no, no, "a=1"},  {"nowhere", no, ""},  // leaves the cursor
      {no, no, "A= 2"},        {"one", "b", ""},                       // behind the header
      {"one", "[X", "header"},  // the header itself is looked at
      {no, no, "b=3"},
  };
  for (const auto& [section, key, answer] : cases) {
    EXPECT_STREQ(HvIniRead(ini.get(), section, key), answer) << (section ? section : "cursor");
  }
  EXPECT_STREQ(ini->cursor->text, "[ONE]");
}

TEST_F(IniRead, TextsStayWhileOtherLinesChange) {
  const OpenIni ini = Open("[s]\nkept=this value\n");
  const char* const text = HvIniRead(ini.get(), "s", "kept");
  for (int i = 0; i < 3000; ++i) {
    const std::string number = std::to_string(i);
    ASSERT_EQ(HvIniWrite(ini.get(), "s", number.c_str(), number.c_str()), 1U);
    ASSERT_EQ(HvIniWrite(ini.get(), ("t" + number).c_str(), "k", number.c_str()), 1U);
  }
  EXPECT_EQ(HvIniRead(ini.get(), "s", "kept"), text);
  EXPECT_STREQ(text, "this value");
  EXPECT_STREQ(HvIniRead(ini.get(), "s", "2999"), "2999");
  EXPECT_STREQ(HvIniRead(ini.get(), "t1500", "k"), "1500");
}

TEST_F(IniRead2, CopiesWithTheDocumentedCodes) {
  const OpenIni ini = Open("[S]\nk=12345\nK=second\nstray\nempty=\n[t]\nstray=1\n");
  // Section, key, default and size; the code and what is written, its NUL as "$".
  const std::tuple<const char*, const char*, const char*, uint32_t, uint32_t, std::string> cases[] =
      {
          {"s", "K", nullptr, 6, HV_OK, "12345$"},
          {"s", "k", "default", 5, HV_BUFFER_TOO_SMALL, "12345"},
          {"s", "empty", "default", 1, HV_OK, "$"},
          {"s", "stray", nullptr, 9, HV_KEY_MISSING, ""},
          {"u", "k", nullptr, 9, HV_SECTION_MISSING, ""},
          {"u", "k", "default", 8, HV_OK, "default$"},
          {"u", "k", "default", 7, HV_BUFFER_TOO_SMALL, "default"},
          // Arguments are checked first.
          {nullptr, "k", "d", 9, HV_BAD_ARGUMENT, ""},
          {"s", nullptr, "d", 9, HV_BAD_ARGUMENT, ""},
          {"s", "k", "d", 0, HV_BAD_ARGUMENT, ""},
      };
  for (const auto& [section, key, other, size, code, written] : cases) {
    std::string out(12, '#');
    uint32_t copied = 99;
    EXPECT_EQ(HvIniRead2(ini.get(), section, key, other, out.data(), size, &copied), code) << size;
    std::replace(out.begin(), out.end(), '\0', '$');
    EXPECT_EQ(out, written + std::string(12 - written.size(), '#'));
    EXPECT_EQ(copied, code == HV_BAD_ARGUMENT ? 99 : written.size() - (code == HV_OK)) << written;
  }
  uint32_t count = 7;
  char buffer[] = "untouched";
  EXPECT_EQ(HvIniRead2(ini.get(), "s", "k", "d", nullptr, 9, &count), HV_BAD_ARGUMENT);
  EXPECT_EQ(HvIniRead2(ini.get(), "s", "k", "d", buffer, 9, nullptr), HV_BAD_ARGUMENT);
  // A default that is the caller's own buffer.
  EXPECT_EQ(HvIniRead2(ini.get(), "s", "none", buffer, buffer, sizeof buffer, &count), HV_OK);
  EXPECT_STREQ(buffer, "untouched");
}

using Edit = std::function<uint32_t(HvIniHandle*)>;

Edit Write(std::string section, std::string key, std::string value) {
  return [=](auto* h) { return HvIniWrite(h, section.c_str(), key.c_str(), value.c_str()); };
}
Edit WriteAll(std::string section, std::string key, std::string value) {
  return [=](auto* h) { return HvIniWriteAll(h, section.c_str(), key.c_str(), value.c_str()); };
}
Edit Delete(std::string section, const char* key, const char* value = nullptr) {
  return [=](auto* h) { return HvIniDelete(h, section.c_str(), key, value); };
}

// Files and what edits make of them, "|" for each line end.
TEST_F(IniEdit, LeavesTheseLines) {
  const std::tuple<std::string, std::vector<Edit>, const char*> cases[] = {
      // A new key goes before the empty line that ends the first block.
      {"[a]|x=1||[b]|", {Write("A", "y", "2")}, "[a]|x=1|y=2||[b]|"},
      {"[a]|X=1|x=2|; c|", {Write("a", "x", "long enough")}, "[a]|x=long enough|x=2|; c|"},
      // A missing section comes behind an empty line, of which one is enough.
      {"x|", {Write("s", "k", "v"), Write("t", "k", "v")}, "x||[s]|k=v||[t]|k=v|"},
      // The same value once, also where it lies behind the first block.
      {"[s]|", {WriteAll("s", "k", "v"), WriteAll("s", "k", "w")}, "[s]|k=v|k=w|"},
      {"[s]|a=1||k=v|", {WriteAll("S", "K", "V")}, "[s]|a=1||k=v|"},
      // A header alone; its lines then belong to the section before it.
      {"[a]|x=1|[b]|y=2|", {Delete("B", nullptr), Write("a", "y", "3")}, "[a]|x=1|y=3|"},
      // Lines by what stands before their first '=', and between that and the next one.
      {"[a]|k=1=2|k=1|K=3|", {Delete("a", "K", "1")}, "[a]|k=1|K=3|"},
      // The empty key is that of an empty line too, and removing one joins two blocks.
      {"[a]|x=1||x=2|y=3|", {Delete("a", ""), Write("a", "y", "4")}, "[a]|x=1|x=2|y=4|"},
      // A key that begins with '[' makes a header.
      {"[a]|x=1||y=2|",
       {Write("a", "[b", "]"), Write("a", "y", "3"), Write("b=", "z", "4")},
       "[a]|x=1|y=3|[b=]|z=4||y=2|"},
  };
  for (const auto& [before, edits, after] : cases) {
    std::string bytes = before;
    std::replace(bytes.begin(), bytes.end(), '|', '\n');
    OpenIni ini = Open(bytes);
    for (const Edit& edit : edits) EXPECT_EQ(edit(ini.get()), 1U) << before;
    const std::string lines = LinesOf(ini);
    EXPECT_EQ(lines, after) << before;
    ini.reset();
    EXPECT_EQ(LinesOf(Open()), lines) << before;
  }
}

TEST_F(IniEdit, RefusesWhatDoesNotFitALine) {
  const OpenIni ini = Open("[s]\nk=v\n");
  HvIniHandle* const h = ini.get();
  const std::string text(1020, 't');
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {text.c_str(), "k", "v"}, {"s", "k", text.c_str()}, {"s", text.c_str(), "v"},
      {nullptr, "k", "v"},      {"s", nullptr, "v"},      {"s", "k", nullptr},
  };
  for (const auto& [section, key, value] : cases) {
    EXPECT_EQ(HvIniWrite(h, section, key, value), 0U);
    EXPECT_EQ(HvIniWriteAll(h, section, key, value), 0U);
  }
  EXPECT_EQ(HvIniDelete(h, nullptr, "k", nullptr), 0U);
  EXPECT_EQ(+h->flags, 0U);
  EXPECT_EQ(+h->maxLineLength, 4U);
  EXPECT_EQ(LinesOf(ini), "[s]|k=v|");
  EXPECT_STREQ(HvIniRead(h, text.c_str(), nullptr), "");
  EXPECT_EQ(HvIniDelete(h, text.c_str(), "k", nullptr), 1U);

  // One character fewer fits.
  EXPECT_EQ(HvIniWrite(h, text.c_str() + 1, "k", text.c_str() + 1), 1U);
  EXPECT_EQ(+h->maxLineLength, 1022U);
  EXPECT_EQ(HvIniRead(h, text.c_str() + 1, "k"), text.substr(1));
}

TEST_F(IniEdit, TakesItsTextsFromTheFileItself) {
  const OpenIni ini = Open("[s]\na=b\nb=c\nc=a longer value\n");
  HvIniHandle* const h = ini.get();
  EXPECT_EQ(HvIniWrite(h, "s", "a", HvIniRead(h, "s", "c")), 1U);
  const char* const key = HvIniRead(h, "s", "b");
  EXPECT_EQ(HvIniWrite(h, "s", key, key), 1U);
  EXPECT_EQ(HvIniDelete(h, "s", key, HvIniRead(h, "s", "c")), 1U);
  EXPECT_EQ(LinesOf(ini), "[s]|a=a longer value|b=c|");
  EXPECT_EQ(+h->maxLineLength, sizeof "a=a longer value");
}

TEST_F(IniClose, WritesOnlyWhatChanged) {
  const std::string bytes = "; c\n[s]\n k  =v \n\nstray";
  const auto none = [](auto* h) { return *HvIniRead(h, "s", " k") == 'v' ? 1U : 0U; };
  const std::tuple<uint32_t, Edit, uint32_t, std::string> cases[] = {
      {INI_OPEN_APPEND, none, 0, bytes},
      {INI_OPEN_UPDATE, none, 0, bytes},
      {INI_OPEN_UPDATE, Delete("none", nullptr), INI_DIRTY, "; c\r\n[s]\r\n k=v\r\n\r\nstray\r\n"},
      {INI_OPEN_READ, Write("s", "stray", "1"), INI_DIRTY, "[s]\r\n k=v\r\nstray\r\nstray=1\r\n"},
  };
  for (const auto& [mode, edit, dirty, after] : cases) {
    OpenIni ini = Open(bytes, mode);
    EXPECT_EQ(edit(ini.get()), 1U) << after;
    EXPECT_EQ(ini->flags & INI_DIRTY, dirty) << after;
    EXPECT_EQ(ReadFile(path_), bytes);
    ini.reset();
    EXPECT_EQ(ReadFile(path_), after);
    EXPECT_EQ(folder_.Names(), Lines{"a.ini"});
  }
}

TEST_F(IniClose, MakesAFileThatIsGoneAndSaysWhenItCannot) {
  std::filesystem::create_directory(folder_ / "sub");
  const std::string path = folder_.Add("sub/gone.ini", "[s]\n");
  HvIniHandle* ini = HvIniOpen(path.c_str());
  HvIniWrite(ini, "s", "k", "v");
  std::filesystem::remove(path);
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(ReadFile(path), "[s]\r\nk=v\r\n");

  ini = HvIniOpen(path.c_str());
  HvIniWrite(ini, "s", "k", "w");
  std::filesystem::remove_all(folder_ / "sub");
  EXPECT_EQ(HvIniClose(ini), 0U);
  EXPECT_EQ(folder_.Names(), Lines{});
}

}  // namespace
