// A communication library that records its calls, for tests.
//
// Each call is a line in the file that FAKE_NBX_LOG names, in hexadecimal where it holds bytes.
// FAKE_NBX_FAIL names functions, separated by blanks, that report failure. FAKE_NBX_FAIL_WRITE is
// the number of the one NbxWrite of a connection that does. FAKE_NBX_TAKE is the count that
// NbxWrite leaves when it is set, FAKE_NBX_FLAGS the flag word of NbxGetPrtInfo, which lies in a
// file of its own: a library built without that one lacks a function.

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "support/fake_nbx/fake_nbx_log.h"

namespace {

using fakenbx::Log;
using fakenbx::ResultOf;
using fakenbx::Variable;

// Of the last connection; those of other threads write meanwhile.
std::atomic<unsigned long> writesOfConnection{0};

}  // namespace

extern "C" {

HVAPI_EXPORT uint32_t HVAPI_CALL NbxOpen(uint32_t address1, uint32_t address2, uint32_t zero) {
  Log("NbxOpen", {address1, address2, zero});
  writesOfConnection = 0;
  return ResultOf("NbxOpen");
}

HVAPI_EXPORT uint32_t HVAPI_CALL NbxClose(uint32_t address1, uint32_t address2) {
  Log("NbxClose", {address1, address2});
  return ResultOf("NbxClose");
}

HVAPI_EXPORT uint32_t HVAPI_CALL NbxStartDoc(uint32_t address2, uint32_t zero, const void* block) {
  uint32_t size = 0;
  std::memcpy(&size, block, sizeof size);
  Log("NbxStartDoc", {address2, zero}, block, size);
  return ResultOf("NbxStartDoc");
}

HVAPI_EXPORT uint32_t HVAPI_CALL NbxEndDoc(uint32_t address2, uint32_t zero) {
  Log("NbxEndDoc", {address2, zero});
  return ResultOf("NbxEndDoc");
}

HVAPI_EXPORT uint32_t HVAPI_CALL NbxWrite(uint32_t address1, uint32_t address2, uint32_t zero,
                                          const void* bytes, uint32_t* count, uint32_t one) {
  Log("NbxWrite", {address1, address2, zero, *count, one}, bytes, *count);
  if (const char* take = std::getenv("FAKE_NBX_TAKE")) {
    *count = static_cast<uint32_t>(std::strtoul(take, nullptr, 0));
  }
  const bool fails =
      ++writesOfConnection == std::strtoul(Variable("FAKE_NBX_FAIL_WRITE"), nullptr, 0);
  return fails ? 5 : ResultOf("NbxWrite");
}

}  // extern "C"
