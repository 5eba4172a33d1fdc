// The commands of hvapi on configuration files, as a person runs them: tables, JSON, exit statuses.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/quick_setup_builder.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

struct Case {
  const char* command;  // words with blanks between them
  std::string output;
  int status = 0;
  std::string errors = "";  // behind "hvapi: "
};

// Runs commands in a folder of their own.
class ConfigCommands : public testing::Test {
 protected:
  static void Check(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
      std::istringstream command(c.command);
      std::vector<std::string> words;
      for (std::string word; command >> word;) words.push_back(word);
      const ProgramRun run = RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
      // A status is a byte on some systems.
      EXPECT_EQ(run.status & 0xFF, c.status & 0xFF) << c.command;
      std::string output = run.output;
      // JSON is compared without the blanks that it is laid out with.
      if (words.back() == "--json")
        std::erase_if(output, [](char b) { return b == ' ' || b == '\n'; });
      EXPECT_EQ(output, c.output) << c.command;
      EXPECT_EQ(run.errors, c.errors.empty() ? "" : "hvapi: " + c.errors + "\n") << c.command;
    }
  }

  const TestFolder folder_;
  const ScopedCurrentFolder inside_{folder_.Path()};
};

const std::string Missing = "the file or path does not exist (code 2)";

TEST_F(ConfigCommands, ReadIniFiles) {
  folder_.Add(
      "p.ini",
      "; head\n[Tray1]\nPaperSize=A4\nType=Plain\nType=Bond\nloose\n\n[Tray2]\nSize=Letter\n");
  Check({
      {"ini get p.ini Tray2 Size --json",
       R"({"file":"p.ini","section":"Tray2","key":"Size","value":"Letter"})"},
      {"ini get p.ini tray1 x", "", 41, R"(the section "tray1" has no key "x" (code 41))"},
      {"ini get p.ini none x --default other", "other\n"},
      {"ini get none.ini a b", "", 2, R"(cannot open "none.ini": )" + Missing},
      {"ini list p.ini",
       "SECTION  KEY        VALUE\nTray1    PaperSize  A4\nTray1    Type       Plain\n"
       "Tray1    Type       Bond\nTray1    loose\nTray2    Size       Letter\n"},
      {"ini list p.ini tray2 --json", R"([{"section":"tray2","key":"Size","value":"Letter"}])"},
      {"ini list p.ini none", "", 45, R"(there is no section "none" in "p.ini" (code 45))"},
  });
}

TEST_F(ConfigCommands, EditIniFiles) {
  const std::pair<Case, std::string> cases[] = {
      {{"ini set p.ini A K new", ""}, "; head\r\n[A]\r\nK=new\r\nL=2\r\n"},
      {{"ini set p.ini B M 3", ""}, "; head\r\n[A]\r\nK=1\r\nL=2\r\n\r\n[B]\r\nM=3\r\n"},
      {{"ini add p.ini A K 3 --json", R"({"file":"p.ini","section":"A","key":"K","value":"3"})"},
       "; head\r\n[A]\r\nK=1\r\nL=2\r\nK=3\r\n"},
      {{"ini delete p.ini a k", ""}, "; head\r\n[A]\r\nL=2\r\n"},
  };
  for (const auto& [run, file] : cases) {
    folder_.Add("p.ini", "; head\r\n[A]\r\nK=1\r\nL=2\r\n");
    Check({run});
    EXPECT_EQ(ReadFile("p.ini"), file) << run.command;
  }
  folder_.Add("wide.ini", std::string("[\0s\0]\0\n\0", 8));
  Check({{"ini set wide.ini s k v", "", 27,
          "\"wide.ini\" holds NUL bytes, as a file of 16-bit characters does, and is left as it is "
          "(code 27)"},
         {"ini set new.ini S K v", ""},
         {"ini delete new.ini S X", "there was nothing to remove\n"},
         {"ini delete none.ini S", "", 2, R"(cannot open "none.ini": )" + Missing}});
  EXPECT_EQ(ReadFile("new.ini"), "[S]\r\nK=v\r\n");
  EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"new.ini", "p.ini", "wide.ini"}));
}

