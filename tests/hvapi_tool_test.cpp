// hvapi as a person runs it: bytes, exit statuses, sentences, JSON, help.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/hvapi_program.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;
using namespace std::string_literals;

class Tool : public testing::Test {
 protected:
  const TestFolder folder_;
  const ScopedCurrentFolder here_{folder_.Path()};
};

TEST_F(Tool, SendsTheBytesThatItsOptionsAskFor) {
  folder_.Add("page.pcl", "PAGE");
  const std::string pjlEnd = Uel + PjlPanel("") + "@PJL RESET\n" + Uel;
  const struct {
    std::string words;
    std::string bytes;
  } cases[] = {
      {"send page.pcl --copies 3", "PAGEPAGEPAGE"},
      {"send page.pcl --pjl --language pcl --copies 3 --name 'Weekly report'",
       Uel + PjlPanel("Weekly report") + PjlLanguage("PCL") + "@PJL SET COPIES = 3\nPAGE" + pjlEnd},
      {"send page.pcl --pjl --language gl", Uel + PjlLanguage("GL") + "PAGE" + pjlEnd},
      {"send page.pcl --esc-k --language postscript --personality 0x35",
       EscKLanguage(8, 0x35) + "PAGE" + EscKEnd},
      {"send page.pcl --esc-k --language pclxl --copies 2",
       EscKLanguage(2) + "\x1B&l2XPAGE" + EscKEnd},
      {"string 1b45", "\x1B\x45"},
      {"string $\\x1BE\\n", "\x1B\x45\n"},
      {"string '' --pjl --name ''", Uel + PjlPanel("") + PjlEnd},
      {"storage ram --pjl", Uel + PjlTarget("ram") + PjlEnd},
      {"storage target --device flash2 --esc-k --class 2", EscKLeadIn + EscKToDevice},
      {"storage format --device disk1 --pjl --name Setup",
       Uel + PjlPanel("Setup") + Uel + "@PJL QFORMAT DEVICE = disk1\n" + PjlEnd},
      {"storage directory", Bytes("\x1B[K\x03\x00\x06\xC0\x46")},
      {"demo download page.pcl --method esc --target disk2 --id 5 --header-byte 0x20 --header-flag "
       "--store-as Tour",
       "\x1B[D\0\x05\x01\x20Tour\0\0\0\0\0\0\0\0\0\0\0\x04PAGE"s},
      {"demo download page.pcl --method demofile --target flash2",
       Uel + "@PJL QOPENDEMOFILE NAME=\"PAGE.PCL\"\nPAGE\x1BM@PJL QCLOSEDEMOFILE\n"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(c.words + " --to sent");
    EXPECT_EQ(run.status, 0) << c.words << run.errors;
    EXPECT_EQ(ReadFile("sent"), c.bytes) << c.words;
    EXPECT_EQ(run.output + run.errors, "") << c.words;
  }
  EXPECT_EQ(Hvapi("string $one --to sent").status, 0);
  EXPECT_EQ(Hvapi("string $two --to sent --append").status, 0);
  EXPECT_EQ(ReadFile("sent"), "onetwo");
}

TEST_F(Tool, ShowsNoProgressWhereNobodyLooks) {
  const std::string bytes(6U << 20, 'x');
  folder_.Add("job", bytes);
  const ProgramRun run = Hvapi("send job --to sent");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output + run.errors, "");
  EXPECT_TRUE(ReadFile("sent") == bytes);
}

