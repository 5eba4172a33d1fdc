#include "support/posix/socket_peer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace hvtest {
namespace {

constexpr std::chrono::seconds LongestWait(20);  // for a connection
constexpr time_t LongestSilence = 30;            // of a connection, in seconds

}  // namespace

Listener::Listener(const std::string& address, uint16_t port) : address_(address) {
  const bool version6 = address.find(':') != std::string::npos;
  sockaddr_in name4 = {};
  name4.sin_family = AF_INET;
  name4.sin_port = htons(port);
  inet_pton(AF_INET, address.c_str(), &name4.sin_addr);
  sockaddr_in6 name6 = {};
  name6.sin6_family = AF_INET6;
  name6.sin6_port = htons(port);
  inet_pton(AF_INET6, address.c_str(), &name6.sin6_addr);
  auto* const name =
      version6 ? reinterpret_cast<sockaddr*>(&name6) : reinterpret_cast<sockaddr*>(&name4);
  socklen_t size = version6 ? sizeof name6 : sizeof name4;

  socket_ = socket(name->sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (bind(socket_, name, size) != 0 || listen(socket_, SOMAXCONN) != 0 ||
      getsockname(socket_, name, &size) != 0) {
    close(std::exchange(socket_, -1));
  }
  port_ = ntohs(version6 ? name6.sin6_port : name4.sin_port);
}

Listener::~Listener() {
  if (IsOpen()) close(socket_);
}

std::string Listener::Destination() const {
  const bool version6 = address_.find(':') != std::string::npos;
  return "socket://" + (version6 ? "[" + address_ + "]" : address_) + ":" + std::to_string(port_);
}

bool WaitForInput(int socket, std::chrono::milliseconds time) {
  pollfd wait = {socket, POLLIN, 0};
  return poll(&wait, 1, static_cast<int>(time.count())) > 0;
}

int AcceptFrom(const Listener& listener) {
  if (!WaitForInput(listener.Socket(), LongestWait)) return -1;
  const int connection = accept4(listener.Socket(), nullptr, nullptr, SOCK_CLOEXEC);
  const timeval limit = {LongestSilence, 0};
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  return connection;
}

Received ReceiveAll(int connection) {
  Received received;
  char buffer[65536];
  ssize_t got = 0;
  while ((got = recv(connection, buffer, sizeof buffer, 0)) > 0) {
    received.bytes.append(buffer, static_cast<std::size_t>(got));
  }
  received.reset = got < 0 && errno == ECONNRESET;
  return received;
}

SocketPeer::SocketPeer(Script script, const std::string& address, uint16_t port)
    : listener_(address, port), thread_([this, script = std::move(script)] {
        const int connection = AcceptFrom(listener_);
        if (connection < 0) return;
        script(connection, &received_);
        close(connection);
      }) {}

SocketPeer::~SocketPeer() {
  Finish();
}

const Received& SocketPeer::Finish() {
  if (thread_.joinable()) thread_.join();
  return received_;
}

void TakeAll(int connection, Received* received) {
  *received = ReceiveAll(connection);
}

void ResetAtClose(int connection) {
  const linger noWait = {1, 0};
  setsockopt(connection, SOL_SOCKET, SO_LINGER, &noWait, sizeof noWait);
}

}  // namespace hvtest
