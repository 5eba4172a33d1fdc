// hvapi unzip

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "families.h"
#include "program.h"
#include "progress.h"
#include "source_file.h"
#include "zip_listing.h"

namespace hvtool {
namespace {

namespace fs = std::filesystem;

constexpr const char* UnzipManual =
    "Extracts the members of ARCHIVE (or of ARCHIVE.zip, where there is no such file) below the "
    "current directory or DIR, with their directories and times. Files of the same name are "
    "replaced; nothing is written outside that directory, whatever names the archive holds.\n"
    "\n"
    "PATTERN picks members by their stored names:\n"
    "\n"
    "    *      any run of characters, \"/\" too\n"
    "    ?      any one character\n"
    "    [a-z]  one of a set of characters, [!a-z] one that is not in it\n"
    "    \\c     the character c itself\n"
    "\n"
    "Letter case counts in sets only.\n"
    "\n"
    "Encrypted members and those of unknown methods are skipped with a warning, and so is a member "
    "whose checksum is wrong, which is kept; neither changes the exit status. All other members "
    "are extracted where one fails.\n"
    "\n"
    "With --json each member has an outcome: extracted, skipped, failed, or tried for those behind "
    "one that failed, which are extracted as far as they are sound.\n"
    "\n"
    "    hvapi unzip fonts.zip '*.pfb' --to new";

struct Options {
  std::string archive;
  std::string pattern;
  std::optional<std::string> directory;
  bool json = false;
};

struct Member {
  std::string name;
  uint32_t compressedSize;
  std::string outcome;
  std::string reason;
};

// What the callback of one call fills; the library hands nothing of the caller's through to it.
struct Run {
  std::vector<Member> members;
  std::size_t next = 0;  // the first member that may still be reported
  uint64_t done = 0;
  uint64_t total = 0;
  ProgressBar bar;
};
Run* current = nullptr;

uint32_t HVAPI_CALL Extracted(const char* name, uint32_t compressedSize, uint16_t) {
  Run& run = *current;
  const auto from = run.members.begin() + static_cast<std::ptrdiff_t>(run.next);
  const auto found = std::find_if(from, run.members.end(), [name](const Member& member) {
    return member.outcome.empty() && member.name.c_str() == std::string_view(name);
  });
  if (found == run.members.end()) {
    run.members.push_back({name, compressedSize, "extracted", ""});
  } else {
    found->outcome = "extracted";
    run.next = static_cast<std::size_t>(found - run.members.begin()) + 1;
  }
  run.done += compressedSize;
  run.bar.Show(run.done, run.total, name);
  return 0;
}

void StartRun(const Options& options, const std::string& archive, Run* run) {
  for (const ListedMember& listed : ListMembers(archive, options.pattern)) {
    const bool skipped = listed.whySkipped != nullptr;
    run->members.push_back({listed.name, listed.compressedSize, skipped ? "skipped" : "",
                            skipped ? listed.whySkipped : ""});
    if (!skipped) run->total += listed.compressedSize;
  }
}

// With a callback the library ends at the first member that fails, be it for its checksum alone.
// Then the whole is done again without one, so that every member is tried.
uint32_t Extract(const Options& options, const std::string& archive, Run* run) {
  current = run;
  const uint32_t code = HvZipExplode(archive.c_str(), options.pattern.c_str(), Extracted);
  run->bar.Clear();
  const auto failed = std::find_if(run->members.begin(), run->members.end(),
                                   [](const Member& member) { return member.outcome.empty(); });
  if (failed == run->members.end()) {
    if (code == HV_OK) return code;
  } else {
    failed->outcome = "failed";
    failed->reason = code == HV_OK ? "its checksum is wrong" : ResultText(code);
  }
  for (Member& member : run->members) {
    if (member.outcome.empty()) member.outcome = "tried";
  }
  return HvZipExplode(archive.c_str(), options.pattern.c_str(), nullptr);
}

// Names are the archive's own and may hold anything.
std::string Shown(const std::string& name) {
  std::string shown = name;
  std::replace_if(
      shown.begin(), shown.end(),
      [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }, '?');
  return Quoted(shown);
}

void Warn(const std::vector<Member>& members) {
  for (const Member& member : members) {
    if (member.reason.empty()) continue;
    std::fprintf(stderr, "hvapi: %s %s: %s\n", Shown(member.name).c_str(), member.outcome.c_str(),
                 member.reason.c_str());
  }
}

void PrintArchive(const Options& options, uint32_t code, const std::vector<Member>& members) {
  Json list = Json::array();
  for (const Member& member : members) {
    Json entry = {{"name", member.name},
                  {"compressedSize", member.compressedSize},
                  {"outcome", member.outcome}};
    if (!member.reason.empty()) entry["reason"] = member.reason;
    list.push_back(entry);
  }
  PrintJson({{"archive", options.archive}, {"code", code}, {"members", list}});
}

// The archive as it is named from every directory. Names that begin with a separator or a drive are
// so already.
std::string AbsoluteName(const std::string& archive) {
  const bool rooted = archive.find_first_of("/\\") == 0 || archive.find(':') == 1;
  return rooted ? archive : (fs::current_path() / archive).string();
}

int Unzip(const Options& options) {
  const SourceFile file(options.archive);
  if (file.Status() != HV_OK) return file.Status();
  const std::string what = "cannot extract " + file.Shown();
  std::string archive = file.Path();
  const std::string withExtension = archive + ".zip";
  if (HvFilExists(archive.c_str()) == 0 && HvFilExists(withExtension.c_str()) == 0) {
    return Outcome(HV_NOT_FOUND, what);
  }
  if (options.directory) {
    archive = AbsoluteName(archive);
    std::error_code error;
    fs::create_directories(*options.directory, error);
    if (!error) fs::current_path(*options.directory, error);
    if (error) {
      return Fail(HV_CANNOT_OPEN,
                  "cannot extract to " + Quoted(*options.directory) + ": " + error.message());
    }
  }
  Run run;
  std::error_code missing;
  StartRun(options, fs::is_regular_file(archive, missing) ? archive : archive + ".zip", &run);
  const uint32_t code = Extract(options, archive, &run);
  if (options.json) PrintArchive(options, code, run.members);
  Warn(run.members);
  if (code == HV_OK && run.members.empty() && !options.pattern.empty()) {
    std::fprintf(stderr, "hvapi: no member of %s matches %s\n", file.Shown().c_str(),
                 Quoted(options.pattern).c_str());
  }
  return Outcome(code, what);
}

}  // namespace

void AddUnzipCommands(CLI::App* program) {
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddCommand(program, "unzip", "extract the members of a zip archive", UnzipManual);
  AddSourceArgument(command, "ARCHIVE", &options->archive, "The archive");
  MakeOptional(AddArgument(command, "PATTERN", &options->pattern,
                           "Which members, all of them "
                           "where this is not given"));
  AddOption(command, "--to", &options->directory, "DIR",
            "Extract below this directory, which is made when it is missing");
  AddJsonOption(command, &options->json);
  AddQuietOption(command);
  OnRun(command, [options] { return Unzip(*options); });
}

}  // namespace hvtool
