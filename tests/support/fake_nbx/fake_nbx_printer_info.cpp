// The question about a printer, see fake_nbx.cpp.

#include <cstdlib>
#include <cstring>

#include "support/fake_nbx/fake_nbx_log.h"

extern "C" HVAPI_EXPORT uint32_t HVAPI_CALL NbxGetPrtInfo(uint32_t printer, void* block,
                                                          uint32_t zero) {
  fakenbx::Log("NbxGetPrtInfo", {printer, zero});
  const uint32_t flags =
      static_cast<uint32_t>(std::strtoul(fakenbx::Variable("FAKE_NBX_FLAGS"), nullptr, 0));
  std::memcpy(static_cast<char*>(block) + 92, &flags, sizeof flags);
  return fakenbx::ResultOf("NbxGetPrtInfo");
}
