// hvapi unzip as a person runs it: files, exit statuses, sentences, JSON.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/test_folder.h"
#include "support/zip_builder.h"
#include "support/zip_encoders.h"
#include "support/zip_run.h"

namespace {

namespace fs = std::filesystem;
using hvtest::BuildZip;
using hvtest::Packed;
using hvtest::ProgramRun;
using hvtest::RunProgram;
using hvtest::Stored;
using hvtest::TestFolder;
using hvtest::Tree;
using hvtest::ZipArchive;
using Words = std::vector<std::string>;

ProgramRun Unzip(Words words) {
  words.insert(words.begin(), "unzip");
  return RunProgram(TEST_BINARY_FOLDER "/hvapi", words);
}

// One stored, one deflated, one in a directory.
ZipArchive Fonts() {
  const std::string text(3000, 'x');
  return BuildZip({Stored("read.me", "fonts"),
                   Packed("big.pfb", text, 8, hvtest::DeflateFixed(text)),
                   Stored("sub/tim.PFB", "tim")});
}

TEST(UnzipCommand, ExtractsBelowTheDirectoryThatIsNamed) {
  const TestFolder folder;
  folder.Add("fonts.zip", Fonts().bytes);
  const Tree all = {{"read.me", "fonts"},
                    {"big.pfb", std::string(3000, 'x')},
                    {"sub/", ""},
                    {"sub/tim.PFB", "tim"}};
  const struct {
    const char* to;
    Words words;
    Tree tree;
    std::string errors;
  } cases[] = {
      {"one", {folder / "fonts.zip"}, all, ""},
      {"made/on/the/way", {folder / "fonts"}, all, ""},
      {"two",
       {folder / "fonts.zip", "*.pfb"},
       {{"big.pfb", all.at("big.pfb")}, {"sub/", ""}, {"sub/tim.PFB", "tim"}},
       ""},
      {"three",
       {folder / "fonts.zip", "none"},
       {},
       "hvapi: no member of \"" + folder / "fonts.zip" + "\" matches \"none\"\n"},
  };
  for (const auto& c : cases) {
    Words words = c.words;
    words.insert(words.end(), {"--to", folder / c.to});
    const ProgramRun run = Unzip(words);
    EXPECT_EQ(run.status, 0) << c.to;
    EXPECT_EQ(run.output, "") << c.to;
    EXPECT_EQ(run.errors, c.errors) << c.to;
    EXPECT_EQ(hvtest::ReadTree(folder / c.to), c.tree) << c.to;
  }
}

TEST(UnzipCommand, TakesRelativeNamesFromTheCurrentDirectory) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  folder.Add("a.zip", BuildZip({Stored("../m", "x")}).bytes);
  EXPECT_EQ(Unzip({"a"}).status, 0);
  EXPECT_EQ(hvtest::ReadFile("m"), "x");
  EXPECT_EQ(Unzip({"a.zip", "--to", "out"}).status, 0);
  EXPECT_EQ(hvtest::ReadFile("out/m"), "x");
  EXPECT_EQ(folder.Names(), (Words{"a.zip", "m", "out"}));
}

