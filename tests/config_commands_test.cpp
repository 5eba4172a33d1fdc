// The commands of hvapi on configuration files, as a person runs them: tables, JSON, exit statuses.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/quick_setup_builder.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using hvtest::ProgramRun;
using hvtest::ReadFile;
using hvtest::TestFolder;
using Words = std::vector<std::string>;

// What a command prints, without the line ends and indents that JSON is laid out with.
std::string WithoutLayout(const std::string& text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\n') {
      line += text[i];
    } else {
      while (i + 1 < text.size() && text[i + 1] == ' ') ++i;
    }
  }
  return line;
}

struct Case {
  Words words;
  int status;
  std::string output;
  std::string errors = "";  // behind "hvapi: "
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    std::string command;
    for (const std::string& word : c.words) command += word + " ";
    const ProgramRun run = hvtest::RunProgram(TEST_BINARY_FOLDER "/hvapi", c.words);
    // A status is a byte on some systems.
    EXPECT_EQ(run.status & 0xFF, c.status & 0xFF) << command;
    const bool json = !c.words.empty() && c.words.back() == "--json";
    EXPECT_EQ(json ? WithoutLayout(run.output) : run.output, c.output) << command;
    EXPECT_EQ(run.errors, c.errors.empty() ? "" : "hvapi: " + c.errors + "\n") << command;
  }
}

TEST(ConfigCommands, ReadIniFiles) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add(
      "p.ini",
      "; head\n[Tray1]\nPaperSize=A4\nType=Plain\nType=Bond\nloose\n\n[Tray2]\nSize=Letter\n");
  Check({
      {{"ini", "get", "p.ini", "tray1", "papersize"}, 0, "A4\n"},
      {{"ini", "get", "P.INI", "Tray1", "type"}, 0, "Plain\n"},
      {{"ini", "get", "p.ini", "Tray2", "Size", "--json"},
       0,
       R"({"file": "p.ini","section": "Tray2","key": "Size","value": "Letter"})"},
      {{"ini", "get", "p.ini", "tray1", "x"},
       41,
       "",
       R"(the section "tray1" has no key "x" (code 41))"},
      {{"ini", "get", "p.ini", "none", "x"},
       45,
       "",
       R"(there is no section "none" in "p.ini" (code 45))"},
      {{"ini", "get", "p.ini", "none", "x", "--default", "a long default"}, 0, "a long default\n"},
      {{"ini", "get", "none.ini", "a", "b"},
       2,
       "",
       R"(cannot open "none.ini": the file or path does not exist (code 2))"},
      {{"ini", "list", "p.ini"},
       0,
       "SECTION  KEY        VALUE\nTray1    PaperSize  A4\nTray1    Type       Plain\n"
       "Tray1    Type       Bond\nTray1    loose\nTray2    Size       Letter\n"},
      {{"ini", "list", "p.ini", "tray2", "--json"},
       0,
       R"([{"section": "tray2","key": "Size","value": "Letter"}])"},
      {{"ini", "list", "p.ini", "none"},
       45,
       "",
       R"(there is no section "none" in "p.ini" (code 45))"},
  });
}

TEST(ConfigCommands, EditIniFiles) {
  const struct {
    Words words;  // behind the name of the file
    const char* command;
    std::string output;
    std::string file;
  } cases[] = {
      {{"A", "K", "new"}, "set", "", "; head\r\n[A]\r\nK=new\r\nL=2\r\n"},
      {{"A", "M", "3"}, "set", "", "; head\r\n[A]\r\nK=1\r\nL=2\r\nM=3\r\n"},
      {{"B", "M", "3"}, "set", "", "; head\r\n[A]\r\nK=1\r\nL=2\r\n\r\n[B]\r\nM=3\r\n"},
      {{"A", "K", "3", "--json"},
       "add",
       R"({"file": "p.ini","section": "A","key": "K","value": "3"})",
       "; head\r\n[A]\r\nK=1\r\nL=2\r\nK=3\r\n"},
      {{"a", "k"}, "delete", "", "; head\r\n[A]\r\nL=2\r\n"},
      {{"a", "k", "1"}, "delete", "", "; head\r\n[A]\r\nL=2\r\n"},
      {{"a", "k", "2"},
       "delete",
       "there was nothing to remove\n",
       "; head\r\n[A]\r\nK=1\r\nL=2\r\n"},
      {{"A", "X", "--json"},
       "delete",
       R"({"file": "p.ini","section": "A","key": "X","removed": false})",
       "; head\r\n[A]\r\nK=1\r\nL=2\r\n"},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    const hvtest::ScopedCurrentFolder inside(folder.Path());
    folder.Add("p.ini", "; head\r\n[A]\r\nK=1\r\nL=2\r\n");
    Words words = {"ini", c.command, "p.ini"};
    words.insert(words.end(), c.words.begin(), c.words.end());
    Check({{words, 0, c.output}});
    EXPECT_EQ(ReadFile("p.ini"), c.file) << c.command;
    EXPECT_EQ(folder.Names(), Words{"p.ini"}) << c.command;
  }
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  Check({{{"ini", "set", "new.ini", "S", "K", "v"}, 0, ""}});
  EXPECT_EQ(ReadFile("new.ini"), "[S]\r\nK=v\r\n");
  Check({{{"ini", "delete", "none.ini", "S"},
          2,
          "",
          R"(cannot open "none.ini": the file or path does not exist (code 2))"}});
}

