#include "system.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>

namespace hvtool {
namespace {

// A destination as the CUPS client library describes it.
struct CupsDestination {
  char* name;
  char* instance;
  int isDefault;
  int optionCount;
  void* options;
};

using Module = std::unique_ptr<void, int (*)(void*)>;

Module Load(const char* name) {
  // Libraries that keep what they set up are not unloaded.
  return {dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE),
          [](void* module) { return dlclose(module); }};
}

template <typename Function>
Function Find(const Module& module, const char* name) {
  return reinterpret_cast<Function>(dlsym(module.get(), name));
}

// The file that holds an address.
std::string FileOf(const void* address) {
  Dl_info info = {};
  return dladdr(address, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
}

constexpr const char* CupsLibrary = "libcups.so.2";

std::string Variable(const char* name) {
  const char* value = secure_getenv(name);
  return value == nullptr ? std::string() : value;
}

}  // namespace

const char* const SystemSpoolerName = "CUPS";

bool ErrorsGoToTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

std::filesystem::path SpoolFolder() {
  if (const std::string folder = Variable("HVAPI_SPOOL"); !folder.empty()) return folder;
  if (const std::string state = Variable("XDG_STATE_HOME"); !state.empty()) {
    return std::filesystem::path(state) / "hvapi/spool";
  }
  if (const std::string home = Variable("HOME"); !home.empty()) {
    return std::filesystem::path(home) / ".local/state/hvapi/spool";
  }
  return {};
}

// The client library is looked for at run time: a machine without CUPS has no such queues.
std::vector<std::string> SystemQueues() {
  std::vector<std::string> names;
  const Module cups = Load(CupsLibrary);
  if (cups == nullptr) return names;
  const auto getDestinations = Find<int (*)(CupsDestination**)>(cups, "cupsGetDests");
  const auto freeDestinations = Find<void (*)(int, CupsDestination*)>(cups, "cupsFreeDests");
  if (getDestinations == nullptr || freeDestinations == nullptr) return names;
  CupsDestination* destinations = nullptr;
  const int count = getDestinations(&destinations);
  for (int i = 0; i < count; ++i) {
    // An instance is the same queue with other default options.
    if (destinations[i].instance == nullptr) names.emplace_back(destinations[i].name);
  }
  freeDestinations(count, destinations);
  return names;
}

void ReadInputAsBytes() {}

TemporaryFile::TemporaryFile() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) return;
  std::string name = (folder / "hvapiXXXXXX").string();
  descriptor_ = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) return;
  unlink(name.c_str());
  path_ = "/dev/fd/" + std::to_string(descriptor_);
}

TemporaryFile::~TemporaryFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

std::string LibraryPath() {
  return FileOf(dlsym(RTLD_DEFAULT, "HvGenQueryApiInfo"));
}

Service FindSpooler() {
  constexpr int Patience = 2000;  // milliseconds
  const Module cups = Load(CupsLibrary);
  if (cups == nullptr) return {CupsLibrary, "not installed", false};
  const auto server = Find<const char* (*)()>(cups, "cupsServer");
  const auto port = Find<int (*)()>(cups, "ippPort");
  const auto encryption = Find<int (*)()>(cups, "cupsEncryption");
  const auto connect =
      Find<void* (*)(const char*, int, void*, int, int, int, int, int*)>(cups, "httpConnect2");
  const auto close = Find<void (*)(void*)>(cups, "httpClose");
  if (server == nullptr || port == nullptr || encryption == nullptr || connect == nullptr ||
      close == nullptr) {
    return {CupsLibrary, "too old", true};
  }
  const std::string place =
      FileOf(reinterpret_cast<const void*>(server)) + ", scheduler at " + server();
  void* const connection =
      connect(server(), port(), nullptr, AF_UNSPEC, encryption(), 1, Patience, nullptr);
  // Its client library is on many machines that have no scheduler.
  if (connection == nullptr) return {place, "the scheduler does not answer", false};
  close(connection);
  return {place, "", true};
}

Service FindCommunicationLibrary() {
  const std::string named = Variable("HVAPI_NBXCHAN");
  const std::string name = named.empty() ? "NBXCHAN.DLL" : named;
  const bool isWanted = !named.empty();
  const Module library = Load(name.c_str());
  if (library == nullptr) return {name, isWanted ? "cannot be loaded" : "not installed", isWanted};
  for (const char* function : CommunicationFunctions) {
    if (dlsym(library.get(), function) == nullptr) {
      return {name, std::string("has no function ") + function, true};
    }
  }
  return {FileOf(dlsym(library.get(), CommunicationFunctions[0])), "", true};
}

}  // namespace hvtool
