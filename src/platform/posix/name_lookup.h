// Addresses of hosts, found within a time: the system's own lookup may wait for silent name servers
// for as long as they are many, and cannot be stopped.
#pragma once

#include <netdb.h>

#include <memory>
#include <string>

#include "platform/posix/deadline.h"

namespace hv::platform {

using AddressList = std::unique_ptr<addrinfo, void (*)(addrinfo*)>;

struct SocketAddress {
  std::string host;
  std::string port;  // a number
};

// The addresses that a number of a family stands for; empty for a name.
AddressList NumericAddresses(const SocketAddress& address, int family);

// The addresses of a host that is given by its name or number. Empty, with errno set, when it has
// none or they are not known by the deadline. Only the lookup of a name takes time: it runs in a
// thread of its own, without signals, which ends behind the call when the deadline passes.
AddressList FindAddresses(const SocketAddress& address, const Deadline& deadline);

}  // namespace hv::platform
