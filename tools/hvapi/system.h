// What the program asks of the system itself; the library's business is not repeated here.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace hvtool {

// Whether a person sees standard error as it is written.
bool ErrorsGoToTerminal();

// The folder whose directories are print queues, as the library looks for it; empty where there are
// no such queues.
std::filesystem::path SpoolFolder();

// The queues of the system's spooler, and what that is called.
extern const char* const SystemSpoolerName;
std::vector<std::string> SystemQueues();

// Makes standard input give bytes as they are.
void ReadInputAsBytes();

// An empty temporary file of this program's own, which goes with the object. On POSIX systems it has
// no name that others see, and so goes with the program as well, whatever ends that.
class TemporaryFile {
 public:
  TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  // The name by which this program opens it; empty when it could not be made.
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  int descriptor_ = -1;  // what keeps a file without a name
};

// The file that the running HvApiW32 came from; empty when the system does not tell.
std::string LibraryPath();

// Something that is looked for at run time, as the library looks for it.
struct Service {
  std::string place;    // what was found, or would have been
  std::string problem;  // empty: it can be used
  bool isWanted;        // somebody has set it up, so that a problem is a fault
};

// What a communication library has to have.
inline constexpr const char* CommunicationFunctions[] = {"NbxOpen",   "NbxClose", "NbxStartDoc",
                                                         "NbxEndDoc", "NbxWrite", "NbxGetPrtInfo"};

// The system's spooler, and the printers' communication library.
Service FindSpooler();
Service FindCommunicationLibrary();

}  // namespace hvtool
