// hvapi queue list, hvapi queue add

#include <algorithm>
#include <filesystem>
#include <memory>

#include "families.h"
#include "program.h"
#include "queue_listing.h"
#include "system.h"

namespace hvtool {
namespace {

namespace fs = std::filesystem;

void AddList(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "list", "list the print queues",
                 "Lists the queues that a destination may name: the directories of the spool "
                 "folder with the number of finished documents in each, and the queues of the "
                 "system's spooler.");
  const auto json = std::make_shared<bool>(false);
  AddJsonOption(command, json.get());
  OnRun(command, [json] {
    const std::vector<Queue> queues = ListQueues();
    if (*json) {
      PrintJson(QueuesAsJson(queues));
      return int{HV_OK};
    }
    Table table{"QUEUE", "KIND", "DOCUMENTS", "FOLDER"};
    for (const Queue& queue : queues) {
      table.Add({queue.name, queue.kind, queue.documents, queue.place});
    }
    table.Print();
    return int{HV_OK};
  });
}

// The code for a directory that could not be made.
int CodeOf(const std::error_code& error) {
  if (error == std::errc::permission_denied || error == std::errc::read_only_file_system) {
    return HV_ACCESS_DENIED;
  }
  if (error == std::errc::no_space_on_device) return HV_DISK_FULL;
  if (error == std::errc::filename_too_long || error == std::errc::not_a_directory) {
    return HV_UNUSABLE_FILE;
  }
  return HV_SYSTEM_FAILURE;
}

// Whether the library would take the name for that of a queue.
bool IsQueueName(const std::string& name) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  return !name.empty() && name != "." && name != ".." && name.size() <= HV_MAX_PATH &&
         name.find_first_of("/\\:") == std::string::npos &&
         std::none_of(name.begin(), name.end(), isControl);
}

int AddSpoolQueue(const std::string& name) {
  if (!IsQueueName(name)) {
    return Fail(HV_BAD_ARGUMENT,
                Quoted(name) +
                    " is no name for a queue: it must not be \".\" or \"..\" nor hold "
                    "\"/\", \"\\\" or \":\"");
  }
  const fs::path spool = SpoolFolder();
  if (spool.empty()) {
    return Fail(HV_NOT_SUPPORTED, "there is no spool folder for queues of this program; set up " +
                                      std::string(SystemSpoolerName) + " queues instead");
  }
  std::error_code error;
  fs::create_directories(spool / name, error);
  // A file of that name is no error to the call above.
  if (!error && !fs::is_directory(spool / name, error)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (error) {
    return Fail(CodeOf(error), "cannot make the queue " + Quoted((spool / name).string()) + ": " +
                                   error.message());
  }
  PrintLine((spool / name).string());
  return HV_OK;
}

void AddAdd(CLI::App* parent) {
  CLI::App* command =
      AddCommand(parent, "add", "make a queue in the spool folder",
                 "Makes a directory of the spool folder and prints its path; a queue that is there "
                 "stays as it is. Each document sent to the queue becomes the files NNNNNN.prn, "
                 "its bytes, and NNNNNN.job, which tells name, user, time and size.\n"
                 "\n"
                 "The spool folder is HVAPI_SPOOL, else hvapi/spool in XDG_STATE_HOME, else "
                 "~/.local/state/hvapi/spool.");
  const auto name = std::make_shared<std::string>();
  AddArgument(command, "NAME", name.get(), "The name of the queue");
  OnRun(command, [name] { return AddSpoolQueue(*name); });
}

}  // namespace

void AddQueueCommands(CLI::App* program) {
  CLI::App* queue = AddCommandGroup(
      program, "queue", "list and make print queues",
      "Print queues are the destinations of jobs. There are three kinds: the address of a printer "
      "in the network, socket://host[:port], which needs no setting up; directories of the spool "
      "folder, which \"hvapi queue add\" makes; and those of the system's spooler.");
  AddList(queue);
  AddAdd(queue);
}

}  // namespace hvtool
