// hvapi doctor

#include <filesystem>
#include <memory>

#include "families.h"
#include "program.h"
#include "queue_listing.h"
#include "system.h"

namespace hvtool {
namespace {

namespace fs = std::filesystem;

constexpr const char* DoctorManual =
    "Shows what printing needs and what of it is there: the library with its version and its "
    "file, the spool folder, the system's spooler, the printers' communication library, and the "
    "queues that a destination may name.\n"
    "\n"
    "    ok       it can be used\n"
    "    missing  it is not there, and only needed for what its line says\n"
    "    fault    it has been set up and cannot be used; the exit status is 36 then\n"
    "\n"
    "Nothing is sent and nothing is changed.";

enum class State : uint8_t { Ok, Missing, Fault };
constexpr const char* StateNames[] = {"ok", "missing", "fault"};

struct Finding {
  std::string item;
  State state;
  std::string detail;
};

Finding OfLibrary() {
  const std::string path = LibraryPath();
  return {"library", State::Ok, VersionText() + (path.empty() ? "" : ", " + path)};
}

Finding OfSpoolFolder(const fs::path& folder) {
  const std::string item = "spool folder";
  std::error_code error;
  const fs::file_status status = fs::status(folder, error);
  if (status.type() == fs::file_type::not_found) {
    return {item, State::Missing, folder.string() + ": \"hvapi queue add NAME\" makes it"};
  }
  if (status.type() != fs::file_type::directory) {
    return {item, State::Fault, folder.string() + " is no directory that can be read"};
  }
  fs::directory_iterator entries(folder, error);
  if (error) return {item, State::Fault, folder.string() + ": " + error.message()};
  return {item, State::Ok, folder.string()};
}

// `need` is what it is needed for.
Finding OfService(const std::string& item, const Service& service, const std::string& need) {
  if (service.problem.empty()) return {item, State::Ok, service.place};
  return {item, service.isWanted ? State::Fault : State::Missing,
          service.place + ": " + service.problem + "; needed " + need};
}

std::vector<Finding> Examine() {
  std::vector<Finding> findings = {OfLibrary()};
  if (const fs::path folder = SpoolFolder(); !folder.empty()) {
    findings.push_back(OfSpoolFolder(folder));
  }
  findings.push_back(OfService(SystemSpoolerName, FindSpooler(), "for its queues"));
  findings.push_back(OfService("communication library", FindCommunicationLibrary(), "for --nbx"));
  return findings;
}

Finding OfQueues(const std::vector<Queue>& queues) {
  if (queues.empty()) {
    return {"queues", State::Missing, "none; needed unless a printer is named by its address"};
  }
  std::string names;
  for (const Queue& queue : queues) names += (names.empty() ? "" : ", ") + queue.name;
  return {"queues", State::Ok, names};
}

void PrintFindings(const std::vector<Finding>& findings) {
  Table table{"ITEM", "STATE", "DETAIL"};
  for (const Finding& finding : findings) {
    table.Add({finding.item, StateNames[static_cast<int>(finding.state)], finding.detail});
  }
  table.Print();
}

void PrintFindingsAsJson(const std::vector<Finding>& findings, const std::vector<Queue>& queues) {
  Json items = Json::array();
  for (const Finding& finding : findings) {
    items.push_back({{"item", finding.item},
                     {"state", StateNames[static_cast<int>(finding.state)]},
                     {"detail", finding.detail}});
  }
  PrintJson({{"version", VersionText()},
             {"library", LibraryPath()},
             {"items", items},
             {"queues", QueuesAsJson(queues)}});
}

int Diagnose(bool json) {
  const std::vector<Queue> queues = ListQueues();
  std::vector<Finding> findings = Examine();
  findings.push_back(OfQueues(queues));
  if (json) {
    PrintFindingsAsJson(findings, queues);
  } else {
    PrintFindings(findings);
  }
  for (const Finding& finding : findings) {
    if (finding.state == State::Fault) {
      return Fail(HV_SYSTEM_FAILURE, finding.item + " cannot be used");
    }
  }
  return HV_OK;
}

}  // namespace

void AddDoctorCommands(CLI::App* program) {
  CLI::App* command =
      AddCommand(program, "doctor", "tell what printing needs and what is missing", DoctorManual);
  const auto json = std::make_shared<bool>(false);
  AddJsonOption(command, json.get());
  OnRun(command, [json] { return Diagnose(*json); });
}

}  // namespace hvtool
