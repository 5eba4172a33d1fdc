// A printer's network port on this machine that behaves as a script says.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>

namespace hvtest {

// A listening socket on a loopback address, at a port that the system chooses unless one is given.
class Listener {
 public:
  explicit Listener(const std::string& address = "127.0.0.1", uint16_t port = 0);
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener();

  bool IsOpen() const { return socket_ >= 0; }
  int Socket() const { return socket_; }
  uint16_t Port() const { return port_; }
  // "socket://address:port"
  std::string Destination() const;

 private:
  int socket_;
  std::string address_;
  uint16_t port_ = 0;
};

// Takes one connection from a listener, for twenty seconds at most; -1 when none comes. Reading
// from it gives up after half a minute.
int AcceptFrom(const Listener& listener);

// Whether a socket has something to read, or a listener a connection, within the time.
bool WaitForInput(int socket, std::chrono::milliseconds time);

// What a connection sends, until it ends.
struct Received {
  std::string bytes;
  bool reset = false;  // it ended by a reset rather than by a close
};
Received ReceiveAll(int connection);

// Runs a script in a thread of its own with the first connection that a listener gets, and closes
// that behind it. Should no connection come, the script does not run.
class SocketPeer {
 public:
  using Script = std::function<void(int connection, Received* received)>;

  explicit SocketPeer(Script script, const std::string& address = "127.0.0.1", uint16_t port = 0);
  ~SocketPeer();

  const Listener& Port() const { return listener_; }
  std::string Destination() const { return listener_.Destination(); }
  // What the script received; waits for its end.
  const Received& Finish();

 private:
  Listener listener_;
  Received received_;
  std::thread thread_;
};

// The script of a printer that takes everything.
void TakeAll(int connection, Received* received);

// Makes the close of a connection a reset.
void ResetAtClose(int connection);

}  // namespace hvtest
