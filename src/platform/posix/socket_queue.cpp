// Queues that are a printer's own port on the network: one connection a document, both ways raw.
//
// A document that is not ended is reset, so that a printer does not take it for complete. That is
// the state of the connection from its first moment on: it holds for a program that dies, too.

#include <errno.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/deadline.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/environment.h"
#include "platform/posix/error_numbers.h"
#include "platform/posix/name_lookup.h"
#include "platform/posix/names.h"
#include "platform/posix/spool_queues.h"
#include "support/ascii.h"

namespace hv::platform {
namespace {

using std::chrono::seconds;

constexpr std::string_view Scheme = "socket://";
constexpr const char* DefaultPort = "9100";
// A printer may be out of paper for a while: sending waits this many times as long as connecting.
constexpr int SendingPatience = 10;

bool IsHostName(std::string_view host) {
  for (const char c : host) {
    if (!IsLetter(c) && !IsDigit(c) && c != '-' && c != '.' && c != '_') return false;
  }
  return !host.empty();
}

bool IsPort(std::string_view port) {
  constexpr unsigned HighestPort = 65535;
  constexpr std::size_t MostDigits = 5;
  unsigned number = 0;
  if (port.size() > MostDigits) return false;
  for (const char c : port) {
    if (!IsDigit(c)) return false;
    number = number * 10 + static_cast<unsigned>(c - '0');
  }
  return number >= 1 && number <= HighestPort;
}

// "host", "host:port", "[IPv6]" or "[IPv6]:port"; empty for anything else.
std::optional<SocketAddress> ParseAddress(std::string_view text) {
  SocketAddress address = {"", DefaultPort};
  std::string_view behindHost;
  if (StartsWith(text, "[")) {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    address.host = text.substr(1, end - 1);
    behindHost = text.substr(end + 1);
    if (NumericAddresses(address, AF_INET6) == nullptr) return std::nullopt;
  } else {
    const std::size_t end = std::min(text.find(':'), text.size());
    address.host = text.substr(0, end);
    behindHost = text.substr(end);
    if (!IsHostName(address.host)) return std::nullopt;
  }
  if (behindHost.empty()) return address;
  const std::string_view port = behindHost.substr(1);
  if (behindHost[0] != ':' || !IsPort(port)) return std::nullopt;
  address.port = port;
  return address;
}

// Waits for events of a socket; what happened, or 0 with errno set when the deadline passed.
short WaitFor(int socket, short events, const Deadline& deadline) {
  for (;;) {
    pollfd wait = {socket, events, 0};
    const int ready = poll(&wait, 1, static_cast<int>(deadline.Left().count()));
    if (ready > 0) return wait.revents;
    if (ready < 0 && errno != EINTR) return 0;
    if (deadline.HasPassed()) {
      errno = ETIMEDOUT;
      return 0;
    }
  }
}

// A connection to one address; none, with errno set, when it failed.
Descriptor ConnectTo(const addrinfo& address, const Deadline& deadline) {
  Descriptor connection(socket(
      address.ai_family, address.ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol));
  if (!connection.IsOpen()) return connection;
  if (connect(connection.Get(), address.ai_addr, address.ai_addrlen) == 0) return connection;
  if (errno != EINPROGRESS && errno != EINTR) return Descriptor();
  if (WaitFor(connection.Get(), POLLOUT, deadline) == 0) return Descriptor();
  int error = 0;
  socklen_t size = sizeof error;
  if (getsockopt(connection.Get(), SOL_SOCKET, SO_ERROR, &error, &size) != 0) return Descriptor();
  errno = error;
  return error == 0 ? std::move(connection) : Descriptor();
}

// Whether closing the connection resets it.
bool SetResetAtClose(int socket, bool reset) {
  const linger option = {reset ? 1 : 0, 0};
  return setsockopt(socket, SOL_SOCKET, SO_LINGER, &option, sizeof option) == 0;
}

class SocketQueue final : public SpoolPrinter {
 public:
  explicit SocketQueue(SocketAddress address)
      : address_(std::move(address)), timeout_(TimeoutSeconds()) {}

