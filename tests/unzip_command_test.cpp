// hvapi unzip as a person runs it: files, exit statuses, sentences, JSON.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "support/run_program.h"
#include "support/test_folder.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

using hvtest::BuildZip;
using hvtest::Packed;
using hvtest::ProgramRun;
using hvtest::Stored;
using hvtest::Tree;
using hvtest::ZipArchive;
using Words = std::vector<std::string>;

// hvapi unzip in a folder of its own.
class UnzipCommand : public testing::Test {
 protected:
  static ProgramRun Unzip(Words words) {
    words.insert(words.begin(), "unzip");
    return hvtest::RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
  }

  const hvtest::TestFolder folder_;
  const hvtest::ScopedCurrentFolder inside_{folder_.Path()};
};

TEST_F(UnzipCommand, ExtractsBelowTheDirectoryThatIsNamed) {
  const std::string text(3000, 'x');
  folder_.Add("fonts.zip", BuildZip({Stored("../read.me", "fonts"),
                                     Packed("big.pfb", text, 8, hvtest::DeflateFixed(text)),
                                     Stored("sub/tim.PFB", "tim")})
                               .bytes);
  const Tree all = {{"read.me", "fonts"}, {"big.pfb", text}, {"sub/", ""}, {"sub/tim.PFB", "tim"}};
  const struct {
    Words words;
    std::string to;
    Tree tree;
    std::string errors = "";
  } cases[] = {
      {{"fonts.zip", "--to", "one"}, "one", all},
      {{folder_ / "fonts", "--to", folder_ / "made/on/the/way"}, "made/on/the/way", all},
      {{"fonts.zip", "*.pfb", "--to", "two"},
       "two",
       {{"big.pfb", text}, {"sub/", ""}, {"sub/tim.PFB", "tim"}}},
      {{"fonts.zip", "none", "--to", "three"},
       "three",
       {},
       "hvapi: no member of \"fonts.zip\" matches \"none\"\n"},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Unzip(c.words);
    EXPECT_EQ(run.status, 0) << c.to;
    EXPECT_EQ(run.output, "") << c.to;
    EXPECT_EQ(run.errors, c.errors) << c.to;
    EXPECT_EQ(hvtest::ReadTree(c.to), c.tree) << c.to;
  }
  EXPECT_EQ(Unzip({"fonts", "read*"}).status, 0);
  EXPECT_EQ(folder_.Names(), (Words{"fonts.zip", "made", "one", "three", "two"}));
  EXPECT_EQ(Unzip({"fonts", "*read*"}).status, 0);
  EXPECT_EQ(hvtest::ReadFile("read.me"), "fonts");
}

TEST_F(UnzipCommand, TellsWhatFailedAndWhatWasSkipped) {
  const Tree all = {{"one", "1"}, {"two", "22"}, {"three", "333"}};
  const Tree withoutTwo = {{"one", "1"}, {"three", "333"}};
  const struct {
    void (*change)(ZipArchive&);
    int status;
    Tree tree;
    std::string errors;
    std::string outcomes;  // as JSON tells them
  } cases[] = {
      {[](ZipArchive& z) { z.Set16(z.entries[1] + 8, 1); }, 0, withoutTwo,
       "hvapi: \"two\" skipped: it is encrypted\n", "extracted skipped extracted "},
      {[](ZipArchive& z) { z.Set16(z.entries[1] + 6, 45); }, 0, withoutTwo,
       "hvapi: \"two\" skipped: it needs a newer version\n", "extracted skipped extracted "},
      {[](ZipArchive& z) { z.Set16(z.locals[1] + 14, 1); }, 0, all,
       "hvapi: \"two\" failed: its checksum is wrong\n", "extracted failed tried "},
      {[](ZipArchive& z) { z.Set16(z.locals[1], 0), z.Set16(z.locals[2] + 26, 0xFFFF); },
       9,
       {{"one", "1"}},
       "hvapi: \"two\" failed: the file is missing, a directory, or of a kind that cannot be used\n"
       "hvapi: cannot extract \"a.zip\": the archive ends too early (code 9)\n",
       "extracted failed tried "},
      {[](ZipArchive& z) { z.bytes = "%!PS"; },
       27,
       {},
       "hvapi: cannot extract \"a.zip\": the file is missing, a directory, or of a kind that "
       "cannot "
       "be used (code 27)\n",
       ""},
  };
  for (const auto& c : cases) {
    ZipArchive zip = BuildZip({Stored("one", "1"), Stored("two", "22"), Stored("three", "333")});
    c.change(zip);
    folder_.Add("a.zip", zip.bytes);
    for (const char* json : {"", "--json"}) {
      Words words = {"a.zip", "--to", "out", json};
      if (*json == '\0') words.pop_back();
      const ProgramRun run = Unzip(words);
      EXPECT_EQ(run.status, c.status) << c.errors;
      EXPECT_EQ(run.errors, c.errors);
      EXPECT_EQ(hvtest::ReadTree("out"), c.tree) << c.errors;
      std::filesystem::remove_all("out");
      std::string outcomes;
      const std::string key = "\"outcome\": \"";
      for (std::size_t at = 0; (at = run.output.find(key, at)) != std::string::npos;) {
        at += key.size();
        outcomes += run.output.substr(at, run.output.find('"', at) - at) + " ";
      }
      EXPECT_EQ(outcomes, *json == '\0' ? "" : c.outcomes) << c.errors;
    }
  }
}

TEST_F(UnzipCommand, PrintsTheMembersAsJson) {
  ZipArchive zip = BuildZip({Stored("d/m", "data"), Stored("secret", "x")});
  zip.Set16(zip.entries[1] + 8, 1);
  folder_.Add("a.zip", zip.bytes);
  EXPECT_EQ(Unzip({"a.zip", "--json"}).output, R"({
  "archive": "a.zip",
  "code": 0,
  "members": [
    {
      "name": "d/m",
      "compressedSize": 4,
      "outcome": "extracted"
    },
    {
      "name": "secret",
      "compressedSize": 1,
      "outcome": "skipped",
      "reason": "it is encrypted"
    }
  ]
}
)");
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
