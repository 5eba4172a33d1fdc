// The examples of docs/guide.md do what the guide shows.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "support/posix/cups_server.h"
#include "support/posix/socket_peer.h"
#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace hvtest;

// The folder of the reader, his printer and his queue of CUPS, as the guide calls them.
const std::string GuideFolder = "/home/kim/guide";
const std::string GuidePrinter = "--to socket://192.0.2.7";
const std::string GuideQueue = "--to office";

struct Example {
  int line;  // of the guide
  std::string command;
  std::string output;  // and "[status N]" where that is not 0
};

// The commands of the blocks marked "console", which follow a "$".
std::vector<Example> ReadExamples() {
  std::vector<Example> examples;
  std::istringstream guide(ReadFile(TEST_SOURCE_FOLDER "/docs/guide.md"));
  std::string line;
  bool inBlock = false;
  for (int number = 1; std::getline(guide, line); ++number) {
    if (line.starts_with("```")) {
      inBlock = line == "```console";
    } else if (inBlock && line.starts_with("$ ")) {
      examples.push_back({number, line.substr(2), ""});
    } else if (inBlock && !examples.empty()) {
      examples.back().output += line + "\n";
    }
  }
  return examples;
}

void Replace(const std::string& from, const std::string& to, std::string* text) {
  for (std::size_t at = 0; (at = text->find(from, at)) != std::string::npos; at += to.size()) {
    text->replace(at, from.size(), to);
  }
}

// Blanks and CR at the end of a line are not seen in a document.
std::string WithoutTrailingBlanks(const std::string& text) {
  std::istringstream lines(text);
  std::string result;
  for (std::string line; std::getline(lines, line);) {
    result += line.substr(0, line.find_last_not_of(" \r") + 1) + "\n";
  }
  return result;
}

class Guide : public testing::Test {
 protected:
  Guide() { fs::copy(TEST_SOURCE_FOLDER "/examples", Path(), fs::copy_options::recursive); }

  fs::path Path() const { return folder_.Path() / "guide"; }

  // What a reader sees who types the command.
  std::string Run(const std::string& command) {
    const ScopedCurrentFolder here(Path());
    const ProgramRun run = RunProgram("sh", {"-c", "exec 2>&1; " + command});
    std::string seen = run.output;
    Replace(Path().string(), GuideFolder, &seen);
    if (run.status != 0) seen += "[status " + std::to_string(run.status) + "]\n";
    return WithoutTrailingBlanks(seen);
  }

  // Runs a command whose destination stands for a printer of the reader's with another one.
  std::string RunWithDestination(std::string command, const std::string& guideDestination,
                                 const std::string& destination) {
    Replace(guideDestination, "--to " + destination, &command);
    return Run(command);
  }

  // The printer gets the bytes that a file gets, through a queue of CUPS or at its address.
  void ExpectAtPrinter(const Example& example, const std::string& guideDestination) {
    SocketPeer printer(TakeAll);
    const bool queue = guideDestination == GuideQueue;
    std::optional<CupsServer> server;
    if (queue) server.emplace(CupsServer::RawQueue("office", printer.Destination()));
    const ScopedVariable address("CUPS_SERVER", queue ? server->Address() : "");
    EXPECT_EQ(RunWithDestination(example.command, guideDestination,
                                 queue ? "office" : printer.Destination()),
              example.output);
    const std::string bytes = printer.Finish().bytes;
    EXPECT_EQ(RunWithDestination(example.command, guideDestination, "as-a-file.prn"), "");
    EXPECT_TRUE(bytes == ReadFile(Path() / "as-a-file.prn"));
    fs::remove(Path() / "as-a-file.prn");
  }

 private:
  TestFolder folder_;
  ScopedVariable spool_{"HVAPI_SPOOL", (Path() / "spool").string()};
  ScopedVariable path_{"PATH", std::string(TEST_BINARY_FOLDER ":") + std::getenv("PATH")};
  ScopedVariable locale_{"LC_ALL", "C"};
};

// In their order, since one example goes on with the files of those before it.
TEST_F(Guide, ShowsWhatItsExamplesDo) {
  const std::vector<Example> examples = ReadExamples();
  EXPECT_GT(examples.size(), 20U);
  int printers = 0;
  for (const Example& example : examples) {
    SCOPED_TRACE("docs/guide.md:" + std::to_string(example.line) + ": " + example.command);
    bool printed = false;
    for (const std::string& destination : {GuidePrinter, GuideQueue}) {
      if (example.command.find(destination) == std::string::npos) continue;
      printed = true;
      ++printers;
      if (destination == GuideQueue && !CupsServer::IsInstalled()) continue;
      ExpectAtPrinter(example, destination);
    }
    if (printed) continue;
    EXPECT_EQ(Run(example.command), example.output);
  }
  EXPECT_EQ(printers, 2);
}

}  // namespace
