#include "channel/nbx_binding.h"

#include <mutex>

#include "platform/communication_library.h"

namespace hv {
namespace {

std::mutex bindingMutex;

// What the mutex guards: the library while `holders` is not 0.
struct SharedBinding {
  void* module;
  NbxFunctions functions;
  unsigned holders;
};
SharedBinding sharedBinding;

template <typename Function>
bool Find(void* module, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(platform::FindFunction(module, name));
  return *function != nullptr;
}

bool FindAll(void* module, NbxFunctions* functions) {
  return Find(module, "NbxOpen", &functions->open) && Find(module, "NbxClose", &functions->close) &&
         Find(module, "NbxStartDoc", &functions->startDoc) &&
         Find(module, "NbxEndDoc", &functions->endDoc) &&
         Find(module, "NbxWrite", &functions->write) &&
         Find(module, "NbxGetPrtInfo", &functions->getPrtInfo);
}

}  // namespace

std::optional<NbxBinding> NbxBinding::Bind() {
  const std::lock_guard lock(bindingMutex);
  if (sharedBinding.holders == 0) {
    void* module = platform::LoadCommunicationLibrary();
    if (module == nullptr) return std::nullopt;
    if (!FindAll(module, &sharedBinding.functions)) {
      platform::UnloadCommunicationLibrary(module);
      return std::nullopt;
    }
    sharedBinding.module = module;
  }
  ++sharedBinding.holders;
  return NbxBinding(sharedBinding.functions);
}

std::optional<NbxBinding> NbxBinding::JoinExisting() {
  const std::lock_guard lock(bindingMutex);
  if (sharedBinding.holders == 0) return std::nullopt;
  ++sharedBinding.holders;
  return NbxBinding(sharedBinding.functions);
}

NbxBinding::NbxBinding(NbxBinding&& other) noexcept : functions_(other.functions_) {
  held_ = other.held_;
  other.held_ = false;
}

NbxBinding::~NbxBinding() {
  if (!held_) return;
  const std::lock_guard lock(bindingMutex);
  if (--sharedBinding.holders == 0) {
    platform::UnloadCommunicationLibrary(sharedBinding.module);
    sharedBinding = {};
  }
}

NbxPrinterInfo QueryPrinterInfo(uint32_t printer) {
  NbxPrinterInfo info = {};
  if (const std::optional<NbxBinding> shared = NbxBinding::JoinExisting()) {
    (*shared)->getPrtInfo(printer, info.data(), 0);
    return info;
  }
  void* module = platform::LoadCommunicationLibrary();
  if (module == nullptr) return info;
  decltype(NbxFunctions::getPrtInfo) getPrtInfo = nullptr;
  if (Find(module, "NbxGetPrtInfo", &getPrtInfo)) getPrtInfo(printer, info.data(), 0);
  platform::UnloadCommunicationLibrary(module);
  return info;
}

}  // namespace hv