TEST_F(Tool, ExplainsAFile) {
  folder_.Add("job", "\x1B&l0o26A\x1B*b1Wx\x1B*b0W");
  EXPECT_EQ(Hvapi("show job").output,
            "offset    length  bytes                                     meaning\n"
            "00000000       5  1b 26 6c 30 6f                            orientation: portrait\n"
            "00000005       3  32 36 41                                  page size: A4\n"
            "00000008      11  1b 2a 62 31 57 78 1b 2a 62 30 57          2 rows of dots\n");
  EXPECT_EQ(Hvapi("show job --rows --json").output,
            "{\"offset\":0,\"length\":5,\"bytes\":\"1b266c306f\",\"meaning\":\"orientation: "
            "portrait\"}\n"
            "{\"offset\":5,\"length\":3,\"bytes\":\"323641\",\"meaning\":\"page size: A4\"}\n"
            "{\"offset\":8,\"length\":5,\"bytes\":\"1b2a623157\",\"meaning\":\"row of dots: 1 "
            "bytes\"}\n"
            "{\"offset\":13,\"length\":1,\"bytes\":\"78\",\"meaning\":\"1 bytes: row of dots\"}\n"
            "{\"offset\":14,\"length\":5,\"bytes\":\"1b2a623057\",\"meaning\":\"row of dots: 0 "
            "bytes\"}\n");
}

TEST_F(Tool, TellsWhereAPclXlJobIsWrong) {
  const std::string head = Uel + PjlLanguage("PCLXL") + ") HP-PCL XL;1;1;\n\x41\x43";
  const struct {
    std::string job;
    std::string fault;
  } cases[] = {
      {head + "\x84\x5E\x44\x42", "ExecStream at byte 57: a stream is defined or run on the page"},
      {head + "\x84\x44", "byte 58, after EndPage: the job ends early"},
      {head + "\x7E", "byte 56: the byte begins nothing that is accepted"},
      {") HP-PCL XL;2;0;\n", "byte 12: the protocol is not class 1 revision 1"},
  };
  for (const auto& c : cases) {
    folder_.Add("job", c.job);
    const ProgramRun run = Hvapi("macro create job --to sent --language pclxl --filter --name x");
    EXPECT_EQ(run.errors, Sentence("cannot convert \"job\": " + c.fault, 46));
  }
}

TEST_F(Tool, TellsEachFailureInOneSentenceWithItsCode) {
  folder_.Add("job", "PAGE");
  const std::string noFile = ": the file or path does not exist";
  const std::string tooLong(260, 'x');
  const struct {
    std::string words;
    int status;
    std::string sentence;
  } cases[] = {
      {"send none --to sent", 2, "cannot send \"none\" to \"sent\"" + noFile},
      {"send . --to sent", 3, "cannot open the file \".\""},
      {"send job --to no/where", 3, "cannot open the destination \"no/where\""},
      {"send job --to sent --nbx 1 2", 26,
       "no connection to \"sent\" by the communication library"},
      {"string 1B4 --to sent", 1,
       "\"1B4\" is not pairs of hexadecimal digits; a text begins with \"$\", the name of a file "
       "with \"%\""},
      {"storage ram --to " + tooLong, 1,
       "cannot send to \"" + tooLong + "\": an argument is missing, too long or out of range"},
      {"show none", 2, "cannot show \"none\"" + noFile},
      {"demo download job --method pjl --target ram --to sent", 1,
       "\"ram\" is not one of flash1, flash2, disk1, disk2; see \"hvapi demo download --help\""},
      {"file copy none sent", 2, "cannot copy \"none\" to \"sent\"" + noFile},
      {"file makepath no/drive", 26, "cannot make the path \"no/drive\""},
      {"file size none", 2, "cannot find \"none\"" + noFile},
      {"", 1, "a command is needed; see \"hvapi --help\""},
      {"snd", 1, "\"snd\" is not a command, \"send\" is; see \"hvapi --help\""},
      {"queue lst", 1, "\"lst\" is not a command, \"list\" is; see \"hvapi queue --help\""},
      {"x", 1, "\"x\" is not a command; see \"hvapi --help\""},
      {"storage format --to sent", 1, "--device is required; see \"hvapi storage format --help\""},
      {"send job --to sent --copies 65536", 1,
       "not a value that can be used: --copies = 65536; see \"hvapi send --help\""},
      {"send job --to sent --language latin", 1,
       "\"latin\" is not one of none, default, ppds, postscript, gl, pcl, pclxl; see \"hvapi send "
       "--help\""},
      {"send job --to sent --pjl --esc-k", 1, "--pjl excludes --esc-k; see \"hvapi send --help\""},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(c.words);
    EXPECT_EQ(run.status, c.status) << c.words;
    EXPECT_EQ(run.errors, Sentence(c.sentence, c.status));
    EXPECT_EQ(run.output, "") << c.words;
  }
  EXPECT_EQ(folder_.Names(), Words("job"));
}

