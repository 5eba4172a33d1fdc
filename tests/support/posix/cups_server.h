// A CUPS scheduler of a test's own: its own port on the loopback address, its own folder.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "support/test_folder.h"

namespace hvtest {

class CupsServer {
 public:
  // Starts a scheduler whose configuration has these queues (in the form of printers.conf) and
  // settings (in the form of cupsd.conf) besides its own.
  explicit CupsServer(const std::string& queues, const std::string& settings = "");
  CupsServer(const CupsServer&) = delete;
  CupsServer& operator=(const CupsServer&) = delete;
  ~CupsServer();  // stops it and removes the folder

  static bool IsInstalled();
  // A queue that hands raw documents to a printer's network port, as printers.conf describes it.
  static std::string RawQueue(const std::string& name, const std::string& destination,
                              bool takesJobs = true);

  bool IsRunning() const { return process_ > 0; }
  // "127.0.0.1:port", as the variable CUPS_SERVER takes it.
  std::string Address() const { return "127.0.0.1:" + std::to_string(port_); }
  // What the scheduler has written down: its log, and whether the description of a job comes to
  // hold these bytes within some seconds.
  std::string Log() const;
  bool WaitForJobRecord(int job, const std::string& part) const;
  // How many jobs it has ever had.
  std::size_t JobCount() const;

 private:
  bool Start(const std::string& settings);
  bool WaitUntilItAnswers();
  bool HasEnded();
  void Stop();

  TestFolder folder_;
  pid_t process_ = -1;
  uint16_t port_ = 0;
};

}  // namespace hvtest
