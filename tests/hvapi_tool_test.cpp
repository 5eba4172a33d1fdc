// hvapi as a person runs it: bytes, exit statuses, sentences, JSON, help.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

using hvtest::JsonText;
using hvtest::ProgramRun;
using hvtest::ReadFile;
using hvtest::RunProgram;
using hvtest::TestFolder;
using namespace std::string_literals;
using Words = std::vector<std::string>;

ProgramRun Hvapi(const Words& words) {
  return RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

Words operator+(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

std::string Text(const Words& words) {
  std::string text;
  for (const std::string& word : words) text += word + " ";
  return text;
}

const std::string PjlEnd = "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n";

TEST(Tool, SendsTheBytesThatItsOptionsAskFor) {
  const TestFolder folder;
  const std::string job = folder.Add("job.pcl", "PAGE");
  const std::string destination = folder / "sent";
  const struct {
    Words words;
    std::string bytes;
  } cases[] = {
      {{"send", job}, "PAGE"},
      {{"send", job, "--copies", "3"}, "PAGEPAGEPAGE"},
      {{"send", job, "--pjl", "--language", "pcl", "--copies", "3", "--name", "Weekly report"},
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Weekly report\"\n@PJL ENTER LANGUAGE = PCL\n"
       "@PJL SET COPIES = 3\nPAGE" +
           PjlEnd + "@PJL RESET\n\x1B%-12345X"},
      {{"send", job, "--pjl", "--language", "gl"},
       "\x1B%-12345X@PJL ENTER LANGUAGE = GL\nPAGE" + PjlEnd + "@PJL RESET\n\x1B%-12345X"},
      {{"send", job, "--esc-k", "--language", "postscript", "--personality", "0x35"},
       "\x1B[K\x03\x00\x06\x35\x08PAGE\x1B[K\x01\x00\x06"s},
      {{"send", job, "--esc-k", "--language", "pclxl", "--copies", "2"},
       "\x1B[K\x03\x00\x06\x31\x02\x1B&l2XPAGE\x1B[K\x01\x00\x06"s},
      {{"send", job, "--esc-k", "--language", "ppds"},
       "\x1B[K\x03\x00\x06\x31\x01PAGE\x1B[K\x01\x00\x06"s},
      {{"send", job, "--esc-k", "--language", "default"},
       "\x1B[K\x03\x00\x06\x31\x00PAGE\x1B[K\x01\x00\x06"s},
      {{"string", "1b45"}, "\x1B\x45"},
      {{"string", "$\\x1BE\\n"}, "\x1B\x45\n"},
      {{"string", "%" + job, "--copies", "2"}, "PAGEPAGE"},
      {{"string", "", "--pjl", "--name", ""},
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n" + PjlEnd + "\x1B%-12345X"},
      {{"storage", "ram", "--pjl"},
       "\x1B%-12345X\x1B%-12345X@PJL SET QDOWNLOADTARGET = ram\n" + PjlEnd + "\x1B%-12345X"},
      {{"storage", "target", "--device", "flash2", "--esc-k", "--class", "2"},
       "\x1B[K\x01\x00\x01\x1B[K\x03\x00\x06\xC0\x31"s},
      {{"storage", "format", "--device", "disk1", "--pjl", "--name", "Setup"},
       "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Setup\"\n\x1B%-12345X@PJL QFORMAT DEVICE = disk1\n" +
           PjlEnd + "\x1B%-12345X"},
      {{"storage", "directory"}, "\x1B[K\x03\x00\x06\xC0\x46"s},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(c.words + Words{"--to", destination});
    EXPECT_EQ(run.status, 0) << Text(c.words) << run.errors;
    EXPECT_EQ(ReadFile(destination), c.bytes) << Text(c.words);
    EXPECT_EQ(run.output + run.errors, "") << Text(c.words);
  }
}

TEST(Tool, AppendsOnlyWhenAsked) {
  const TestFolder folder;
  const std::string destination = folder.Add("sent", "before ");
  EXPECT_EQ(Hvapi({"string", "$one ", "--to", destination, "--append"}).status, 0);
  EXPECT_EQ(ReadFile(destination), "before one ");
  EXPECT_EQ(Hvapi({"string", "$two", "--to", destination}).status, 0);
  EXPECT_EQ(ReadFile(destination), "two");
}

TEST(Tool, ShowsNoProgressWhereNobodyLooks) {
  const TestFolder folder;
  const std::string bytes(6U << 20, 'x');
  const std::string job = folder.Add("job", bytes);
  const ProgramRun run = Hvapi({"send", job, "--to", folder / "sent"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output + run.errors, "");
  EXPECT_TRUE(ReadFile(folder / "sent") == bytes);
}

TEST(Tool, StoresDemonstrationFiles) {
  const TestFolder folder;
  const std::string page = folder.Add("page.pcl", "PAGE");
  const std::string sent = folder / "sent";
  EXPECT_EQ(Hvapi({"demo", "download", page, "--method", "esc", "--target", "disk2", "--to", sent,
                   "--id", "5", "--header-byte", "0x20", "--header-flag", "--store-as", "Tour"})
                .status,
            0);
  EXPECT_EQ(ReadFile(sent), "\x1B[D\0\x05\x01\x20Tour\0\0\0\0\0\0\0\0\0\0\0\x04PAGE"s);
  EXPECT_EQ(
      Hvapi({"demo", "download", page, "--method", "demofile", "--target", "flash2", "--to", sent})
          .status,
      0);
  EXPECT_EQ(ReadFile(sent),
            "\x1B%-12345X@PJL QOPENDEMOFILE NAME=\"PAGE.PCL\"\nPAGE\x1BM@PJL QCLOSEDEMOFILE\n");
}

TEST(Tool, ExplainsAFile) {
  const TestFolder folder;
  const std::string file = folder.Add("job", "\x1B&l0o26A\x1B*b1Wx\x1B*b0W");
  EXPECT_EQ(Hvapi({"show", file}).output,
            "offset    length  bytes                                     meaning\n"
            "00000000       5  1b 26 6c 30 6f                            orientation: portrait\n"
            "00000005       3  32 36 41                                  page size: A4\n"
            "00000008      11  1b 2a 62 31 57 78 1b 2a 62 30 57          2 rows of dots\n");
  EXPECT_EQ(Hvapi({"show", file, "--rows", "--json"}).output,
            "{\"offset\":0,\"length\":5,\"bytes\":\"1b266c306f\",\"meaning\":\"orientation: "
            "portrait\"}\n"
            "{\"offset\":5,\"length\":3,\"bytes\":\"323641\",\"meaning\":\"page size: A4\"}\n"
            "{\"offset\":8,\"length\":5,\"bytes\":\"1b2a623157\",\"meaning\":\"row of dots: 1 "
            "bytes\"}\n"
            "{\"offset\":13,\"length\":1,\"bytes\":\"78\",\"meaning\":\"1 bytes: row of dots\"}\n"
            "{\"offset\":14,\"length\":5,\"bytes\":\"1b2a623057\",\"meaning\":\"row of dots: 0 "
            "bytes\"}\n");
}

TEST(Tool, TellsWhereAPclXlJobIsWrong) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder current(folder.Path());
  const std::string head = "\x1B%-12345X@PJL ENTER LANGUAGE = PCLXL\n) HP-PCL XL;1;1;\n\x41\x43";
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
    const std::string source = folder.Add("job", c.job);
    const ProgramRun run = Hvapi({"macro", "create", source, "--to", folder / "sent", "--language",
                                  "pclxl", "--filter", "--name", "Page"});
    EXPECT_EQ(run.status, 46);
    EXPECT_EQ(run.errors, "hvapi: cannot convert \"" + source + "\": " + c.fault + " (code 46)\n");
  }
}

TEST(Tool, TellsEachFailureInOneSentenceWithItsCode) {
  const TestFolder folder;
  const std::string job = folder.Add("job", "PAGE");
  const std::string missing = folder / "missing";
  const std::string nowhere = folder / "no" + "/where";
  const std::string sent = folder / "sent";
  const struct {
    Words words;
    int status;
    std::string sentence;
  } cases[] = {
      {{"send", missing, "--to", sent},
       2,
       "cannot send \"" + missing + "\" to \"" + sent + "\": the file or path does not exist"},
      {{"send", folder.Path().string(), "--to", sent},
       3,
       "cannot open the file \"" + folder.Path().string() + "\""},
      {{"send", job, "--to", nowhere}, 3, "cannot open the destination \"" + nowhere + "\""},
      {{"send", job, "--to", sent, "--nbx", "1", "2"},
       26,
       "no connection to \"" + sent + "\" by the communication library"},
      {{"string", "1B4", "--to", sent},
       1,
       "\"1B4\" is not pairs of hexadecimal digits; a text begins with \"$\", the name of a file "
       "with \"%\""},
      {{"string", "$x", "--to", nowhere}, 3, "cannot open the destination \"" + nowhere + "\""},
      {{"string", "%" + missing, "--to", sent},
       2,
       "cannot send \"" + missing + "\" to \"" + sent + "\": the file or path does not exist"},
      {{"storage", "ram", "--to", std::string(260, 'x')},
       1,
       "cannot send to \"" + std::string(260, 'x') +
           "\": an argument is missing, too long or out of range"},
      {{"show", missing}, 2, "cannot show \"" + missing + "\": the file or path does not exist"},
      {{"demo", "download", job, "--method", "pjl", "--target", "ram", "--to", sent},
       1,
       "\"ram\" is not one of flash1, flash2, disk1, disk2; see \"hvapi demo download --help\""},
      {{"file", "copy", missing, sent},
       2,
       "cannot copy \"" + missing + "\" to \"" + sent + "\": the file or path does not exist"},
      {{"file", "backup", missing},
       27,
       "cannot back up \"" + missing +
           "\": the file is missing, a directory, or of a kind that cannot be used"},
      {{"file", "checksum", missing},
       3,
       "cannot read \"" + missing + "\": the file or the destination cannot be opened"},
      {{"file", "makepath", "no/drive"}, 26, "cannot make the path \"no/drive\""},
      {{"file", "size", missing},
       2,
       "cannot find \"" + missing + "\": the file or path does not exist"},
      {{}, 1, "a command is needed; see \"hvapi --help\""},
      {{"snd"}, 1, "\"snd\" is not a command, \"send\" is; see \"hvapi --help\""},
      {{"storage", "erase"}, 1, "\"erase\" is not a command; see \"hvapi storage --help\""},
      {{"storage", "format", "--to", sent},
       1,
       "--device is required; see \"hvapi storage format --help\""},
      {{"send", job}, 1, "--to is required; see \"hvapi send --help\""},
      {{"send", job, "--to", sent, "--copies", "65536"},
       1,
       "not a value that can be used: --copies = 65536; see \"hvapi send --help\""},
      {{"send", job, "--to", sent, "--language", "latin"},
       1,
       "\"latin\" is not one of none, default, ppds, postscript, gl, pcl, pclxl; see \"hvapi send "
       "--help\""},
      {{"send", job, "--to", sent, "--pjl", "--esc-k"},
       1,
       "--pjl excludes --esc-k; see \"hvapi send --help\""},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(c.words);
    EXPECT_EQ(run.status, c.status) << Text(c.words);
    EXPECT_EQ(run.errors, "hvapi: " + c.sentence + " (code " + std::to_string(c.status) + ")\n");
    EXPECT_EQ(run.output, "") << Text(c.words);
  }
  EXPECT_EQ(folder.Names(), Words{"job"});
}

TEST(Tool, PrintsWhatTheFileCommandsFind) {
  const TestFolder folder;
  const std::string file = folder.Add("name.cfg", "\x01\x00\x02\x00"s);
  const std::string sum = folder.Add("sum", "\x01\x00\x02\x00"s);
  const struct {
    Words words;
    std::string output;
  } cases[] = {
      {{"checksum", file}, "0xFFFD\n"},
      {{"checksum", file, "--skip-word", "2"}, "0xFFFF\n"},
      {{"checksum", sum, "--json"},
       "{\n  \"file\": " + JsonText(sum) + ",\n  \"checksum\": 65533\n}\n"},
      {{"size", file}, "4\n"},
      {{"size", folder / "NAME.*"}, "4\n"},
      {{"size", folder / "*.none"}, "0\n"},
      {{"backup", file}, folder / "name.001" + "\n"},
      {{"backup", file}, folder / "name.002" + "\n"},
      {{"copy", file, folder / "copy"}, ""},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Hvapi(Words{"file"} + c.words);
    EXPECT_EQ(run.status, 0) << Text(c.words) << run.errors;
    EXPECT_EQ(run.output, c.output) << Text(c.words);
  }
  EXPECT_EQ(folder.Names(), (Words{"copy", "name.001", "name.002", "name.cfg", "sum"}));
  EXPECT_EQ(ReadFile(folder / "copy"), ReadFile(file));
}

TEST(Tool, PrintsTheLibraryInformation) {
  const ProgramRun run = Hvapi({"info"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output.rfind("HvApiW32 8.3\n\nOFFSET  VALUE\n     0    830\n     2     32\n", 0),
            0U)
      << run.output;
  EXPECT_EQ(Hvapi({"info", "--json"}).output.rfind("{\n  \"version\": 830,\n  \"words\": [", 0),
            0U);
  EXPECT_EQ(Hvapi({"--version"}).output, "hvapi 8.3\n");
}

// The commands that a page of help lists: the first word of the lines of each section of commands.
Words ListedCommands(const std::string& page) {
  const std::set<std::string> others = {
      "NAME", "SYNOPSIS", "DESCRIPTION", "ARGUMENTS", "OPTIONS", "EXIT STATUS", ""};
  Words commands;
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
void CheckHelp(const Words& words, std::size_t* pages) {
  const ProgramRun run = Hvapi(words + Words{"--help"});
  std::string name = "hvapi";
  for (const std::string& word : words) name += " " + word;
  ASSERT_EQ(run.status, 0) << name << ": " << run.errors;
  EXPECT_EQ(run.output.rfind("NAME\n    " + name + " - ", 0), 0U) << run.output;
  EXPECT_NE(run.output.find("\nSYNOPSIS\n    " + name + " "), std::string::npos) << run.output;
  EXPECT_NE(run.output.find("\nDESCRIPTION\n    "), std::string::npos) << name;
  EXPECT_EQ(run.errors, "");
  ++*pages;
  for (const std::string& command : ListedCommands(run.output)) {
    CheckHelp(words + Words{command}, pages);
  }
}

TEST(Tool, HasAPageOfHelpForEveryCommand) {
  std::size_t pages = 0;
  CheckHelp({}, &pages);
  EXPECT_GE(pages, 18U);
}

}  // namespace