TEST(UnzipCommand, TellsWhatFailedAndWhatWasSkipped) {
  const ZipArchive whole =
      BuildZip({Stored("one", "1"), Stored("two", "22"), Stored("three", "333")});
  const Tree all = {{"one", "1"}, {"two", "22"}, {"three", "333"}};
  const Tree withoutTwo = {{"one", "1"}, {"three", "333"}};
  const struct {
    const char* what;
    void (*change)(ZipArchive&);
    int status;
    Tree tree;
    std::string errors;  // "@" stands for the archive's name
    std::string json;    // outcomes
  } cases[] = {
      {"encrypted", [](ZipArchive& z) { z.Set16(z.entries[1] + 8, 1); }, 0, withoutTwo,
       "hvapi: \"two\" skipped: it is encrypted\n", "extracted skipped extracted"},
      {"method", [](ZipArchive& z) { z.Set16(z.entries[1] + 10, 12); }, 0, withoutTwo,
       "hvapi: \"two\" skipped: its compression method is not known\n",
       "extracted skipped extracted"},
      {"version", [](ZipArchive& z) { z.Set16(z.entries[1] + 6, 45); }, 0, withoutTwo,
       "hvapi: \"two\" skipped: it needs a newer version\n", "extracted skipped extracted"},
      {"checksum", [](ZipArchive& z) { z.Set32(z.locals[1] + 14, 1); }, 0, all,
       "hvapi: \"two\" failed: its checksum is wrong\n", "extracted failed tried"},
      {"two failures",
       [](ZipArchive& z) {
         z.Set32(z.locals[1], 0);
         z.Set16(z.locals[2] + 26, 0xFFFF);
       },
       9,
       {{"one", "1"}},
       "hvapi: \"two\" failed: the file is missing, a directory, or of a kind that cannot be used\n"
       "hvapi: cannot extract \"@\": the archive ends too early (code 9)\n",
       "extracted failed tried"},
      {"no archive",
       [](ZipArchive& z) { z.bytes = "%!PS"; },
       27,
       {},
       "hvapi: cannot extract \"@\": the file is missing, a directory, or of a kind that cannot be "
       "used (code 27)\n",
       ""},
  };
  for (const auto& c : cases) {
    ZipArchive zip = whole;
    c.change(zip);
    const TestFolder folder;
    const std::string archive = folder.Add("a.zip", zip.bytes);
    std::string errors = c.errors;
    if (const std::size_t at = errors.find('@'); at != std::string::npos)
      errors.replace(at, 1, archive);
    for (const bool json : {false, true}) {
      const std::string out = folder / (json ? "json" : "text");
      Words words = {archive, "--to", out};
      if (json) words.push_back("--json");
      const ProgramRun run = Unzip(words);
      EXPECT_EQ(run.status, c.status) << c.what;
      EXPECT_EQ(run.errors, errors) << c.what;
      EXPECT_EQ(hvtest::ReadTree(out), c.tree) << c.what;
      std::string outcomes;
      const std::string key = "\"outcome\": \"";
      for (std::size_t at = 0; (at = run.output.find(key, at)) != std::string::npos;) {
        at += key.size();
        outcomes +=
            (outcomes.empty() ? "" : " ") + run.output.substr(at, run.output.find('"', at) - at);
      }
      EXPECT_EQ(outcomes, json ? c.json : "") << c.what;
    }
  }
}

TEST(UnzipCommand, PrintsTheMembersAsJson) {
  const TestFolder folder;
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  ZipArchive zip = BuildZip({Stored("d/", ""), Stored("d/m", "data"), Stored("secret", "x")});
  zip.Set16(zip.entries[2] + 8, 1);
  folder.Add("a.zip", zip.bytes);
  EXPECT_EQ(Unzip({"a.zip", "--json"}).output,
            "{\n"
            "  \"archive\": \"a.zip\",\n"
            "  \"code\": 0,\n"
            "  \"members\": [\n"
            "    {\n"
            "      \"name\": \"d/\",\n"
            "      \"compressedSize\": 0,\n"
            "      \"outcome\": \"extracted\"\n"
            "    },\n"
            "    {\n"
            "      \"name\": \"d/m\",\n"
            "      \"compressedSize\": 4,\n"
            "      \"outcome\": \"extracted\"\n"
            "    },\n"
            "    {\n"
            "      \"name\": \"secret\",\n"
            "      \"compressedSize\": 1,\n"
            "      \"outcome\": \"skipped\",\n"
            "      \"reason\": \"it is encrypted\"\n"
            "    }\n"
            "  ]\n"
            "}\n");
}

TEST(UnzipCommand, LeavesNothingBehindForWrongArguments) {
  const TestFolder folder;
  folder.Add("file", "x");
  const struct {
    Words words;
    int status;
  } cases[] = {
      {{folder / "missing", "--to", folder / "out"}, 2},
      {{std::string(261, 'x'), "--to", folder / "out"}, 2},
      {{folder / "file", std::string(261, '?')}, 1},
      {{folder / "file", "--to", folder / "file"}, 3},
      {{}, 1},
  };
  for (const auto& c : cases) {
    const ProgramRun run = Unzip(c.words);
    EXPECT_EQ(run.status, c.status) << run.errors;
    EXPECT_EQ(run.errors.rfind("hvapi: ", 0), 0U) << run.errors;
  }
  EXPECT_EQ(folder.Names(), Words{"file"});
}

}  // namespace
