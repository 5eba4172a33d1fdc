// INI files through the exports: what is kept of a file, what reads find, what edits leave behind.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/test_folder.h"

namespace {

using hvtest::LinesOf;
using hvtest::OpenIni;
using hvtest::ReadFile;
using hvtest::TestFolder;

using Lines = std::vector<std::string>;

TEST(IniOpen, KnowsFourModes) {
  const TestFolder folder;
  const std::string there = folder.Add("there.ini", "[a]\n");
  const std::string missing = folder / "missing.ini";
  for (const uint32_t mode : {0U, 2U, 3U, 4U, 5U, 6U, 10U, 11U, 12U, 0xFFFFFFFFU}) {
    EXPECT_EQ(HvIniOpen2(there.c_str(), mode), nullptr) << mode;
  }
  EXPECT_EQ(ReadFile(there), "[a]\n");
  EXPECT_EQ(HvIniOpen2(missing.c_str(), INI_OPEN_READ), nullptr);
  EXPECT_EQ(HvIniOpen2(missing.c_str(), INI_OPEN_UPDATE), nullptr);
  EXPECT_EQ(folder.Names(), Lines{"there.ini"});

  for (const uint32_t mode : {INI_OPEN_READ, INI_OPEN_UPDATE, INI_OPEN_APPEND}) {
    const OpenIni ini(HvIniOpen2(there.c_str(), mode));
    ASSERT_NE(ini, nullptr) << mode;
    EXPECT_EQ(LinesOf(*ini), Lines{"[a]"}) << mode;
    EXPECT_EQ(+ini->flags == INI_READ_MODE, mode == INI_OPEN_READ) << mode;
  }
  for (const uint32_t mode : {INI_OPEN_APPEND, INI_OPEN_REPLACE}) {
    const OpenIni ini(HvIniOpen2(missing.c_str(), mode));
    ASSERT_NE(ini, nullptr) << mode;
    EXPECT_EQ(LinesOf(*ini), Lines{}) << mode;
    EXPECT_EQ(ReadFile(missing), "") << mode;
    std::filesystem::remove(missing);
  }
  const OpenIni emptied(HvIniOpen2(there.c_str(), INI_OPEN_REPLACE));
  EXPECT_EQ(LinesOf(*emptied), Lines{});
  EXPECT_EQ(ReadFile(there), "");
}

TEST(IniOpen, RefusesWhatIsNoFile) {
  const TestFolder folder;
  EXPECT_EQ(HvIniOpen2(nullptr, INI_OPEN_READ), nullptr);
  EXPECT_EQ(HvIniOpen2("", INI_OPEN_APPEND), nullptr);
  EXPECT_EQ(HvIniOpen2(folder.Path().string().c_str(), INI_OPEN_READ), nullptr);
  EXPECT_EQ(HvIniOpen(nullptr), nullptr);
  EXPECT_EQ(HvIniOpen2(std::string(HV_MAX_PATH + 1, 'x').c_str(), INI_OPEN_APPEND), nullptr);
}

TEST(IniOpen, WithoutModeNeedsALineThatIsKept) {
  const TestFolder folder;
  for (const char* text : {"", "\n \n", "; only a comment\n\n"}) {
    const std::string path = folder.Add("empty.ini", text);
    EXPECT_EQ(HvIniOpen(path.c_str()), nullptr) << text;
    const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_READ));
    ASSERT_NE(ini, nullptr);
    EXPECT_EQ(ini->lines->next, nullptr);
    EXPECT_STREQ(ini->lines->text, "");
    EXPECT_EQ(+ini->maxLineLength, 0U);
  }
  const std::string path = folder.Add("a.ini", "x");
  const OpenIni ini(HvIniOpen(path.c_str()));
  ASSERT_NE(ini, nullptr);
  EXPECT_EQ(+ini->flags, static_cast<uint32_t>(INI_READ_MODE));
}

