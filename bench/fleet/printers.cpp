#include "fleet/printers.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

namespace fleet {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t FileSize = 100000;
// A slow printer takes so many bytes, so often: half a second for a file.
constexpr std::size_t SlowBytes = 10000;
constexpr std::chrono::milliseconds SlowPause(50);
// Where a printer does not read, the system takes little in its stead.
constexpr int SlowBuffer = 32768;
constexpr int SilentBuffer = 4096;

// A port of the system's choice: listening, or bound only, so that it refuses.
int OpenPort(Manner manner, uint16_t* port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  socklen_t size = sizeof address;
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* const any = reinterpret_cast<sockaddr*>(&address);
  Need(socket >= 0 && bind(socket, any, size) == 0 && getsockname(socket, any, &size) == 0,
       "a port");
  *port = ntohs(address.sin_port);
  if (manner != Manner::Quick) {
    const int buffer = manner == Manner::Slow ? SlowBuffer : SilentBuffer;
    setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &buffer, sizeof buffer);
  }
  Need(manner == Manner::Refusing || listen(socket, 16) == 0, "a listening port");
  return socket;
}

// Everything below runs in the process of the printers.
class Server {
 public:
  Server(const std::vector<Manner>& manners, const std::vector<int>& ports)
      : manners_(manners), received_(manners.size()), epoll_(epoll_create1(EPOLL_CLOEXEC)) {
    for (std::size_t i = 0; i < Files; ++i) files_.push_back(FileBytes(i));
    for (std::size_t i = 0; i < ports.size(); ++i) {
      if (manners[i] != Manner::Quick && manners[i] != Manner::Slow) continue;
      printerOfPort_[ports[i]] = i;
      Watch(ports[i]);
    }
  }

  void Run(int control) {
    Watch(control);
    std::array<epoll_event, 256> events;
    Clock::time_point slowTurn = Clock::now();
    bool ending = false;
    while (!ending || !connections_.empty()) {
      const int count = epoll_wait(epoll_, events.data(), static_cast<int>(events.size()),
                                   slow_.empty() ? -1 : static_cast<int>(SlowPause.count()) / 5);
      for (int i = 0; i < count; ++i) {
        const int socket = events[static_cast<std::size_t>(i)].data.fd;
        if (socket == control) {
          ending = true;
          epoll_ctl(epoll_, EPOLL_CTL_DEL, control, nullptr);
          continue;
        }
        const auto port = printerOfPort_.find(socket);
        if (port != printerOfPort_.end()) {
          Accept(socket, port->second);
        } else {
          Read(socket, buffer_.size());
        }
      }
      if (Clock::now() < slowTurn) continue;
      slowTurn = Clock::now() + SlowPause;
      std::erase_if(slow_, [this](int socket) { return !Read(socket, SlowBytes); });
    }
    Tell(control);
  }

 private:
  struct Connection {
    std::size_t printer;
    std::size_t taken = 0;
    bool wrong = false;
  };

  void Watch(int socket) {
    epoll_event event = {};
    event.events = EPOLLIN;
    event.data.fd = socket;
    Need(epoll_ctl(epoll_, EPOLL_CTL_ADD, socket, &event) == 0, "events of a socket");
  }

  void Accept(int port, std::size_t printer) {
    const int socket = accept4(port, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socket < 0) return;
    connections_[socket] = {printer};
    if (manners_[printer] == Manner::Slow) {
      slow_.push_back(socket);
    } else {
      Watch(socket);
    }
  }

  // False when the connection has ended.
  bool Read(int socket, std::size_t most) {
    Connection& connection = connections_.at(socket);
    const ssize_t got = recv(socket, buffer_.data(), most, 0);
    if (got < 0 && errno == EAGAIN) return true;
    const std::size_t count = got > 0 ? static_cast<std::size_t>(got) : 0;
    connection.wrong = connection.wrong || got < 0 || !Matches(connection, {buffer_.data(), count});
    connection.taken += count;
    if (got > 0) return true;
    const bool whole = !connection.wrong && connection.taken == Expected(connection.printer);
    ++(whole ? received_[connection.printer].whole : received_[connection.printer].wrong);
    connections_.erase(socket);
    close(socket);
    return false;
  }