TEST(ConfigCommands, ReadRecords) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("r.dat",
             "\"SA1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",1,2.5,0.5,\"D\"\n"
             "\"SA2\",\"Two\",\"PS\",\"x\",\"\",0,0,0,\"\"\n\"T\",\"Tray\",\"PCL\",\"y\",\"\",1,3,"
             "1,\"J\"\n");
  folder.Add("bad.dat", "\"A\",\"a\",\"b\",\"c\",\"d\",1,2,3,\"e\"\nbroken\n");
  const std::string titles =
      "KEY  LANGUAGE  COMMAND  FORMAT  FROM   TO  STEP  DURATION  DESCRIPTION\n";
  const std::string both =
      "SA1  PCL       1B45     %d         1  2.5   0.5  D         Set size\n"
      "SA2  PS        x                   0    0     0            Two\n";
  Check({
      {{"records", "list", "r.dat"},
       0,
       titles + both + "T    PCL       y                   1    3     1  J         Tray\n"},
      {{"records", "find", "r.dat", "SA"}, 0, titles + both},
      {{"records", "find", "r.dat", "SA1", "--json"},
       0,
       R"([{"key": "SA1","description": "Set size","language": "PCL","command": "1B45",)"
       R"("format": "%d","from": 1.0,"to": 2.5,"step": 0.5,"duration": "D"}])"},
      {{"records", "find", "r.dat", "sa"},
       -7,
       "",
       R"("r.dat" has no record whose key begins with "sa" (code -7))"},
      {{"records", "count", "r.dat", "SA"}, 0, "2\n"},
      {{"records", "count", "r.dat", "SA", "--json"},
       0,
       R"({"file": "r.dat","key": "SA","count": 2})"},
      {{"records", "count", "r.dat", "--json"},
       0,
       R"({"file": "r.dat","counts": {"A": 0,"F": 0,"G": 0,"P": 0,"S": 2,"T": 1,"SA": 2,"SF": 0,)"
       R"("SG": 0,"SP": 0,"SS": 0,"ST": 0}})"},
      {{"records", "list", "bad.dat"},
       -2,
       "KEY  LANGUAGE  COMMAND  FORMAT  FROM  TO  STEP  DURATION  DESCRIPTION\n"
       "A    b         c        d          1   2     3  e         a\n",
       R"("bad.dat" has a line that is no record, after the record "A" (code -2))"},
      {{"records", "list", "none.dat"},
       -1,
       "",
       R"(cannot open "none.dat": it does not exist (code -1))"},
  });
}

TEST(ConfigCommands, ShowPanels) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("opc007.cfg",
             "[Format]\nStyle=1\n[Spin Limits]\n12=1;99;2\n[Combos]\n20=1;2;3\n20-1=7\n"
             "[Edit Lengths]\n30=15\n[Dialogs]\n1=Main\n[Main]\nNumCtrls=2\n"
             "Defaults=0010;5;0011;7\nNumOMVAR=2\nOMVAR=1A2B 0003\n");
  const std::string text =
      "opc007.cfg\n\nSpin controls\nCONTROL  MINIMUM  MAXIMUM  STEP\n     12        1       99     "
      "2\n"
      "\nCombo boxes\nCONTROL  LIST  VALUES\n     20     0  1 2 3\n     20     1  7\n"
      "\nEdit fields\nCONTROL  LENGTH\n     30      15\n"
      "\nPage 1, Main\nCONTROL  VALUE\n     16      5\n     17      7\nvariables: 1A2B 0003\n";
  Check({
      {{"panel", "show", "7"}, 0, text},
      {{"panel", "show", "7", "--dir", folder.Path().string()}, 0, text},
      {{"panel", "show", "7", "--json"},
       0,
       R"({"number": 7,"file": "opc007.cfg",)"
       R"("spinControls": [{"control": 12,"minimum": 1,"maximum": 99,"step": 2}],)"
       R"("comboBoxes": [{"control": 20,"list": 0,"values": [1,2,3]},)"
       R"({"control": 20,"list": 1,"values": [7]}],"editFields": [{"control": 30,"length": 15}],)"
       R"("pages": [{"page": 1,"name": "Main","defaults": [{"control": 16,"value": 5},)"
       R"({"control": 17,"value": 7}],"variables": ["1A2B","0003"]}]})"},
      {{"panel", "show", "8"},
       2,
       "",
       R"(cannot open "opc008.cfg": the file or path does not exist (code 2))"},
      {{"panel", "show", "0"}, 1, "", "configuration numbers begin with 1 (code 1)"},
  });
}