TEST_F(Tool, PrintsWhatTheFileCommandsFind) {
  folder_.Add("name.cfg", "\x01\x00\x02\x00"s);
  const struct {
    const char* words;
    std::string output;
  } cases[] = {
      {"checksum name.cfg", "0xFFFD\n"},
      {"checksum name.cfg --skip-word 2", "0xFFFF\n"},
      {"checksum name.cfg --json", "{\n  \"file\": \"name.cfg\",\n  \"checksum\": 65533\n}\n"},
      {"size name.cfg", "4\n"},
      {"size NAME.*", "4\n"},
      {"size *.none", "0\n"},
      {"backup name.cfg", "name.001\n"},
      {"backup name.cfg", "name.002\n"},
      {"copy name.cfg copy", ""},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(std::string("file ") + c.words);
    EXPECT_EQ(run.status, 0) << c.words << run.errors;
    EXPECT_EQ(run.output, c.output) << c.words;
  }
  EXPECT_EQ(folder_.Names(), Words("copy name.001 name.002 name.cfg"));
  EXPECT_EQ(ReadFile("copy"), ReadFile("name.cfg"));
}

TEST_F(Tool, PrintsTheLibraryInformation) {
  EXPECT_EQ(Hvapi("info").output.rfind(
                "HvApiW32 8.3\n\nOFFSET  VALUE\n     0    830\n     2     32\n", 0),
            0U);
  EXPECT_EQ(Hvapi("info --json").output.rfind("{\n  \"version\": 830,\n  \"words\": [", 0), 0U);
  EXPECT_EQ(Hvapi("--version").output, "hvapi 8.3\n");
}

// The commands that a page of help lists: the first word of the lines of each section of commands.
std::vector<std::string> ListedCommands(const std::string& page) {
  const std::set<std::string> others = {
      "NAME", "SYNOPSIS", "DESCRIPTION", "ARGUMENTS", "OPTIONS", "EXIT STATUS", ""};
  std::vector<std::string> commands;
  std::string section;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("    ", 0) != 0) {
      section = line;
    } else if (others.count(section) == 0) {
      commands.push_back(line.substr(4, line.find(' ', 4) - 4));
    }
  }
  return commands;
}

// Every command has its page, which names it as it is typed and says what it does.
void CheckHelp(const std::string& name, std::size_t* pages) {
  const ProgramRun run = Hvapi(name.substr(5) + " --help");
  ASSERT_EQ(run.status, 0) << name << ": " << run.errors;
  EXPECT_EQ(run.output.rfind("NAME\n    " + name + " - ", 0), 0U) << run.output;
  EXPECT_NE(run.output.find("\nSYNOPSIS\n    " + name + " "), std::string::npos) << run.output;
  EXPECT_NE(run.output.find("\nDESCRIPTION\n    "), std::string::npos) << name;
  EXPECT_EQ(run.errors, "");
  ++*pages;
  for (const std::string& command : ListedCommands(run.output)) {
    CheckHelp(name + " " + command, pages);
  }
}

TEST_F(Tool, HasAPageOfHelpForEveryCommand) {
  std::size_t pages = 0;
  CheckHelp("hvapi", &pages);
  EXPECT_GE(pages, 18U);
}

}  // namespace
