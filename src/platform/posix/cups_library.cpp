#include "platform/posix/cups_library.h"

#include <dlfcn.h>
#include <signal.h>

#include <mutex>

namespace hv::platform {
namespace {

template <typename Function>
bool Find(void* module, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(dlsym(module, name));
  return *function != nullptr;
}

bool FindAll(void* module, CupsFunctions* f) {
  return Find(module, "cupsServer", &f->cupsServer) &&
         Find(module, "cupsEncryption", &f->cupsEncryption) &&
         Find(module, "cupsUser", &f->cupsUser) && Find(module, "ippPort", &f->ippPort) &&
         Find(module, "httpInitialize", &f->httpInitialize) &&
         Find(module, "httpConnect2", &f->httpConnect2) &&
         Find(module, "httpClose", &f->httpClose) &&
         Find(module, "httpSetTimeout", &f->httpSetTimeout) &&
         Find(module, "httpError", &f->httpError) && Find(module, "httpGetFd", &f->httpGetFd) &&
         Find(module, "httpClearFields", &f->httpClearFields) &&
         Find(module, "httpSetField", &f->httpSetField) &&
         Find(module, "httpSetLength", &f->httpSetLength) &&
         Find(module, "httpPost", &f->httpPost) && Find(module, "httpWrite2", &f->httpWrite2) &&
         Find(module, "httpFlushWrite", &f->httpFlushWrite) &&
         Find(module, "httpUpdate", &f->httpUpdate) &&
         Find(module, "httpAssembleURI", &f->httpAssembleURI) &&
         Find(module, "ippNew", &f->ippNew) && Find(module, "ippNewRequest", &f->ippNewRequest) &&
         Find(module, "ippDelete", &f->ippDelete) &&
         Find(module, "ippAddString", &f->ippAddString) &&
         Find(module, "ippAddInteger", &f->ippAddInteger) &&
         Find(module, "ippAddBoolean", &f->ippAddBoolean) &&
         Find(module, "ippLength", &f->ippLength) && Find(module, "ippWrite", &f->ippWrite) &&
         Find(module, "ippRead", &f->ippRead) &&
         Find(module, "ippGetStatusCode", &f->ippGetStatusCode) &&
         Find(module, "ippFindAttribute", &f->ippFindAttribute) &&
         Find(module, "ippGetInteger", &f->ippGetInteger) &&
         Find(module, "ippGetBoolean", &f->ippGetBoolean);
}

// Its first call makes the process ignore SIGPIPE. One thread at a time, or the second would take
// the ignoring for what was there before.
void Initialize(const CupsFunctions& cups) {
  static std::mutex initializing;
  const std::lock_guard lock(initializing);
  struct sigaction before;
  if (sigaction(SIGPIPE, nullptr, &before) != 0) return;
  cups.httpInitialize();
  sigaction(SIGPIPE, &before, nullptr);
}

}  // namespace

std::optional<CupsFunctions> LoadCups() {
  void* module = dlopen("libcups.so.2", RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (module == nullptr) return std::nullopt;
  CupsFunctions cups;
  const bool complete = FindAll(module, &cups);
  dlclose(module);
  if (!complete) return std::nullopt;
  Initialize(cups);
  return cups;
}

}  // namespace hv::platform