TEST(ConfigCommands, ShowQuickSetups) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("s.ini", "[005REQUIRED]\nNUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=0x3\n");
  hvtest::QuickSetupFile file;
  file.minor = 0;
  file.block1 = {std::string("\x01\x02\x03\x04", 4), 2, {}};
  folder.Add("q.qsf", file.Bytes());
  std::string damaged = file.Bytes();
  damaged.back() = static_cast<char>(damaged.back() ^ 1);
  folder.Add("damaged.qsf", damaged);
  const std::string size = std::to_string(file.Bytes().size());
  Check({
      {{"setup", "list", "s.ini", "5", "required"}, 0, "001A\n002B\n0003\n"},
      {{"setup", "list", "s.ini", "5", "required", "--json"},
       0,
       R"({"file": "s.ini","setup": 5,"kind": "required","variables": ["001A","002B","0003"]})"},
      {{"setup", "list", "s.ini", "5", "order"},
       45,
       "",
       R"(no list of order variables for setup 5 in "s.ini": there is no such section (code 45))"},
      {{"setup", "show", "damaged.qsf"},
       43,
       "",
       R"(cannot open "damaged.qsf": the checksum of the file does not match (code 43))"},
      {{"setup", "show", "q.qsf", "--type", "4"},
       44,
       "",
       R"(cannot open "q.qsf": the model is unknown, or the file is of another kind (code 44))"},
      {{"setup", "show", "none.qsf"},
       3,
       "",
       R"(cannot open "none.qsf": the file or the destination cannot be opened (code 3))"},
  });
  const ProgramRun shown =
      hvtest::RunProgram(TEST_BINARY_FOLDER "/hvapi", {"setup", "show", "q.qsf"});
  EXPECT_EQ(shown.status, 0) << shown.errors;
  EXPECT_EQ(shown.output.rfind("type 3, version 1.0, " + size + " bytes\n", 0), 0U) << shown.output;
  EXPECT_NE(shown.output.find("  01 02 03 04\n"), std::string::npos) << shown.output;
}

TEST(ConfigCommands, ListConfigurationFiles) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("a.cfg", "#!First panel\nx\n");
  folder.Add("b.pss", "#!Second\n");
  folder.Add("c.cfg", "none");
  Check({
      {{"config", "list", "."},
       0,
       "DESCRIPTION  FILE\nFirst panel  .\\a.cfg\nSecond       .\\b.pss\n"},
      {{"config", "list", ".", "--kind", "cfg"}, 0, "DESCRIPTION  FILE\nFirst panel  .\\a.cfg\n"},
      {{"config", "list", ".", "--kind", "pss", "--json"},
       0,
       R"([{"path": ".\\b.pss","description": "Second"}])"},
      {{"config", "list", "none"},
       2,
       "",
       R"(cannot list "none": the file or path does not exist (code 2))"},
  });
}

TEST(ConfigCommands, PrintAddresses) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("w.ini", "[AREA_PREFIX]\nDRIVERS=ftp://example.org\n");
  Check({
      {{"url", "drivers", "--language", "3"}, 0, "https://support.example.com/NA/drivers/3\n"},
      {{"url", "firmware", "--json"}, 0, R"({"url": "https://support.example.com/NA/firmware/0"})"},
      {{"url", "drivers", "--ini", "w.ini"}, 0, "ftp://example.org/drivers/0\n"},
      {{"url", "drivers", "--ini", "none.ini"},
       2,
       "",
       R"(cannot open "none.ini": the file or path does not exist (code 2))"},
      {{"url", "drivers", "--language", "23"}, 1, "", "the language must be 0 to 22 (code 1)"},
      {{"url", "drivers", "--dispatch"},
       1,
       "",
       R"(--dispatch requires --printer; see "hvapi url --help" (code 1))"},
  });
}

}  // namespace