TEST(IniOpen, KeepsLinesInTheirForm) {
  const std::string x(1015, 'x');
  const struct {
    std::string bytes;
    Lines read;    // what is kept in read mode
    Lines update;  // and else
    std::size_t maxLineLength;
  } cases[] = {
      {"Timeout   = 30\n", {"Timeout= 30"}, {"Timeout= 30"}, 12},
      {"k =v = w  \r\nlast", {"k=v = w", "last"}, {"k=v = w", "last"}, 8},
      {"  =v\n=\n", {"=v", "="}, {"=v", "="}, 3},
      {" lead = 1\n\tt\t=2\t\n", {" lead= 1", "\tt\t=2\t"}, {" lead= 1", "\tt\t=2\t"}, 9},
      {"[a b ]  \n[c =d\n", {"[a b ]", "[c =d"}, {"[a b ]", "[c =d"}, 7},
      {";c\n; k = v\n\n  \n;\ns\n", {"; k= v", "s"}, {";c", "; k= v", "", "", ";", "s"}, 7},
      {" ;c\n", {" ;c"}, {" ;c"}, 4},
      {"a=1\n\x1A"
       "b=2\n",
       {"a=1"},
       {"a=1"},
       4},
      {"a=1\rb\n", {"a=1\rb"}, {"a=1\rb"}, 6},
      // A read takes 1019 characters at most, the line feed one of them.
      {"k=" + x + "1\n", {"k=" + x + "1"}, {"k=" + x + "1"}, 1019},
      {"k=" + x + "12\n", {"k=" + x + "12"}, {"k=" + x + "12", ""}, 1020},
      {"k=" + x + "12 3=4\nz",
       {"k=" + x + "12", " 3=4", "z"},
       {"k=" + x + "12", " 3=4", "z"},
       1020},
      {"[" + x + "123]\nz", {"[" + x + "123", "]", "z"}, {"[" + x + "123", "]", "z"}, 1020},
  };
  const TestFolder folder;
  for (const auto& c : cases) {
    const std::string path = folder.Add("lines.ini", c.bytes);
    const OpenIni read(HvIniOpen2(path.c_str(), INI_OPEN_READ));
    const OpenIni update(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
    EXPECT_EQ(LinesOf(*read), c.read) << c.bytes;
    EXPECT_EQ(LinesOf(*update), c.update) << c.bytes;
    EXPECT_EQ(+update->maxLineLength, c.maxLineLength) << c.bytes;
  }
}

// What HvIniRead gives for a row of questions; NULL stands for no argument.
struct Question {
  const char* section;
  const char* key;
  const char* answer;
};

void ExpectAnswers(HvIniHandle* ini, const std::vector<Question>& questions) {
  for (std::size_t i = 0; i < questions.size(); ++i) {
    const Question& q = questions[i];
    EXPECT_STREQ(HvIniRead(ini, q.section, q.key), q.answer) << "question " << i;
  }
}

TEST(IniRead, GoesOnAtTheCursor) {
  const TestFolder folder;
  const std::string path = folder.Add("read.ini",
                                      "before=all\n"
                                      "[One]\n"
                                      "stray\n"
                                      "a=1\n"
                                      "A = 2\n"
                                      "[x=header\n"
                                      "b=3\n"
                                      "[ONE]\n"
                                      "c=4\n");
  const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
  ExpectAnswers(
      ini.get(),
      {
          {nullptr, nullptr, ""},  // no cursor yet
          {nullptr, "before", ""},    {"one", "A", "1"},         {nullptr, "a", " 2"},
          {nullptr, "a", ""},  // met the header
          {nullptr, nullptr, ""},     {"ONE", nullptr, "stray"}, {nullptr, nullptr, "a=1"},
          {"nowhere", nullptr, ""},  // leaves the cursor
          {nullptr, nullptr, "A= 2"}, {nullptr, nullptr, ""},    {"one", "stray", ""},  // no entry
          {"one", "b", ""},                                   // behind the header
          {"one", "c", ""},                                   // in the second section of that name
          {"one", "[X", "header"},                            // the header itself is looked at
          {nullptr, nullptr, "b=3"},  {"x=header", "b", ""},  // "[x=header" has no "]"
          {"one", "a=1", ""},         {"one", "", ""},
      });
  HvIniRead(ini.get(), "one", "a");
  ASSERT_NE(+ini->cursor, nullptr);
  EXPECT_STREQ(ini->cursor->text, "A= 2");
}

TEST(IniRead, TextsStayWhileOtherLinesChange) {
  const TestFolder folder;
  const std::string path = folder.Add("stay.ini", "[s]\nkept=this value\ngone=1\ngrows=1\n");
  const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
  const char* const text = HvIniRead(ini.get(), "s", "kept");
  EXPECT_EQ(HvIniDelete(ini.get(), "s", "gone", nullptr), 1U);
  for (int i = 0; i < 3000; ++i) {
    const std::string number = std::to_string(i);
    ASSERT_EQ(HvIniWrite(ini.get(), "s", number.c_str(), number.c_str()), 1U);
    ASSERT_EQ(HvIniWrite(ini.get(), ("t" + number).c_str(), "k", number.c_str()), 1U);
  }
  EXPECT_EQ(HvIniWrite(ini.get(), "s", "grows", std::string(900, 'g').c_str()), 1U);
  EXPECT_EQ(HvIniRead(ini.get(), "s", "kept"), text);
  EXPECT_STREQ(text, "this value");
  EXPECT_STREQ(HvIniRead(ini.get(), "s", "2999"), "2999");
  EXPECT_STREQ(HvIniRead(ini.get(), "t1500", "k"), "1500");
}

TEST(IniRead2, CopiesWithTheDocumentedCodes) {
  const TestFolder folder;
  const std::string path =
      folder.Add("read2.ini", "[S]\nk=12345\nK=second\nstray\nempty=\n\nlate= 6\n[t]\nstray=1\n");
  const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
  const std::string longName(1100, 'n');
  const struct {
    const char* section;
    const char* key;
    const char* defaultValue;
    uint32_t size;
    uint32_t code;
    std::string buffer;  // what is written
    uint32_t count;
  } cases[] = {
      {"s", "K", nullptr, 6, HV_OK, {"12345\0", 6}, 5},
      {"s", "k", "default", 5, HV_BUFFER_TOO_SMALL, "12345", 5},
      {"s", "k", nullptr, 2, HV_BUFFER_TOO_SMALL, "12", 2},
      {"s", "late", nullptr, 9, HV_OK, {" 6\0", 3}, 2},
      {"s", "empty", "default", 1, HV_OK, {"\0", 1}, 0},
      {"s", "stray", nullptr, 9, HV_KEY_MISSING, "", 0},
      {"s", "stray", "d", 9, HV_OK, {"d\0", 2}, 1},
      {"s", "stray", "abc", 3, HV_BUFFER_TOO_SMALL, "abc", 3},
      {"u", "k", nullptr, 9, HV_SECTION_MISSING, "", 0},
      {"u", "k", "", 1, HV_OK, {"\0", 1}, 0},
      {"u", "k", "default", 8, HV_OK, {"default\0", 8}, 7},
      {"u", "k", "default", 7, HV_BUFFER_TOO_SMALL, "default", 7},
      {longName.c_str(), "k", nullptr, 9, HV_SECTION_MISSING, "", 0},
      {"s", longName.c_str(), nullptr, 9, HV_KEY_MISSING, "", 0},
      {"s", "[t]", nullptr, 9, HV_KEY_MISSING, "", 0},
  };
  for (const auto& c : cases) {
    char buffer[12];
    std::memset(buffer, '#', sizeof buffer);
    uint32_t count = 99;
    EXPECT_EQ(HvIniRead2(ini.get(), c.section, c.key, c.defaultValue, buffer, c.size, &count),
              c.code);
    const std::string expected = c.buffer + std::string(sizeof buffer - c.buffer.size(), '#');
    EXPECT_EQ(std::string(buffer, sizeof buffer), expected) << c.section << " " << c.key;
    EXPECT_EQ(count, c.count) << c.section << " " << c.key;
  }
}

TEST(IniRead2, ChecksItsArgumentsFirst) {
  const TestFolder folder;
  const std::string path = folder.Add("a.ini", "[s]\nk=v\n");
  const OpenIni ini(HvIniOpen(path.c_str()));
  char buffer[] = "untouched";
  uint32_t count = 7;
  HvIniHandle* const h = ini.get();
  EXPECT_EQ(HvIniRead2(h, nullptr, "k", "d", buffer, 9, &count), 1U);
  EXPECT_EQ(HvIniRead2(h, "s", nullptr, "d", buffer, 9, &count), 1U);
  EXPECT_EQ(HvIniRead2(h, "s", "k", "d", nullptr, 9, &count), 1U);
  EXPECT_EQ(HvIniRead2(h, "s", "k", "d", buffer, 0, &count), 1U);
  EXPECT_EQ(HvIniRead2(h, "s", "k", "d", buffer, 9, nullptr), 1U);
  EXPECT_STREQ(buffer, "untouched");
  EXPECT_EQ(count, 7U);
  // A default that is the caller's own buffer.
  EXPECT_EQ(HvIniRead2(h, "s", "none", buffer, buffer, sizeof buffer, &count), 0U);
  EXPECT_STREQ(buffer, "untouched");
}

using Edit = std::function<void(HvIniHandle*)>;

Edit Write(std::string section, std::string key, std::string value) {
  return [=](HvIniHandle* h) {
    EXPECT_EQ(HvIniWrite(h, section.c_str(), key.c_str(), value.c_str()), 1U);
  };
}
Edit WriteAll(std::string section, std::string key, std::string value) {
  return [=](HvIniHandle* h) {
    EXPECT_EQ(HvIniWriteAll(h, section.c_str(), key.c_str(), value.c_str()), 1U);
  };
}
Edit Delete(std::string section, const char* key, const char* value) {
  return [=](HvIniHandle* h) { EXPECT_EQ(HvIniDelete(h, section.c_str(), key, value), 1U); };
}

TEST(IniEdit, LeavesTheseLines) {
  const struct {
    const char* before;
    std::vector<Edit> edits;
    const char* after;
  } cases[] = {
      // A new key goes before the empty line that ends the first block.
      {"[a]\nx=1\n\n[b]\n", {Write("A", "y", "2")}, "[a]|x=1|y=2||[b]|"},
      {"[a]\n\nx=1\n", {Write("a", "x", "2")}, "[a]|x=2||x=1|"},
      {"[a]\n[b]\n", {Write("a", "x", "")}, "[a]|x=|[b]|"},
      {"[a]\nX=1\nx=2\n; c\n", {Write("a", "x", "long enough")}, "[a]|x=long enough|x=2|; c|"},
      {"[a]\nx\n", {Write("a", "x", "1")}, "[a]|x|x=1|"},
      {"[a]\nx=1\n[a]\nx=2\n", {Write("a", "x", "3")}, "[a]|x=3|[a]|x=2|"},
      // A missing section comes behind an empty line, of which one is enough.
      {"", {Write("s", "k", "v")}, "[s]|k=v|"},
      {"x\n", {Write("s", "k", "v"), Write("t", "k", "v")}, "x||[s]|k=v||[t]|k=v|"},
      {"x\n\n", {WriteAll("s", "k", "v")}, "x||[s]|k=v|"},
      {"", {WriteAll("s", "k", "v"), Write("S", "K", "w")}, "[s]|K=w|"},
      // The same value once, also where it lies behind the first block.
      {"[s]\n", {WriteAll("s", "k", "v"), WriteAll("s", "K", "V")}, "[s]|k=v|"},
      {"[s]\n", {WriteAll("s", "k", "v"), WriteAll("s", "k", "w")}, "[s]|k=v|k=w|"},
      {"[s]\na=1\n\nk=v\n", {WriteAll("s", "k", "v")}, "[s]|a=1||k=v|"},
      {"[s]\nk=v=w\n", {WriteAll("s", "k", "v")}, "[s]|k=v=w|k=v|"},
      {"[s]\nk=v\n", {WriteAll("s", "k", "")}, "[s]|k=v|k=|"},
      // Values written go first among those of later blocks.
      {"[s]\n\nk=2\n", {Write("s", "k", "1"), Delete("s", "k", nullptr)}, "[s]||k=2|"},
      // A header alone; its lines then belong to the section before it.
      {"[a]\nx=1\n[b]\ny=2\n",
       {Delete("B", nullptr, nullptr), Write("a", "y", "3")},
       "[a]|x=1|y=3|"},
      {"[a]\nx=1\n[a]\ny=2\n",
       {Delete("a", nullptr, nullptr), Write("a", "z", "3")},
       "x=1|[a]|y=2|z=3|"},
      {"[a]\n\n[b]\ny=2\n", {Delete("b", nullptr, nullptr), Write("a", "y", "3")}, "[a]|y=3||y=2|"},
      // Lines by what stands before their first '=', and between that and the next one.
      {"[a]\nk=1=2\nk=1\nK=3\n", {Delete("a", "K", "1")}, "[a]|k=1|K=3|"},
      {"[a]\nk=1=2\n", {Delete("a", "k", "1=2")}, "[a]|k=1=2|"},
      {"[a]\nk\nk=1\n", {Delete("a", "k", "1")}, "[a]|k|"},
      {"[a]\nk\nk=1\n", {Delete("a", "k", "")}, "[a]|k|k=1|"},
      {"[a]\nk\nk=1\n", {Delete("a", "k", nullptr)}, "[a]|k=1|"},
      {"[a]\n; note\n\nk=\n", {Delete("a", "; NOTE", nullptr), Delete("a", "k", "")}, "[a]||"},
      {"[a]\nk==x\n", {Delete("a", "k", "")}, "[a]|"},
      {"[a]\n[b]\nk=1\n", {Delete("a", "k", nullptr), Delete("c", "k", nullptr)}, "[a]|[b]|k=1|"},
      // The empty key is that of an empty line too, and removing one joins two blocks.
      {"[a]\nx=1\n\nx=2\ny=3\n",
       {Delete("a", "", nullptr), Write("a", "y", "4")},
       "[a]|x=1|x=2|y=4|"},
      {"[a]\n\n=1\n", {Delete("a", "", "1")}, "[a]||"},
      {"[a]\n=1\nx=2\n", {Write("a", "", "3")}, "[a]|=3|x=2|"},
      // A key that begins with '[' makes a header.
      {"[a]\nx=1\n\ny=2\n",
       {Write("a", "[b", "]"), Write("a", "y", "3"), Write("b=", "z", "4")},
       "[a]|x=1|y=3|[b=]|z=4||y=2|"},
      {"[a]\nx=1\n", {Write("a", "[b", "]"), Write("b=", "z", "2")}, "[a]|x=1|[b=]|z=2|"},
      {"[]\n", {Write("", "k", "v")}, "[]|k=v|"},
  };
  const TestFolder folder;
  for (const auto& c : cases) {
    const std::string path = folder.Add("edit.ini", c.before);
    HvIniHandle* const ini = HvIniOpen2(path.c_str(), INI_OPEN_UPDATE);
    ASSERT_NE(ini, nullptr);
    for (const Edit& edit : c.edits) edit(ini);
    EXPECT_EQ(HvIniClose(ini), 1U);
    std::string lines = ReadFile(path);
    for (std::size_t at = 0; (at = lines.find("\r\n", at)) != std::string::npos; ++at) {
      lines.replace(at, 2, "|");
    }
    EXPECT_EQ(lines, c.after) << c.before;
  }
}

TEST(IniEdit, RefusesWhatDoesNotFitALine) {
  const TestFolder folder;
  const std::string path = folder.Add("long.ini", "[s]\nk=v\n");
  const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
  HvIniHandle* const h = ini.get();
  const std::string section(1020, 's');
  const std::string value(1020, 'v');
  for (const auto write : {HvIniWrite, HvIniWriteAll}) {
    EXPECT_EQ(write(h, section.c_str(), "k", "v"), 0U);
    EXPECT_EQ(write(h, "s", "k", value.c_str()), 0U);
    EXPECT_EQ(write(h, "s", value.c_str(), "v"), 0U);
    EXPECT_EQ(write(h, nullptr, "k", "v"), 0U);
    EXPECT_EQ(write(h, "s", nullptr, "v"), 0U);
    EXPECT_EQ(write(h, "s", "k", nullptr), 0U);
  }
  EXPECT_EQ(HvIniDelete(h, nullptr, "k", nullptr), 0U);
  EXPECT_EQ(+h->flags, 0U);
  EXPECT_EQ(+h->maxLineLength, 4U);
  EXPECT_EQ(LinesOf(*h), (Lines{"[s]", "k=v"}));
  EXPECT_STREQ(HvIniRead(h, section.c_str(), nullptr), "");
  EXPECT_EQ(HvIniDelete(h, section.c_str(), "k", nullptr), 1U);

  // One character fewer fits.
  EXPECT_EQ(HvIniWrite(h, section.substr(1).c_str(), "k", value.substr(1).c_str()), 1U);
  EXPECT_EQ(+h->maxLineLength, 1022U);
  EXPECT_EQ(HvIniRead(h, section.substr(1).c_str(), "k"), value.substr(1));
}

TEST(IniEdit, TakesItsTextsFromTheFileItself) {
  const TestFolder folder;
  const std::string path = folder.Add("own.ini", "[s]\na=b\nb=c\nc=a longer value\n");
  const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
  HvIniHandle* const h = ini.get();
  EXPECT_EQ(HvIniWrite(h, "s", "a", HvIniRead(h, "s", "c")), 1U);
  const char* const key = HvIniRead(h, "s", "b");
  EXPECT_EQ(HvIniWrite(h, "s", key, key), 1U);
  EXPECT_EQ(HvIniDelete(h, "s", key, HvIniRead(h, "s", "c")), 1U);
  EXPECT_EQ(LinesOf(*h), (Lines{"[s]", "a=a longer value", "b=c"}));
  EXPECT_EQ(+h->maxLineLength, sizeof "a=a longer value");
}

TEST(IniEdit, MovesTheCursorOffALineThatGoes) {
  const TestFolder folder;
  const std::string path = folder.Add("cursor.ini", "[s]\na=1\nb=2\nc=3\n[t]\n");
  const OpenIni ini(HvIniOpen2(path.c_str(), INI_OPEN_UPDATE));
  HvIniHandle* const h = ini.get();
  HvIniRead(h, "s", "a");
  HvIniDelete(h, "s", "b", nullptr);
  EXPECT_STREQ(HvIniRead(h, nullptr, nullptr), "c=3");
  HvIniDelete(h, "t", nullptr, nullptr);
  EXPECT_EQ(+h->cursor, nullptr);
  EXPECT_STREQ(HvIniRead(h, nullptr, nullptr), "");
}

TEST(IniClose, WritesOnlyWhatChanged) {
  const TestFolder folder;
  const std::string bytes = "; c\n[s]\n k  =v \n\nstray";
  const std::string path = folder.Add("close.ini", bytes);
  EXPECT_EQ(HvIniClose(HvIniOpen2(path.c_str(), INI_OPEN_APPEND)), 1U);
  HvIniHandle* ini = HvIniOpen2(path.c_str(), INI_OPEN_UPDATE);
  EXPECT_STREQ(HvIniRead(ini, "s", " k"), "v");
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(ReadFile(path), bytes);

  ini = HvIniOpen2(path.c_str(), INI_OPEN_UPDATE);
  HvIniDelete(ini, "none", nullptr, nullptr);
  EXPECT_EQ(+ini->flags, static_cast<uint32_t>(INI_DIRTY));
  EXPECT_EQ(ReadFile(path), bytes);
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(ReadFile(path), "; c\r\n[s]\r\n k=v\r\n\r\nstray\r\n");

  ini = HvIniOpen(path.c_str());
  HvIniWrite(ini, "s", "stray", "1");
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(ReadFile(path), "[s]\r\n k=v\r\nstray\r\nstray=1\r\n");
  EXPECT_EQ(folder.Names(), Lines{"close.ini"});
}

TEST(IniClose, MakesAFileThatIsGoneAndSaysWhenItCannot) {
  const TestFolder folder;
  std::filesystem::create_directory(folder.Path() / "sub");
  const std::string path = folder.Add("sub/gone.ini", "[s]\n");
  HvIniHandle* ini = HvIniOpen(path.c_str());
  HvIniWrite(ini, "s", "k", "v");
  std::filesystem::remove(path);
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(ReadFile(path), "[s]\r\nk=v\r\n");

  ini = HvIniOpen(path.c_str());
  HvIniWrite(ini, "s", "k", "w");
  std::filesystem::remove_all(folder.Path() / "sub");
  EXPECT_EQ(HvIniClose(ini), 0U);
  EXPECT_EQ(folder.Names(), Lines{});

  // A handle that nobody changed has nothing to write.
  const std::string other = folder.Add("other.ini", "[s]\n");
  ini = HvIniOpen(other.c_str());
  std::filesystem::remove(other);
  EXPECT_EQ(HvIniClose(ini), 1U);
  EXPECT_EQ(folder.Names(), Lines{});
}

}  // namespace
