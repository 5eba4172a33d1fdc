// Exports of the support addresses.

#include <string>

#include "api/guard.h"
#include "api/hvapi.h"
#include "support/fixed_text.h"
#include "web/support_address.h"

using hv::Guarded;

namespace {

bool IsTopic(uint32_t topic) {
  return topic >= WEB_TOPIC_DRIVERS && topic <= WEB_TOPIC_PUBLICATIONS;
}

// Hands the address out when the buffer has room for it, its NUL and `spare` bytes more.
uint32_t Deliver(const std::string& address, std::size_t spare, char* buffer, uint32_t size) {
  if (address.size() + 1 + spare > size) return HV_BUFFER_TOO_SMALL;
  hv::SetFixedText(buffer, size, address);
  return HV_OK;
}

}  // namespace

uint32_t HVAPI_CALL HvWebGetURL(int32_t model, uint32_t topic, uint32_t language, char* buffer,
                                uint32_t size, HvIniHandle* ini) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (buffer == nullptr) return HV_BAD_ARGUMENT;
    hv::SetFixedText(buffer, size, "");
    if (!IsTopic(topic) || language > hv::LastAddressLanguage) return HV_BAD_ARGUMENT;
    const std::optional<int32_t> printer = hv::PrinterOfModel(model);
    if (!printer && model != WEB_NO_MODEL) return HV_UNKNOWN_MODEL;
    return Deliver(hv::PathAddress(printer, topic, language, ini), 0, buffer, size);
  });
}

uint32_t HVAPI_CALL HvWebGetCGIURL(uint32_t printerA, uint32_t printerB, uint32_t topic,
                                   uint32_t languageId, char* buffer, uint32_t size,
                                   uint32_t /*reserved*/) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (buffer == nullptr) return HV_BAD_ARGUMENT;
    // Also where size is 0: the dispatch form needs a byte in any case.
    *buffer = '\0';
    if (!IsTopic(topic) || size == 0) return HV_BAD_ARGUMENT;
    return Deliver(
        hv::DispatchAddress(printerA, printerB, topic, static_cast<uint16_t>(languageId)), 1,
        buffer, size);
  });
}
