// The binding of the communication library NBXCHAN.DLL. There is one for the process: it is loaded
// for the first channel that needs it and unloaded when the last one lets go.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "api/hvapi.h"

namespace hv {

// 412 bytes that NbxGetPrtInfo fills. The flag word is the little-endian u32 at NbxPrinterFlags.
using NbxPrinterInfo = std::array<uint8_t, 412>;
constexpr std::size_t NbxPrinterFlags = 92;

// The functions of the library. 16-bit words travel in 32-bit arguments.
struct NbxFunctions {
  // address1, address2, 0; 0 = connection open
  uint32_t(HVAPI_CALL* open)(uint32_t, uint32_t, uint32_t);
  // address1, address2
  uint32_t(HVAPI_CALL* close)(uint32_t, uint32_t);
  // address2, 0, document block; 0 = document started
  uint32_t(HVAPI_CALL* startDoc)(uint32_t, uint32_t, const void*);
  // address2, 0
  uint32_t(HVAPI_CALL* endDoc)(uint32_t, uint32_t);
  // address1, address2, 0, bytes, count (in: offered, out: taken), 1; 0 = success
  uint32_t(HVAPI_CALL* write)(uint32_t, uint32_t, uint32_t, const void*, uint32_t*, uint32_t);
  // printer, information block, 0
  uint32_t(HVAPI_CALL* getPrtInfo)(uint32_t, void*, uint32_t);
};

// A share in the binding, given back when it goes.
class NbxBinding {
 public:
  // Binds the library with all its functions; empty when it is missing or lacks one of them.
  static std::optional<NbxBinding> Bind();
  // A share in the binding that other channels hold; empty when none does.
  static std::optional<NbxBinding> JoinExisting();

  NbxBinding(NbxBinding&& other) noexcept;
  NbxBinding& operator=(NbxBinding&&) = delete;
  NbxBinding(const NbxBinding&) = delete;
  NbxBinding& operator=(const NbxBinding&) = delete;
  ~NbxBinding();

  const NbxFunctions* operator->() const { return &functions_; }

 private:
  explicit NbxBinding(const NbxFunctions& functions) : functions_(functions) {}

  NbxFunctions functions_;
  bool held_ = true;
};

// What the library says of a printer, all zero when it is missing. A channel's binding is used
// where there is one, else the library is loaded for this call alone.
NbxPrinterInfo QueryPrinterInfo(uint32_t printer);

}  // namespace hv