  bool StartDocument(const char* /*documentName*/) override {
    if (Connect() && SetResetAtClose(connection_.Get(), true)) return true;
    Fail();
    return false;
  }

  void Write(const void* bytes, uint32_t length, uint32_t* written) override {
    const char* next = static_cast<const char*>(bytes);
    std::size_t left = length;
    Deadline stalled(timeout_ * SendingPatience);
    while (left > 0) {
      const ssize_t sent = send(connection_.Get(), next, left, MSG_NOSIGNAL);
      if (sent > 0) {
        next += sent;
        left -= static_cast<std::size_t>(sent);
        stalled = Deadline(timeout_ * SendingPatience);
      } else if (errno != EINTR && (errno != EAGAIN || !WaitForRoom(stalled))) {
        Fail();
        break;
      }
    }
    *written = static_cast<uint32_t>(length - left);
  }

  // The half-close tells the printer that all has come; its own close, that it has all. A printer
  // that does not close in time is left with what it has, which is then not taken back.
  bool EndDocument() override {
    if (error_ != ErrorNone) return false;
    const Deadline ending(timeout_);
    if (!SetResetAtClose(connection_.Get(), false) || shutdown(connection_.Get(), SHUT_WR) != 0) {
      Fail();
      return false;
    }
    while (!peerEnded_ && !ending.HasPassed() && WaitFor(connection_.Get(), POLLIN, ending) != 0) {
      if (!DropInput()) {
        Fail();
        return false;
      }
    }
    return connection_.Close();
  }

  uint32_t LastError() const override { return error_; }
  int32_t HandleValue() const override { return connection_.Get(); }

 private:
  bool Connect() {
    const Deadline connecting(timeout_);
    const AddressList addresses = FindAddresses(address_, connecting);
    int left = 0;
    for (const addrinfo* a = addresses.get(); a != nullptr; a = a->ai_next) ++left;
    for (const addrinfo* a = addresses.get(); a != nullptr; a = a->ai_next, --left) {
      // An address that does not answer leaves the others their share of the time.
      connection_ = ConnectTo(*a, Deadline(connecting.Left() / left));
      if (connection_.IsOpen()) return true;
    }
    return false;
  }

  // Waits until the connection takes bytes. What the printer says is dropped meanwhile, so that it
  // does not wait for us in turn. False, with errno set, when it failed.
  bool WaitForRoom(const Deadline& deadline) {
    for (;;) {
      const short wanted = peerEnded_ ? POLLOUT : POLLOUT | POLLIN;
      const short happened = WaitFor(connection_.Get(), wanted, deadline);
      if (happened == 0 || ((happened & POLLIN) != 0 && !DropInput())) return false;
      if ((happened & ~POLLIN) != 0) return true;
      if (deadline.HasPassed()) {
        errno = ETIMEDOUT;
        return false;
      }
    }
  }

  // Reads what waits, once. False, with errno set, when the connection failed.
  bool DropInput() {
    std::array<char, 4096> dropped;
    const ssize_t got = recv(connection_.Get(), dropped.data(), dropped.size(), 0);
    peerEnded_ = peerEnded_ || got == 0;
    return got >= 0 || errno == EAGAIN || errno == EINTR;
  }

  void Fail() { error_ = ErrorOfErrno(errno); }

  SocketAddress address_;
  seconds timeout_;
  Descriptor connection_;
  bool peerEnded_ = false;  // the printer has closed its side
  uint32_t error_ = ErrorNone;
};

}  // namespace

std::unique_ptr<SpoolPrinter> OpenSocketQueue(const char* destination) {
  if (!IsSocketAddress(destination)) return nullptr;
  std::optional<SocketAddress> address =
      ParseAddress(std::string_view(destination).substr(Scheme.size()));
  if (!address) return nullptr;
  return std::make_unique<SocketQueue>(std::move(*address));
}

}  // namespace hv::platform