  std::size_t Expected(std::size_t printer) const {
    return FrameBefore(printer).size() + FileSize + FrameBehind().size();
  }

  bool Matches(const Connection& connection, std::string_view bytes) const {
    const std::string before = FrameBefore(connection.printer);
    const std::string behind = FrameBehind();
    std::size_t at = connection.taken;
    for (const std::string_view part :
         {std::string_view(before), std::string_view(files_[connection.printer % Files]),
          std::string_view(behind)}) {
      if (at < part.size()) {
        const std::string_view expected = part.substr(at, bytes.size());
        if (bytes.substr(0, expected.size()) != expected) return false;
        bytes.remove_prefix(expected.size());
      }
      at -= std::min(at, part.size());
    }
    return bytes.empty();
  }

  void Tell(int control) const {
    const std::size_t size = received_.size() * sizeof received_[0];
    Need(send(control, received_.data(), size, 0) == static_cast<ssize_t>(size), "the report");
  }

  const std::vector<Manner>& manners_;
  std::vector<std::string> files_;
  std::vector<Printers::Received> received_;
  int epoll_;
  std::map<int, std::size_t> printerOfPort_;
  std::map<int, Connection> connections_;
  std::vector<int> slow_;
  std::array<char, 65536> buffer_;
};

}  // namespace

void Need(bool there, const char* what) {
  if (there) return;
  std::fprintf(stderr, "fleet_bench: there is not %s\n", what);
  std::_Exit(1);
}

std::string FileBytes(std::size_t file) {
  std::string bytes(FileSize, '\0');
  auto state = static_cast<uint32_t>(file);
  for (char& c : bytes) {
    state = state * 1664525U + 1013904223U;
    c = static_cast<char>(state >> 24);
  }
  return bytes;
}

std::string JobName(std::size_t printer) {
  return "printer " + std::to_string(printer);
}

std::string FrameBefore(std::size_t printer) {
  return "\x1B%-12345X@PJL RDYMSG DISPLAY = \"" + JobName(printer) +
         "\"\n@PJL ENTER LANGUAGE = PCL\n@PJL SET COPIES = 1\n";
}

std::string FrameBehind() {
  return "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n@PJL RESET\n\x1B%-12345X";
}

Printers::Printers(const std::vector<Manner>& manners) : ports_(manners.size()) {
  rlimit files = {};
  getrlimit(RLIMIT_NOFILE, &files);
  files.rlim_cur = files.rlim_max;
  setrlimit(RLIMIT_NOFILE, &files);

  std::vector<int> sockets;
  for (std::size_t i = 0; i < manners.size(); ++i) {
    sockets.push_back(OpenPort(manners[i], &ports_[i]));
  }
  int control[2];
  Need(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, control) == 0, "a pair of sockets");
  process_ = fork();
  Need(process_ >= 0, "a process");
  if (process_ == 0) {
    close(control[0]);
    Server(manners, sockets).Run(control[1]);
    std::_Exit(0);
  }
  close(control[1]);
  control_ = control[0];
  for (const int socket : sockets) close(socket);
}

Printers::~Printers() {
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
  close(control_);
}

std::vector<Printers::Received> Printers::Finish() {
  std::vector<Received> received(ports_.size());
  const std::size_t size = received.size() * sizeof received[0];
  shutdown(control_, SHUT_WR);
  Need(recv(control_, received.data(), size, MSG_WAITALL) == static_cast<ssize_t>(size),
       "the report");
  waitpid(process_, nullptr, 0);
  process_ = -1;
  close(control_);
  return received;
}

}  // namespace fleet
