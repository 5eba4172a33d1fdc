// hvapi file copy, backup, checksum, makepath, size

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>

#include "families.h"
#include "program.h"
#include "source_file.h"

namespace hvtool {
namespace {

// What the exports fill with a path.
using PathBuffer = std::array<char, HV_MAX_PATH + 1>;

void AddCopy(CLI::App* parent) {
  struct Options {
    std::string source;
    std::string target;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(parent, "copy", "copy a file",
                                 "Copies SOURCE to TARGET, replacing a file that is there. When "
                                 "the copy fails, that file is as it was.");
  AddArgument(command, "SOURCE", &options->source, "The file to copy");
  AddArgument(command, "TARGET", &options->target, "The name of the copy");
  OnRun(command, [options] {
    return Outcome(HvFilCopy(options->source.c_str(), options->target.c_str()),
                   "cannot copy " + Quoted(options->source) + " to " + Quoted(options->target));
  });
}

// The options of a command that asks something of one path.
struct PathOptions {
  std::string path;
  bool json = false;
};

std::shared_ptr<PathOptions> AddPathOptions(CLI::App* command, const char* name,
                                            const char* description) {
  auto options = std::make_shared<PathOptions>();
  AddArgument(command, name, &options->path, description);
  AddJsonOption(command, &options->json);
  return options;
}

void AddBackup(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "backup", "copy a file to the first free numbered name",
                 "Copies FILE to the first free of the names .001 to .998 beside it, the number in "
                 "place of the extension, and prints that name.");
  const auto options = AddPathOptions(command, "FILE", "The file to back up");
  OnRun(command, [options] {
    PathBuffer name = {};
    const uint32_t code = HvFilBackup(options->path.c_str(), name.data());
    if (code == HV_LIMIT_REACHED) {
      return Fail(HV_LIMIT_REACHED,
                  "cannot back up " + Quoted(options->path) + ": all 998 names are taken");
    }
    if (code != HV_OK) return Outcome(code, "cannot back up " + Quoted(options->path));
    if (options->json) {
      PrintJson({{"file", options->path}, {"backup", name.data()}});
    } else {
      PrintLine(name.data());
    }
    return int{HV_OK};
  });
}

void AddChecksum(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "checksum", "print the checksum of a file",
                 "Prints the two's complement of the sum of the file's 16-bit little-endian words. "
                 "A file that holds its own checksum in word N gives that value with --skip-word "
                 "N.");
  const auto options = std::make_shared<PathOptions>();
  AddSourceArgument(command, "FILE", &options->path, "The file");
  AddJsonOption(command, &options->json);
  const auto skipWord = std::make_shared<uint16_t>();
  AddOption(command, "--skip-word", skipWord.get(), "N", "Leave out the N-th word, counted from 1");
  OnRun(command, [options, skipWord] {
    const SourceFile file(options->path);
    if (file.Status() != HV_OK) return file.Status();
    uint16_t sum = 0;
    const uint32_t code = HvFilChecksum(file.Path().c_str(), 0, *skipWord, &sum);
    if (code != HV_OK) return Outcome(code, "cannot read " + file.Shown());
    if (options->json) {
      PrintJson({{"file", options->path}, {"checksum", sum}});
    } else {
      std::printf("0x%04X\n", static_cast<unsigned>(sum));
    }
    return int{HV_OK};
  });
}

void AddMakePath(CLI::App* parent) {
  CLI::App* command = AddCommand(
      parent, "makepath", "make every directory of a path",
      "Makes the directories of PATH that do not exist and prints the name of each. PATH "
      "begins with a drive or is a network path; on systems without drives \"c:\" is "
      "the root directory or, when HVAPI_DRIVES is set, the directory c in it.\n"
      "\n"
      "    hvapi file makepath 'c:\\fonts\\new'");
  const auto options = AddPathOptions(command, "PATH", "The path");
  OnRun(command, [options] {
    PathBuffer created = {};
    const uint32_t code = HvFilMakePath(options->path.c_str(), created.data());
    // What was made before a failure stays, so it is told in any case.
    Json names = Json::array();
    std::istringstream rest(created.data());
    for (std::string name; std::getline(rest, name, '\\');) {
      if (!name.empty()) names.push_back(name);
    }
    if (options->json) {
      PrintJson({{"path", options->path}, {"created", names}});
    } else {
      for (const Json& name : names) PrintLine(name.get<std::string>());
    }
    return code == HV_OK
               ? int{HV_OK}
               : Fail(static_cast<int>(code), "cannot make the path " + Quoted(options->path));
  });
}

void AddSize(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "size", "print the size of a file",
                 "Prints the size in bytes of the first file that matches PATH, whose last part "
                 "may hold the wildcards * and ?. No match of a pattern gives 0; sizes of 4 GiB "
                 "and more are shown as 4294967295.");
  const auto options = AddPathOptions(command, "PATH", "The file or pattern");
  OnRun(command, [options] {
    const uint32_t size = HvFilQuerySize(options->path.c_str());
    const bool isPattern = options->path.find_first_of("*?") != std::string::npos;
    if (size == 0 && !isPattern && HvFilExists(options->path.c_str()) == 0) {
      return Outcome(HV_NOT_FOUND, "cannot find " + Quoted(options->path));
    }
    if (options->json) {
      PrintJson({{"path", options->path}, {"size", size}});
    } else {
      PrintLine(std::to_string(size));
    }
    return int{HV_OK};
  });
}

}  // namespace

void AddFileCommands(CLI::App* program) {
  CLI::App* file =
      AddCommandGroup(program, "file", "copy, back up and measure files, make directories",
                      "File operations under the rules of the printer utilities: \"\\\" and \"/\" "
                      "both separate, letter case does not count when a file is looked up, a path "
                      "holds at most 260 characters.");
  AddCopy(file);
  AddBackup(file);
  AddChecksum(file);
  AddMakePath(file);
  AddSize(file);
}

}  // namespace hvtool
