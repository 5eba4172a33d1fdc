// hvapi unzip as a person runs it: files, exit statuses, sentences, JSON.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/run_program.h"
#include "support/test_folder.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using namespace hvtest;
using Words = std::vector<std::string>;

// hvapi unzip in a folder of its own.
class UnzipCommand : public testing::Test {
 protected:
  static ProgramRun Unzip(Words words) {
    words.insert(words.begin(), "unzip");
    return RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
  }

  const TestFolder folder_;
  const ScopedCurrentFolder inside_{folder_.Path()};
};

TEST_F(UnzipCommand, ExtractsBelowTheDirectoryThatIsNamed) {
  const std::string text(3000, 'x');
  folder_.Add("fonts.zip", BuildZip({Stored("../read.me", "fonts"),
                                     Packed("big.pfb", text, 8, DeflateDynamic(text)),
                                     Stored("sub/tim.PFB", "tim")})
                               .bytes);
  // The options and the folder that they name, what is there then, and what is said.
  const std::tuple<Words, const char*, std::string, const char*> cases[] = {
      {{"--to", "one"}, "one", "big.pfb=" + text + " read.me=fonts sub/ sub/tim.PFB=tim", ""},
      {{"*.PFB", "--to", folder_ / "on/the/way"},
       "on/the/way",
       "big.pfb=" + text + " sub/ sub/tim.PFB=tim",
       ""},
      {{"none", "--to", "two"}, "two", "", "hvapi: no member of \"fonts.zip\" matches \"none\"\n"},
  };
  for (const auto& [options, to, tree, errors] : cases) {
    Words words = options;
    words.insert(words.begin(), "fonts.zip");
    const ProgramRun run = Unzip(words);
    EXPECT_EQ(run.status, 0) << to;
    EXPECT_EQ(run.output, "") << to;
    EXPECT_EQ(run.errors, errors) << to;
    EXPECT_EQ(Show(ReadTree(to)), tree);
  }
  EXPECT_EQ(folder_.Names(), (Words{"fonts.zip", "on", "one", "two"}));
  EXPECT_EQ(Unzip({"fonts", "*read*"}).status, 0);
  EXPECT_EQ(ReadFile("read.me"), "fonts");
}

TEST_F(UnzipCommand, TellsWhatFailedAndWhatWasSkipped) {
  const std::string noZip = "the file is missing, a directory, or of a kind that cannot be used";
  const std::tuple<void (*)(ZipArchive&), std::string, std::string> cases[] = {
      {[](ZipArchive& z) { z.Set16(z.entries[1] + 6, 45); }, "0 one=1 tri=333",
       "hvapi: \"two\" skipped: it needs a newer version\n"},
      {[](ZipArchive& z) { z.Set16(z.locals[1] + 14, 1); }, "0 one=1 tri=333 two=22",
       "hvapi: \"two\" failed: its checksum is wrong\n"},
      {[](ZipArchive& z) { z.Set16(z.locals[1], 0), z.Set16(z.locals[2] + 26, 0xFFFF); }, "9 one=1",
       "hvapi: \"two\" failed: " + noZip +
           "\nhvapi: cannot extract \"a.zip\": the archive ends too early (code 9)\n"},
      {[](ZipArchive& z) { z.bytes = "%!PS"; }, "27 ",
       "hvapi: cannot extract \"a.zip\": " + noZip + " (code 27)\n"},
  };
  for (const auto& [change, shown, errors] : cases) {
    ZipArchive zip = BuildZip({Stored("one", "1"), Stored("two", "22"), Stored("tri", "333")});
    change(zip);
    folder_.Add("a.zip", zip.bytes);
    const ProgramRun run = Unzip({"a.zip", "--to", "out"});
    EXPECT_EQ(run.errors, errors);
    EXPECT_EQ(std::to_string(run.status) + " " + Show(ReadTree("out")), shown) << errors;
    std::filesystem::remove_all("out");
  }
}

TEST_F(UnzipCommand, PrintsTheMembersAsJson) {
  ZipArchive zip = BuildZip(
      {Stored("d/m", "data"), Stored("secret", "x"), Stored("bad", ""), Stored("last", "")});
  zip.Set16(zip.entries[1] + 8, 1);
  zip.Set16(zip.locals[2] + 14, 1);
  folder_.Add("a.zip", zip.bytes);
  std::string output = Unzip({"a.zip", "--json"}).output;
  std::erase_if(output, [](char c) { return c == ' ' || c == '\n'; });
  EXPECT_EQ(output,
            R"({"archive":"a.zip","code":0,"members":[)"
            R"({"name":"d/m","compressedSize":4,"outcome":"extracted"},)"
            R"({"name":"secret","compressedSize":1,"outcome":"skipped","reason":"itisencrypted"},)"
            R"({"name":"bad","compressedSize":0,"outcome":"failed","reason":"itschecksumiswrong"},)"
            R"({"name":"last","compressedSize":0,"outcome":"tried"}]})");
}

TEST_F(UnzipCommand, LeavesNothingBehindForWrongArguments) {
  folder_.Add("file", "x");
  const std::pair<Words, int> cases[] = {
      {{"missing", "--to", "out"}, 2},
      {{std::string(261, 'x'), "--to", "out"}, 2},
      {{"file", std::string(261, '?')}, 1},
      {{"file", "--to", "file"}, 3},
      {{}, 1},
  };
  for (const auto& [words, status] : cases) {
    const ProgramRun run = Unzip(words);
    EXPECT_EQ(run.status, status) << run.errors;
    EXPECT_EQ(run.errors.rfind("hvapi: ", 0), 0U) << run.errors;
  }
  EXPECT_EQ(folder_.Names(), Words{"file"});
}

}  // namespace
