#include "platform/spooler.h"

#include "platform/posix/spool_queues.h"

namespace hv::platform {
namespace {

// The kinds in the order in which a destination is tried.
constexpr std::unique_ptr<SpoolPrinter> (*QueueKinds[])(const char*) = {
    OpenSocketQueue,
    OpenSpoolDirectory,
    OpenCupsQueue,
};

}  // namespace

std::unique_ptr<SpoolPrinter> OpenSpoolPrinter(const char* destination) {
  for (const auto open : QueueKinds) {
    if (std::unique_ptr<SpoolPrinter> printer = open(destination)) return printer;
  }
  return nullptr;
}

}  // namespace hv::platform
