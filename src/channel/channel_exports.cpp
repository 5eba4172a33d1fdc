// Exports that send to printers, and the questions about adapters, queues and networks.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "channel/job_framing.h"
#include "channel/nbx_binding.h"
#include "channel/sending.h"
#include "support/byte_order.h"

using hv::Guarded;
using hv::IsPathArgument;

namespace {

constexpr uint16_t SmallestListBuffer = 1024;

uint32_t CheckListBuffer(const void* buffer, uint32_t size) {
  const bool takesList = buffer != nullptr && static_cast<uint16_t>(size) >= SmallestListBuffer;
  return takesList ? HV_OK : HV_BAD_ARGUMENT;
}

}  // namespace

uint32_t HVAPI_CALL HvDatSendFile(const char* file, const char* destination, const HvJobInfo* job,
                                  uint32_t append) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (!IsPathArgument(file) || !IsPathArgument(destination) || job == nullptr ||
        !hv::IsKnownEmulation(*job)) {
      return HV_BAD_ARGUMENT;
    }
    return hv::SendFile(file, destination, *job, append != 0);
  });
}

uint32_t HVAPI_CALL HvDatSendString(const char* text, const char* destination, const HvJobInfo* job,
                                    uint32_t append) {
  if (text != nullptr && *text == '%') return HvDatSendFile(text + 1, destination, job, append);
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    if (text == nullptr || !IsPathArgument(destination) || job == nullptr ||
        !hv::IsKnownEmulation(*job)) {
      return HV_BAD_ARGUMENT;
    }
    return hv::SendString(text, destination, *job, append != 0);
  });
}

uint32_t HVAPI_CALL HvGenResource(uint32_t operation, const char* destination, const HvJobInfo* job,
                                  uint32_t device) {
  return Guarded(HV_NO_MEMORY, [&]() -> uint32_t {
    // One character fewer than the other sending exports allow.
    if (destination == nullptr || !hv::TextFits(destination, HV_MAX_PATH - 1) || job == nullptr ||
        operation < STORAGE_TARGET_RAM || operation > STORAGE_PRINT_DIRECTORY ||
        device < STORAGE_DEVICE_RAM || device > STORAGE_DEVICE_DISK2) {
      return HV_BAD_ARGUMENT;
    }
    return hv::SendStorageJob(operation, destination, *job, device);
  });
}

uint32_t HVAPI_CALL HvGenQueryAdapters(uint32_t /*a*/, uint32_t /*b*/, void* buffer,
                                       uint32_t size) {
  return CheckListBuffer(buffer, size);
}

uint32_t HVAPI_CALL HvGenQueryQueues(uint32_t /*a*/, uint32_t /*b*/, void* buffer, uint32_t size) {
  return CheckListBuffer(buffer, size);
}

uint32_t HVAPI_CALL HvNetGetType(uint32_t printer) {
  return Guarded(0, [&]() -> uint32_t {
    const hv::NbxPrinterInfo info = hv::QueryPrinterInfo(printer);
    const uint32_t flags = hv::LoadLe32(&info[hv::NbxPrinterFlags]);
    for (const uint32_t type : {0x800U, 0x20U, 0x04U, 0x02U}) {
      if ((flags & type) != 0) return type;
    }
    return 0;
  });
}
