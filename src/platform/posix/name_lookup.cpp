#include "platform/posix/name_lookup.h"

#include <dlfcn.h>
#include <errno.h>
#include <signal.h>
#include <sys/socket.h>

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace hv::platform {
namespace {

AddressList Resolve(const SocketAddress& address, int family, int flags) {
  addrinfo hints = {};
  hints.ai_family = family;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = flags | AI_NUMERICSERV;
  addrinfo* found = nullptr;
  if (getaddrinfo(address.host.c_str(), address.port.c_str(), &hints, &found) != 0) found = nullptr;
  return {found, freeaddrinfo};
}

// Shared by the call and the thread; whoever is last releases it.
struct Lookup {
  SocketAddress address;
  std::mutex mutex;
  std::condition_variable ended;
  bool hasEnded = false;
  AddressList found{nullptr, freeaddrinfo};
};

void Run(const std::shared_ptr<Lookup>& lookup) {
  AddressList found = Resolve(lookup->address, AF_UNSPEC, 0);
  const std::lock_guard lock(lookup->mutex);
  lookup->found = std::move(found);
  lookup->hasEnded = true;
  lookup->ended.notify_one();
}

// Threads that are started while it lives run no signal handler of the program.
class SignalBlock {
 public:
  SignalBlock() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  SignalBlock(const SignalBlock&) = delete;
  SignalBlock& operator=(const SignalBlock&) = delete;
  ~SignalBlock() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

// A thread that goes on behind a call runs code that must not be unloaded under it.
void KeepLibraryLoaded() {
  Dl_info here;
  if (dladdr(reinterpret_cast<void*>(KeepLibraryLoaded), &here) == 0) return;
  void* const module = dlopen(here.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
  if (module != nullptr) dlclose(module);
}

AddressList Failure(int error) {
  errno = error;
  return {nullptr, freeaddrinfo};
}

}  // namespace

AddressList NumericAddresses(const SocketAddress& address, int family) {
  return Resolve(address, family, AI_NUMERICHOST);
}

AddressList FindAddresses(const SocketAddress& address, const Deadline& deadline) {
  if (AddressList numeric = NumericAddresses(address, AF_UNSPEC)) return numeric;
  const auto lookup = std::make_shared<Lookup>();
  lookup->address = address;
  std::thread thread;
  try {
    const SignalBlock noSignals;
    thread = std::thread(Run, lookup);
  } catch (const std::system_error&) {
    return Failure(EAGAIN);
  }
  std::unique_lock lock(lookup->mutex);
  const bool inTime =
      lookup->ended.wait_for(lock, deadline.Left(), [&] { return lookup->hasEnded; });
  if (!inTime) {
    KeepLibraryLoaded();
    thread.detach();
    return Failure(ETIMEDOUT);
  }
  lock.unlock();
  thread.join();
  return lookup->found != nullptr ? std::move(lookup->found) : Failure(EHOSTUNREACH);
}

}  // namespace hv::platform