TEST_F(ConfigCommands, ReadRecords) {
  folder_.Add("r.dat",
              "\"SA1\",\"Set size\",\"PCL\",\"1B45\",\"%d\",1,2.5,0.5,\"D\"\n"
              "\"SA2\",\"Two\",\"PS\",\"x\",\"\",0,0,0,\"\"\n"
              "\"T\",\"Tray\",\"PCL\",\"y\",\"\",1,3,1,\"J\"\n");
  folder_.Add("bad.dat", "\"A\",\"a\",\"b\",\"c\",\"d\",1,2,3,\"e\"\nbroken\n");
  const std::string both =
      "KEY  LANGUAGE  COMMAND  FORMAT  FROM   TO  STEP  DURATION  DESCRIPTION\n"
      "SA1  PCL       1B45     %d         1  2.5   0.5  D         Set size\n"
      "SA2  PS        x                   0    0     0            Two\n";
  Check({
      {"records list r.dat",
       both + "T    PCL       y                   1    3     1  J         Tray\n"},
      {"records find r.dat SA", both},
      {"records find r.dat SA1 --json",
       R"([{"key":"SA1","description":"Setsize","language":"PCL","command":"1B45",)"
       R"("format":"%d","from":1.0,"to":2.5,"step":0.5,"duration":"D"}])"},
      {"records find r.dat sa", "", -7,
       R"("r.dat" has no record whose key begins with "sa" (code -7))"},
      {"records count r.dat SA", "2\n"},
      {"records count r.dat --json",
       R"({"file":"r.dat","counts":{"A":0,"F":0,"G":0,"P":0,"S":2,"T":1,"SA":2,"SF":0,)"
       R"("SG":0,"SP":0,"SS":0,"ST":0}})"},
      {"records list bad.dat",
       "KEY  LANGUAGE  COMMAND  FORMAT  FROM  TO  STEP  DURATION  DESCRIPTION\n"
       "A    b         c        d          1   2     3  e         a\n",
       -2, R"("bad.dat" has a line that is no record, after the record "A" (code -2))"},
      {"records list none.dat", "", -1, R"(cannot open "none.dat": it does not exist (code -1))"},
  });
}

TEST_F(ConfigCommands, ShowPanels) {
  folder_.Add("opc007.cfg",
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
      {"panel show 7 --dir .", text},
      {"panel show 7 --json",
       R"({"number":7,"file":"opc007.cfg",)"
       R"("spinControls":[{"control":12,"minimum":1,"maximum":99,"step":2}],)"
       R"("comboBoxes":[{"control":20,"list":0,"values":[1,2,3]},)"
       R"({"control":20,"list":1,"values":[7]}],"editFields":[{"control":30,"length":15}],)"
       R"("pages":[{"page":1,"name":"Main","defaults":[{"control":16,"value":5},)"
       R"({"control":17,"value":7}],"variables":["1A2B","0003"]}]})"},
      {"panel show 8", "", 2, R"(cannot open "opc008.cfg": )" + Missing},
      {"panel show 0", "", 1, "configuration numbers begin with 1 (code 1)"},
  });
}

TEST_F(ConfigCommands, ShowQuickSetups) {
  folder_.Add("s.ini", "[005REQUIRED]\nNUMVARS=3\nNUMENTRIES=2\nOMVARS1=1A 2b\nOMVARS2=0x3\n");
  const std::string bytes =
      QuickSetupFile{"QS", 3, 1, 0, {"\x01\x02\x03\x04", 2, {}}, {}, {}}.Bytes();
  folder_.Add("q.qsf", bytes);
  folder_.Add("damaged.qsf", bytes.substr(0, bytes.size() - 1) + '\x05');
  Check({
      {"setup list s.ini 5 required", "001A\n002B\n0003\n"},
      {"setup list s.ini 5 required --json",
       R"({"file":"s.ini","setup":5,"kind":"required","variables":["001A","002B","0003"]})"},
      {"setup list s.ini 5 order", "", 45,
       R"(no list of order variables for setup 5 in "s.ini": there is no such section (code 45))"},
      {"setup show damaged.qsf", "", 43,
       R"(cannot open "damaged.qsf": the checksum of the file does not match (code 43))"},
  });
  const ProgramRun shown = RunProgram(TEST_BINARY_FOLDER "/hvapi", {"setup", "show", "q.qsf"});
  EXPECT_EQ(shown.output.rfind("type 3, version 1.0, 78 bytes\n", 0), 0U) << shown.output;
  EXPECT_NE(shown.output.find("  01 02 03 04\n"), std::string::npos) << shown.output;
}

TEST_F(ConfigCommands, ListConfigurationFiles) {
  folder_.Add("a.cfg", "#!First panel\nx\n");
  folder_.Add("b.pss", "#!Second\n");
  folder_.Add("c.cfg", "none");
  Check({
      {"config list .", "DESCRIPTION  FILE\nFirst panel  .\\a.cfg\nSecond       .\\b.pss\n"},
      {"config list . --kind pss --json", R"([{"path":".\\b.pss","description":"Second"}])"},
      {"config list none", "", 2, R"(cannot list "none": )" + Missing},
  });
}

TEST_F(ConfigCommands, PrintAddresses) {
  folder_.Add("w.ini", "[AREA_PREFIX]\nDRIVERS=ftp://example.org\n");
  Check({
      {"url drivers --language 3", "https://support.example.com/NA/drivers/3\n"},
      {"url firmware --json", R"({"url":"https://support.example.com/NA/firmware/0"})"},
      {"url drivers --ini w.ini", "ftp://example.org/drivers/0\n"},
      {"url drivers --language 23", "", 1, "the language must be 0 to 22 (code 1)"},
      {"url drivers --dispatch", "", 1,
       R"(--dispatch requires --printer; see "hvapi url --help" (code 1))"},
  });
}

}  // namespace
