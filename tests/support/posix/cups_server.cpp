#include "support/posix/cups_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "support/posix/socket_peer.h"

namespace hvtest {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr const char* Scheduler = "/usr/sbin/cupsd";
constexpr int StartTries = 3;
constexpr std::chrono::seconds LongestStart(15);
constexpr std::chrono::seconds LongestStop(5);
constexpr std::chrono::milliseconds Pause(20);

bool Answers(uint16_t port) {
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in name = {};
  name.sin_family = AF_INET;
  name.sin_port = htons(port);
  name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const bool connected = connect(connection, reinterpret_cast<sockaddr*>(&name), sizeof name) == 0;
  close(connection);
  return connected;
}

// The program, with its output thrown away, for no longer than the test lives.
[[noreturn]] void BecomeScheduler(const std::string& settings, const std::string& files) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int nowhere = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  execl(Scheduler, Scheduler, "-f", "-c", settings.c_str(), "-s", files.c_str(), nullptr);
  _exit(127);
}

}  // namespace

bool CupsServer::IsInstalled() {
  return access(Scheduler, X_OK) == 0;
}

std::string CupsServer::RawQueue(const std::string& name, const std::string& destination,
                                 bool takesJobs) {
  return "<Printer " + name + ">\nDeviceURI " + destination + "\nState Idle\nAccepting " +
         (takesJobs ? "Yes" : "No") + "\nErrorPolicy abort-job\nOpPolicy default\n</Printer>\n";
}

CupsServer::CupsServer(const std::string& queues, const std::string& settings) {
  for (const char* name : {"etc", "spool", "cache", "state", "tmp"}) {
    fs::create_directory(folder_ / name);
  }
  folder_.Add("etc/printers.conf", queues);
  folder_.Add("etc/cups-files.conf",
              "ServerRoot " + folder_ / "etc" + "\nRequestRoot " + folder_ / "spool" +
                  "\nCacheDir " + folder_ / "cache" + "\nStateDir " + folder_ / "state" +
                  "\nTempDir " + folder_ / "tmp" + "\nErrorLog " + folder_ / "log" +
                  "\nAccessLog " + folder_ / "access" + "\nPageLog " + folder_ / "pages" + "\n");
  // A port that was free a moment ago may be taken by now.
  for (int i = 0; i < StartTries && !Start(settings); ++i) Stop();
}

CupsServer::~CupsServer() {
  Stop();
}

bool CupsServer::Start(const std::string& settings) {
  port_ = Listener().Port();
  const std::string file =
      folder_.Add("etc/cupsd.conf",
                  "Listen " + Address() +
                      "\nBrowsing Off\nWebInterface No\nLogLevel debug\nDirtyCleanInterval 0\n"
                      "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                      "<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n</Policy>\n" +
                      settings);
  process_ = fork();
  if (process_ == 0) BecomeScheduler(file, folder_ / "etc/cups-files.conf");
  return process_ > 0 && WaitUntilItAnswers();
}

bool CupsServer::WaitUntilItAnswers() {
  const auto end = Clock::now() + LongestStart;
  while (Clock::now() < end && !HasEnded()) {
    if (Answers(port_)) return true;
    std::this_thread::sleep_for(Pause);
  }
  return false;
}

bool CupsServer::HasEnded() {
  if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) != 0) process_ = -1;
  return process_ <= 0;
}

void CupsServer::Stop() {
  if (process_ > 0) kill(process_, SIGTERM);
  const auto end = Clock::now() + LongestStop;
  while (!HasEnded()) {
    if (Clock::now() >= end) kill(process_, SIGKILL);
    std::this_thread::sleep_for(Pause);
  }
}

std::string CupsServer::Log() const {
  return fs::exists(folder_ / "log") ? ReadFile(folder_ / "log") : std::string();
}

bool CupsServer::WaitForJobRecord(int job, const std::string& part) const {
  const std::string digits = std::to_string(job);
  const std::string name = folder_ / ("spool/c" + std::string(5 - digits.size(), '0') + digits);
  const auto end = Clock::now() + LongestStart;
  do {
    if (fs::exists(name) && ReadFile(name).find(part) != std::string::npos) return true;
    std::this_thread::sleep_for(Pause);
  } while (Clock::now() < end);
  return false;
}

std::size_t CupsServer::JobCount() const {
  std::size_t count = 0;
  for (const auto& entry : fs::directory_iterator(folder_ / "spool")) {
    count += entry.path().filename().string()[0] == 'c' ? 1 : 0;
  }
  return count;
}

}  // namespace hvtest
